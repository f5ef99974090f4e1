// One protocol of one share modified, among few shares and among many.
#include "lookup.h"
#include "measurements.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 100;
constexpr int many = 10000;
constexpr int modifications = 50; // in a run
constexpr int users_on_list = 4;
constexpr int groups_on_list = 3;
constexpr int hosts_on_list = 3;

struct Subject {
    explicit Subject(int shares)
        : appliance({.shares = shares,
                     .users_on_list = users_on_list,
                     .groups_on_list = groups_on_list,
                     .hosts_on_list = hosts_on_list}),
          share("data/" + share_name(shares / 2))
    {
    }

    Appliance appliance;
    std::string share;
    Connection connection = appliance.connect();
};

// The options with all of the share's lists, as a page of an interface sends them back.
qbobj_CifsShareOption_t *option(apr_pool_t *pool, const char *access)
{
    auto *option = create<qbobj_CifsShareOption_t>(pool);
    option->DefaultAccess = access;
    Tail<qbobj_UserAcl_t> users(pool, option->UserAcl);
    for (int i = 0; i < users_on_list; i++) {
        qbobj_UserAcl_t &entry = users.append();
        entry.User = create<qbobj_SystemUser_t>(pool);
        entry.User->resource_id = first_account_id + i;
        entry.Access = "ReadOnly";
    }
    Tail<qbobj_GroupAcl_t> groups(pool, option->GroupAcl);
    for (int i = 0; i < groups_on_list; i++) {
        qbobj_GroupAcl_t &entry = groups.append();
        entry.Group = create<qbobj_SystemGroup_t>(pool);
        entry.Group->resource_id = first_account_id + i;
        entry.Access = "ReadOnly";
    }
    Tail<qbobj_HostAcl_t> hosts(pool, option->HostAcl);
    for (int i = 0; i < hosts_on_list; i++) {
        qbobj_HostAcl_t &entry = hosts.append();
        entry.Host = create<qbobj_Host_t>(pool);
        entry.Host->HostName = apr_psprintf(pool, "10.0.0.%d", 1 + i);
        entry.Access = "ReadWrite";
    }
    return option;
}

void modify(const Subject &subject, const char *access)
{
    qbobj_Share_t share{};
    qbobj_clear_Share(&share);
    share.resource_id = subject.share.c_str();
    share.Cifs = option(subject.connection.qbdb->pool, access);
    qbobj_error_rec_t err{};
    check(qbobj_modifyShare(subject.connection.qbdb, subject.connection.db, &share, 0, &err), err);
    if (share.Cifs->Changed == 0)
        throw std::runtime_error("modifyShare: nothing has changed");
}

void measure(Figures &figures, const std::string &name, int shares)
{
    const auto subject = figures.keep<Subject>(shares);
    modify(*subject,
           "Disabled"); // so that every modification finds the statements prepared and the lists in place
    figures.measure(name, timed(subject->connection, [subject] {
                        for (int i = 0; i < modifications; i++)
                            modify(*subject, i % 2 == 0 ? "ReadWrite" : "Disabled");
                    }));
}

} // namespace

void add_modification_figures(Figures &figures)
{
    measure(figures, "modifyShare/100", few);
    measure(figures, "modifyShare/10000", many);
    figures.ratio_at_most("modifyShare-of-10000-shares-to-of-100", "modifyShare/10000", "modifyShare/100", 3);
}

} // namespace qbobj_bench
