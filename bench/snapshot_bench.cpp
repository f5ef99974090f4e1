// Snapshots listed by pages and counted, recorded and deleted, on few and on a million of them; and shares listed when
// the snapshots are there.
#include "lookup.h"
#include "measurements.h"
#include "share_floor.h"

#include <qbdb.h>

#include <functional>

namespace qbobj_bench
{
namespace
{

constexpr int of_a_share = 100;
constexpr int few = 10; // shares
constexpr int many = 10000;
constexpr int calls = 200; // in a run
constexpr int forever = 2147483647;

void take_snapshots(const Connection &connection, const char *shares)
{
    connection.run((std::string("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n LIMIT ") +
                    std::to_string(of_a_share) +
                    ") INSERT INTO `$snapshot` (zfs_name,name,type,created_on) "
                    "SELECT S.zfs_name,printf('daily-%04d',i),1+i%2,1000000*i+S.id FROM n,share S WHERE " +
                    shares)
                       .c_str());
}

const char *page_text = R"(SELECT S.id,SH.name,V.lv_name,S.name,S.type,S.created_on FROM `$snapshot` S
    INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id
    WHERE S.created_on>=%d AND S.created_on<=%d AND S.type>0 AND S.type<4 AND SH.name=%Q
    ORDER BY S.created_on DESC LIMIT %d OFFSET %d)";
const char *count_text = R"(SELECT COUNT(*) FROM `$snapshot` S
    INNER JOIN share SH ON SH.zfs_name=S.zfs_name INNER JOIN _volume V ON V.id=SH.volume_id
    WHERE S.created_on>=%d AND S.created_on<=%d AND S.type>0 AND S.type<4 AND SH.name=%Q)";

struct Subject {
    explicit Subject(int share_count) : shares(share_count), appliance({.shares = shares})
    {
        take_snapshots(library, "1");
    }

    // Calls `work` with names of shares from all over the appliance.
    template <class Work>
    void for_shares(Work work) const
    {
        constexpr int stride = 7;
        for (int i = 0; i < calls; i++)
            work(share_name(i * stride % shares).c_str());
    }

    int shares;
    Appliance appliance;
    Connection library = appliance.connect();
    Connection floor = appliance.connect();
    ShareReader<EachShare> share_reader{floor};
    Kept begin{floor, "BEGIN"};
    Kept commit{floor, "COMMIT"};
    Kept page{floor, page_text};
    Kept count{floor, count_text};
};

/* ---- Reading ------------------------------------------------------------------------------------------- */

void read_page(const Connection &connection, const char *share, qbobj_SnapshotCollection_t &collection)
{
    qbobj_error_rec_t err{};
    check(qbobj_getSnapshotCollection(connection.qbdb, connection.db, &collection, share, nullptr, 0, 0,
                                      forever, nullptr, 1, of_a_share, 0, &err),
          err);
}

void read_kept_page(Subject &subject, const char *share, qbobj_SnapshotCollection_t &collection)
{
    qbdb_handle_t *const qbdb = subject.floor.qbdb;
    finish(subject.begin());
    {
        Tail<qbobj_Snapshot_t> tail(qbdb->pool, collection.Snapshot);
        for (auto row = subject.page(0, forever, share, of_a_share, 0); row.next();) {
            qbobj_Snapshot_t &one = tail.append();
            row >> one.resource_id >> one.ShareName >> one.VolumeName >> one.SnapshotName >> one.Type >>
                one.CreatedOn;
            const std::string folder = std::string("/") + one.VolumeName + "/" + one.ShareName;
            one.Path = snapshot_get_path(qbdb, folder.c_str(), one.SnapshotName);
        }
    }
    finish(subject.commit());
}

int count_by_library(const Connection &connection, const char *share)
{
    int count = 0;
    qbobj_error_rec_t err{};
    check(qbobj_getSnapshotCollectionCount(connection.qbdb, connection.db, &count, share, nullptr, 0, 0,
                                           forever, &err),
          err);
    return count;
}

int count_by_floor(Subject &subject, const char *share)
{
    int count = 0;
    finish(subject.begin());
    if (auto row = subject.count(0, forever, share); row.next())
        row >> count;
    finish(subject.commit());
    return count;
}

void compare(Subject &subject)
{
    const std::string share = share_name(subject.shares / 2);
    qbobj_SnapshotCollection_t library{};
    qbobj_SnapshotCollection_t kept{};
    read_page(subject.library, share.c_str(), library);
    read_kept_page(subject, share.c_str(), kept);
    require_same_records("SnapshotCollection", kept, library);
    require_equal("count", count_by_floor(subject, share.c_str()),
                  count_by_library(subject.library, share.c_str()));
}

