// The settings of the services, read: one SELECT a service, and one loop over them.
#include "service/service.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace qbobj
{
namespace
{

using Protocol = qbobj_Protocol_t;
using Cifs = qbobj_CifsOptions_t;
using Nfs = qbobj_NfsOptions_t;
using Ftp = qbobj_FtpOptions_t;
using Daap = qbobj_DaapOptions_t;
using Snmp = qbobj_SnmpOptions_t;
using Ssh = qbobj_SshOptions_t;
using Replicate = qbobj_ReplicateOptions_t;
using Dlna = qbobj_DlnaOptions_t;
using Http = qbobj_HttpOptions_t;
using Https = qbobj_HttpsOptions_t;
using Bonjour = qbobj_BonjourOptions_t;
using Home = qbobj_HomeFolderOptions_t;

/* ---- Columns that are not shown as they are stored ----------------------------------------------------- */

constexpr auto masked = [](const qbobj_env_t &, Daap &daap, const char *cell) {
    daap.password = is_empty(cell) ? empty_str : masked_password;
};

constexpr auto port_or_22 = [](const qbobj_env_t &, Ssh &ssh, const char *cell) {
    const int port = to_int(cell);
    ssh.Port = port < 1 ? 22 : port;
};

// Its row alone says that the service is on: it cannot be switched off.
constexpr auto always_on = [](const qbobj_env_t &, Protocol &protocol, const char *) {
    protocol.Enabled = 1;
};

/* ---- The services -------------------------------------------------------------------------------------- */

// A switch, then the columns of the service's options.
template <auto Options, class... Columns>
consteval auto service(Statement<> sql, Failure failure, Columns... columns)
{
    return select<>(sql, failure, &Protocol::Enabled, of(Options, columns)...);
}

constexpr auto cifs_row = service<&Protocol::CifsOptions>(
    R"(SELECT S.enabled,S.user_home_directory,S.user_home_directory_recycle,
        S.user_home_directory_recycle_max_days,S.user_home_directory_recycle_max_size FROM service_cifs S LIMIT 1)",
    "Failed DB Query 'SELECT service_cifs'. (%s)", &Cifs::UserHomeDirectory, &Cifs::UserHomeDirectoryRecycle,
    &Cifs::UserHomeDirectoryRecycleMaxDays, &Cifs::UserHomeDirectoryRecycleMaxSize);

constexpr auto afp_row = select<>("SELECT S.enabled FROM service_afp S LIMIT 1",
                                  "Failed DB Query 'SELECT service_afp'. (%s)", &Protocol::Enabled);

constexpr auto nfs_row = service<&Protocol::NfsOptions>(
    "SELECT S.enabled,S.threads,S.user_home_directory,S.nfsv4,S.domain FROM service_nfs S LIMIT 1",
    "Failed DB Query 'SELECT service_nfs'. (%s)", &Nfs::Threads, &Nfs::UserHomeDirectory, &Nfs::NfsV4Enable,
    or_empty(&Nfs::NfsV4Domain));

constexpr auto ftp_row = service<&Protocol::FtpOptions>(
    R"(SELECT S.enabled,S.port,S.auth_mode,S.passive_range_min,S.passive_range_max,S.enable_masquerade,S.masquerade,
        S.upload_resume,S.user_home_directory,S.ftps,S.server_transfer_log,S.max_upload_rate,S.max_download_rate,
        S.force_ftps FROM service_ftp S LIMIT 1)",
    "Failed DB Query 'SELECT service_ftp'. (%s)", &Ftp::Port, &Ftp::AuthMode, &Ftp::PassiveRangeMin,
    &Ftp::PassiveRangeMax, &Ftp::EnableMasquerade, &Ftp::MasqueradeAddress, &Ftp::AllowUploadResume,
    &Ftp::UserHomeDirectory, &Ftp::Ftps, &Ftp::ServerTransferLog, &Ftp::MaxUploadRate, &Ftp::MaxDownloadRate,
    &Ftp::ForceFtps);

constexpr auto daap_row = service<&Protocol::DaapOptions>(
    "SELECT S.enabled,S.sharename,S.password,S.directory FROM service_daap S LIMIT 1",
    "Failed DB Query 'SELECT service_daap'. (%s)", &Daap::sharename, masked, &Daap::directory);

constexpr auto snmp_row = service<&Protocol::SnmpOptions>(
    R"(SELECT S.enabled,CASE WHEN S.allow_host='default' THEN '' ELSE S.allow_host END,S.community,
        S.trap_destination FROM service_snmp S LIMIT 1)",
    "Failed DB Query 'SELECT service_snmp'. (%s)", &Snmp::AllowHost, &Snmp::Community,
    &Snmp::TrapDestination);

