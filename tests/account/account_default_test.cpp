// The defaults of new accounts.
#include "accounts.h"

namespace
{

using namespace qbobj_test;

class AccountDefault : public Accounts
{
  protected:
    qbobj_AccountDefault_t read()
    {
        qbobj_AccountDefault_t defaults{};
        EXPECT_OK(run(qbobj_getAccountDefault, defaults));
        return defaults;
    }
};

TEST_F(AccountDefault, ReadsBackWhatWasWrittenUnlessTheRowIsMissing)
{
    const std::string volume = value("SELECT id FROM _volume WHERE lv_name='backup'");
    qbobj_AccountDefault_t written{};
    written.HomeVolumeId = volume.c_str();
    written.DiskQuotaWarn = 99;
    written.GroupId = 98;
    written.DisallowPasswordChange = 1;
    written.HomeFolderCapacityLimit = 0x7FFFFFFFFFFFFFFF;
    written.GroupMembership = "it's";
    written.PrivateTimeMachine = 1;
    written.PrivateTimeMachineSpace = 6;
    written.SnapshotProtection = 1;
    EXPECT_OK(run(qbobj_setAccountDefault, written));
    qbobj_AccountDefault_t stored = read();
    EXPECT_EQ(dump("AccountDefault", &written), dump("AccountDefault", &stored));
    EXPECT_EQ("100", value("SELECT next_uid FROM account_default"));
    sql("UPDATE account_default SET home_folder_capacity_limit='0x20'");
    EXPECT_EQ(32U, read().HomeFolderCapacityLimit) << "in any base";
    sql("DELETE FROM account_default");
    refused(qbobj_getAccountDefault, {}, db_failed,
            "DB may be corrupted? 'account_default' table is not populated.");
}

TEST_F(AccountDefault, RefusesTheFirstValueThatIsWrong)
{
    const Refusal<std::function<void(qbobj_AccountDefault_t &)>> cases[] = {
        {[](auto &d) { d.HomeVolumeId = "none", d.DiskQuotaWarn = 0; }, "Invalid HomeVolumeId."},
        {[](auto &d) { d.DiskQuotaWarn = 0, d.GroupId = 4711; }, "Invalid DiskQuotaWarn. 1-99."},
        {[](auto &d) { d.DiskQuotaWarn = 100; }, "Invalid DiskQuotaWarn. 1-99."},
        {[](auto &d) { d.GroupId = 4711; }, "Invalid GroupId."}};
    for (const auto &c : cases) {
        qbobj_AccountDefault_t defaults = read();
        c.given(defaults); // spoils them
        refused(qbobj_setAccountDefault, defaults, c.code, c.message);
    }
    qbobj_AccountDefault_t defaults = read();
    defaults.DiskQuotaWarn = 1;
    EXPECT_OK(run(qbobj_setAccountDefault, defaults));
}

} // namespace
