// Network interfaces: an office's, and a call of every operation on them.
#include "scenarios.h"

using qbobj_json::Json;

namespace qbobj_test
{

void furnish_netifs(Appliance &appliance)
{
    appliance.sql("INSERT INTO network_if (name,mac,protocol,ip) VALUES"
                  "('eth0','00:11:22:33:44:55','static','10.0.0.1'),('eth1','00:11:22:33:44:56','dhcp','')");
}

std::vector<Scenario> netif_scenarios()
{
    return {
        {"getNetworkInterfaceCollection", nullptr},
        {"getNetworkInterface", Json::parse(R"([{"Name": "eth0"}, {"Name": "eth1"}])")},
        {"addNetworkInterface", Json::parse(R"([
            {"Name": "eth2", "Mac": "00:11:22:33:44:57", "Protocol": "static", "IP": "10.0.0.3", "Subnet": "255.0.0.0"},
            {"Name": "eth3", "Mac": "00:11:22:33:44:58"}])")},
        {"deleteNetworkInterface", Json::parse(R"([{"Name": "eth0"}, {"Name": "eth1"}])")},
        {"modifyNetworkInterface", Json::parse(R"([{"Name": "eth0", "IP": "10.0.0.2", "Gateway": ""}])")},
    };
}

} // namespace qbobj_test
