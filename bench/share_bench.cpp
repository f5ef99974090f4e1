// Shares read: all of them, one by its name, and its id.
#include "measurements.h"
#include "share_floor.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 1000;
constexpr int many = 10000;
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
    Connection fresh = appliance.connect();
    ShareReader<Kept> kept_reader{kept};
    ShareReader<Fresh> fresh_reader{fresh};
};

void compare(Subject &subject)
{
    qbobj_ShareCollection_t library{};
    qbobj_ShareCollection_t kept{};
    qbobj_ShareCollection_t fresh{};
    read_all(subject.library, library);
    subject.kept_reader.read_all(kept);
    subject.fresh_reader.read_all(fresh);
    require_same_records("ShareCollection", kept, library);
    require_same_records("ShareCollection", fresh, library);

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

void measure_all(Figures &figures, Subject &subject, const std::string &suffix)
{
    figures.measure("getShareCollection/library" + suffix, timed(subject.library, [&subject] {
                        qbobj_ShareCollection_t collection{};
                        read_all(subject.library, collection);
                    }));
    figures.measure("getShareCollection/kept" + suffix, timed(subject.kept, [&subject] {
                        qbobj_ShareCollection_t collection{};
                        subject.kept_reader.read_all(collection);
                    }));
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
    compare(*small);

    measure_all(figures, *small, "/1000");
    measure_all(figures, *large, "/10000");
    figures.measure("getShareCollection/fresh/1000", timed(small->fresh, [small] {
                        qbobj_ShareCollection_t collection{};
                        small->fresh_reader.read_all(collection);
                    }));
    measure_one(figures, *large);

    figures.ratio_at_most("getShareCollection-to-kept-statements", "getShareCollection/library/10000",
                          "getShareCollection/kept/10000", 1.5);
    figures.ratio_at_most("getShareCollection-to-preparing-anew", "getShareCollection/library/1000",
                          "getShareCollection/fresh/1000", 1.0 / 5);
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
