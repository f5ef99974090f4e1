// The settings of the services, written: whole collections with a mark on what changed, single switches, and the
// switches of users' homes.
#include "core/change_tracking.h"
#include "service/service.h"

#include <string_view>

namespace qbobj
{
namespace
{

using Protocol = qbobj_Protocol_t;
using Home = qbobj_HomeFolderOptions_t;

/* ---- What a collection changed ------------------------------------------------------------------------- */

constexpr const char *service_tables[] = {
    "service_cifs",  "service_afp",          "service_nfs",   "service_ftp",
    "service_daap",  "service_snmp",         "service_ssh",   "service_replicate",
    "service_dlna",  "service_upnpd",        "service_http",  "service_https",
    "service_rsync", "service_smartnetwork", "service_avahi", nullptr};
constexpr WatchedTables watched{"_setprotocol_", service_tables, "the services"};

struct StoredService {
    const char *const *id;
    const char *table;
};

// In the order in which a record of several names is matched with its table.
constexpr StoredService stored_services[] = {
    {&protocol_id_cifs, "service_cifs"},     {&protocol_id_afp, "service_afp"},
    {&protocol_id_nfs, "service_nfs"},       {&protocol_id_ftp, "service_ftp"},
    {&protocol_id_daap, "service_daap"},     {&protocol_id_snmp, "service_snmp"},
    {&protocol_id_ssh, "service_ssh"},       {&protocol_id_replicate, "service_replicate"},
    {&protocol_id_bonjour, "service_avahi"}, {&protocol_id_smartnetwork, "service_smartnetwork"},
    {&protocol_id_upnpd, "service_upnpd"},   {&protocol_id_rsync, "service_rsync"},
    {&protocol_id_dlna, "service_dlna"},     {&protocol_id_http, "service_http"},
    {&protocol_id_https, "service_https"},
};

// The services that are settings entries; an entry that is missing or cannot be read counts as 0.
struct Entries {
    explicit Entries(Call &call) : antivirus(value(call, "ANTIVIRUS")), skyport(value(call, "SKYPORT")) {}

    int antivirus;
    int skyport;

  private:
    static int value(Call &call, const char *key)
    {
        const Number number = call.ask_number("SELECT val FROM service_misc WHERE key=%Q", key);
        return number ? number.value : 0;
    }
};

bool contains(const char *const *tables, std::string_view table)
{
    while (*tables != nullptr && table != *tables)
        ++tables;
    return *tables != nullptr;
}

bool has_changed(const Protocol &protocol, const char *const *changed_tables, const Entries &before)
{
    for (const StoredService &service : stored_services)
        if (is_protocol(protocol, *service.id))
            return contains(changed_tables, service.table);
    if (is_protocol(protocol, protocol_id_antivirus))
        return protocol.Enabled != before.antivirus;
    if (is_protocol(protocol, protocol_id_skyport))
        return protocol.Enabled != before.skyport;
    return false;
}

/* ---- Homes --------------------------------------------------------------------------------------------- */

struct HomeSwitch {
    Statement<int> sql;
    int Home::*member;
};
constexpr HomeSwitch home_switches[] = {
    {"UPDATE service_cifs SET user_home_directory=%d", &Home::UserHomeDirectory},
    {"UPDATE service_nfs SET user_home_directory=%d", &Home::NfsUserHomeDirectory},
    {"UPDATE service_ftp SET user_home_directory=%d", &Home::FtpUserHomeDirectory},
    {"UPDATE service_dlna SET user_home_directory=%d", &Home::DlnaUserHomeDirectory},
    {"UPDATE service_afp SET user_home_directory=%d", &Home::AfpUserHomeDirectory},
};

} // namespace

int x_qbobj_setProtocolCollection(Call &call, qbobj_ProtocolCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    const char *error = nullptr;
    // Callers do not treat these failures as errors: without the copies nothing is stored, without the comparison
    // nothing is marked.
    if (copy_tables(call, watched, &error) != 0) {
        log(call, QBDB_LOG_WARN, "The settings of the services are not stored: no copies of them. %s\n",
            error);
        return 0;
    }
    const Entries before(call);
    for (const Protocol &protocol : Chain(collection->Protocol))
        if (const int rc = store_protocol(call, protocol))
            return rc;

    const char *const *changed_tables = nullptr;
    if (compare_tables(call, watched, changed_tables, &error) != 0) {
        log(call, QBDB_LOG_WARN, "Which services have changed cannot be told. %s\n", error);
        return 0;
    }
    for (Protocol &protocol : Chain(collection->Protocol))
        protocol.Changed |= has_changed(protocol, changed_tables, before) ? 1 : 0;
    if (drop_copies(call, watched, &error) != 0) {
        log(call, QBDB_LOG_ERROR, "Error in qbdb_sql_delete_tables()\n");
        return QBOBJ_ERROR_SIGSEGV; // callers know this code, with an empty record
    }
    return 0;
}

int x_qbobj_setProtocolEnable(Call &call, const char *protocol, int enable)
{
    if (protocol == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "protocol cannot be NULL");
    static constexpr Failure failure("Failed DB Query 'INSERT OR REPLACE service_xxx'. (%s)");
    const int enabled = enable != 0 ? 1 : 0;
    const std::string_view id = protocol;
    if (id == protocol_id_antivirus)
        return store_entry(call, failure, "ANTIVIRUS", enabled);
    if (id == protocol_id_skyport)
        return store_entry(call, failure, "SKYPORT", enabled);
    if (id == protocol_id_smartnetwork)
        if (const int rc = store_entry(call, failure, "APPSPRITE", enabled))
            return rc;
    // The caller's word names the table; one that names none fails here.
    return call.exec(failure, R"(UPDATE "service_%w" SET enabled=%d)", protocol, enabled);
}

int x_qbobj_setHomeFolderOptions(Call &call, qbobj_HomeFolderOptions_t *opts)
{
    if (opts == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "opts cannot be NULL.");
    for (const HomeSwitch &home : home_switches)
        if (const int rc =
                call.exec("Failed DB Query for 'UPDATE service_xxx' %s", home.sql, opts->*home.member))
            return rc;
    return 0;
}

} // namespace qbobj