// The record's switch is the one that the user interface shows.
constexpr auto ssh_row =
    select<>("SELECT S.enabled,IFNULL(S.port,22),S.ui_enabled FROM service_ssh S LIMIT 1",
             "Failed DB Query 'SELECT service_ssh'. (%s)", skipped, of(&Protocol::SshOptions, port_or_22),
             &Protocol::Enabled);

// The password of the account is not stored.
constexpr auto replicate_row = service<&Protocol::ReplicateOptions>(
    "SELECT S.enabled,S.owner,S.priv_data FROM service_replicate S LIMIT 1",
    "Failed DB Query 'SELECT service_replicate'. (%s)", &Replicate::Owner, &Replicate::PrivData);

constexpr auto smartnetwork_row =
    select<>("SELECT S.enabled FROM service_smartnetwork S LIMIT 1",
             "Failed DB Query 'SELECT service_smartnetwork'. (%s)", &Protocol::Enabled);

constexpr auto upnpd_row = select<>("SELECT S.enabled FROM service_upnpd S LIMIT 1",
                                    "Failed DB Query 'SELECT service_upnpd'. (%s)", &Protocol::Enabled);

constexpr auto rsync_row = select<>("SELECT S.enabled FROM service_rsync S LIMIT 1",
                                    "Failed DB Query 'SELECT service_rsync'. (%s)", &Protocol::Enabled);

constexpr auto dlna_row = service<&Protocol::DlnaOptions>(
    "SELECT S.enabled,S.inotify,S.enable_tivo_server,S.enable_tivo_archiver FROM service_dlna S LIMIT 1",
    "Failed DB Query 'SELECT service_dlna'. (%s)", &Dlna::AutoScan, &Dlna::EnableTivoServer,
    &Dlna::EnableTivoArchiver);

constexpr auto http_row = service<&Protocol::HttpOptions>(
    "SELECT H.enabled,H.use_password,H.share_name,H.http_admin FROM service_http H LIMIT 1",
    "Failed DB Query 'SELECT service_http'. (%s)", &Http::LoginEnabled, &Http::ShareName, &Http::HttpAdmin);

// Callers know its failure as one of the http table.
constexpr auto https_row = select<>("SELECT H.port,H.ssl_key_host FROM service_https H LIMIT 1",
                                    "Failed DB Query 'SELECT service_http'. (%s)",
                                    both(of(&Protocol::HttpsOptions, &Https::Port), always_on),
                                    of(&Protocol::HttpsOptions, &Https::SslKeyHost));

constexpr auto antivirus_row = select<>("SELECT S.val FROM service_misc S WHERE key='ANTIVIRUS'",
                                        "Failed DB Query 'SELECT service_misc'. (%s)", &Protocol::Enabled);

constexpr auto skyport_row = select<>("SELECT S.val FROM service_misc S WHERE key='SKYPORT'",
                                      "Failed DB Query 'SELECT service_misc'. (%s)", &Protocol::Enabled);

constexpr auto bonjour_row = service<&Protocol::BonjourOptions>(
    "SELECT S.enabled,S.cifs,S.afp,S.panelview,S.printer,S.qubrix,S.timemachine FROM service_avahi S LIMIT 1",
    "Failed DB Query 'SELECT service_avahi'. (%s)", &Bonjour::CifsEnabled, &Bonjour::AfpEnabled,
    &Bonjour::PanelviewEnabled, &Bonjour::PrinterEnabled, &Bonjour::QubrixEnabled,
    &Bonjour::TimemachineEnabled);

/* ---- Reading them -------------------------------------------------------------------------------------- */

template <const auto &Row>
int find(Call &call, Protocol &protocol, bool &found)
{
    return call.find(Row, protocol, found);
}

// The system knows better what the row should say; where it cannot be asked, the row stands.
int find_replicate(Call &call, Protocol &protocol, bool &found)
{
    qbdb_import_nolock(call.qbdb(), call.db(), QBDB_CAT_REPLICATE_SERVICE);
    return call.find(replicate_row, protocol, found);
}

// Where a service is shown.
enum class Shown { everywhere, in_the_collection, by_its_name };
// When its record carries the identifier as its name.
enum class Named { always, with_a_row };

struct Service {
    const char *const *id;
    int (*find)(Call &call, Protocol &protocol, bool &found);
    Named named = Named::always;
    Shown shown = Shown::everywhere;
};

