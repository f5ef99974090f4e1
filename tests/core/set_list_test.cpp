// The SET list of a partial update: what fits, and what becomes of a pair that does not.
#include "core/set_list.h"
#include "database.h"

#include <qbobj.h>

#include <string>

using namespace qbobj;

namespace
{

class SetLists : public qbobj_test::Database
{
  protected:
    const qbobj_env_t &env()
    {
        env_ = {qbdb, &err};
        return env_;
    }

  private:
    qbobj_env_t env_{};
};

// "b='xx...'" of as many bytes.
std::string value_of_pair(std::size_t size)
{
    return std::string(size - std::string("b=''").size(), 'x');
}

TEST_F(SetLists, PairsAreJoinedAndTheirValuesQuoted)
{
    SetList<512> set(env(), Overflow::drop);
    EXPECT_TRUE(set.empty());
    EXPECT_STREQ("", set.text());
    set.add("comment=%Q", "it's");
    set.add("share_id=%d", -7);
    set.add("path=%Q", nullptr);
    set.add("size=%llu", 18446744073709551615ULL);
    EXPECT_FALSE(set.empty());
    EXPECT_STREQ("comment='it''s',share_id=-7,path=NULL,size=18446744073709551615", set.text());

    SetList<64> where(env(), Overflow::drop, " AND ");
    where.add("a=%d", 1);
    where.add("b LIKE %Q", "x");
    EXPECT_STREQ("a=1 AND b LIKE 'x'", where.text());
}

TEST_F(SetLists, AllOfTheSizeButTheTerminatorIsText)
{
    // Bytes of the pair "a=...", 0 for none, and of the pair "b=...".
    const std::tuple<std::size_t, std::size_t, bool> cases[] = {
        {0, 511, true}, {0, 512, false}, {3, 507, true}, {3, 508, false}};
    for (const auto &[first, last, fits] : cases) {
        SetList<512> set(env(), Overflow::refuse);
        if (first != 0)
            set.add("a=%d", 1);
        const std::string before = set.text();
        set.add("b=%Q", value_of_pair(last).c_str());
        const std::string text = set.text();
        EXPECT_EQ(fits ? 511U : before.size(), text.size()) << first << " and " << last;
        EXPECT_EQ(fits, set.refused() == nullptr);
    }
}

TEST_F(SetLists, APairThatMayBeDroppedIsWarnedOfAndLaterOnesStillCount)
{
    reopen(QBDB_LOG_WARN);
    SetList<512> set(env(), Overflow::drop);
    set.add("a=%d", 1);
    set.add("b=%Q", value_of_pair(508).c_str());
    set.add("c=%d", 2);
    EXPECT_STREQ("a=1,c=2", set.text());
    EXPECT_EQ(nullptr, set.refused());
    const std::string text = log();
    EXPECT_NE(std::string::npos, text.find(" WARN set_list_test:")) << text;
    EXPECT_NE(std::string::npos,
              text.find("The value of column 'b' does not fit into the update and is left out.\n"));
    EXPECT_EQ(std::string::npos, text.find("xxx"));

    reopen(QBDB_LOG_ERROR);
    SetList<512> quiet(env(), Overflow::drop);
    quiet.add("b=%Q", value_of_pair(512).c_str());
    EXPECT_TRUE(quiet.empty());
    EXPECT_EQ(text, log());
}

TEST_F(SetLists, ATableOfChangesAddsWhatTheRecordCarries)
{
    constexpr std::tuple changes{
        change<&qbobj_Share_t::Comment>("comment=%Q"),
        change<&qbobj_Share_t::_void_QuotaMB, &qbobj_Share_t::QuotaMB>("mb_quota=%llu"),
        change<&qbobj_Share_t::Sync>("sync=%Q")};
    auto share = qbobj_test::cleared(qbobj_clear_Share);
    SetList<512> nothing(env(), Overflow::refuse);
    nothing.add_given(share, changes);
    EXPECT_TRUE(nothing.empty());
    share.Sync = "always";
    share.QuotaMB = 5;
    share._void_QuotaMB = 0;
    SetList<512> set(env(), Overflow::refuse);
    set.add_given(share, changes);
    EXPECT_STREQ("mb_quota=5,sync='always'", set.text());
}

TEST_F(SetLists, ARefusedUpdateNamesTheFirstColumnThatDidNotFit)
{
    SetList<512> set(env(), Overflow::refuse);
    set.add("b LIKE %Q", value_of_pair(600).c_str());
    set.add("c=%Q", value_of_pair(600).c_str());
    set.add("d=%d", 1);
    EXPECT_STREQ("b", set.refused());
    EXPECT_FAILS(raise_refused(env(), set), QBOBJ_ERROR_API_ARGS,
                 "The value of column 'b' is too long for the update.");
    EXPECT_EQ(std::string::npos, log().find("xxx"));
}

} // namespace
