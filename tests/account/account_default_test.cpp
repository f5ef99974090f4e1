// The defaults of new accounts.
#include "database.h"

#include <functional>
#include <string>

using namespace qbobj_test;

namespace
{

class AccountDefault : public Database
{
  protected:
    qbobj_AccountDefault_t read()
    {
        qbobj_AccountDefault_t defaults = cleared(qbobj_clear_AccountDefault);
        EXPECT_OK(qbobj_getAccountDefault(qbdb, db, &defaults, &err));
        return defaults;
    }
    int write(qbobj_AccountDefault_t &defaults) { return qbobj_setAccountDefault(qbdb, db, &defaults, &err); }
};

TEST_F(AccountDefault, ReadsBackWhatWasWritten)
{
    const std::string volume = value("SELECT id FROM _volume WHERE lv_name='backup'");
    qbobj_AccountDefault_t written = cleared(qbobj_clear_AccountDefault);
    written.HomeVolumeId = volume.c_str();
    written.DiskQuotaWarn = 99;
    written.GroupId = 98;
    written.DisallowPasswordChange = 1;
    written.HomeFolderCapacityLimit = 0x7FFFFFFFFFFFFFFF;
    written.GroupMembership = "it's";
    written.PrivateTimeMachine = 1;
    written.PrivateTimeMachineSpace = 6;
    written.SnapshotProtection = 1;
    EXPECT_OK(write(written));
    qbobj_AccountDefault_t stored = read();
    EXPECT_EQ(dump("AccountDefault", &written), dump("AccountDefault", &stored));
    EXPECT_EQ("100", value("SELECT next_uid FROM account_default"));
}

TEST_F(AccountDefault, ReadsASizeInAnyBase)
{
    sql("UPDATE account_default SET home_folder_capacity_limit='0x20'");
    EXPECT_EQ(32U, read().HomeFolderCapacityLimit);
}

TEST_F(AccountDefault, RefusesTheFirstValueThatIsWrong)
{
    const struct {
        std::function<void(qbobj_AccountDefault_t &)> spoil;
        const char *message;
    } cases[] = {
        {[](auto &d) { d.HomeVolumeId = "none", d.DiskQuotaWarn = 0; }, "Invalid HomeVolumeId."},
        {[](auto &d) { d.DiskQuotaWarn = 0, d.GroupId = 4711; }, "Invalid DiskQuotaWarn. 1-99."},
        {[](auto &d) { d.DiskQuotaWarn = 100; }, "Invalid DiskQuotaWarn. 1-99."},
        {[](auto &d) { d.GroupId = 4711; }, "Invalid GroupId."},
    };
    const std::string before = content();
    for (const auto &c : cases) {
        qbobj_AccountDefault_t defaults = read();
        c.spoil(defaults);
        EXPECT_FAILS(write(defaults), QBOBJ_ERROR_API_ARGS, c.message);
        EXPECT_EQ(before, content());
    }
    qbobj_AccountDefault_t defaults = read();
    defaults.DiskQuotaWarn = 1;
    EXPECT_OK(write(defaults));
}

TEST_F(AccountDefault, AMissingRowIsReported)
{
    sql("DELETE FROM account_default");
    qbobj_AccountDefault_t defaults = cleared(qbobj_clear_AccountDefault);
    EXPECT_FAILS(qbobj_getAccountDefault(qbdb, db, &defaults, &err), QBOBJ_ERROR_DB_MISC,
                 "DB may be corrupted? 'account_default' table is not populated.");
}

} // namespace
