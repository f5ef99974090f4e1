// The latest readings of disks, enclosures and UPS devices.
#include "storage/disk_rows.h"
#include "storage/storage.h"

namespace qbobj
{
namespace
{

using DiskHealth = qbobj_DiskHealth_t;
using EnclosureHealth = qbobj_EnclosureHealth_t;
using Sensor = qbobj_EnclosureHealthItem_t;
using UpsHealth = qbobj_UpsHealth_t;

constexpr auto disk_readings = select(
    R"(SELECT D.disk_id,D.ata_errors,D.realloc_sect,D.realloc_event,D.spin_retry_cnt,D.ioedc,D.cmd_timeouts,
        D.pending_sect,D.uncorrectable_err,D.temp,D.start_stop_cnt,D.power_on_hrs,D.power_cycle_cnt,
        D.load_cycle_cnt,IFNULL(D.zpool_state,'UNKNOWN'),D.zpool_read_error_cnt,D.zpool_write_error_cnt,
        D.zpool_cksum_error_cnt,DI.controller,DI.channel
        FROM _disk_health D INNER JOIN `$disk_info` DI ON DI.id=D.disk_id)",
    "Failed DB Query for 'SELECT FROM _disk_health'. %s", &DiskHealth::DiskId, &DiskHealth::ATAErrors,
    &DiskHealth::ReallocSect, &DiskHealth::ReallocEvent, &DiskHealth::SpinRetryCnt, &DiskHealth::IOEdc,
    &DiskHealth::CmdTimeouts, &DiskHealth::PendingSect, &DiskHealth::UncorrectableErr, &DiskHealth::Temp,
    &DiskHealth::StartStopCnt, &DiskHealth::PowerOnHrs, &DiskHealth::PowerCycleCnt, &DiskHealth::LoadCycleCnt,
    &DiskHealth::ZpoolState, &DiskHealth::ZpoolReadErrorCnt, &DiskHealth::ZpoolWriteErrorCnt,
    &DiskHealth::ZpoolCksumErrorCnt, controller_and_key(&DiskHealth::Controller, &DiskHealth::resource_id),
    &DiskHealth::Channel);

// One row a sensor that the enclosure has, with or without a reading.
constexpr auto sensors = select<int>(
    R"(SELECT E.name,E.devid,E.value,E.value_prev1,E.value_prev2,E.value_prev3,IFNULL(S.min,0),IFNULL(S.max,0),
        S.label FROM enclosure_health_spec S LEFT JOIN _enclosure_health E ON E.controller=S.controller
        AND E.name=S.name AND E.devid=S.devid WHERE S.controller=%d ORDER BY E.name,S.Label)",
    "Failed DB Query for 'SELECT FROM enclosure_health_spec'. %s", &Sensor::Name, &Sensor::DevId,
    &Sensor::Value, &Sensor::ValuePrev1, &Sensor::ValuePrev2, &Sensor::ValuePrev3, &Sensor::Min, &Sensor::Max,
    &Sensor::Label);

constexpr auto enclosures_with_sensors = select(
    R"(SELECT DE.controller,DE.nr_cpu,DE.nr_fan,DE.nr_psu,DE.nr_volt,JP.label
        FROM _disk_enclosure DE INNER JOIN jbod_port JP ON JP.controller=DE.controller)",
    "Failed DB Query for 'SELECT FROM _disk_enclosure'. %s",
    controller_and_key(&EnclosureHealth::Controller, &EnclosureHealth::resource_id), &EnclosureHealth::NrCpu,
    &EnclosureHealth::NrFan, &EnclosureHealth::NrPsu, &EnclosureHealth::NrVolt, &EnclosureHealth::PortLabel);

constexpr auto ups_readings = select(
    R"(SELECT UC.name||'@'||UC.host,UC.name,UC.host,REPLACE(IFNULL(UH.ups_status,'?'),' ','_'),
        IFNULL(UC.ups_model,'?'),IFNULL(UH.battery_charge,'?')||' %%',IFNULL(UH.battery_runtime,'?')||' min',
        IFNULL(UH.battery_voltage,'?')||' V'
        FROM _ups_config UC LEFT JOIN _ups_health UH ON UH.name=UC.name AND UH.host=UC.host)",
    "Failed DB Query for 'SELECT FROM _ups_health'. %s", &UpsHealth::resource_id, &UpsHealth::UpsName,
    &UpsHealth::ServerHost, &UpsHealth::UpsStatus, &UpsHealth::UpsModel, &UpsHealth::BatteryCharge,
    &UpsHealth::BatteryRunTime, &UpsHealth::BatteryVoltage);

// Appends the rows to the list and tells whether there were any.
template <class Columns, class Record, class... Args>
int append_any(Call &call, bool &any, const Select<Columns, Args...> &select, Record *&list,
               std::type_identity_t<Args>... args)
{
    Tail<Record> tail(list);
    const auto keep = [&](const Record &row) {
        tail.append(call.pool(), row);
        any = true;
        return 0;
    };
    return call.each<Record>(select, keep, args...);
}

} // namespace

int x_qbobj_getDiskHealthCollection(Call &call, qbobj_DiskHealthCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    bool any = false;
    if (const int rc = append_any(call, any, disk_readings, collection->Health))
        return rc;
    return any ? 0 : raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "No data in _disk_healt table");
}

int x_qbobj_getEnclosureHealth(Call &call, qbobj_EnclosureHealth_t *enc_health)
{
    if (enc_health == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "enc_health cannot be NULL.");
    bool any = false;
    if (const int rc = append_any(call, any, sensors, enc_health->Health, enc_health->Controller))
        return rc;
    return any ? 0 : raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "No data in _enclosure_health table");
}

int x_qbobj_getEnclosureHealthCollection(Call &call, qbobj_EnclosureHealthCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    bool any = false;
    Tail<EnclosureHealth> tail(collection->Health);
    // An enclosure without sensors stays in the list.
    const auto keep_with_sensors = [&](const EnclosureHealth &row) {
        EnclosureHealth &enclosure = tail.append(call.pool(), row);
        any = true;
        return call.append(sensors, enclosure.Health, enclosure.Controller);
    };
    if (const int rc = call.each<EnclosureHealth>(enclosures_with_sensors, keep_with_sensors))
        return rc;
    return any ? 0 : raise(call, QBOBJ_ERROR_DB_NOTEXISTS, "No data in _enclosure_health table");
}

int x_qbobj_getUpsHealthCollection(Call &call, qbobj_UpsHealthCollection_t *collection)
{
    if (collection == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "collection cannot be NULL.");
    return call.append(ups_readings, collection->Health);
}

} // namespace qbobj
