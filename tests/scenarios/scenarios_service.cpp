// A call of every operation on the settings of the services.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

std::vector<Scenario> protocol_scenarios()
{
    return {
        {"getProtocolCollection", nullptr},
        {"getProtocol", {{"ProtocolName", "replicate"}}},
        {"getSnmpOptions", nullptr},
        {"getHomeFolderOptions", nullptr},
        {"setProtocolCollection", Json::parse(R"({"Protocol": [
            {"ProtocolId": "cifs", "Enabled": 1},
            {"ProtocolId": "afp", "Enabled": 1},
            {"ProtocolId": "nfs", "Enabled": 1, "NfsOptions": {"Threads": 4, "NfsV4Domain": "office.example"}},
            {"ProtocolId": "ftp", "Enabled": 1, "FtpOptions": {"Port": 2121, "AuthMode": "user",
                "PassiveRangeMin": 40000, "PassiveRangeMax": 40100, "EnableMasquerade": 1,
                "MasqueradeAddress": "ftp.office.example"}},
            {"ProtocolId": "daap", "Enabled": 1, "DaapOptions": {"sharename": "Music", "password": "sing"}},
            {"ProtocolId": "snmp", "Enabled": 1, "SnmpOptions": {"AllowHost": "10.0.0.0/24,pc1.office",
                "Community": "office", "TrapDestination": "10.0.0.7"}},
            {"ProtocolId": "ssh", "Enabled": 1, "SshOptions": {"Port": 2222}},
            {"ProtocolId": "replicate", "Enabled": 1, "ReplicateOptions": {"Owner": "office", "PrivData": "x"}},
            {"ProtocolId": "smartnetwork", "Enabled": 1},
            {"ProtocolId": "upnpd", "Enabled": 1},
            {"ProtocolId": "rsync", "Enabled": 1},
            {"ProtocolId": "dlna", "Enabled": 1, "DlnaOptions": {"AutoScan": 1}},
            {"ProtocolId": "http", "Enabled": 1, "HttpOptions": {"ShareName": "docs"}},
            {"ProtocolId": "https", "Enabled": 1, "HttpsOptions": {"SslKeyHost": "nas.office.example"}},
            {"ProtocolId": "bonjour", "Enabled": 1, "BonjourOptions": {"CifsEnabled": 1}},
            {"ProtocolId": "anti-virus", "Enabled": 1},
            {"ProtocolId": "skyport", "Enabled": 1}]})")},
        {"setProtocolEnable", {{"protocol", "smartnetwork"}, {"enable", 1}}},
        {"setHomeFolderOptions", {{"UserHomeDirectory", 1}, {"AfpUserHomeDirectory", 1}}},
    };
}

} // namespace qbobj_test
