// Backup jobs, the places that they copy from and to, and the jobs of the backup button.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

std::vector<Scenario> backup_scenarios()
{
    return {
        {"getBackupJobCollection", nullptr},
        {"getBackupJob", {{"JobId", 1}}},
        {"getBackupTargetCollection", nullptr},
        {"getBackupButtonJobCollection", nullptr},
        {"setBackupButtonJobCollection", Json::parse(R"({"Jobs": [{"JobId": 1}, {"JobId": 7}]})")},
        {"getBackupUSBSubType", {{"usb_port", "usb_port_1_1"}}},
        {"addBackupJob", Json::parse(R"([
            {"JobName": "weekly", "Source": {"Type": "volume", "ShareNameOrProtocol": "data"},
             "Destination": {"Type": "share", "ShareNameOrProtocol": "plain", "Path": "/in"},
             "Schedule": {"Enabled": 1, "Frequency": 1, "Start": 1, "End": 5, "DayOfWeek": "Sun"}, "Option": {}},
            {"JobName": "away", "Source": {"Type": "home", "ShareNameOrProtocol": "ann"},
             "Destination": {"Type": "remote", "ShareNameOrProtocol": "rsync", "Path": "far:/in", "Login": "ann",
                             "Password": "secret", "Port": 873},
             "Schedule": {"Enabled": 0}, "Option": {"RsyncExclude": "*.tmp"}}])")},
        {"modifyBackupJob",
         Json::parse(
             R"([{"JobId": 1, "JobName": "often", "Source": {"Type": "volume", "ShareNameOrProtocol": "data"},
            "Schedule": {"Enabled": 1, "Start": 1, "End": 5, "DayOfWeek": "Mon"},
            "Option": {"RsyncExclude": "*.tmp"}}])")},
        {"deleteBackupJob", Json::parse(R"([{"JobId": 1}])")},
    };
}

} // namespace qbobj_test
