// The system log: an office's, and a call of every operation on it.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

void furnish_log(Appliance &appliance)
{
    appliance.sql("INSERT INTO `$log` (tstamp,severity,category,msg_tag,msg_args_xml) VALUES"
                  "(1000,'info','system','LOGMSG_STARTED',''),(1001,'err','disk','LOGMSG_BROKEN','<a/>'),"
                  "(1002,'warning','volume','LOGMSG_FULL','')");
}

std::vector<Scenario> log_scenarios()
{
    return {
        {"addLog", Json::parse(R"({"Severity": "warn", "Category": "disk", "MessageTag": "LOGMSG_HOT"})")},
        {"getLog", Json::parse(R"({"query": {"limit": 2, "offset": 1, "order": 1, "severity": "info"}})")},
        {"deleteLog", {{"timestamp_min", 10}}},
        {"truncateLog", {{"n_keep", 1}}},
    };
}

} // namespace qbobj_test
