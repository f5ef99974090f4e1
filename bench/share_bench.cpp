// Shares read: all of them, one by its name, and its id.
#include "measurements.h"
#include "share_floor.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 1000;
constexpr int many = 10000;
constexpr int most = 100000;
constexpr int named_reads = 200;
constexpr int id_reads = 2000;

void read_all(const Connection &connection, qbobj_ShareCollection_t &collection)
{
    qbobj_error_rec_t err{};
    check(qbobj_getShareCollection(connection.qbdb, connection.db, &collection, &err), err);
}

void read_named(const Connection &connection, const char *name, qbobj_Share_t &share)
{
    qbobj_error_rec_t err{};
    share.ShareName = name;
    check(qbobj_getShare(connection.qbdb, connection.db, &share, &err), err);
}

int id_of(const Connection &connection, const char *name)
{
    qbobj_error_rec_t err{};
    return qbobj_getShareId(connection.qbdb, connection.db, name, &err);
}

// Calls `read` with names from all over the appliance.
template <class Read>
void for_names(int count, Read read)
{
    constexpr int stride = 7; // shares no factor with their number, so that no name comes twice
    for (int i = 0; i < count; i++)
        read(share_name(i * stride % many).c_str());
}

// An appliance, open once for the library and once for each floor.
struct Subject {
    explicit Subject(int shares) : appliance({.shares = shares}) {}

    Appliance appliance;
    Connection library = appliance.connect();
    Connection kept = appliance.connect();
    Connection scanned = appliance.connect();
    ShareReader<EachShare> kept_reader{kept};
    ShareReader<InOneScan> scanning_reader{scanned};
};

// Rows for a few shares in the tables that measured shares have none in.
void add_rare_rows(const Connection &connection)
{
    for (const char *insert :
         {"`$snapshot` (zfs_name,name,created_on,type) SELECT zfs_name,'s',1000+id,1+id%2",
          "`$application_on_share` (zfs_name,app_name,app_data) SELECT zfs_name,'app','data'",
          "`$snapshot_clones` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name) SELECT "
          "name,'s','share00300'",
          "process_on_share (share_id,pid,blocking) SELECT id,7,id%3",
          "cifs_dfs_option (share_id,folder,address,remote_share) SELECT id,'folder','10.0.0.9','remote'",
          "rsync_user_password_acl (share_id,user,password) SELECT id,'user','secret'",
          "group_quota (group_id,share_id,mb_soft,mb_hard) SELECT 100,id,1,2",
          "user_acl (share_id,user_id,proto,read,write) SELECT id,105,'afp',1,1",
          "host_acl (share_id,host_id,proto,read,write) SELECT id,5,'nfs',1,1"})
        connection.run((std::string("INSERT INTO ") + insert + " FROM share WHERE id IN (3,4,500)").c_str());
}

void compare(Subject &subject)
{
    add_rare_rows(subject.library);
    qbobj_ShareCollection_t library{};
    qbobj_ShareCollection_t kept{};
    qbobj_ShareCollection_t scanned{};
    read_all(subject.library, library);
    subject.kept_reader.read_all(kept);
    subject.scanning_reader.read_all(scanned);
    require_same_records("ShareCollection", kept, library);
    require_same_records("ShareCollection", scanned, library);

    qbobj_Share_t share{};
    qbobj_Share_t kept_share{};
    const std::string name = share_name(few / 2);
    read_named(subject.library, name.c_str(), share);
    subject.kept_reader.read_named(name.c_str(), kept_share);
    require_same_records("Share", kept_share, share);
    require_equal("getShareId", subject.kept_reader.id_of(name.c_str()),
                  id_of(subject.library, name.c_str()));
}

size_t bytes_of_all(const Connection &connection)
{
    return pool_bytes(connection, [&connection] {
        qbobj_ShareCollection_t collection{};
        read_all(connection, collection);
    });
}

