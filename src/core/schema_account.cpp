// The schemas of the account records.
#include "core/schema.h"

#include <qbobj/account.h>

QBOBJ_SCHEMA(Quota, FIELD(AccountId), FIELD(AccountName), FIELD(ShareId), FIELD(HardMB), FIELD(UsedMB))
QBOBJ_SCHEMA(AdminPassword, FIELD(Password), FIELD(Question), FIELD(Answer), FIELD(Email))
QBOBJ_SCHEMA(UserPassword, FIELD(UserId), FIELD(Password))
QBOBJ_SCHEMA(MyPassword, FIELD(UserName), FIELD(OldPassword), FIELD(NewPassword))
QBOBJ_SCHEMA(UserHomeFolderSettings, FIELD(UserId), FIELD(SizeLimit), FIELD(SizeUsed),
             FIELD(SnapshotProtectionEnabled), FIELD(VisibleSnapshot), FIELD(VisibleSnapFolder))
QBOBJ_SCHEMA(UserTimeMachineQuota, FIELD(UserId), FIELD(Enabled), FIELD(CapacityMB), FIELD(UsedMB),
             FIELD(Delete))
QBOBJ_SCHEMA(User, FIELD(resource_id), FIELD(UserId), FIELD(UserName), FIELD(OldUserName), FIELD(GroupName),
             FIELD(HomeVolumeId), FIELD(HomeDirectory), FIELD(OldHomeDirectory), FIELD(Email),
             FIELD(FullName), FIELD(Password), FIELD(SmbHash), FIELD(SysHash), FIELD(IsDomainMember),
             FIELD(no_invitation), FIELD(IsLocked), LIST(UserQuota), FIELD(TimeMachineQuota),
             FIELD(HomeFolderSettings))
QBOBJ_SCHEMA(SystemUser, FIELD(resource_id), FIELD(UserId), FIELD(UserName), FIELD(_PosixId))
QBOBJ_SCHEMA(UserCollection, LIST(User), FIELD(Entries), FIELD(TotalEntries))
QBOBJ_SCHEMA(AccountQuery, FIELD(limit), FIELD(offset), FIELD(name_like), FIELD(opt), FIELD(order),
             FIELD(ads))
QBOBJ_SCHEMA(Group, FIELD(resource_id), FIELD(GroupId), FIELD(GroupName), FIELD(OldGroupName),
             LIST(SecondaryMember), LIST(GroupQuota), FIELD(IsDomainMember))
QBOBJ_SCHEMA(SystemGroup, FIELD(resource_id), FIELD(GroupId), FIELD(GroupName), FIELD(_PosixId))
QBOBJ_SCHEMA(GroupCollection, LIST(Group), FIELD(Entries), FIELD(TotalEntries))
QBOBJ_SCHEMA(AccountDefault, FIELD(HomeVolumeId), FIELD(DiskQuotaWarn), FIELD(GroupId),
             FIELD(DisallowPasswordChange), FIELD(HomeFolderCapacityLimit), FIELD(GroupMembership),
             FIELD(PrivateTimeMachine), FIELD(PrivateTimeMachineSpace), FIELD(SnapshotProtection))
QBOBJ_SCHEMA(Security, FIELD(Security), FIELD(Realm), FIELD(workGroup), FIELD(orgUnit), FIELD(restrictOU),
             FIELD(noSyncADS), FIELD(restrictAccountOu), FIELD(domainAdministrator), FIELD(passWord),
             FIELD(passWordServer), FIELD(displayTrustedUsers), FIELD(domainSid), FIELD(domainGroupAdminGID),
             FIELD(domainAdminUID))
QBOBJ_SCHEMA(SecurityAdsProgress, FIELD(State), FIELD(Percent), FIELD(TotalUser), FIELD(CurrUser),
             FIELD(TotalGroup), FIELD(CurrGroup), FIELD(StartAt), FIELD(DoneAt))
