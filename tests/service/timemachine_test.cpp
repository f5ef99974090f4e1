// The Time Machine area, the vault's login and the daemon's record.
#include "database.h"

#include <functional>

using namespace qbobj_test;

namespace
{

class Timemachine : public Database
{
  protected:
    void SetUp() override { sql("UPDATE account_default SET home_volume_id='data'"); }
    int set(int enabled, const char *password, int capacity = 0)
    {
        qbobj_Timemachine_t area{enabled, nullptr, password, capacity, 0, 0};
        return qbobj_setTimemachine(qbdb, db, &area, &err);
    }
    std::string password() { return value("SELECT passwd FROM `$user` WHERE id=96"); }
    // AFP, its area and volume, announcements, the quota.
    std::string switches()
    {
        return rows(
                   R"(SELECT S.enabled,S.timemachine_enabled,S.volume_timemachine,A.afp,A.timemachine,T.enabled,
            T.capacity_mb FROM service_afp S,service_avahi A,`$timemachine_quota` T WHERE T.user_id=96)")
            .at(0);
    }
};

TEST_F(Timemachine, ReadsTheAreaWithItsPasswordMasked)
{
    sql("UPDATE _volume SET blk_size=4096,blk_free=5000000 WHERE lv_name='data'");
    qbobj_Timemachine_t area{};
    EXPECT_OK(qbobj_getTimemachine(qbdb, db, &area, &err));
    EXPECT_STREQ("", area.Password);
    sql("INSERT INTO `$timemachine_quota` VALUES(99,0,7)");
    EXPECT_OK(set(1, "apple", 700));
    EXPECT_EQ("99|0|7", rows("SELECT * FROM `$timemachine_quota` WHERE user_id=99").at(0))
        << "another user's";
    EXPECT_OK(qbobj_getTimemachine(qbdb, db, &area, &err));
    qbobj_Timemachine_t expected{1, "Qubrix", masked_password, 700, 20480, 0}; // decimal MB
    EXPECT_EQ(dump("Timemachine", &expected), dump("Timemachine", &area));
    for (const char *loss :
         {"UPDATE service_afp SET volume_timemachine='gone'",
          "UPDATE service_afp SET volume_timemachine=NULL;DELETE FROM `$timemachine_quota`"}) {
        sql(loss);
        EXPECT_FAILS(qbobj_getTimemachine(qbdb, db, &area, &err), QBOBJ_ERROR_DB_NOTEXISTS,
                     "Qubrix system user not exist.");
    }
}

TEST_F(Timemachine, LockingKeepsThePasswordAndOtherAreasKeepAfp)
{
    EXPECT_OK(set(1, "apple", 700));
    const std::string hash = password();
    EXPECT_EQ(0U, hash.find("$1$"));
    const auto on_again = [&] { return set(1, nullptr, 800); };
    const auto on_masked = [&] { return set(1, masked_password, 900); };
    const auto off = [&] { return set(0, nullptr); };
    const auto switch_on = [&] { return qbobj_setTimemachineEnable(qbdb, db, 7, &err); };
    const auto switch_off = [&] { return qbobj_setTimemachineEnable(qbdb, db, 0, &err); };
    const struct {
        std::function<int()> call;
        std::string password;
        std::string switches;
    } steps[] = {
        {off, "!" + hash, "1|0|data|0|0|0|700"},
        {off, "!" + hash, "1|0|data|0|0|0|700"},
        {on_again, hash, "1|1|data|1|1|1|800"},
        {switch_off, "!" + hash, "1|0|data|1|0|1|800"},
        {switch_on, hash, "1|1|data|1|1|1|800"},
        {switch_off, "!" + hash, "1|0|data|1|0|1|800"},
        {on_masked, hash, "1|1|data|1|1|1|900"},
        {[&] { return sql("INSERT INTO `$timemachine_quota` (user_id) VALUES (100)"), off(); }, "!" + hash,
         "1|1|data|0|0|0|900"},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(&step - steps);
        EXPECT_OK(step.call());
        EXPECT_EQ(step.password, password());
        EXPECT_EQ(step.switches, switches());
    }
}

class Vault : public Database
{
  protected:
    static qbobj_Vault_t account(const char *action)
    {
        return {nullptr, nullptr, action, "ann@office.example", "it's", "nightly"};
    }
    int set(qbobj_Vault_t vault) { return qbobj_setVaultSettings(qbdb, db, &vault, &err); }
};

TEST_F(Vault, StoresAnAccountAndForgetsIt)
{
    const auto stored = [&] {
        return value("SELECT group_concat(enabled||name||password||defaultjob) FROM service_vault");
    };
    for (const char *action : {"login", "registration"})
        for (const char *forget : {"logout", "Login", "clean"}) {
            EXPECT_OK(set(account(action)));
            EXPECT_OK(set(account(action)));
            EXPECT_EQ("1ann@office.exampleit'snightly", stored());
            qbobj_Vault_t out = account(forget);
            EXPECT_OK(*forget == 'c' ? qbobj_cleanVaultSettings(qbdb, db, &out, &err) : set(out));
            EXPECT_EQ("NULL", stored());
        }
}

TEST_F(Vault, ReadsAllButThePassword)
{
    EXPECT_OK(set(account("login")));
    sql("UPDATE service_misc SET val='data' WHERE key='QUBRIXVAULT_TEP_FOLDER'");
    const struct {
        const char *preparation;
        qbobj_Vault_t expected;
    } cases[] = {
        {"UPDATE service_misc SET val='1' WHERE key='QUBRIXVAULT'",
         {"1", "data", nullptr, "ann@office.example", nullptr, "nightly"}},
        {"UPDATE service_misc SET val='10' WHERE key='QUBRIXVAULT'",
         {"10", nullptr, nullptr, "ann@office.example", nullptr, "nightly"}},
        {"INSERT INTO service_vault (name) VALUES ('second')",
         {"10", nullptr, nullptr, nullptr, nullptr, nullptr}},
    };
    for (auto c : cases) {
        sql(c.preparation);
        qbobj_Vault_t vault{};
        EXPECT_OK(qbobj_getVaultSettings(qbdb, db, &vault, &err));
        EXPECT_EQ(dump("Vault", &c.expected), dump("Vault", &vault));
    }
}

TEST_F(Vault, RefusesAnAccountThatIsNotWhole)
{
    EXPECT_OK(set(account("login")));
    const struct {
        const char *qbobj_Vault_t::*field;
        const char *value;
        const char *message;
    } cases[] = {
        {&qbobj_Vault_t::DefaultJob, nullptr, "Invalid Default Job."},
        {&qbobj_Vault_t::UserPassword, nullptr, "Invalid Password."},
        {&qbobj_Vault_t::UserName, "ann", "Invalid UserName (ann) rc=8"},
        {&qbobj_Vault_t::Action, nullptr, "Action cannot be NULL."},
    };
    const std::string before = content();
    qbobj_Vault_t vault = account("registration");
    for (const auto &c : cases) {
        vault.*c.field = c.value; // found before those that are wrong already
        EXPECT_FAILS(set(vault), QBOBJ_ERROR_API_ARGS, c.message);
        EXPECT_EQ(before, content());
    }
}

TEST_F(Timemachine, TheDaemonsRecordKeepsWhatIsNotGiven)
{
    const struct {
        int started;
        int stopped;
        const char *version;
        const char *expected;
    } cases[] = {
        {-1, -1, nullptr, "0|0|1.0.0"},
        {7, -1, nullptr, "7|0|"},
        {-1, 8, nullptr, "7|8|"},
        {0, -1, "it's 2", "0|8|it's 2"},
    };
    for (const auto &c : cases) {
        EXPECT_OK(qbobj_setQubrixdInfo(qbdb, db, c.started, c.stopped, c.version, &err));
        int started = -1;
        int stopped = -1;
        char *version = nullptr;
        EXPECT_OK(qbobj_getQubrixdInfo(qbdb, db, &started, &stopped, &version, &err));
        EXPECT_EQ(c.expected, std::to_string(started) + "|" + std::to_string(stopped) + "|" + version);
    }
    EXPECT_OK(qbobj_getQubrixdInfo(qbdb, db, nullptr, nullptr, nullptr, &err));
    EXPECT_FAILS(qbobj_setQubrixdInfo(qbdb, db, 1, 1, std::string(500, 'x').c_str(), &err),
                 QBOBJ_ERROR_API_ARGS, "The value of column 'version' is too long for the update.");
}

TEST_F(Timemachine, SomeFailuresCarryAnotherName)
{
    const auto off = [&] { return set(0, nullptr); };
    const auto read = [&] { return qbobj_getQubrixdInfo(qbdb, db, nullptr, nullptr, nullptr, &err); };
    const auto write = [&] { return qbobj_setQubrixdInfo(qbdb, db, 1, 1, nullptr, &err); };
    sql("DROP TABLE service_avahi;DROP TABLE `$qubrixd`");
    EXPECT_FAILS(off(), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'UPDATE user'. no such table: service_avahi");
    EXPECT_FAILS(read(), QBOBJ_ERROR_DB_MISC,
                 "Failed DB Query for 'SELECT $lqubrixd'. no such table: $qubrixd");
    EXPECT_FAILS(write(), QBOBJ_ERROR_API_ARGS, "Fail 'UPDATE $qubrixd");
}

} // namespace
