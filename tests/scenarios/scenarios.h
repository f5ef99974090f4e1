// An office's appliance, and one call of every operation on it: what the sweeps over all operations run.
#pragma once

#include "database.h"
#include "json/operations.h"

#include <string>
#include <vector>

namespace qbobj_test
{

// One call: an operation and its input, which must succeed on a fresh office unless `fails` is set.
struct Scenario {
    std::string operation;
    qbobj_json::Json input;
    bool fails = false; // an operation that callers know to fail always
};

void PrintTo(const Scenario &scenario, std::ostream *out);
// Names the cases of a sweep.
std::string name_of(const ::testing::TestParamInfo<Scenario> &info);

const std::vector<Scenario> &scenarios();

// One a family of operations.
std::vector<Scenario> settings_scenarios();
std::vector<Scenario> account_scenarios();
std::vector<Scenario> share_scenarios();
std::vector<Scenario> protocol_scenarios();
std::vector<Scenario> service_device_scenarios();
std::vector<Scenario> storage_scenarios();
std::vector<Scenario> snapshot_scenarios();
std::vector<Scenario> backup_scenarios();
std::vector<Scenario> netif_scenarios();
std::vector<Scenario> log_scenarios();
std::vector<Scenario> iscsi_scenarios();
std::vector<Scenario> dictionary_scenarios();

// Users, groups, shares with every protocol, a clone, a backup job, an import list: made through the
// operations.
void furnish(Appliance &appliance);
// A vault's account, UPS devices, a TiVo device.
void furnish_service_devices(Appliance &appliance);
// A shelf of disks with readings.
void furnish_storage(Appliance &appliance);
// A home's snapshot, a spare, a job; the share's snapshot and its clone stand with the shares.
void furnish_snapshots(Appliance &appliance);
// Two network interfaces.
void furnish_netifs(Appliance &appliance);
// Some entries.
void furnish_log(Appliance &appliance);
// A LUN in a group, and an initiator that may reach it.
void furnish_iscsi(Appliance &appliance);

// Shares, accounts and whatever hangs on them or stands beside them, `count` of each; ids and names do not meet those of
// the office.
void crowd(Appliance &appliance, int count);

// A share with every protocol and an entry in every list.
qbobj_json::Json full_share(const std::string &name);

// Calls an operation with JSON.
qbobj_json::Outcome call(Appliance &appliance, const std::string &operation, const qbobj_json::Json &input);

} // namespace qbobj_test
