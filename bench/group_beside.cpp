// Groups created, renamed and deleted, and the members of one, each beside the fewest statements.
#include "beside.h"

namespace qbobj_bench
{
namespace
{

constexpr int unused_groups = 5000; // with the ids behind those of the listed ones

class Groups
{
  public:
    explicit Groups(const Connection &connection) : connection_(connection) {}
    static std::string text(const qbobj_Group_t &group) { return json("Group", group); }

  protected:
    apr_pool_t *pool() const { return connection_.qbdb->pool; }
    qbobj_Group_t *existing(int number) const
    {
        auto *group = create<qbobj_Group_t>(pool());
        group->resource_id = first_account_id + listed_accounts + number;
        return group;
    }

    const Connection &connection_;
    Transactions transactions_{connection_};
};

class AddGroup : public Groups
{
  public:
    using Groups::Groups;
    static constexpr const char *name = "addGroup";
    static constexpr bool in_chain = true;

    qbobj_Group_t *record(int number) const
    {
        auto *group = create<qbobj_Group_t>(pool());
        group->GroupName = apr_psprintf(pool(), "new%05d", number);
        return group;
    }
    int by_library(qbobj_Group_t &groups, qbobj_error_rec_t *err) const
    {
        return qbobj_addGroup(connection_.qbdb, connection_.db, &groups, err);
    }
    void by_hand(qbobj_Group_t &groups) const
    {
        transactions_.run([&] {
            int next = first_account_id;
            int taken = next; // the first id that is, from the next one on
            for (qbobj_Group_t *group = &groups; group != nullptr; group = group->_link) {
                if (next == taken)
                    if (auto row = gap_(highest_id + 1, next); row.next())
                        row >> next >> taken;
                if (auto row = namesake_(group->GroupName); row.next())
                    throw std::runtime_error("cannot add a group");
                finish(add_(next, group->GroupName));
                group->resource_id = group->GroupId = next++;
            }
        });
    }

  private:
    static constexpr int highest_id = 32767;
    Kept gap_{connection_, R"(SELECT F.id,(SELECT IFNULL(MIN(N.id),%d) FROM `$group` N WHERE N.id>=F.id) FROM
        (SELECT G.id+1 AS id FROM `$group` G WHERE G.id>=%d-1
        AND NOT EXISTS (SELECT 1 FROM `$group` N WHERE N.id=G.id+1) ORDER BY G.id LIMIT 1) F)"};
    Kept namesake_{connection_, "SELECT 1 FROM `$group` WHERE gname=%Q"};
    Kept add_{connection_, "INSERT INTO `$group` (id,gname,is_privileged) VALUES(%d,%Q,0)"};
};

class ModifyGroup : public Groups
{
  public:
    using Groups::Groups;
    static constexpr const char *name = "modifyGroup";
    static constexpr bool in_chain = false;

    qbobj_Group_t *record(int number) const
    {
        qbobj_Group_t *group = existing(number);
        group->GroupName = apr_psprintf(pool(), "renamed%05d", number);
        return group;
    }
    int by_library(qbobj_Group_t &group, qbobj_error_rec_t *err) const
    {
        return qbobj_modifyGroup(connection_.qbdb, connection_.db, &group, err);
    }
    void by_hand(qbobj_Group_t &group) const
    {
        transactions_.run([&] {
            if (auto row = name_(group.resource_id); row.next())
                row >> group.OldGroupName;
            finish(rename_(group.GroupName, group.resource_id));
            finish(no_members_(group.resource_id));
        });
    }

  private:
    Kept name_{connection_, "SELECT gname FROM `$group` WHERE id=%d"};
    Kept rename_{connection_, "UPDATE `$group` SET gname=%Q WHERE id=%d"};
    Kept no_members_{connection_, "DELETE FROM `$group_has_user` WHERE group_id=%d"};
};

class DeleteGroup : public Groups
{
  public:
    using Groups::Groups;
    static constexpr const char *name = "deleteGroup";
    static constexpr bool in_chain = false;

    qbobj_Group_t *record(int number) const { return existing(number); }
    int by_library(qbobj_Group_t &group, qbobj_error_rec_t *err) const
    {
        return qbobj_deleteGroup(connection_.qbdb, connection_.db, &group, err);
    }
    void by_hand(qbobj_Group_t &group) const
    {
        const int id = group.resource_id;
        transactions_.run([&] {
            if (auto row = unused_(id); row.next())
                row >> group.GroupName;
            finish(no_quotas_(id));
            finish(no_usage_(id));
            finish(no_members_(id));
            finish(mark_(id));
        });
    }