void measure_reading(Figures &figures, const std::shared_ptr<Subject> &subject)
{
    figures.measure("snapshots/page/library", timed(subject->library, [subject] {
                        subject->for_shares([&](const char *share) {
                            qbobj_SnapshotCollection_t collection{};
                            read_page(subject->library, share, collection);
                        });
                    }));
    figures.measure("snapshots/page/kept", timed(subject->floor, [subject] {
                        subject->for_shares([&](const char *share) {
                            qbobj_SnapshotCollection_t collection{};
                            read_kept_page(*subject, share, collection);
                        });
                    }));
    figures.measure("snapshots/count/library", timed(subject->library, [subject] {
                        subject->for_shares([&](const char *share) {
                            benchmark::DoNotOptimize(count_by_library(subject->library, share));
                        });
                    }));
    figures.measure("snapshots/count/kept", timed(subject->floor, [subject] {
                        subject->for_shares([&](const char *share) {
                            benchmark::DoNotOptimize(count_by_floor(*subject, share));
                        });
                    }));
    figures.measure(
        "snapshots/shares/library", timed(subject->library, [subject] {
            qbobj_ShareCollection_t collection{};
            qbobj_error_rec_t err{};
            check(qbobj_getShareCollection(subject->library.qbdb, subject->library.db, &collection, &err),
                  err);
        }));
    figures.measure("snapshots/shares/kept", timed(subject->floor, [subject] {
                        qbobj_ShareCollection_t collection{};
                        subject->share_reader.read_all(collection);
                    }));
    for (const std::string what : {"page", "count", "shares"})
        figures.ratio_at_most("snapshots-" + what + "-to-kept-statements", "snapshots/" + what + "/library",
                              "snapshots/" + what + "/kept", 1.5);
}

/* ---- Writing ------------------------------------------------------------------------------------------- */

void add(const Connection &connection, const char *share, int number)
{
    const std::string name = "new-" + std::to_string(number);
    qbobj_Snapshot_t snapshot{};
    snapshot.ShareName = share;
    snapshot.VolumeName = "data";
    snapshot.SnapshotName = name.c_str();
    snapshot.Type = 2;
    snapshot.CreatedOn = number;
    qbobj_error_rec_t err{};
    check(qbobj_addSnapshot(connection.qbdb, connection.db, &snapshot, &err), err);
}

void remove(const Connection &connection, const char *share, const char *name)
{
    qbobj_error_rec_t err{};
    check(qbobj_deleteSnapshot(connection.qbdb, connection.db, "data", share, 0, name, 0, &err), err);
}

// Measures `work`; `prepare` and `restore` are not measured.
template <class Prepare, class Work, class Restore>
void measure_between(Figures &figures, const std::string &name, const std::shared_ptr<Subject> &subject,
                     Prepare prepare, Work work, Restore restore)
{
    figures.measure(name, [=](benchmark::State &state) {
        for (auto _ : state) {
            state.PauseTiming();
            prepare(subject->library);
            state.ResumeTiming();
            work(subject->library);
            state.PauseTiming();
            restore(subject->library);
            state.ResumeTiming();
        }
        qbdb_clear_pool(subject->library.qbdb);
    });
}

// The steps that SQLite's virtual machine takes for a call: what it touches, however far apart that lies on the disk.
double steps_of(const Connection &connection, const std::function<void()> &call)
{
    double steps = 0;
    const auto add = [](unsigned, void *sum, void *statement, void *) {
        *static_cast<double *>(sum) +=
            sqlite3_stmt_status(static_cast<sqlite3_stmt *>(statement), SQLITE_STMTSTATUS_VM_STEP, 1);
        return 0;
    };
    sqlite3_trace_v2(connection.db, SQLITE_TRACE_PROFILE, add, &steps);
    call();
    sqlite3_trace_v2(connection.db, 0, nullptr, nullptr);
    return steps;
}

double steps_of_deleting_a_share(const Subject &subject)
{
    const double steps =
        steps_of(subject.library, [&] { remove(subject.library, share_name(3).c_str(), nullptr); });
    take_snapshots(subject.library, "S.id=4");
    return steps;
}

void measure_writing(Figures &figures, const std::shared_ptr<Subject> &subject, const std::string &suffix)
{
    const auto nothing = [](const Connection &) {};
    const auto add_all = [subject](const Connection &connection) {
        int number = 0;
        subject->for_shares([&](const char *share) { add(connection, share, number++); });
    };
    const auto remove_all = [subject](const Connection &connection) {
        int number = 0;
        subject->for_shares([&](const char *share) {
            remove(connection, share, ("new-" + std::to_string(number++)).c_str());
        });
    };
    measure_between(figures, "snapshots/add" + suffix, subject, nothing, add_all, remove_all);
    measure_between(figures, "snapshots/delete" + suffix, subject, add_all, remove_all, nothing);
}

} // namespace

void add_snapshot_figures(Figures &figures)
{
    const auto small = figures.keep<Subject>(few);
    const auto large = figures.keep<Subject>(many);
    compare(*large);
    measure_reading(figures, large);
    measure_writing(figures, small, "/1000");
    measure_writing(figures, large, "/1000000");
    for (const std::string what : {"add", "delete"})
        figures.ratio_at_most("snapshots-" + what + "-time-of-1000x", "snapshots/" + what + "/1000000",
                              "snapshots/" + what + "/1000", 1.5);
    figures.value_at_most("snapshots-delete-all-of-a-share-steps-of-1000x",
                          steps_of_deleting_a_share(*large) / steps_of_deleting_a_share(*small), 1.2);
}

} // namespace qbobj_bench