// In the order of the collection.
constexpr Service services[] = {
    {&protocol_id_cifs, find<cifs_row>},
    {&protocol_id_afp, find<afp_row>},
    {&protocol_id_nfs, find<nfs_row>},
    {&protocol_id_ftp, find<ftp_row>},
    {&protocol_id_daap, find<daap_row>},
    {&protocol_id_snmp, find<snmp_row>},
    {&protocol_id_ssh, find<ssh_row>},
    {&protocol_id_replicate, find_replicate},
    {&protocol_id_smartnetwork, find<smartnetwork_row>},
    {&protocol_id_upnpd, find<upnpd_row>, Named::always, Shown::in_the_collection},
    {&protocol_id_rsync, find<rsync_row>},
    {&protocol_id_dlna, find<dlna_row>},
    {&protocol_id_http, find<http_row>, Named::with_a_row},
    {&protocol_id_https, find<https_row>, Named::with_a_row},
    {&protocol_id_antivirus, find<antivirus_row>, Named::with_a_row},
    {&protocol_id_skyport, find<skyport_row>, Named::with_a_row},
    {&protocol_id_bonjour, find<bonjour_row>, Named::always, Shown::by_its_name},
};

// The record stands in the list before it is read: a failure leaves it there with its key alone.
int append(Call &call, const Service &service, Tail<Protocol> &tail)
{
    Protocol &protocol = tail.append(call.pool());
    protocol.resource_id = *service.id;
    bool found = false;
    if (const int rc = service.find(call, protocol, found))
        return rc;
    if (found || service.named == Named::always)
        protocol.ProtocolId = protocol.ProtocolName = *service.id;
    return 0;
}

/* ---- Homes --------------------------------------------------------------------------------------------- */

constexpr auto home_switches = select<>(
    R"(SELECT (SELECT CIFS.user_home_directory FROM service_cifs CIFS LIMIT 1),
        (SELECT NFS.user_home_directory FROM service_nfs NFS LIMIT 1),
        (SELECT FTP.user_home_directory FROM service_ftp FTP LIMIT 1),
        (SELECT DLNA.user_home_directory FROM service_dlna DLNA LIMIT 1),
        (SELECT AFP.user_home_directory FROM service_afp AFP LIMIT 1))",
    "Failed DB Query for 'SELECT FROM service_xxx'. nrow=0 %s", &Home::UserHomeDirectory,
    &Home::NfsUserHomeDirectory, &Home::FtpUserHomeDirectory, &Home::DlnaUserHomeDirectory,
    &Home::AfpUserHomeDirectory);

} // namespace

int x_qbobj_getProtocolCollection(Call &call, qbobj_ProtocolCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    Tail<Protocol> tail(collection->Protocol);
    for (const Service &service : services) {
        if (service.shown == Shown::by_its_name)
            continue;
        if (const int rc = append(call, service, tail))
            return rc;
    }
    return 0;
}

int x_qbobj_getProtocol(Call &call, const char *ProtocolName, qbobj_Protocol_t **protocol)
{
    if (protocol == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "protocol cannot be NULL.");
    const std::string_view name = or_empty(ProtocolName);
    const auto service = std::ranges::find_if(services, [&](const Service &candidate) {
        return candidate.shown != Shown::in_the_collection && name == *candidate.id;
    });
    if (service == std::end(services))
        return raise(call, QBOBJ_ERROR_API_ARGS, "Unknojwn protocol name %s\n", or_empty(ProtocolName));
    Protocol *head = nullptr;
    Tail<Protocol> tail(head);
    if (const int rc = append(call, *service, tail))
        return rc;
    *protocol = head;
    return 0;
}

int x_qbobj_getSnmpOptions(Call &call, qbobj_SnmpOptions_t **snmp_opts)
{
    if (snmp_opts == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "snmp_opts cannot be NULL.");
    Protocol snmp{};
    if (const int rc = call.read(snmp_row, snmp))
        return rc;
    if (snmp.Enabled != 0)
        *snmp_opts = snmp.SnmpOptions;
    return 0;
}

int x_qbobj_getHomeFolderOptions(Call &call, qbobj_HomeFolderOptions_t *opts)
{
    if (opts == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "opts cannot be NULL.");
    return call.require(
        home_switches,
        error(QBOBJ_ERROR_DB_MISC, "Failed DB Query for 'SELECT FROM service_xxx'. nrow=%d %s", 0, ""),
        *opts);
}

} // namespace qbobj