  private:
    Kept unused_{connection_, "SELECT G.gname FROM `$group` G WHERE G.id=%d "
                              "AND NOT EXISTS (SELECT 1 FROM `$user` U WHERE U.group_id=G.id)"};
    Kept no_quotas_{connection_, "DELETE FROM group_quota WHERE group_id=%d"};
    Kept no_usage_{connection_, "DELETE FROM _group_quota_stat WHERE group_id=%d"};
    Kept no_members_{connection_, "DELETE FROM `$group_has_user` WHERE group_id=%d"};
    Kept mark_{connection_, "UPDATE `$group` SET is_privileged=-1 WHERE id=%d"};
};

struct Membership {
    const char *group;
    qbobj_SystemUser_t *users;
};

class GetUserInGroupName
{
  public:
    explicit GetUserInGroupName(const Connection &connection) : connection_(connection) {}
    static constexpr const char *name = "getUserInGroupName";
    static constexpr bool in_chain = false;

    Membership *record(int number) const
    {
        auto *membership = create<Membership>(connection_.qbdb->pool);
        membership->group = apr_psprintf(connection_.qbdb->pool, "group%05d", number % listed_accounts);
        return membership;
    }
    int by_library(Membership &asked, qbobj_error_rec_t *err) const
    {
        return qbobj_getUserInGroupName(connection_.qbdb, connection_.db, asked.group, 0, &asked.users, err);
    }
    void by_hand(Membership &asked) const
    {
        transactions_.run([&] {
            Tail<qbobj_SystemUser_t> tail(connection_.qbdb->pool, asked.users);
            for (auto row = members_(asked.group); row.next();) {
                qbobj_SystemUser_t &user = tail.append();
                row >> user.UserId >> user.UserName;
                user.resource_id = user.UserId;
            }
        });
    }
    static std::string text(const Membership &asked)
    {
        std::string text;
        for (const qbobj_SystemUser_t *user = asked.users; user != nullptr; user = user->_link)
            text += json("SystemUser", *user);
        return text;
    }

  private:
    const Connection &connection_;
    Transactions transactions_{connection_, "BEGIN"};
    Kept members_{connection_, R"(WITH asked(id) AS (SELECT id FROM `$group` WHERE gname=%Q)
        SELECT U.id,U.uname FROM asked CROSS JOIN `$user` U ON U.group_id=asked.id
        LEFT JOIN `$group_has_user` GU ON GU.user_id=U.id
        WHERE U.is_privileged<>1 AND U.uname NOT IN ('nobody','guest')
        UNION ALL SELECT U.id,U.uname FROM asked CROSS JOIN `$group_has_user` GU ON GU.group_id=asked.id
        CROSS JOIN `$user` U ON U.id=GU.user_id AND U.group_id IS NOT asked.id
        WHERE U.is_privileged<>1 AND U.uname NOT IN ('nobody','guest') ORDER BY 2 COLLATE NOCASE)"};
};

// Gives each listed group ten members, half of them by their primary group.
void add_groups(const Appliance &appliance)
{
    const Connection connection = appliance.connect();
    connection.run(("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n LIMIT " +
                    std::to_string(unused_groups) + ") INSERT INTO `$group` (id,gname) SELECT " +
                    std::to_string(first_account_id + listed_accounts) + "+i,printf('unused%05d',i) FROM n")
                       .c_str());
    connection.run("UPDATE `$user` SET group_id=id%20+100 WHERE id BETWEEN 100 AND 199");
    connection.run("INSERT INTO `$group_has_user` (user_id,group_id) SELECT id,id%20+100 FROM `$user` "
                   "WHERE id BETWEEN 200 AND 299");
}

} // namespace

void add_group_beside_figures(Figures &figures)
{
    const auto appliance = figures.keep<Appliance>(Contents{.users = 50000});
    add_groups(*appliance);
    measure_beside<AddGroup>(figures, appliance, 5000, 1.6);
    measure_beside<ModifyGroup>(figures, appliance, 1000, 1.6);
    measure_beside<DeleteGroup>(figures, appliance, 1000, 1.6);
    measure_beside<GetUserInGroupName>(figures, appliance, 2000, 1.6);
}

} // namespace qbobj_bench
