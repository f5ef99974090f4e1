// A caller that clears the pool between calls runs at constant memory.
#include "processes.h"

#include <fstream>

using namespace qbobj_test;

namespace
{

long resident_pages()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident;
}

// Reads, look-ups, changes and failures, as a management service makes them all day.
void make_calls(Appliance &appliance, int rounds)
{
    for (int round = 0; round < rounds; ++round) {
        qbdb_handle_t *qbdb = appliance.qbdb;
        sqlite3 *db = appliance.db;
        qbobj_error_rec_t err;
        EXPECT_GT(qbobj_getShareId(qbdb, db, "docs", &err), 0);
        auto share = cleared(qbobj_clear_Share);
        share.ShareName = "docs";
        EXPECT_EQ(0, qbobj_getShare(qbdb, db, &share, &err));
        const std::string comment = "round " + std::to_string(round);
        auto change = cleared(qbobj_clear_Share);
        change.resource_id = "data/docs";
        change.Comment = comment.c_str();
        EXPECT_EQ(0, qbobj_modifyShare(qbdb, db, &change, 1, &err));
        auto wrong = cleared(qbobj_clear_Share);
        wrong.ShareName = "home";
        EXPECT_EQ(QBOBJ_ERROR_UI__SHARENAME_RESERVED, qbobj_addShare(qbdb, db, &wrong, &err));
        qbdb_clear_pool(qbdb);
    }
}

TEST(Memory, StaysConstantOverAHundredThousandCalls)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer keeps freed memory back; it looks for leaks itself";
#endif
    Appliance appliance;
    Connection setup(appliance.file());
    ASSERT_EQ(0, add_share(setup, "docs")) << ::testing::PrintToString(setup.err);
    make_calls(appliance, 2500);
    const long warm = resident_pages();
    make_calls(appliance, 22500);
    // A leak of 20 bytes a call would take 500 pages.
    EXPECT_LT(resident_pages() - warm, 400);
}

} // namespace
