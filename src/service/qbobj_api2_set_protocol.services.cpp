// The settings of the services, written: what each service checks and stores, side by side.
#include "core/qbobj_util.h"
#include "core/set_list.h"
#include "service/service.h"
#include "validate/validate.h"

#include <cstring>
#include <type_traits>

namespace qbobj
{
namespace
{

using Protocol = qbobj_Protocol_t;
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

/* ---- What is stored as it is given --------------------------------------------------------------------- */

// A member of the record itself, or of its options.
template <auto Options, auto Member>
ValueOf<Member> value_of(const Protocol &protocol)
{
    if constexpr (std::is_same_v<RecordOf<Member>, Protocol>)
        return protocol.*Member;
    else
        return protocol.*Options->*Member;
}

// An UPDATE of a service's row: the members that it stores, its text and its failure.
template <auto Options, auto... Members>
struct Update {
    Statement<ValueOf<Members>...> sql;
    Failure failure;

    int run(Call &call, const Protocol &protocol) const
    {
        return call.exec(failure, sql, value_of<Options, Members>(protocol)...);
    }
};
constexpr std::nullptr_t no_options = nullptr;
constexpr auto enabled = &Protocol::Enabled;

// The options have operations of their own.
constexpr Update<no_options, enabled> cifs_row{"UPDATE service_cifs SET enabled=%d",
                                               "Failed DB Query 'UPDATE service_cifs'. (%s)"};
constexpr Update<no_options, enabled> afp_row{"UPDATE service_afp SET enabled=%d",
                                              "Failed DB Query 'UPDATE service_afp'. (%s)"};
constexpr Update<&Protocol::NfsOptions, enabled, &Nfs::Threads, &Nfs::UserHomeDirectory, &Nfs::NfsV4Enable,
                 &Nfs::NfsV4Domain>
    nfs_row{"UPDATE service_nfs SET enabled=%d,threads=%d,user_home_directory=%d,nfsv4=%d,domain=%Q",
            "Failed DB Query 'UPDATE service_nfs'. (%s)"};
// The homes have an operation of their own.
constexpr Update<&Protocol::FtpOptions, enabled, &Ftp::Port, &Ftp::AuthMode, &Ftp::PassiveRangeMin,
                 &Ftp::PassiveRangeMax, &Ftp::EnableMasquerade, &Ftp::MasqueradeAddress,
                 &Ftp::AllowUploadResume, &Ftp::Ftps, &Ftp::ForceFtps, &Ftp::ServerTransferLog,
                 &Ftp::MaxUploadRate, &Ftp::MaxDownloadRate>
    ftp_row{
        R"(UPDATE service_ftp SET enabled=%d,port=%d,auth_mode=%Q,passive_range_min=%d,passive_range_max=%d,
        enable_masquerade=%d,masquerade=%Q,upload_resume=%d,ftps=%d,force_ftps=%d,server_transfer_log=%d,
        max_upload_rate=%d,max_download_rate=%d)",
        "Failed DB Query 'UPDATE service_ftp'. (%s)"};
constexpr Update<&Protocol::SnmpOptions, enabled, &Snmp::AllowHost, &Snmp::Community, &Snmp::TrapDestination>
    snmp_row{"UPDATE service_snmp SET enabled=%d,allow_host=%Q,community=%Q,trap_destination=%Q",
             "Failed DB Query 'UPDATE service_snmp'. (%s)"};
// Also the switch that the user interface shows.
constexpr Update<&Protocol::SshOptions, enabled, &Ssh::Port, enabled> ssh_row{
    "UPDATE service_ssh SET enabled=%d,port=%d,ui_enabled=%d", "Failed DB Query 'UPDATE service_ssh'. (%s)"};
// The password of the account is not stored.
constexpr Update<&Protocol::ReplicateOptions, enabled, &Replicate::Owner, &Replicate::PrivData> replicate_row{
    "UPDATE service_replicate SET enabled=%d,owner=%Q,priv_data=%Q",
    "Failed DB Query 'UPDATE service_replicate'. (%s)"};
constexpr Update<no_options, enabled> smartnetwork_row{"UPDATE service_smartnetwork SET enabled=%d",
                                                       "Failed DB Query 'UPDATE service_smartnetwork'. (%s)"};
constexpr Update<no_options, enabled> upnpd_row{"UPDATE service_upnpd SET enabled=%d",
                                                "Failed DB Query 'UPDATE service_upnpd'. (%s)"};
constexpr Update<no_options, enabled> rsync_row{"UPDATE service_rsync SET enabled=%d",
                                                "Failed DB Query 'UPDATE service_rsync'. (%s)"};
constexpr Update<&Protocol::DlnaOptions, enabled, &Dlna::AutoScan, &Dlna::EnableTivoServer,
                 &Dlna::EnableTivoArchiver>
    dlna_row{"UPDATE service_dlna SET enabled=%d,inotify=%d,enable_tivo_server=%d,enable_tivo_archiver=%d",
             "Failed DB Query 'UPDATE service_dlna'. (%s)"};
constexpr Update<&Protocol::HttpOptions, enabled, &Http::LoginEnabled, &Http::HttpAdmin, &Http::ShareName>
    http_row{"UPDATE service_http SET enabled=%d,use_password=%d,http_admin=%d,share_name=%Q",
             "Failed DB Query 'UPDATE service_http'. (%s)"};
// Always on: the switch is not stored. Callers know its failure as one of the http table.
constexpr Update<&Protocol::HttpsOptions, &Https::Port, &Https::SslKeyHost> https_row{
    "UPDATE service_https SET port=%d,ssl_key_host=%Q", "Failed DB Query 'UPDATE service_http'. (%s)"};

template <const auto &Row>
int store(Call &call, const Protocol &protocol)
{
    return Row.run(call, protocol);
}

/* ---- What is stored otherwise -------------------------------------------------------------------------- */

int store_daap(Call &call, const Protocol &protocol)
{
    const Daap &daap = *protocol.DaapOptions;
    SetList<512> set(call, Overflow::refuse);
    set.add("enabled=%d", protocol.Enabled);
    set.add("sharename=%Q", daap.sharename);
    if (std::strcmp(daap.password, masked_password) != 0)
        set.add("password=%Q", daap.password);
    if (set.refused() != nullptr)
        return raise_refused(call, set);
    return call.exec("Failed DB Query 'UPDATE service_daap'. (%s)", "UPDATE service_daap SET %s", set.text());
}

// The companion apps are switched along.
int store_smartnetwork(Call &call, const Protocol &protocol)
{
    if (const int rc = call.exec("Failed DB Query 'UPDATE service_misc'. (%s)",
                                 "UPDATE service_misc SET val=%d WHERE key='APPSPRITE'", protocol.Enabled))
        return rc;
    return smartnetwork_row.run(call, protocol);
}

// Without the service nothing is announced.
int store_bonjour(Call &call, const Protocol &protocol)
{
    const Bonjour &bonjour = *protocol.BonjourOptions;
    const auto announced = [&](int flag) { return protocol.Enabled != 0 && flag != 0 ? 1 : 0; };
    return call.exec("Failed DB Query 'UPDATE service_avahi'. (%s)",
                     R"(UPDATE service_avahi SET enabled=%d,cifs=%d,afp=%d,panelview=%d,printer=%d,qubrix=%d,
        timemachine=%d)",
                     protocol.Enabled, announced(bonjour.CifsEnabled), announced(bonjour.AfpEnabled),
                     announced(bonjour.PanelviewEnabled), announced(bonjour.PrinterEnabled),
                     announced(bonjour.QubrixEnabled), announced(bonjour.TimemachineEnabled));
}

