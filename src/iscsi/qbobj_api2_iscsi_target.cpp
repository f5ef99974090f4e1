// iSCSI targets: groups of LUNs, the LUNs, the initiators, and which initiators may reach a group.
#include "iscsi/iscsi.h"
#include "validate/validate.h"

namespace qbobj
{

namespace
{

using Group = qbobj_LunGroup_t;
using Initiator = qbobj_Initiator_t;
using Lun = qbobj_Lun_t;

int require_given(Call &call, const void *given, const char *what, const Site &site = here())
{
    return given != nullptr ? 0 : raise_at(site, call, QBOBJ_ERROR_API_ARGS, "%s cannot be NULL.", what);
}

/* ---- Rows read ----------------------------------------------------------------------------------------- */

struct AccessEntry {
    char *initiator;
};
constexpr auto never_null = [](const qbobj_env_t &env, AccessEntry &entry, const char *cell) {
    entry.initiator = copy_text(env.qbdb->pool, or_empty(cell));
};
constexpr auto access_list =
    select<const char *>("SELECT DISTINCT L.initiator FROM `$iscsi_lun_group_access` L WHERE L.lun_group=%Q",
                         "Failed DB Query for 'SELECT FROM `$iscsi_lun_group_access`'. %s", never_null);

constexpr char group_columns[] = "SELECT L.name,L.target,L.all_hosts,L.chap_auth,L.chap_secret";
constexpr std::tuple group_members{or_empty(&Group::Name), or_empty(&Group::Target), &Group::AnyInitiator,
                                   &Group::ChapAuth, or_empty(&Group::ChapSecret)};
constexpr auto all_groups_text =
    joined(group_columns, " FROM `$iscsi_lun_group` L ORDER BY L.name COLLATE NOCASE");
constexpr auto all_groups =
    select_into(all_groups_text, "Failed DB Query for 'SELECT FROM `$iscsi_lun_group`'. %s", group_members);
constexpr auto one_group_text = joined(group_columns, " FROM `$iscsi_lun_group` L WHERE L.name=%Q");
constexpr auto one_group = select_into<const char *>(
    one_group_text, "Failed DB Query for 'SELECT FROM `$iscsi_lun_group`'. %s", group_members);

constexpr char initiator_columns[] = "SELECT I.name,I.chap_auth,I.chap_secret";
constexpr std::tuple initiator_members{or_empty(&Initiator::Name), &Initiator::ChapAuth,
                                       or_empty(&Initiator::ChapSecret)};
constexpr auto all_initiators_text =
    joined(initiator_columns, " FROM `$iscsi_initiator` I ORDER BY I.name COLLATE NOCASE");
constexpr auto all_initiators = select_into(
    all_initiators_text, "Failed DB Query for 'SELECT FROM `$iscsi_initiator`'. %s", initiator_members);
constexpr auto one_initiator_text = joined(initiator_columns, " FROM `$iscsi_initiator` I WHERE I.name=%Q");
constexpr auto one_initiator = select_into<const char *>(
    one_initiator_text, "Failed DB Query for 'SELECT FROM `$iscsi_initiator`'. %s", initiator_members);

constexpr auto one_lun =
    select<const char *>("SELECT LUN.name,LUN.lun_group,LUN.lun_n FROM `$iscsi_lun` LUN WHERE LUN.name=%Q",
                         "Failed DB Query for 'SELECT FROM `$iscsi_lun`'. %s", or_empty(&Lun::Name),
                         or_empty(&Lun::LunGroup), &Lun::LunN);

/* ---- One record of a chain written --------------------------------------------------------------------- */

int add_group(Call &call, const Group &group)
{
    if (const int rc = require_given(call, group.Name, "LUN Group Name"))
        return rc;
    return call.exec("Failed DB Query for 'INSERT INTO `$iscsi_lun_group`'. %s",
                     "INSERT INTO `$iscsi_lun_group` (name,target,all_hosts,chap_auth,chap_secret) VALUES "
                     "(%Q,%Q,%d,%d,%Q)",
                     group.Name, group.Target, group.AnyInitiator, group.ChapAuth, group.ChapSecret);
}

int modify_group(Call &call, const Group &group)
{
    return call.exec(
        "Failed DB Query for 'UPDATE `$iscsi_lun_group`'. %s",
        "UPDATE `$iscsi_lun_group` SET target=%Q,all_hosts=%d,chap_auth=%d,chap_secret=%Q WHERE name=%Q",
        group.Target, group.AnyInitiator, group.ChapAuth, group.ChapSecret, group.Name);
}

int add_initiator(Call &call, const Initiator &initiator)
{
    if (const int rc = require_given(call, initiator.Name, "iSCSI Initiator Name"))
        return rc;
    return call.exec("Failed DB Query for 'INSERT INTO `$iscsi_initiator`'. %s",
                     "INSERT INTO `$iscsi_initiator` (name,chap_auth,chap_secret) VALUES (%Q,%d,%Q)",
                     initiator.Name, initiator.ChapAuth, initiator.ChapSecret);
}

int modify_initiator(Call &call, const Initiator &initiator)
{
    return call.exec("Failed DB Query for 'UPDATE `$iscsi_initiator`'. %s",
                     "UPDATE `$iscsi_initiator` SET chap_auth=%d,chap_secret=%Q WHERE name=%Q",
                     initiator.ChapAuth, initiator.ChapSecret, initiator.Name);
}

int add_lun(Call &call, const Lun &lun)
{
    if (const int rc = require_given(call, lun.Name, "iSCSI LUN Name"))
        return rc;
    return call.exec("Failed DB Query for 'INSERT INTO `$iscsi_lun`'. %s",
                     "INSERT INTO `$iscsi_lun` (name,lun_group,lun_n) VALUES (%Q,%Q,%d)", lun.Name,
                     lun.LunGroup, lun.LunN);
}

// The id of a name as its validator of existing rows finds it; -1 for an unknown name.
int id_of(Call &call, int (*find)(Call &, const char *, const char *, int *), const char *name)
{
    int id = -1;
    return find(call, name, nullptr, &id) == 0 ? id : -1;
}

} // namespace

/* ---- Access lists -------------------------------------------------------------------------------------- */

int x_qbobj_getLunGroupAccessList(Call &call, const char *LunGroup, char **Initiators, unsigned int *Entries)
{
    if (const int rc = require_given(call, Entries, "Entries"))
        return rc;
    *Entries = 0;
    const auto take = [&](const AccessEntry &entry) {
        if (Initiators != nullptr)
            Initiators[*Entries] = entry.initiator;
        ++*Entries;
    };
    return call.scan<AccessEntry>(access_list, take, LunGroup);
}

int x_qbobj_addLunGroupAccessList(Call &call, const char *LunGroup, const char *Initiator)
{
    return call.exec("Failed DB Query for 'INSERT INTO `$iscsi_lun_group_access`'. %s",
                     "INSERT INTO `$iscsi_lun_group_access` VALUES (%Q,%Q)", LunGroup, Initiator);
}

int x_qbobj_deleteLunGroupAccessList(Call &call, const char *LunGroup)
{
    return call.exec("Failed DB Query for 'DELETE FROM `$iscsi_lun_group_access`'. %s",
                     "DELETE FROM `$iscsi_lun_group_access` WHERE lun_group=%Q", LunGroup);
}

int x_qbobj_deleteIniFromLunGroupAccessList(Call &call, const char *Initiator)
{
    return call.exec("Failed DB Query for 'DELETE FROM `$iscsi_lun_group_access`'. %s",
                     "DELETE FROM `$iscsi_lun_group_access` WHERE initiator=%Q", Initiator);
}

/* ---- Groups -------------------------------------------------------------------------------------------- */

int x_qbobj_getLunGroupCollection(Call &call, qbobj_LunGroupCollection_t *collection)
{
    if (const int rc = require_given(call, collection, "collection"))
        return rc;
    return call.append(all_groups, collection->LunGroup);
}

int x_qbobj_getLunGroup(Call &call, qbobj_LunGroup_t *LunGroup)
{
    if (const int rc = require_given(call, LunGroup, "LUN Group"))
        return rc;
    return call.require(one_group,
                        error(QBOBJ_ERROR_DB_NOTEXISTS,
                              "None of row selected from `$iscsi_lun_group` for resource_id=%s.",
                              or_empty(LunGroup->Name)),
                        *LunGroup, LunGroup->Name);
}

int x_qbobj_addLunGroup(Call &call, qbobj_LunGroup_t *LunGroup)
{
    if (const int rc = require_given(call, LunGroup, "LUN Group"))
        return rc;
    return for_each(LunGroup, add_group, call);
}

int x_qbobj_modifyLunGroup(Call &call, qbobj_LunGroup_t *LunGroup)
{
    if (const int rc = require_given(call, LunGroup, "LUN Group"))
        return rc;
    return for_each(LunGroup, modify_group, call);
}

int x_qbobj_deleteLunGroup(Call &call, const char *LunGroupName)
{
    if (const int rc = require_given(call, LunGroupName, "LUN Group Name"))
        return rc;
    return call.exec("Failed DB Query for 'DELETE LunGroup'. %s",
                     "DELETE FROM `$iscsi_lun_group` WHERE name=%Q", LunGroupName);
}

/* ---- Initiators ---------------------------------------------------------------------------------------- */

int x_qbobj_getInitiatorCollection(Call &call, qbobj_InitiatorCollection_t *collection)
{
    if (const int rc = require_given(call, collection, "collection"))
        return rc;
    return call.append(all_initiators, collection->Initiator);
}

int x_qbobj_getInitiator(Call &call, qbobj_Initiator_t *Initiator)
{
    if (const int rc = require_given(call, Initiator, "iSCSI Initiator"))
        return rc;
    return call.require(one_initiator,
                        error(QBOBJ_ERROR_DB_NOTEXISTS,
                              "None of row selected from `$iscsi_initiator` for resource_id=%s.",
                              or_empty(Initiator->Name)),
                        *Initiator, Initiator->Name);
}

int x_qbobj_addInitiator(Call &call, qbobj_Initiator_t *Initiator)
{
    if (const int rc = require_given(call, Initiator, "iSCSI Initiator"))
        return rc;
    return for_each(Initiator, add_initiator, call);
}

int x_qbobj_modifyInitiator(Call &call, qbobj_Initiator_t *Initiator)
{
    if (const int rc = require_given(call, Initiator, "iSCSI Initiator"))
        return rc;
    return for_each(Initiator, modify_initiator, call);
}

int x_qbobj_deleteInitiator(Call &call, const char *Name)
{
    if (const int rc = require_given(call, Name, "iSCSI Initiator Name"))
        return rc;
    return call.exec("Failed DB Query for 'DELETE FROM `$iscsi_initiator`'. %s",
                     "DELETE FROM `$iscsi_initiator` WHERE name=%Q", Name);
}

/* ---- LUNs ---------------------------------------------------------------------------------------------- */

int x_qbobj_getLun(Call &call, qbobj_Lun_t *Lun)
{
    if (const int rc = require_given(call, Lun, "iSCSI LUN"))
        return rc;
    return call.require(one_lun,
                        error(QBOBJ_ERROR_DB_NOTEXISTS,
                              "None of row selected from `$iscsi_lun` for resource_id=%s.",
                              or_empty(Lun->Name)),
                        *Lun, Lun->Name);
}

int x_qbobj_addLun(Call &call, qbobj_Lun_t *Lun)
{
    if (const int rc = require_given(call, Lun, "iSCSI LUN"))
        return rc;
    return for_each(Lun, add_lun, call);
}

int x_qbobj_deleteLun(Call &call, const char *Name)
{
    if (const int rc = require_given(call, Name, "iSCSI LUN Name"))
        return rc;
    return call.exec("Failed DB Query for 'DELETE FROM `$iscsi_lun`'. %s",
                     "DELETE FROM `$iscsi_lun` WHERE name=%Q", Name);
}

/* ---- Identity ------------------------------------------------------------------------------------------ */

int x_qbobj_getLunId(Call &call, const char *lun_name)
{
    if (qbobj_validate_sharename(lun_name, nullptr) != 0) {
        log(call, QBDB_LOG_ERROR, "LUN name '%s' is invalid.", or_empty(lun_name));
        return -2;
    }
    return id_of(call, qbobj_validate_db_lunname, lun_name);
}

int x_qbobj_getLunGroupId(Call &call, const char *lun_group_name)
{
    return id_of(call, qbobj_validate_db_lungroupname, lun_group_name);
}

int x_qbobj_getInitiatorId(Call &call, const char *initiator_name)
{
    if (qbobj_validate_sharename(initiator_name, nullptr) != 0) {
        log(call, QBDB_LOG_ERROR, "Initiator name '%s' is invalid.", or_empty(initiator_name));
        return -2;
    }
    return id_of(call, qbobj_validate_db_initiatorname, initiator_name);
}

} // namespace qbobj
