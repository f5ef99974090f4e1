// Users created, many in one call, and the choice of an id among many that are taken.
#include "measurements.h"
#include "user_floor.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 1000;
constexpr int many = 10000;
constexpr int taken_ids = 30000;

// The ways to create users.
struct Way {
    const char *operation;
    int (*by_library)(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_User_t *user, qbobj_error_rec_t *err);
    void (UserWriter::*by_hand)(qbobj_User_t *users);
};
constexpr Way ways[]{{"addUser", qbobj_addUser, &UserWriter::add},
                     {"addUserList", qbobj_addUserList, &UserWriter::add_list}};

// The password is given encoded: encoding it takes longer than all the rest.
qbobj_User_t *new_users(apr_pool_t *pool, int count, int first_number = 0)
{
    qbobj_User_t *users = nullptr;
    Tail<qbobj_User_t> tail(pool, users);
    for (int i = 0; i < count; i++) {
        qbobj_User_t &user = tail.append();
        user.UserName = apr_pstrdup(pool, user_name(first_number + i).c_str());
        user.GroupName = "users";
        user.Email = apr_psprintf(pool, "%s@example.org", user.UserName);
        user.SysHash = "$6$salt$hash";
        user.Password = user.SysHash;
    }
    return users;
}

void add_by_library(const Way &way, const Connection &connection, qbobj_User_t *users)
{
    qbobj_error_rec_t err{};
    check(way.by_library(connection.qbdb, connection.db, users, &err), err);
}

// Lets the allocation of ids begin again below all that are taken.
void reset_mark(const Connection &connection)
{
    sqlite3_exec(connection.db, "UPDATE account_default SET next_uid=100", nullptr, nullptr, nullptr);
}

// Both leave the same content.
void compare(const Way &way, const Appliance &appliance)
{
    const Copy library(appliance);
    const Copy floor(appliance);
    add_by_library(way, library.connection, new_users(library.connection.qbdb->pool, few));
    UserWriter writer(floor.connection);
    (writer.*way.by_hand)(new_users(floor.connection.qbdb->pool, few));
    require_equal(way.operation, floor.connection.content(), library.connection.content());
}

void measure(Figures &figures, const Way &way, const std::shared_ptr<Appliance> &appliance, int users,
             const std::string &suffix)
{
    const std::string operation = way.operation;
    figures.measure(operation + "/library" + suffix, [&way, appliance, users](benchmark::State &state) {
        const Copy copy(*appliance);
        qbobj_User_t *list = new_users(copy.connection.qbdb->pool, users);
        for (auto _ : state)
            add_by_library(way, copy.connection, list);
    });
    figures.measure(operation + "/kept" + suffix, [&way, appliance, users](benchmark::State &state) {
        const Copy copy(*appliance);
        qbobj_User_t *list = new_users(copy.connection.qbdb->pool, users);
        UserWriter writer(copy.connection);
        for (auto _ : state)
            (writer.*way.by_hand)(list);
    });
}

// The id of one user above many that are taken. Another user comes before, so that both ways have their
// statements prepared.
void measure_allocation(Figures &figures)
{
    const auto dense = figures.keep<Appliance>(Contents{.users = taken_ids});
    const auto measure_way = [&](const std::string &name, auto make_add) {
        figures.measure(name, [dense, make_add](benchmark::State &state) {
            const Copy copy(*dense);
            const auto add = make_add(copy.connection);
            qbobj_User_t *first = new_users(copy.connection.qbdb->pool, 1, taken_ids);
            add(first);
            qbobj_User_t *user = new_users(copy.connection.qbdb->pool, 1, taken_ids + 1);
            for (auto _ : state)
                add(user);
            if (user->UserId != first->UserId + 1)
                throw std::runtime_error("not the first free id");
        });
    };
    measure_way("addUser/dense/library", [](const Connection &connection) {
        return [&connection](qbobj_User_t *user) {
            reset_mark(connection);
            add_by_library(ways[0], connection, user);
        };
    });
    measure_way("addUser/dense/kept", [](const Connection &connection) {
        return [&connection, writer = std::make_shared<UserWriter>(connection)](qbobj_User_t *user) {
            reset_mark(connection);
            writer->add(user);
        };
    });
    figures.ratio_at_most("addUser-above-30000-taken-ids-to-kept-statements", "addUser/dense/library",
                          "addUser/dense/kept", 1.5);
    figures.milliseconds_at_most("addUser-milliseconds-above-30000-taken-ids", "addUser/dense/library", 10);
}

} // namespace

void add_new_user_figures(Figures &figures)
{
    const auto empty = figures.keep<Appliance>(Contents{.users = 0});
    for (const Way &way : ways) {
        const std::string operation = way.operation;
        compare(way, *empty);
        measure(figures, way, empty, few, "/1000");
        measure(figures, way, empty, many, "/10000");
        figures.ratio_at_most(operation + "-to-kept-statements", operation + "/library/10000",
                              operation + "/kept/10000", 1.5);
        figures.ratio_at_most(operation + "-time-of-10x-users", operation + "/library/10000",
                              operation + "/library/1000", 11);
    }

    measure_allocation(figures);
}

} // namespace qbobj_bench