constexpr Failure failed_entry("Failed DB Query 'INSERT OR REPLACE service_misc'. (%s)");

int store_antivirus(Call &call, const Protocol &protocol)
{
    return store_entry(call, failed_entry, "ANTIVIRUS", protocol.Enabled);
}

int store_skyport(Call &call, const Protocol &protocol)
{
    return store_entry(call, failed_entry, "SKYPORT", protocol.Enabled);
}

/* ---- What is checked before ---------------------------------------------------------------------------- */

constexpr bool is_within(int value, int least, int most)
{
    return value >= least && value <= most;
}
constexpr int highest_port = 65535;

int check_ftp_port(Call &call, int port)
{
    if (!is_within(port, 1, highest_port))
        return raise(call, QBOBJ_ERROR_UI__FTP_PORT_INVALID, "Invalid Port (%d), 1-65535.", port);
    int stored = 0;
    if (const int rc =
            call.number("Fail DB Query 'SELECT service_ftp'", stored, "SELECT port FROM service_ftp"))
        return rc;
    qbobj_env_t env = call.env();
    if (port != stored && qbobj_util_is_port_used(&env, port) != 0) // the server itself takes the stored one
        return raise(call, QBOBJ_ERROR_UI__FTP_PORT_USED, "Port (%d) is already used.", port);
    return 0;
}

