// The schemas of the records of services, UPS devices and the TiVo archiver.
#include "core/schema.h"

#include <qbobj/service.h>

QBOBJ_SCHEMA(CifsOptions, FIELD(UserHomeDirectory), FIELD(UserHomeDirectoryRecycle),
             FIELD(UserHomeDirectoryRecycleMaxDays), FIELD(UserHomeDirectoryRecycleMaxSize))
QBOBJ_SCHEMA(NfsOptions, FIELD(Changed), FIELD(Threads), FIELD(UserHomeDirectory), FIELD(NfsV4Enable),
             FIELD(NfsV4Domain))
QBOBJ_SCHEMA(FtpOptions, FIELD(Port), FIELD(AuthMode), FIELD(PassiveRangeMin), FIELD(PassiveRangeMax),
             FIELD(EnableMasquerade), FIELD(MasqueradeAddress), FIELD(AllowUploadResume),
             FIELD(UserHomeDirectory), FIELD(Ftps), FIELD(ForceFtps), FIELD(ServerTransferLog),
             FIELD(MaxUploadRate), FIELD(MaxDownloadRate))
QBOBJ_SCHEMA(DlnaOptions, FIELD(AutoScan), FIELD(EnableTivoServer), FIELD(EnableTivoArchiver))
QBOBJ_SCHEMA(BonjourOptions, FIELD(CifsEnabled), FIELD(AfpEnabled), FIELD(PanelviewEnabled),
             FIELD(PrinterEnabled), FIELD(QubrixEnabled), FIELD(TimemachineEnabled))
QBOBJ_SCHEMA(SnmpOptions, FIELD(AllowHost), FIELD(Community), FIELD(TrapDestination))
QBOBJ_SCHEMA(SshOptions, FIELD(Port))
QBOBJ_SCHEMA(ReplicateOptions, FIELD(Owner), FIELD(PrivData), FIELD(Password))
QBOBJ_SCHEMA(HttpOptions, FIELD(LoginEnabled), FIELD(ShareName), FIELD(HttpAdmin))
QBOBJ_SCHEMA(HttpsOptions, FIELD(Port), FIELD(SslKeyHost))
QBOBJ_SCHEMA(DaapOptions, FIELD(sharename), FIELD(password), FIELD(directory))
QBOBJ_SCHEMA(HomeFolderOptions, FIELD(UserHomeDirectory), FIELD(NfsUserHomeDirectory),
             FIELD(FtpUserHomeDirectory), FIELD(DlnaUserHomeDirectory), FIELD(AfpUserHomeDirectory))
QBOBJ_SCHEMA(Protocol, FIELD(ProtocolId), FIELD(ProtocolName), FIELD(Enabled), FIELD(Changed),
             FIELD(CifsOptions), FIELD(NfsOptions), FIELD(FtpOptions), FIELD(DlnaOptions),
             FIELD(BonjourOptions), FIELD(SnmpOptions), FIELD(SshOptions), FIELD(ReplicateOptions),
             FIELD(HttpOptions), FIELD(HttpsOptions), FIELD(DaapOptions))
QBOBJ_SCHEMA(ProtocolCollection, LIST(Protocol))

QBOBJ_SCHEMA(Timemachine, FIELD(Enabled), FIELD(UserName), FIELD(Password), FIELD(CapacityMB),
             FIELD(MaxCapacityMB), FIELD(HomeEnabled))
QBOBJ_SCHEMA(Vault, FIELD(Enabled), FIELD(Volume), FIELD(Action), FIELD(UserName), FIELD(UserPassword),
             FIELD(DefaultJob))

QBOBJ_SCHEMA(UpsConfig, FIELD(Port), FIELD(Type), FIELD(Enabled), FIELD(Name), FIELD(Description),
             FIELD(UpsModel), FIELD(UpsMfr), FIELD(UpsMfrDate), FIELD(UpsSerial), FIELD(ShutdownThreshold),
             FIELD(Share_enabled), FIELD(List1), FIELD(SnmpCommunity), FIELD(SnmpMibs), FIELD(RemoteUserName),
             FIELD(RemotePassword), FIELD(UpsStatus), FIELD(BatteryCharge), FIELD(BatteryRunTime),
             FIELD(BatteryVoltage))
QBOBJ_SCHEMA(UpsConfigCollection, LIST(UpsConfig))

QBOBJ_SCHEMA(TIVOhostsAcl, FIELD(name), FIELD(status), FIELD(active))
QBOBJ_SCHEMA(TivoOptions, FIELD(DLNAfolderlist), FIELD(TIVOfolder), FIELD(hour), FIELD(minute), FIELD(days),
             LIST(TIVOhostsAcl))
QBOBJ_SCHEMA(TivoMak, FIELD(name), FIELD(status), FIELD(key))
