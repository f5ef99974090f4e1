// Readings of disks, enclosures and UPS devices, stored by the daemons that take them.
#include "storage/storage.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>

namespace qbobj
{
namespace
{

struct Reading {
    int controller;
    const char *name;
    const char *devid;
    int value;
};

// The monitoring daemon's way of saying that the appliance's first fan is not there.
bool tells_missing_fan(const Reading &reading)
{
    constexpr int no_fan = -481;
    return reading.controller == 0 && reading.value == no_fan &&
           std::strcmp(or_empty(reading.name), "Fan") == 0 && std::strcmp(or_empty(reading.devid), "1") == 0;
}

int store_reading(Call &call, const Reading &reading)
{
    const auto &[controller, name, devid, value] = reading;
    if (tells_missing_fan(reading)) {
        call.run("DELETE FROM _enclosure_health WHERE controller=%d AND name=%Q AND devid=%Q", controller,
                 name, devid);
        return 0;
    }
    if (const int rc = call.exec({QBOBJ_ERROR_API_ARGS, "Fail 'INSERT INTO _enclousre_health. %s"},
                                 R"(INSERT OR IGNORE INTO _enclosure_health(controller,name,devid,value,
        value_prev1,value_prev2,value_prev3) VALUES(%d,%Q,%Q,%d,%d,%d,%d))",
                                 controller, name, devid, value, value, value, value))
        return rc;
    return call.exec({QBOBJ_ERROR_API_ARGS, "Fail 'UPDATE _enclousre_health. %s"},
                     R"(UPDATE _enclosure_health SET value=%d,value_prev1=value,value_prev2=value_prev1,
        value_prev3=value_prev2 WHERE controller=%d AND name=%Q AND devid=%Q)",
                     value, controller, name, devid);
}

struct CloseFile {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// Null for what is no readable file.
File open_readings(const Call &call, const char *path)
{
    std::error_code error;
    const char *place = path_below_root(call, path);
    if (place == nullptr || !std::filesystem::is_regular_file(place, error))
        return nullptr;
    return File(std::fopen(place, "re"));
}

// Stores one line's reading after the other, up to the first line that is none.
int store_readings(Call &call, std::FILE *file)
{
    constexpr std::size_t size = 32; // as the format says
    std::array<char, size> name{};
    std::array<char, size> devid{};
    Reading reading{.controller = 0, .name = name.data(), .devid = devid.data(), .value = 0};
    while (std::fscanf(file, "%d,%31[^,],%31[^,],%d%*[^\n]%*c", &reading.controller, name.data(),
                       devid.data(), &reading.value) == 4)
        if (const int rc = store_reading(call, reading))
            return rc;
    return 0;
}

} // namespace

int x_qbobj_setDiskHealth(Call &call, qbobj_DiskHealth_t *health)
{
    for (const qbobj_DiskHealth_t &disk : Chain(health)) {
        if (const int rc = call.exec(
                {QBOBJ_ERROR_API_ARGS, "Fail 'INSERT INTO _disk_health"},
                R"(INSERT OR REPLACE INTO _disk_health(disk_id,ata_errors,realloc_sect,
        realloc_event,spin_retry_cnt,ioedc,cmd_timeouts,pending_sect,uncorrectable_err,temp,start_stop_cnt,
        power_on_hrs,power_cycle_cnt,load_cycle_cnt,zpool_state,zpool_read_error_cnt,zpool_write_error_cnt,
        zpool_cksum_error_cnt) VALUES(%Q,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%Q,%d,%d,%d))",
                disk.DiskId, disk.ATAErrors, disk.ReallocSect, disk.ReallocEvent, disk.SpinRetryCnt,
                disk.IOEdc, disk.CmdTimeouts, disk.PendingSect, disk.UncorrectableErr, disk.Temp,
                disk.StartStopCnt, disk.PowerOnHrs, disk.PowerCycleCnt, disk.LoadCycleCnt, disk.ZpoolState,
                disk.ZpoolReadErrorCnt, disk.ZpoolWriteErrorCnt, disk.ZpoolCksumErrorCnt))
            return rc;
    }
    return 0;
}

int x_qbobj_setEnclosureHealth(Call &call, qbobj_EnclosureHealth_t *enc_health)
{
    if (enc_health == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "enc_health cannot be NULL.");
    for (const qbobj_EnclosureHealthItem_t &item : Chain(enc_health->Health))
        if (const int rc = store_reading(call, {enc_health->Controller, item.Name, item.DevId, item.Value}))
            return rc;
    return 0;
}

int x_qbobj_setEnclosureHealthForTest(Call &call, const char *path)
{
    if (const File file = open_readings(call, path))
        return store_readings(call, file.get());
    return call.exec({QBOBJ_ERROR_API_ARGS, "Fail 'INSERT INTO _enclousre_health. %s"},
                     R"(INSERT OR IGNORE INTO _enclosure_health(controller,name,devid,value,value_prev1,
        value_prev2,value_prev3) SELECT controller,name,devid,(min+max)/2,(min+max)/2,(min+max)/2,(min+max)/2
        FROM enclosure_health_spec)");
}

int x_qbobj_setUpsHealth(Call &call, qbobj_UpsHealth_t *ups_health)
{
    for (const qbobj_UpsHealth_t &ups : Chain(ups_health)) {
        if (const int rc = call.exec({QBOBJ_ERROR_API_ARGS, "Fail 'INSERT INTO _ups_health"},
                                     R"(INSERT OR REPLACE INTO _ups_health(name,host,ups_status,
        battery_charge,battery_runtime,battery_voltage)VALUES(%Q,%Q,%Q,%Q,%Q,%Q))",
                                     ups.UpsName, ups.ServerHost, ups.UpsStatus, ups.BatteryCharge,
                                     ups.BatteryRunTime, ups.BatteryVoltage))
            return rc;
    }
    return 0;
}

} // namespace qbobj
