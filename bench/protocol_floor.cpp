// The settings of the services by hand.
#include "protocol_floor.h"

#include <string_view>
#include <type_traits>

namespace qbobj_bench
{
Kept ProtocolFloor::enabled(const char *table) const
{
    return {connection_, std::string("SELECT S.enabled FROM service_") + table + " S LIMIT 1"};
}

Kept ProtocolFloor::enable(const char *table) const
{
    return {connection_, std::string("UPDATE service_") + table + " SET enabled=%d"};
}

void ProtocolFloor::read_all(qbobj_ProtocolCollection_t &collection) const
{
    transactions_.run([&] {
        Tail<qbobj_Protocol_t> tail(connection_.qbdb->pool, collection.Protocol);
        read(tail);
    });
}

void ProtocolFloor::read(Tail<qbobj_Protocol_t> &tail) const
{
    apr_pool_t *const pool = connection_.qbdb->pool;
    const auto append = [&](const char *id) -> qbobj_Protocol_t & {
        qbobj_Protocol_t &protocol = tail.append();
        protocol.resource_id = protocol.ProtocolId = protocol.ProtocolName = id;
        return protocol;
    };
    const auto read_switch = [&](const char *id, KeptRows row) {
        qbobj_Protocol_t &protocol = append(id);
        if (row.next())
            row >> protocol.Enabled;
    };
    const auto read_options = [&](const char *id, KeptRows row, auto member, auto read_columns) {
        qbobj_Protocol_t &protocol = append(id);
        if (!row.next())
            return;
        protocol.*member =
            create<std::remove_pointer_t<std::remove_reference_t<decltype(protocol.*member)>>>(pool);
        read_columns(row, protocol, *(protocol.*member));
    };
    using Protocol = qbobj_Protocol_t;
    read_options(protocol_id_cifs, cifs_(), &Protocol::CifsOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.UserHomeDirectory >> o.UserHomeDirectoryRecycle >>
            o.UserHomeDirectoryRecycleMaxDays >> o.UserHomeDirectoryRecycleMaxSize;
    });
    read_switch(protocol_id_afp, afp_());
    read_options(protocol_id_nfs, nfs_(), &Protocol::NfsOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.Threads >> o.UserHomeDirectory >> o.NfsV4Enable >> OrEmpty{o.NfsV4Domain};
    });
    read_options(protocol_id_ftp, ftp_(), &Protocol::FtpOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.Port >> o.AuthMode >> o.PassiveRangeMin >> o.PassiveRangeMax >>
            o.EnableMasquerade >> o.MasqueradeAddress >> o.AllowUploadResume >> o.UserHomeDirectory >>
            o.Ftps >> o.ServerTransferLog >> o.MaxUploadRate >> o.MaxDownloadRate >> o.ForceFtps;
    });
    read_options(protocol_id_daap, daap_(), &Protocol::DaapOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.sharename >> OrEmpty{o.password} >> o.directory;
        o.password = *o.password == '\0' ? empty_str : masked_password;
    });
    read_options(protocol_id_snmp, snmp_(), &Protocol::SnmpOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.AllowHost >> o.Community >> o.TrapDestination;
    });
    read_options(protocol_id_ssh, ssh_(), &Protocol::SshOptions,
                 [](auto &row, auto &p, auto &o) { row.skip(1) >> o.Port >> p.Enabled; });
    read_options(protocol_id_replicate, replicate_(), &Protocol::ReplicateOptions,
                 [](auto &row, auto &p, auto &o) { row >> p.Enabled >> o.Owner >> o.PrivData; });
    read_switch(protocol_id_smartnetwork, smartnetwork_());
    read_switch(protocol_id_upnpd, upnpd_());
    read_switch(protocol_id_rsync, rsync_());
    read_options(protocol_id_dlna, dlna_(), &Protocol::DlnaOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.AutoScan >> o.EnableTivoServer >> o.EnableTivoArchiver;
    });
    read_options(protocol_id_http, http_(), &Protocol::HttpOptions, [](auto &row, auto &p, auto &o) {
        row >> p.Enabled >> o.LoginEnabled >> o.ShareName >> o.HttpAdmin;
    });
    read_options(protocol_id_https, https_(), &Protocol::HttpsOptions, [](auto &row, auto &p, auto &o) {
        row >> o.Port >> o.SslKeyHost;
        p.Enabled = 1;
    });
    read_switch(protocol_id_antivirus, entry_("ANTIVIRUS"));
    read_switch(protocol_id_skyport, entry_("SKYPORT"));
}

