// Memory that runs out: the n-th allocation of every kind fails, for every n, over the whole life of a handle.
#include "memory/failing_memory.h"
#include "platform.h"

using namespace platform_test;
using namespace qbobj_test;

namespace
{

using OutOfMemory = Platform;

// Everything that a handle is used for, with a plan for the time after its opening. True when each step
// succeeded.
bool live(const std::string &file, const MemoryPlan &opened)
{
    const char *const tables[] = {"t", "u", nullptr};
    qbdb_handle_t *qbdb = nullptr;
    sqlite3 *db = nullptr;
    char message[64];
    if (qbdb_open(file.c_str(), nullptr, &qbdb, &db, message, sizeof message) != 0)
        return false;
    const std::unique_ptr<qbdb_handle_t, void (*)(qbdb_handle_t *)> closer(qbdb, qbdb_close);
    memory_plan = opened;
    char *error = nullptr;
    char *text = nullptr;
    char **table = nullptr;
    const char **list = nullptr;
    int found = 0;
    int32_t number = 0;
    const auto is_there = [](const char *cell) {
        EXPECT_NE(nullptr, cell) << "a value that could not be read is not a NULL";
        return cell != nullptr;
    };
    const auto steps = [&] {
        return qbdb_sql_duplicate_tables(qbdb, db, "old_", tables, &error, unit, 1) == 0 &&
               qbdb_sql_exec_mprintf(qbdb, db, &error, unit, 1, "INSERT INTO t VALUES(%d,%Q,'%q')", 7,
                                     "a text that is longer than what is kept on the spot", "y") == 0 &&
               qbdb_sql_exec_mprintf(qbdb, db, &error, unit, 1, "UPDATE t SET %s", "b=b||b") == 0 &&
               qbdb_sql_exec_mprintf(qbdb, db, &error, unit, 1, "UPDATE u SET id=1") == SQLITE_CONSTRAINT &&
               qbdb_sql_get_table_mprintf(qbdb, db, &table, nullptr, nullptr, &error, unit, 1,
                                          "SELECT * FROM t LEFT JOIN %sold_u", "") == 0 &&
               qbdb_sql_get_scaler_mprintf(qbdb, db, &text, &found, &error, unit, 1, "SELECT a FROM t") ==
                   0 &&
               is_there(text) &&
               qbdb_sql_get_int32_mprintf(qbdb, db, &number, &found, &error, unit, 1,
                                          "SELECT a FROM t WHERE rowid=%d", 1) == 0 &&
               number == 7 &&
               qbdb_sql_compare_tables(qbdb, db, "old_", tables, &list, &error, unit, 1) == 0 && list[0] &&
               qbdb_csv_to_array(qbdb, "a, b", &list, nullptr) == 0 && qbdb_i_to_dow(qbdb, 5) &&
               snapshot_get_path(qbdb, "/data", "s") && qbdb_util_get_domain_uname_by_uid(qbdb, -1) &&
               qbdb_service_update_setting_by_share(qbdb, db, "cifs") == 0;
    };
    if (qbdb_sql_begin(qbdb, db, &error, unit, 1) != 0)
        return false;
    const bool done = steps();
    sqlite3_free_table(table);
    if (done)
        return qbdb_sql_commit(qbdb, db, &error, unit, 1) == 0;
    qbdb_sql_rollback(qbdb, db, &error, unit, 1);
    return false;
}

// Runs live() with the n-th allocation failing. True when there was no such allocation.
bool survives(const std::string &file, Session &beside, const MemoryPlan &failing, bool from_opening)
{
    SCOPED_TRACE("kind " + std::to_string(static_cast<int>(failing.kind)) + ", allocation " +
                 std::to_string(failing.left));
    memory_plan = from_opening ? failing : MemoryPlan{};
    const bool done = live(file, from_opening ? memory_plan : failing);
    const bool failed = memory_plan.failed;
    memory_plan = {};
    EXPECT_TRUE(done || failed);
    EXPECT_EQ(done ? "1" : "0", beside.one("SELECT count(*) FROM t"));
    EXPECT_EQ(0, beside.begin()) << "the file is locked";
    beside.exec("DELETE FROM t");
    EXPECT_EQ(0, beside.commit());
    return !failed;
}

TEST_F(OutOfMemory, RunsOutWithoutACrashALeakOrALock)
{
    ASSERT_TRUE(watches_sqlite());
    session->exec("INSERT INTO u VALUES(1,'one'),(2,'two')");
    for (const Memory kind : failing_memory)
        for (const bool lasting : {false, true})
            for (const bool from_opening : {false, true}) {
                // Reading the schema takes thousands of allocations of the same few kinds.
                const int stride = kind == Memory::sqlite || kind == Memory::system ? (from_opening ? 101
                                                                                       : lasting    ? 7
                                                                                                    : 1)
                                                                                    : 1;
                const sqlite3_int64 before = sqlite3_memory_used();
                int n = 1;
                while (!HasFailure() && !survives(file, *session, {kind, n, lasting, false}, from_opening))
                    n += stride;
                EXPECT_GT(n, 5) << "nothing was made to fail";
                EXPECT_LT(sqlite3_memory_used() - before, 8000);
            }
}

} // namespace
