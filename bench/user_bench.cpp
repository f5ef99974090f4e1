// Users read, all of them.
#include "measurements.h"
#include "user_floor.h"

namespace qbobj_bench
{
namespace
{

void read_all(const Connection &connection, qbobj_UserCollection_t &collection)
{
    qbobj_error_rec_t err{};
    check(qbobj_getUserCollection(connection.qbdb, connection.db, &collection, nullptr, 0, &err), err);
}

struct Subject {
    explicit Subject(int users) : appliance({.shares = 1, .users = users}) {}

    Appliance appliance;
    Connection library = appliance.connect();
    Connection kept = appliance.connect();
    UserReader reader{kept};
};

void compare(Subject &subject)
{
    qbobj_UserCollection_t library{};
    qbobj_UserCollection_t kept{};
    read_all(subject.library, library);
    subject.reader.read_all(kept);
    require_same_records("UserCollection", kept, library);
}

void measure(Figures &figures, Subject &subject, const std::string &suffix)
{
    figures.measure("getUserCollection/library" + suffix, timed(subject.library, [&subject] {
                        qbobj_UserCollection_t collection{};
                        read_all(subject.library, collection);
                    }));
    figures.measure("getUserCollection/kept" + suffix, timed(subject.kept, [&subject] {
                        qbobj_UserCollection_t collection{};
                        subject.reader.read_all(collection);
                    }));
}

} // namespace

void add_user_figures(Figures &figures)
{
    const auto small = figures.keep<Subject>(5000);
    const auto large = figures.keep<Subject>(50000);
    compare(*small);
    measure(figures, *small, "/5000");
    measure(figures, *large, "/50000");
    figures.ratio_at_most("getUserCollection-to-kept-statements", "getUserCollection/library/50000",
                          "getUserCollection/kept/50000", 1.5);
    figures.ratio_at_most("getUserCollection-time-of-10x-users", "getUserCollection/library/50000",
                          "getUserCollection/library/5000", 11);
}

} // namespace qbobj_bench