void ProtocolFloor::store_all(const qbobj_ProtocolCollection_t &collection) const
{
    transactions_.run([&] {
        finish(entry_("ANTIVIRUS"));
        finish(entry_("SKYPORT"));
        for (const qbobj_Protocol_t *protocol = collection.Protocol; protocol != nullptr;
             protocol = protocol->_link)
            store(*protocol);
    });
}

void ProtocolFloor::store(const qbobj_Protocol_t &p) const
{
    const std::string_view id = p.ProtocolId;
    if (const auto *o = p.SnmpOptions)
        finish(set_snmp_(p.Enabled, o->AllowHost, o->Community, o->TrapDestination));
    else if (const auto *ssh = p.SshOptions)
        finish(set_ssh_(p.Enabled, ssh->Port, p.Enabled));
    else if (const auto *replicate = p.ReplicateOptions)
        finish(set_replicate_(p.Enabled, replicate->Owner, replicate->PrivData));
    else if (const auto *dlna = p.DlnaOptions)
        finish(set_dlna_(p.Enabled, dlna->AutoScan, dlna->EnableTivoServer, dlna->EnableTivoArchiver));
    else if (const auto *bonjour = p.BonjourOptions)
        finish(set_avahi_(p.Enabled, bonjour->CifsEnabled, bonjour->AfpEnabled, bonjour->PanelviewEnabled,
                          bonjour->PrinterEnabled, bonjour->QubrixEnabled, bonjour->TimemachineEnabled));
    else if (id == protocol_id_upnpd)
        finish(set_upnpd_(p.Enabled));
    else if (id == protocol_id_antivirus)
        finish(set_entry_("ANTIVIRUS", p.Enabled));
    else if (id == protocol_id_skyport)
        finish(set_entry_("SKYPORT", p.Enabled));
    else if (id == protocol_id_smartnetwork) {
        finish(set_apps_(p.Enabled));
        finish(set_smartnetwork_(p.Enabled));
    } else
        store_file_service(p);
}

void ProtocolFloor::store_file_service(const qbobj_Protocol_t &p) const
{
    if (p.CifsOptions != nullptr)
        finish(set_cifs_(p.Enabled));
    else if (const auto *nfs = p.NfsOptions)
        finish(set_nfs_(p.Enabled, nfs->Threads, nfs->UserHomeDirectory, nfs->NfsV4Enable, nfs->NfsV4Domain));
    else if (const auto *ftp = p.FtpOptions) {
        finish(ftp_port_());
        finish(set_ftp_(p.Enabled, ftp->Port, ftp->AuthMode, ftp->PassiveRangeMin, ftp->PassiveRangeMax,
                        ftp->EnableMasquerade, ftp->MasqueradeAddress, ftp->AllowUploadResume, ftp->Ftps,
                        ftp->ForceFtps, ftp->ServerTransferLog, ftp->MaxUploadRate, ftp->MaxDownloadRate));
    } else if (const auto *daap = p.DaapOptions)
        finish(set_daap_(p.Enabled, daap->sharename, daap->password));
    else if (const auto *http = p.HttpOptions)
        finish(set_http_(p.Enabled, http->LoginEnabled, http->HttpAdmin, http->ShareName));
    else if (const auto *https = p.HttpsOptions) {
        finish(https_port_());
        finish(set_https_(https->Port, https->SslKeyHost));
    } else if (p.ProtocolId == std::string_view(protocol_id_afp))
        finish(set_afp_(p.Enabled));
    else
        finish(set_rsync_(p.Enabled));
}

} // namespace qbobj_bench