int check_ftp(Call &call, const Protocol &protocol)
{
    static constexpr qbobj_enum_map_t modes[] = {{"anonymous", 0}, {"user", 1}, {nullptr, 0}};
    const Ftp &ftp = *protocol.FtpOptions;
    if (const int rc = check_ftp_port(call, ftp.Port))
        return rc;
    if (!is_within(ftp.PassiveRangeMin, 32768, ftp.PassiveRangeMax) || ftp.PassiveRangeMax > highest_port)
        return raise(call, QBOBJ_ERROR_UI__FTP_PASSIVE_RANGE,
                     "Invalid PassiveRange, 32768-65535 and Min=<Max");
    if (qbobj_validate_enum(ftp.AuthMode, nullptr, modes, nullptr) != 0)
        return raise(call, QBOBJ_ERROR_UI__FTP_AUTH_MODE,
                     "Invalid Authenticat Mode, Either 'anonymous' or 'user'");
    const char *address = ftp.MasqueradeAddress;
    if (address == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "MasqueradeAddress cannot be NULL");
    const bool is_given = *address != '\0' && std::strcmp(address, "0") != 0;
    const bool is_announced = protocol.Enabled != 0 && ftp.EnableMasquerade != 0;
    if (is_given && is_announced && qbobj_validate_host(address) != 0)
        return raise(call, QBOBJ_ERROR_UI__FTP_MASQUERADE, "Invalid Masquerade Address (%s).", address);
    if (!is_within(ftp.MaxUploadRate, 0, 99999) || !is_within(ftp.MaxDownloadRate, 0, 99999))
        return raise(call, QBOBJ_ERROR_UI__FTP_BANDWIDTH, "Invalid MAX Bandwidth, 0-99999.");
    return 0;
}

int check_daap(Call &call, const Protocol &protocol)
{
    const Daap &daap = *protocol.DaapOptions;
    if (is_empty(daap.sharename))
        return raise(call, QBOBJ_ERROR_API_ARGS, "DAAP Sharename cannot be NULL");
    if (daap.password == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "DAAP password cannot be NULL");
    return 0;
}

int check_snmp(Call &call, const Protocol &protocol)
{
    const Snmp &snmp = *protocol.SnmpOptions;
    if (snmp.AllowHost == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "AllowHost cannot be NULL");
    if (const int rc = is_empty(snmp.AllowHost) ? 0 : qbobj_validate_allow_host(call, snmp.AllowHost))
        return raise(call, QBOBJ_ERROR_UI__SNMP_BAD_ALLOWHOST, "Invalid AllowHost (%s) (rc=%d).",
                     snmp.AllowHost, rc);
    if (const int rc = qbobj_validate_community(snmp.Community))
        return raise(call, QBOBJ_ERROR_UI__SNMP_BAD_COMMUNITY, "Invalid Community (%s) (rc=%d).",
                     or_empty(snmp.Community), rc);
    if (snmp.TrapDestination == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "TrapDestination cannot be NULL");
    if (const int rc = is_empty(snmp.TrapDestination) ? 0 : qbobj_validate_ip_csv(call, snmp.TrapDestination))
        return raise(call, QBOBJ_ERROR_UI__SNMP_BAD_TRAPDESTINATION, "Invalid TrapDestination (%s) (rc=%d).",
                     snmp.TrapDestination, rc);
    return 0;
}

int check_ssh(Call &call, const Protocol &protocol)
{
    const int port = protocol.SshOptions->Port;
    if (!is_within(port, 1, highest_port))
        return raise(call, QBOBJ_ERROR_UI__SSH_PORT_INVALID, "Invalid Port (%d), 1-65535.", port);
    return 0;
}

