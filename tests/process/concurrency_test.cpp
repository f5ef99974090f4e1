// Many processes on one file: nobody fails for a busy database, nothing is lost, and a reader sees whole
// states only.
#include "processes.h"

#include <cstring>

using namespace qbobj_test;
using namespace std::chrono_literals;

namespace
{

// Adds shares and reads the collection in turn until the time is over. The exit status is not 0 when any call
// failed or a share was read that is not whole; the number of shares added goes to `counter`.
int add_and_read(const std::filesystem::path &file, int process, FILE *counter)
{
    Connection connection(file);
    if (!connection.is_open())
        return 2;
    const Deadline deadline(3s);
    int added = 0;
    for (; !deadline.passed(); ++added) {
        if (add_share(connection, "p" + std::to_string(process) + "n" + std::to_string(added)) != 0) {
            std::fprintf(stderr, "addShare: %s\n", ::testing::PrintToString(connection.err).c_str());
            return 3;
        }
        if (added % 10 == 0) {
            qbobj_ShareCollection_t collection{};
            if (qbobj_getShareCollection(connection.qbdb, connection.db, &collection, &connection.err) != 0) {
                std::fprintf(stderr, "getShareCollection: %s\n",
                             ::testing::PrintToString(connection.err).c_str());
                return 4;
            }
            for (const qbobj_Share_t *share = collection.Share; share != nullptr; share = share->_link)
                if (!is_whole(*share))
                    return 5;
        }
        qbdb_clear_pool(connection.qbdb);
    }
    std::fprintf(counter, "%d\n", added);
    return std::fflush(counter) == 0 ? 0 : 6;
}

TEST(Concurrency, EightProcessesAddAndReadWithoutFailureOrLoss)
{
    const Appliance appliance;
    FILE *counter = std::tmpfile();
    std::vector<pid_t> processes;
    for (int process = 0; process < 8; ++process)
        processes.push_back(start_process([&] { return add_and_read(appliance.file(), process, counter); }));
    for (const pid_t process : processes)
        EXPECT_EQ(0, wait_for(process));

    std::rewind(counter);
    int added = 0;
    for (int number = 0; std::fscanf(counter, "%d", &number) == 1; added += number)
        EXPECT_GT(number, 0);
    std::fclose(counter);
    EXPECT_EQ(std::to_string(added), appliance.value("SELECT COUNT(*) FROM share"));
    EXPECT_EQ(std::to_string(added), appliance.value("SELECT COUNT(*) FROM nfs_share_option"));
    EXPECT_EQ("ok", appliance.value("PRAGMA integrity_check"));
}

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
