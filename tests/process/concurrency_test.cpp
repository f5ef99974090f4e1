// A reader sees whole states only.
#include "processes.h"

#include <cstring>

using namespace qbobj_test;
using namespace std::chrono_literals;

namespace
{

// Renames the share back and forth.
int rename_again_and_again(const std::filesystem::path &file)
{
    Connection connection(file);
    const Deadline deadline(2s);
    for (bool back = false; !deadline.passed(); back = !back) {
        auto share = cleared(qbobj_clear_Share);
        share.resource_id = back ? "data/there" : "data/here";
        share.ShareName = back ? "here" : "there";
        if (qbobj_modifyShare(connection.qbdb, connection.db, &share, 1, &connection.err) != 0)
            return 1;
        qbdb_clear_pool(connection.qbdb);
    }
    return 0;
}

TEST(Concurrency, ReaderSeesARenameWhole)
{
    const Appliance appliance;
    Connection setup(appliance.file());
    ASSERT_EQ(0, add_share(setup, "here")) << ::testing::PrintToString(setup.err);
    const pid_t renamer = start_process([&] { return rename_again_and_again(appliance.file()); });

    Connection reader(appliance.file(), true);
    int seen_here = 0;
    int seen_there = 0;
    for (const Deadline deadline(2s); !deadline.passed(); qbdb_clear_pool(reader.qbdb)) {
        qbobj_ShareCollection_t collection{};
        ASSERT_EQ(0, qbobj_getShareCollection(reader.qbdb, reader.db, &collection, &reader.err))
            << ::testing::PrintToString(reader.err);
        const qbobj_Share_t *share = collection.Share;
        ASSERT_NE(nullptr, share);
        ASSERT_EQ(nullptr, share->_link);
        ASSERT_EQ(std::string("data/") + share->ShareName, share->ShareId);
        ASSERT_EQ(std::string("/data/") + share->ShareName, share->Path);
        ASSERT_TRUE(is_whole(*share));
        (std::strcmp(share->ShareName, "here") == 0 ? seen_here : seen_there)++;
    }
    EXPECT_EQ(0, wait_for(renamer));
    EXPECT_GT(seen_here, 0);
    EXPECT_GT(seen_there, 0);
}

} // namespace
