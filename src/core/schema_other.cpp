// The schemas of the records of backup jobs, network interfaces, the system log and iSCSI.
#include "core/schema.h"

#include <qbobj/backup.h>
#include <qbobj/iscsi.h>
#include <qbobj/log.h>
#include <qbobj/netif.h>

QBOBJ_SCHEMA(BackupJob_SourceOrDestination, FIELD(Type), FIELD(ShareNameOrProtocol), FIELD(Path),
             FIELD(Login), FIELD(Password), FIELD(Port), FIELD(Ejectable), FIELD(Eject))
QBOBJ_SCHEMA(BackupJob_Schedule, FIELD(Enabled), FIELD(Frequency), FIELD(Start), FIELD(End), FIELD(DayOfWeek))
QBOBJ_SCHEMA(BackupJob_Option, FIELD(FullBackupFrequency), FIELD(RemovePreviousBackup),
             FIELD(ChownToShareOwner), FIELD(RsyncOption), FIELD(RsyncExclude), FIELD(EmailThisToAlertEmail),
             FIELD(MiscOption), FIELD(WolAddress))
QBOBJ_SCHEMA(BackupJob, FIELD(resource_id), FIELD(JobId), FIELD(JobName), FIELD(Source), FIELD(Destination),
             FIELD(Schedule), FIELD(Option), FIELD(Changed))
QBOBJ_SCHEMA(BackupJobCollection, LIST(BackupJob))
QBOBJ_SCHEMA(BackupTarget, FIELD(Type), FIELD(UsbSubType), FIELD(ShareNameOrProtocol), FIELD(Path), FIELD(Id),
             FIELD(Ejectable))
QBOBJ_SCHEMA(BackupTargetCollection, LIST(AvailableSourceTarget), LIST(AvailableDestinationTarget))
QBOBJ_SCHEMA(BackupButtonJob, FIELD(JobId), FIELD(JobName))
QBOBJ_SCHEMA(BackupButtonJobCollection, LIST(Jobs))

QBOBJ_SCHEMA(NetworkInterface, FIELD(Name), FIELD(Mac), FIELD(Protocol), FIELD(IP), FIELD(DNS1), FIELD(DNS2),
             FIELD(Gateway), FIELD(Subnet))
QBOBJ_SCHEMA(NetworkInterfaceCollection, LIST(NetworkInterface))

QBOBJ_SCHEMA(LogEntry, FIELD(LogId), FIELD(TimeStamp), FIELD(Severity), FIELD(Category), FIELD(MessageTag),
             FIELD(MessageArgsXml))
QBOBJ_SCHEMA(LogQuery, FIELD(limit), FIELD(offset), FIELD(order), FIELD(timestamp_min), FIELD(timestamp_max),
             FIELD(severity), FIELD(severity_in), FIELD(category_in), FIELD(msg_tag))

QBOBJ_SCHEMA(LunGroup, FIELD(Name), FIELD(Target), FIELD(AnyInitiator), FIELD(ChapAuth), FIELD(ChapSecret))
QBOBJ_SCHEMA(LunGroupCollection, LIST(LunGroup))
QBOBJ_SCHEMA(Initiator, FIELD(Name), FIELD(ChapAuth), FIELD(ChapSecret))
QBOBJ_SCHEMA(InitiatorCollection, LIST(Initiator))
QBOBJ_SCHEMA(Lun, FIELD(Name), FIELD(LunGroup), FIELD(LunN))
