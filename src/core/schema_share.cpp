// The schemas of the share records.
#include "core/schema.h"

#include <qbobj/share.h>

QBOBJ_SCHEMA(Host, FIELD(resource_id), FIELD(HostId), FIELD(HostName))
QBOBJ_SCHEMA(HostAcl, FIELD(Host), FIELD(Access), FIELD(Root))
QBOBJ_SCHEMA(UserAcl, FIELD(User), FIELD(Access))
QBOBJ_SCHEMA(GroupAcl, FIELD(Group), FIELD(Access))
QBOBJ_SCHEMA(DfolderAcl, FIELD(Name), FIELD(Address), FIELD(RemoteShare))
QBOBJ_SCHEMA(UserPasswordAcl, FIELD(UserName), FIELD(Password))
QBOBJ_SCHEMA(PosixAcl, FIELD(Type), FIELD(Tag), FIELD(Perm), FIELD(Id), FIELD(Name))
QBOBJ_SCHEMA(FileStat, FIELD(User), FIELD(Group), FIELD(UserAccess), FIELD(GroupAccess),
             FIELD(EveryoneAccess), VOIDABLE(NonOwnerDelete), FIELD(AclInherit), LIST(Acls),
             FIELD(_PosixMode))

QBOBJ_SCHEMA(ZvolShareOption, FIELD(ZfsName), FIELD(SizeKB), FIELD(UsedKB), FIELD(IsSparse))
QBOBJ_SCHEMA(CifsShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess),
             VOIDABLE(AllowGuestAccess), VOIDABLE(ShareDisplayOption), VOIDABLE(EnableRecycleBin),
             VOIDABLE(RecycleSizeLimit), VOIDABLE(RecycleAgeLimit), VOIDABLE(NewFileFolderPermAutoset),
             VOIDABLE(AclChangeRestrictionToggle), FIELD(FileCreateGroupRights),
             FIELD(FileCreateEveryoneRights), FIELD(FolderCreateGroupRights),
             FIELD(FolderCreateEveryoneRights), VOIDABLE(EnableOplocks), FIELD(EnableDFS), LIST(HostAcl),
             LIST(UserAcl), LIST(GroupAcl), LIST(DfolderAcl))
QBOBJ_SCHEMA(AfpShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess),
             VOIDABLE(AllowGuestAccess), VOIDABLE(NewFileFolderPermAutoset), FIELD(FileCreateGroupRights),
             FIELD(FileCreateEveryoneRights), FIELD(FolderCreateGroupRights),
             FIELD(FolderCreateEveryoneRights), LIST(HostAcl), LIST(UserAcl), LIST(GroupAcl))
QBOBJ_SCHEMA(FtpShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess),
             VOIDABLE(NewFileFolderPermAutoset), FIELD(FileCreateGroupRights),
             FIELD(FileCreateEveryoneRights), FIELD(FolderCreateGroupRights),
             FIELD(FolderCreateEveryoneRights), LIST(HostAcl), LIST(UserAcl), LIST(GroupAcl))
QBOBJ_SCHEMA(NfsShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess), FIELD(Sync),
             LIST(HostAcl))
QBOBJ_SCHEMA(DlnaShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess), FIELD(MediaType))
QBOBJ_SCHEMA(DaapShareOption, FIELD(NotAvailable), FIELD(Changed))
QBOBJ_SCHEMA(RsyncShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess),
             FIELD(PasswordProtection), LIST(HostAcl), LIST(UserPasswordAcl))
QBOBJ_SCHEMA(HttpShareOption, FIELD(NotAvailable), FIELD(Changed), FIELD(DefaultAccess), LIST(HostAcl),
             LIST(UserAcl), LIST(GroupAcl), VOIDABLE(EnableWebDav))

QBOBJ_SCHEMA(UsedBy, FIELD(AppName), FIELD(AppData))
QBOBJ_SCHEMA(Process, FIELD(ProcessId), FIELD(Blocking), FIELD(Timestamp))
QBOBJ_SCHEMA(Share, FIELD(ShareId), FIELD(ZfsName), FIELD(ShareType), FIELD(ShareName),
             FIELD(VisibleSnapshot), FIELD(OldVisibleSnapshot), FIELD(VisibleSnapFolder), FIELD(OldShareName),
             FIELD(Comment), FIELD(VolumeId), FIELD(Path), FIELD(OldPath), VOIDABLE(QuotaMB),
             VOIDABLE(ReserveMB), VOIDABLE(RefQuotaMB), VOIDABLE(RefReserveMB), VOIDABLE(Compression),
             VOIDABLE(BitRotProtection), VOIDABLE(Dedup), OPTIONAL(LogBias), OPTIONAL(Origin), OPTIONAL(Sync),
             FIELD(AvailableMB), FIELD(UsedMB), FIELD(UsedByChildrenMB), FIELD(UsedByDatasetMB),
             FIELD(UsedByRefReservationMB), FIELD(UsedBySnapshotsMB), FIELD(CompressRatio),
             FIELD(ReferencedMB), FIELD(NrContinuousSnapshots), FIELD(NrManualSnapshots),
             FIELD(FirstSnapshotCreatedOn), FIELD(LastSnapshotCreatedOn), FIELD(MigrateToVolumeId),
             FIELD(Stat), FIELD(Zvol), FIELD(Cifs), FIELD(Afp), FIELD(Ftp), FIELD(Nfs), FIELD(Dlna),
             FIELD(Daap), FIELD(Rsync), FIELD(Http), FIELD(SnapshotSchedule), FIELD(SnapshotClones),
             LIST(UserQuota), LIST(GroupQuota), LIST(UsedBy), FIELD(UpdateTS), FIELD(Busy), FIELD(CloneOf))
QBOBJ_SCHEMA(ShareCollection, LIST(Share))
QBOBJ_SCHEMA(SimpleShare, FIELD(ShareId), FIELD(ShareName), FIELD(CommonProtocolsCSV), LIST(UsedBy))
QBOBJ_SCHEMA(SimpleShareCollection, LIST(SimpleShare))
