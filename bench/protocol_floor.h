// The settings of the services read and stored as a hand-written program would, on kept statements.
#pragma once

#include "lookup.h"

#include <string>

namespace qbobj_bench
{

class ProtocolFloor
{
  public:
    explicit ProtocolFloor(const Connection &connection) : connection_(connection) {}

    // The sixteen services of the collection.
    void read_all(qbobj_ProtocolCollection_t &collection) const;
    // All seventeen, checked and marked by nobody.
    void store_all(const qbobj_ProtocolCollection_t &collection) const;

  private:
    void read(Tail<qbobj_Protocol_t> &tail) const;
    void store(const qbobj_Protocol_t &protocol) const;
    void store_file_service(const qbobj_Protocol_t &protocol) const;
    Kept enabled(const char *table) const;
    Kept enable(const char *table) const;

    const Connection &connection_;
    Transactions transactions_{connection_};

    Kept cifs_{connection_, "SELECT S.enabled,S.user_home_directory,S.user_home_directory_recycle,"
                            "S.user_home_directory_recycle_max_days,S.user_home_directory_recycle_max_size "
                            "FROM service_cifs S LIMIT 1"};
    Kept afp_ = enabled("afp");
    Kept nfs_{connection_,
              "SELECT S.enabled,S.threads,S.user_home_directory,S.nfsv4,S.domain FROM service_nfs S LIMIT 1"};
    Kept ftp_{connection_, R"(SELECT S.enabled,S.port,S.auth_mode,S.passive_range_min,S.passive_range_max,
        S.enable_masquerade,S.masquerade,S.upload_resume,S.user_home_directory,S.ftps,S.server_transfer_log,
        S.max_upload_rate,S.max_download_rate,S.force_ftps FROM service_ftp S LIMIT 1)"};
    Kept daap_{connection_,
               "SELECT S.enabled,S.sharename,S.password,S.directory FROM service_daap S LIMIT 1"};
    Kept snmp_{connection_,
               R"(SELECT S.enabled,CASE WHEN S.allow_host='default' THEN '' ELSE S.allow_host END,
        S.community,S.trap_destination FROM service_snmp S LIMIT 1)"};
    Kept ssh_{connection_, "SELECT S.enabled,IFNULL(S.port,22),S.ui_enabled FROM service_ssh S LIMIT 1"};
    Kept replicate_{connection_, "SELECT S.enabled,S.owner,S.priv_data FROM service_replicate S LIMIT 1"};
    Kept smartnetwork_ = enabled("smartnetwork");
    Kept upnpd_ = enabled("upnpd");
    Kept rsync_ = enabled("rsync");
    Kept dlna_{connection_, "SELECT S.enabled,S.inotify,S.enable_tivo_server,S.enable_tivo_archiver "
                            "FROM service_dlna S LIMIT 1"};
    Kept http_{connection_,
               "SELECT H.enabled,H.use_password,H.share_name,H.http_admin FROM service_http H LIMIT 1"};
    Kept https_{connection_, "SELECT H.port,H.ssl_key_host FROM service_https H LIMIT 1"};
    Kept entry_{connection_, "SELECT S.val FROM service_misc S WHERE key=%Q"};

    Kept ftp_port_{connection_, "SELECT port FROM service_ftp"};
    Kept https_port_{connection_, "SELECT port FROM service_https"};
    Kept set_cifs_ = enable("cifs");
    Kept set_afp_ = enable("afp");
    Kept set_nfs_{connection_,
                  "UPDATE service_nfs SET enabled=%d,threads=%d,user_home_directory=%d,nfsv4=%d,domain=%Q"};
    Kept set_ftp_{connection_, R"(UPDATE service_ftp SET enabled=%d,port=%d,auth_mode=%Q,passive_range_min=%d,
        passive_range_max=%d,enable_masquerade=%d,masquerade=%Q,upload_resume=%d,ftps=%d,force_ftps=%d,
        server_transfer_log=%d,max_upload_rate=%d,max_download_rate=%d)"};
    Kept set_daap_{connection_, "UPDATE service_daap SET enabled=%d,sharename=%Q,password=%Q"};
    Kept set_snmp_{connection_,
                   "UPDATE service_snmp SET enabled=%d,allow_host=%Q,community=%Q,trap_destination=%Q"};
    Kept set_ssh_{connection_, "UPDATE service_ssh SET enabled=%d,port=%d,ui_enabled=%d"};
    Kept set_replicate_{connection_, "UPDATE service_replicate SET enabled=%d,owner=%Q,priv_data=%Q"};
    Kept set_apps_{connection_, "UPDATE service_misc SET val=%d WHERE key='APPSPRITE'"};
    Kept set_smartnetwork_ = enable("smartnetwork");
    Kept set_upnpd_ = enable("upnpd");
    Kept set_rsync_ = enable("rsync");
    Kept set_dlna_{connection_, "UPDATE service_dlna SET enabled=%d,inotify=%d,enable_tivo_server=%d,"
                                "enable_tivo_archiver=%d"};
    Kept set_http_{connection_,
                   "UPDATE service_http SET enabled=%d,use_password=%d,http_admin=%d,share_name=%Q"};
    Kept set_https_{connection_, "UPDATE service_https SET port=%d,ssl_key_host=%Q"};
    Kept set_avahi_{connection_, "UPDATE service_avahi SET enabled=%d,cifs=%d,afp=%d,panelview=%d,printer=%d,"
                                 "qubrix=%d,timemachine=%d"};
    Kept set_entry_{connection_, "INSERT OR REPLACE INTO service_misc (key,val) VALUES(%Q,%d)"};
};

} // namespace qbobj_bench
