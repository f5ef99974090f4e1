// The schemas of the storage records: volumes, disks, snapshots, health readings, schedules of volumes.
#include "core/schema.h"

#include <qbobj/storage.h>

QBOBJ_SCHEMA(ResourceId, FIELD(ResourceId))
QBOBJ_SCHEMA(Volume, FIELD(VolumeId), FIELD(VolumeName), FIELD(RaidType), FIELD(BlockTotal), FIELD(BlockFree),
             FIELD(BlockSize), FIELD(VolumeHealth), FIELD(SentResilverEvent), FIELD(SentScanEnd),
             FIELD(BalanceStatus), FIELD(DisktestStatus), FIELD(KeyFile))
QBOBJ_SCHEMA(VolumeCollection, FIELD(SystemRaidMode), LIST(Volume))
QBOBJ_SCHEMA(Disk, FIELD(resource_id), FIELD(DiskId), FIELD(Present), FIELD(DevName), FIELD(Controller),
             FIELD(Channel), FIELD(Model), FIELD(Serial), FIELD(FirmwareVersion), FIELD(RPM), FIELD(Sectors),
             FIELD(Capacity), FIELD(Temperature), FIELD(ATAError), FIELD(Pool), FIELD(PoolType),
             FIELD(PoolState), FIELD(PoolHostId), FIELD(SlotName), FIELD(HardwareInterface),
             FIELD(DiskEnclosureId), FIELD(DiskState), FIELD(ReplacedWithSpare), FIELD(IsSignedByMaltrex))
QBOBJ_SCHEMA(DiskCollection, FIELD(DiskEnclosureId), FIELD(DiskEnclosurePort), FIELD(SESDevice),
             FIELD(EnclosureName), FIELD(EnclosureRows), FIELD(EnclosureCols), FIELD(IsSlotHorizontal),
             FIELD(DeadSlots), LIST(Disk))
QBOBJ_SCHEMA(DiskEnclosureCollection, LIST(DiskEnclosure))
QBOBJ_SCHEMA(DiskDiff, FIELD(AddOrRemove), FIELD(DiskId), FIELD(Controller), FIELD(Channel), FIELD(Model),
             FIELD(Serial), FIELD(FirmwareVersion), FIELD(RPM), FIELD(Sectors), FIELD(Capacity),
             FIELD(DiskEnclosureId), FIELD(DiskEnclosureName), FIELD(SlotName), FIELD(HardwareInterface),
             FIELD(Pool), FIELD(PoolType), FIELD(PoolState), FIELD(PoolHostId), FIELD(ReplacedWithSpare),
             FIELD(IsSignedByMaltrex))

QBOBJ_SCHEMA(Schedule, FIELD(Enabled), FIELD(Minute), FIELD(Hour), FIELD(DayOfMonth), FIELD(DayOfWeek),
             FIELD(Month), FIELD(LastTaken), FIELD(PurgeManualSnapshot), FIELD(LastDailyTaken),
             FIELD(LastWeeklyTaken))
QBOBJ_SCHEMA(Snapshot, FIELD(resource_id), FIELD(ShareName), FIELD(VolumeName), FIELD(SnapshotName),
             FIELD(Type), FIELD(CreatedOn), FIELD(Path))
QBOBJ_SCHEMA(SnapshotCollection, LIST(Snapshot))
QBOBJ_SCHEMA(HfSnapshot, FIELD(resource_id), FIELD(UserName), FIELD(HomeDir), FIELD(SnapshotName),
             FIELD(Type), FIELD(CreatedOn), FIELD(Path))
QBOBJ_SCHEMA(HfSnapshotCollection, LIST(HfSnapshot))
QBOBJ_SCHEMA(SnapshotClone, FIELD(resource_id), FIELD(ClonedShareName), FIELD(ParentSnapshotName),
             FIELD(ParentShareName))
QBOBJ_SCHEMA(SnapshotCloneCollection, LIST(SnapshotClone))

QBOBJ_SCHEMA(DiskHealth, FIELD(DiskId), FIELD(Controller), FIELD(Channel), FIELD(ATAErrors),
             FIELD(ReallocSect), FIELD(ReallocEvent), FIELD(SpinRetryCnt), FIELD(IOEdc), FIELD(CmdTimeouts),
             FIELD(PendingSect), FIELD(UncorrectableErr), FIELD(Temp), FIELD(StartStopCnt), FIELD(PowerOnHrs),
             FIELD(PowerCycleCnt), FIELD(LoadCycleCnt), FIELD(ZpoolState), FIELD(ZpoolReadErrorCnt),
             FIELD(ZpoolWriteErrorCnt), FIELD(ZpoolCksumErrorCnt))
QBOBJ_SCHEMA(DiskHealthCollection, LIST(Health))
QBOBJ_SCHEMA(EnclosureHealthItem, FIELD(Name), FIELD(DevId), FIELD(Value), FIELD(ValuePrev1),
             FIELD(ValuePrev2), FIELD(ValuePrev3), FIELD(Min), FIELD(Max), FIELD(Label))
QBOBJ_SCHEMA(EnclosureHealth, FIELD(Controller), FIELD(PortLabel), FIELD(NrCpu), FIELD(NrFan), FIELD(NrPsu),
             FIELD(NrVolt), LIST(Health))
QBOBJ_SCHEMA(EnclosureHealthCollection, LIST(Health))
QBOBJ_SCHEMA(UpsHealth, FIELD(UpsName), FIELD(ServerHost), FIELD(UpsModel), FIELD(UpsStatus),
             FIELD(BatteryCharge), FIELD(BatteryRunTime), FIELD(BatteryVoltage))
QBOBJ_SCHEMA(UpsHealthCollection, LIST(Health))

QBOBJ_SCHEMA(CronSchedule, FIELD(Minute), FIELD(Hour), FIELD(DayOfMonth), FIELD(Month), FIELD(DayOfWeek))
QBOBJ_SCHEMA(VolumeSchedule, FIELD(VolumeName), FIELD(JobID), FIELD(Enabled), FIELD(Action), FIELD(Interval))
QBOBJ_SCHEMA(VolumeScheduleCollection, LIST(VolumeSchedule))
