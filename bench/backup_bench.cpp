// Backup jobs listed, and changed by one call.
#include "measurements.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 1000;
constexpr int many = 10000;

void read_all(const Connection &connection, qbobj_BackupJobCollection_t &collection)
{
    qbobj_error_rec_t err{};
    check(qbobj_getBackupJobCollection(connection.qbdb, connection.db, &collection, &err), err);
}

// Every job at another hour than before, in one chain.
void reschedule_all(const Connection &connection)
{
    qbobj_BackupJobCollection_t collection{};
    read_all(connection, collection);
    for (qbobj_BackupJob_t *job = collection.BackupJob; job != nullptr; job = job->_link)
        job->Schedule->End = job->Schedule->End == 5 ? 6 : 5;
    qbobj_error_rec_t err{};
    check(qbobj_modifyBackupJob(connection.qbdb, connection.db, collection.BackupJob, &err), err);
    for (const qbobj_BackupJob_t *job = collection.BackupJob; job != nullptr; job = job->_link)
        require_equal("Changed", 1, job->Changed);
}

struct Subject {
    explicit Subject(int jobs)
    {
        library.run(
            ("INSERT INTO backup (name,enabled,src_type,src_share_proto,src_path,dst_type,dst_share_proto,"
             "sch_every,sch_start,sch_end,sch_dow,opt_full_backup_freq,opt_rsync_exclude) "
             "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT " +
             std::to_string(jobs) +
             ") SELECT printf('job%05d',i),1,'share',printf('share%05d',i),'/in','remote','rsync',1,0,5,62,"
             "'weekly','*.tmp' FROM n")
                .c_str());
    }

    Appliance appliance{{.shares = 1}};
    Connection library = appliance.connect();
};

} // namespace

void add_backup_figures(Figures &figures)
{
    // Returns the bytes that listing the jobs takes.
    const auto measure = [&](int jobs) {
        const auto subject = figures.keep<Subject>(jobs);
        const auto read = [subject] {
            qbobj_BackupJobCollection_t collection{};
            read_all(subject->library, collection);
        };
        figures.measure("getBackupJobCollection/" + std::to_string(jobs), timed(subject->library, read));
        const auto bytes = static_cast<double>(pool_bytes(subject->library, read));
        figures.measure("modifyBackupJob/" + std::to_string(jobs),
                        timed(subject->library, [subject] { reschedule_all(subject->library); }));
        return bytes;
    };
    const double bytes_of_few = measure(few);
    const double bytes_of_many = measure(many);
    figures.ratio_at_most("getBackupJobCollection-time-of-10x-jobs", "getBackupJobCollection/10000",
                          "getBackupJobCollection/1000", 11);
    figures.ratio_at_most("modifyBackupJob-time-of-10x-jobs", "modifyBackupJob/10000", "modifyBackupJob/1000",
                          13);
    figures.value_at_most("getBackupJobCollection-pool-of-10x-jobs", bytes_of_many / bytes_of_few, 10.5);
}

} // namespace qbobj_bench