int check_https(Call &call, const Protocol &protocol)
{
    const auto &[port, host] = *protocol.HttpsOptions;
    if (const int rc = qbobj_validate_host(host))
        return raise(call, QBOBJ_ERROR_UI__HTTPS_CERTIFICATE_KEY_HOST,
                     "Invalid SSL Key Host Address (%s)(%d ).", or_empty(host), rc);
    if (port != 0 && !is_within(port, 1024, highest_port))
        return raise(call, QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT, "Invalid Additional https port (%d)(%d ).",
                     port, 0);
    int stored = 0;
    if (const int rc =
            call.number("Fail DB Query 'SELECT service_https'", stored, "SELECT port FROM service_https"))
        return rc;
    if (port != 0 && port != stored && qbobj_validate_unused_tcp_port(port) != 0)
        return raise(call, QBOBJ_ERROR_UI__HTTPS_ADDITIONAL_PORT_IN_USE,
                     "Additional https port in use  (%d)(%d ).", port, 1);
    return 0;
}

int check_nothing(Call &, const Protocol &)
{
    return 0;
}

/* ---- The services -------------------------------------------------------------------------------------- */

struct Service {
    const char *const *id;
    int (*check)(Call &call, const Protocol &protocol);
    int (*store)(Call &call, const Protocol &protocol);
    const char *options = nullptr; // as messages name the record that must be given; null: none must
    bool (*has_options)(const Protocol &protocol) = nullptr;
};

template <auto Options>
bool has(const Protocol &protocol)
{
    return protocol.*Options != nullptr;
}

// In the order in which a record of several names is matched.
constexpr Service services[] = {
    {&protocol_id_cifs, check_nothing, store<cifs_row>},
    {&protocol_id_afp, check_nothing, store<afp_row>},
    {&protocol_id_nfs, check_nothing, store<nfs_row>, "NfsOptions", has<&Protocol::NfsOptions>},
    {&protocol_id_ftp, check_ftp, store<ftp_row>, "FtpOptions", has<&Protocol::FtpOptions>},
    // Callers know its options by the other name.
    {&protocol_id_daap, check_daap, store_daap, "DlnaOptions", has<&Protocol::DaapOptions>},
    {&protocol_id_snmp, check_snmp, store<snmp_row>, "SnmpOptions", has<&Protocol::SnmpOptions>},
    {&protocol_id_ssh, check_ssh, store<ssh_row>, "SshOptions", has<&Protocol::SshOptions>},
    {&protocol_id_replicate, check_nothing, store<replicate_row>, "ReplicateOptions",
     has<&Protocol::ReplicateOptions>},
    {&protocol_id_smartnetwork, check_nothing, store_smartnetwork},
    {&protocol_id_upnpd, check_nothing, store<upnpd_row>},
    {&protocol_id_rsync, check_nothing, store<rsync_row>},
    {&protocol_id_dlna, check_nothing, store<dlna_row>, "DlnaOptions", has<&Protocol::DlnaOptions>},
    {&protocol_id_http, check_nothing, store<http_row>, "HttpOptions", has<&Protocol::HttpOptions>},
    {&protocol_id_https, check_https, store<https_row>, "HttpsOptions", has<&Protocol::HttpsOptions>},
    {&protocol_id_bonjour, check_nothing, store_bonjour, "BonjourOptions", has<&Protocol::BonjourOptions>},
    {&protocol_id_antivirus, check_nothing, store_antivirus},
    {&protocol_id_skyport, check_nothing, store_skyport},
};

} // namespace

bool is_protocol(const qbobj_Protocol_t &protocol, const char *id)
{
    const auto is_id = [&](const char *key) {
        return key != nullptr && *key == *id && std::strcmp(key, id) == 0;
    };
    return is_id(protocol.resource_id) || is_id(protocol.ProtocolId) || is_id(protocol.ProtocolName);
}

int store_entry(Call &call, const Failure &failure, const char *key, int value)
{
    return call.exec(failure, "INSERT OR REPLACE INTO service_misc (key,val) VALUES(%Q,%Q)", key,
                     print(call, "%d", value));
}

int store_protocol(Call &call, const qbobj_Protocol_t &protocol)
{
    for (const Service &service : services) {
        if (!is_protocol(protocol, *service.id))
            continue;
        if (service.options != nullptr && !service.has_options(protocol))
            return raise(call, QBOBJ_ERROR_API_ARGS, "%s cannot be NULL", service.options);
        const int rc = service.check(call, protocol);
        return rc != 0 ? rc : service.store(call, protocol);
    }
    return 0;
}

} // namespace qbobj