void measure_library(Figures &figures, Subject &subject, int shares, int repetitions)
{
    figures.measure("getShareCollection/library/" + std::to_string(shares),
                    timed(subject.library,
                          [&subject] {
                              qbobj_ShareCollection_t collection{};
                              read_all(subject.library, collection);
                          }),
                    repetitions);
}

void measure_kept(Figures &figures, Subject &subject, const std::string &suffix)
{
    figures.measure("getShareCollection/kept" + suffix, timed(subject.kept, [&subject] {
                        qbobj_ShareCollection_t collection{};
                        subject.kept_reader.read_all(collection);
                    }));
}

// The library, which reads the folders too, beside a program that does and one that does not.
void measure_scans(Figures &figures, Subject &subject, int shares, int repetitions, double with_folders,
                   double without)
{
    const std::string suffix = "/" + std::to_string(shares);
    for (const bool folders : {true, false})
        figures.measure("getShareCollection/scans" + std::string(folders ? "" : "-only") + suffix,
                        timed(subject.scanned,
                              [&subject, folders] {
                                  qbobj_ShareCollection_t collection{};
                                  subject.scanning_reader.read_all(collection, folders);
                              }),
                        repetitions);
    const std::string figure = "getShareCollection-of-" + std::to_string(shares);
    const std::string library = "getShareCollection/library" + suffix;
    figures.ratio_at_most(figure + "-to-scans-and-folders", library, "getShareCollection/scans" + suffix,
                          with_folders);
    figures.ratio_at_most(figure + "-to-scans", library, "getShareCollection/scans-only" + suffix, without);
}

void measure_one(Figures &figures, Subject &subject)
{
    figures.measure("getShare/library", timed(subject.library, [&subject] {
                        for_names(named_reads, [&subject](const char *name) {
                            qbobj_Share_t share{};
                            read_named(subject.library, name, share);
                        });
                    }));
    figures.measure("getShare/kept", timed(subject.kept, [&subject] {
                        for_names(named_reads, [&subject](const char *name) {
                            qbobj_Share_t share{};
                            subject.kept_reader.read_named(name, share);
                        });
                    }));
    figures.measure("getShareId/library", timed(subject.library, [&subject] {
                        for_names(id_reads, [&subject](const char *name) {
                            benchmark::DoNotOptimize(id_of(subject.library, name));
                        });
                    }));
    figures.measure("getShareId/kept", timed(subject.kept, [&subject] {
                        for_names(id_reads, [&subject](const char *name) {
                            benchmark::DoNotOptimize(subject.kept_reader.id_of(name));
                        });
                    }));
}

} // namespace

void add_share_figures(Figures &figures)
{
    const auto small = figures.keep<Subject>(few);
    const auto large = figures.keep<Subject>(many);
    const auto largest = figures.keep<Subject>(most);
    compare(*small);

    constexpr int usual = 7;
    constexpr int seldom = 3;
    measure_library(figures, *small, few, usual);
    measure_library(figures, *large, many, usual);
    measure_library(figures, *largest, most, seldom);
    measure_kept(figures, *large, "/10000");
    measure_scans(figures, *large, many, usual, 1.6, 2.5);
    measure_scans(figures, *largest, most, seldom, 1.7, 2.7);
    measure_one(figures, *large);

    figures.ratio_at_most("getShareCollection-to-kept-statements", "getShareCollection/library/10000",
                          "getShareCollection/kept/10000", 1.5);
    figures.ratio_at_most("getShareCollection-time-of-10x-shares", "getShareCollection/library/10000",
                          "getShareCollection/library/1000", 11);
    figures.value_at_most("getShareCollection-pool-of-10x-shares",
                          static_cast<double>(bytes_of_all(large->library)) /
                              static_cast<double>(bytes_of_all(small->library)),
                          10.5);
    figures.ratio_at_most("getShare-to-kept-statements", "getShare/library", "getShare/kept", 1.5);
    figures.ratio_at_most("getShareId-to-kept-statements", "getShareId/library", "getShareId/kept", 1.5);
}

} // namespace qbobj_bench
