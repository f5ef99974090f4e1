#!/usr/bin/env bash
# Shows the library's main job on a small office: a fresh appliance database, its accounts and shares, changes and
# removals, all through the library's own operations.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
build release qbctl >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QBOBJ_DB=$work/appliance.db QBOBJ_ROOT=$work/root PATH=$PWD/build/release/bin:$PATH
mkdir -p "$QBOBJ_ROOT"/{data,backup,tmp}
office=examples/office

step() { printf '\n\033[1m== %s\033[0m\n' "$1"; }
call() { qbctl call "$@"; }
quietly() { call "$@" >/dev/null; }
table() { qbctl --table --columns "$1" call "${@:2}"; }
# Two of them may meet when one closes the database.
query() { sqlite3 -cmd '.timeout 5000' "$QBOBJ_DB" "$1"; }
# What the storage side and the backup engine record.
record() { query "$1"; }
# Every row of every table that names the share, by name, dataset or path.
traces_of() {
    local name=$1 table column
    query "SELECT T.name,C.name FROM sqlite_schema T, pragma_table_info(T.name) C
        WHERE T.type='table' AND T.name NOT LIKE 'sqlite_%'" | while IFS='|' read -r table column; do
        query "SELECT '  ' || '$table.$column = ' || \"$column\" FROM \"$table\"
            WHERE \"$column\" IN ('$name','data/$name','/data/$name','backup/$name','/backup/$name')"
    done
}

step "A fresh appliance with two volumes"
qbctl init "$QBOBJ_DB" --volume data --volume backup
quietly setAccountDefault '{"HomeVolumeId": "data", "DiskQuotaWarn": 80, "GroupId": 99}'
ls -l "$QBOBJ_DB" | awk '{print $5 " bytes"}'

step "Groups and users"
quietly addGroup "@$office/groups.json"
quietly addUser "@$office/users.json"
table GroupId,GroupName getGroupCollection
table UserId,UserName,GroupName,HomeDirectory,Email,Password getUserCollection

step "Users from a spreadsheet (tabs, CRLF, UTF-8)"
cp "$office/user_list.txt" "$QBOBJ_ROOT/tmp/user_list.txt"
jq -n --argjson users "$(call getUserCollection)" --argjson groups "$(call getGroupCollection)" \
    '{user_collection_bak: $users, group_collection_bak: $groups}' >"$work/existing.json"
call checkUserList "@$work/existing.json" >"$work/checked.json"
jq '.group_collection.Group' "$work/checked.json" | quietly addGroup -
jq '.user_collection.User' "$work/checked.json" | quietly addUserList -
table UserId,UserName,GroupName,Email getUserCollection

step "Ann changes her password; a wrong old one is refused"
quietly setMyPassword '{"UserName": "ann", "OldPassword": "correct horse", "NewPassword": "new horse"}'
call setMyPassword '{"UserName": "ann", "OldPassword": "guess", "NewPassword": "mine now"}' || true

step "Shares"
quietly addShare "@$office/shares.json"
table ShareName,Path,Comment,QuotaMB getShareCollection
echo "protocols:"
table ShareId,CommonProtocolsCSV getSimpleShareCollection
echo "ann on documents: $(call getShareAccess ShareName=documents UserName=ann | jq -r .), a stranger: $(call getShareAccess ShareName=documents UserName=mallory | jq -r .)"

step "A wrong share is refused, and nothing of the call stays"
call addShare '[{"ShareName": "fine", "VolumeId": "data"}, {"ShareName": "wrong", "VolumeId": "data",
    "Cifs": {"UserAcl": [{"User": {"UserId": 100}, "Access": "Sometimes"}]}}]' || true
call getShareId share_name=fine || true

step "One protocol changes; Changed tells which"
call modifyShare '{"share": {"resource_id": "data/documents",
    "Cifs": {"DefaultAccess": "ReadWrite"}, "Http": {"DefaultAccess": "ReadOnly"}}, "modifyOneShare": 1}' |
    jq -r '.[0] | "Cifs.Changed = \(.Cifs.Changed), Http.Changed = \(.Http.Changed)"'

step "A share with snapshots, a clone and a backup job is renamed; everything follows"
record "INSERT INTO \`\$snapshot\` (zfs_name,name,type,created_on) VALUES('data/documents','monday',1,1700000000);
    INSERT INTO \`\$snapshot_clones\` (cloned_zfs_name,parent_snapshot_name,parent_zfs_name)
        VALUES('archive','monday','documents');
    INSERT INTO backup (name,enabled,src_type,src_share_proto,dst_type,dst_share_proto)
        VALUES('nightly',1,'share','documents','share','archive')"
quietly addShareUsedBy '{"ShareId": "data/documents", "usedby": {"AppName": "search", "AppData": "index 7"}}'
echo "before:"; traces_of documents
quietly modifyShare '{"share": {"resource_id": "data/documents", "ShareName": "papers"}, "modifyOneShare": 1}'
echo "after, under the old name: $(traces_of documents)"
echo "after, under the new name:"; traces_of papers

step "A share's configuration is copied"
quietly copyShare VolumeName=data ShareName=papers NewShareName=papers-2026
table ShareName,Path,Comment getShareCollection

step "A share migrates to the other volume; another migration is abandoned"
quietly preMigrateShare ShareId=data/media VolumeId=backup
call preMigrateShare ShareId=data/upload VolumeId=backup || true
echo "new path: $(call postMigrateShare ShareId=data/media Commit=1 | jq -r .)"
quietly preMigrateShare ShareId=data/upload VolumeId=backup
quietly postMigrateShare ShareId=data/upload Commit=0
table ShareName,VolumeId,Path getShareCollection

# ---- Snapshots, spares and jobs --------------------------------------------------------------------------

# NAME TYPE SECONDS
take() {
    quietly addSnapshot '{"ShareName": "papers", "VolumeName": "data", "SnapshotName": "'$1'", "Type": '$2', "CreatedOn": '$3'}'
}
of_papers() { echo "$1: $(call getSnapshotCollection ShareName=papers q_to=2147483647 | jq -r '[.Snapshot[].SnapshotName] | join(" ")')"; }
page() { table SnapshotName,Type,CreatedOn,Path getSnapshotCollection ShareName=papers q_to=2147483647 q_order=1 q_limit=3 "$@"; }

step "Snapshots of a share are taken, and paged through newest first"
for day in 1 2 3 4 5; do
    take day-$day 1 $((1700000000 + day * 86400))
done
take before-cleanup 2 1700500000
echo "of $(call getSnapshotCollectionCount ShareName=papers q_to=2147483647 | jq -r .), made by hand:" \
    "$(call getSnapshotCollectionCount ShareName=papers q_type=2 q_to=2147483647 | jq -r .)"
page; page q_offset=3
call getSnapshotCollection ShareName=papers q_to=2147483647 OrderBy=nowhere || true

step "They are thinned out by 'newer than' and by name; a clone is registered"
of_papers "all"
quietly deleteSnapshot VolumeName=data ShareName=papers DeleteNewer=2 SnapshotName=day-4; of_papers "nothing newer than day-4"
quietly deleteSnapshot VolumeName=data ShareName=papers SnapshotName=day-2; of_papers "without day-2"
call deleteSnapshot VolumeName=data ShareName=papers SnapshotName=day-2 || true
quietly addSnapshotClone ClonedShareName=papers-2026 ParentSnapshotName=day-3 ParentShareName=papers
table ClonedShareName,ParentShareName,ParentSnapshotName getSnapshotClones ParentShareName=papers

step "A disk is held as a spare, and a job is scheduled"
record "INSERT INTO \`\$disk_info\` (id,present,model,controller,channel,volume_id,pool_state,pool_hostid)
    VALUES('sdh',1,'Turner 500',0,7,'data',3,7)"
quietly addVolumeSpare DevName=sdh
call getVolumeSparesCollection | jq -r '.[].Disk[] | "\(.DevName): \(.Model) on channel \(.Channel) of controller \(.Controller), \(.PoolState)"'
quietly deleteVolumeSpare DevName=sdh
quietly deleteDiskByDevname '{"DevName": "sdh"}'
quietly addVolumeSchedule '{"JobID": 3, "VolumeName": "data", "Enabled": 1, "Action": 2,
    "Interval": {"Minute": "30", "Hour": "2", "DayOfMonth": "*", "Month": "*", "DayOfWeek": "0"}}'
call getVolumeScheduleCollection | jq -r '.VolumeSchedule[] | "job \(.JobID) on \(.VolumeName): \(.Interval.Minute) \(.Interval.Hour) \(.Interval.DayOfMonth) \(.Interval.Month) \(.Interval.DayOfWeek)"'

step "A share is deleted; what any table holds of it afterwards:"
echo "before:"; traces_of papers
id=$(call getShareId share_name=papers)
quietly deleteShare '{"resource_id": "data/papers", "Cifs": {}}'
echo "after: ${left:=$(traces_of papers)}"
[ -z "$left" ]
for table in $(query "SELECT T.name FROM sqlite_schema T, pragma_table_info(T.name) C
    WHERE T.type='table' AND C.name='share_id'"); do
    query "SELECT '  $table still holds ' || COUNT(*) || ' row(s) of share $id, which are kept on purpose'
        FROM \`$table\` WHERE share_id=$id HAVING COUNT(*)>0"
done

step "Backup jobs: a share to a share, a home to a remote host, all homes to a USB disk"
# A job with a source, a destination and, if given, where the data goes there.
job() {
    jq -n --arg name "$1" --arg from "$2" --arg to "$3" --arg path "${4:-}" '
        def place(text): text | split(":") | {Type: .[0], ShareNameOrProtocol: .[1]};
        {JobName: $name, Source: place($from), Destination: (place($to) + {Path: $path}), Option: {},
         Schedule: {Enabled: 1, Frequency: 1, Start: 1, End: 5, DayOfWeek: "Mon,Fri"}}'
}
{
    job "media to upload" share:media share:upload
    job "ann, off site" home:ann remote:rsync vault.example:/ann
    job "all homes" "home:*" usb:usb_port_1_1
} | jq -s . | quietly addBackupJob -
call getBackupJobCollection | jq -r '.BackupJob[] |
    "\(.JobId) \(.JobName): \(.Source.Type) \(.Source.ShareNameOrProtocol) -> \(.Destination.Type) \(.Destination.ShareNameOrProtocol) on \(.Schedule.DayOfWeek)"'
echo "conflicts, and a name in use, are refused:"
job "in circles" share:media share:media | call addBackupJob - || true
job "all homes into one" "home:*" home:ann | call addBackupJob - || true
job "all homes" home:bob share:upload | call addBackupJob - || true
echo "the button starts them backwards:"
call getBackupJobCollection | jq '{Jobs: [.BackupJob | reverse | .[] | {JobId}]}' | quietly setBackupButtonJobCollection -
call getBackupButtonJobCollection | jq -r '.. | objects | select(.JobName) | "\(.JobId) \(.JobName)"'

# ---- Services --------------------------------------------------------------------------------------------

step "The services of a fresh appliance; two are switched on"
services() { table ProtocolId,Enabled getProtocolCollection; }
services
for service in cifs snmp; do quietly setProtocolEnable protocol=$service enable=1; done
services

step "Several services change in one call; Changed tells which became others"
# A change of the services as they are read, by a jq program.
changed() { call getProtocolCollection | jq "$1" | call setProtocolCollection -; }
of='def of(service): .Protocol[] | select(.ProtocolId == service);'
changed "$of"' (of("ftp") |= (.Enabled = 1 | .FtpOptions.PassiveRangeMin = 40000)) | (of("ssh").SshOptions.Port = 2222)
    | (of("snmp").SnmpOptions.Community = "office") | {Protocol: [of("ftp"), of("ssh"), of("rsync"), of("snmp")]}' |
    jq -r '.. | objects | select(.ProtocolId) | "\(.ProtocolId): Changed = \(.Changed // 0)"'

step "A wrong passive range is refused, and nothing of the call is stored"
changed "$of"' (of("cifs").Enabled = 0) | (of("ftp").FtpOptions.PassiveRangeMin = 50)' || true
call getProtocolCollection | jq -r '.. | objects | select(.ProtocolId | IN("cifs", "ftp")?) |
    "\(.ProtocolId): Enabled = \(.Enabled), from port \(.FtpOptions.PassiveRangeMin // "-")"'

step "Time Machine on the home volume; the password is stored hashed and read masked"
quietly setTimemachine '{"Enabled": 1, "Password": "apple pie", "CapacityMB": 500000}'
call getTimemachine | jq -c '{Enabled, UserName, Password, CapacityMB}'
record "SELECT 'on volume ' || volume_timemachine || ', AFP ' || CASE enabled WHEN 1 THEN 'on' ELSE 'off' END FROM service_afp"

step "UPS devices: one attached, one asked over SNMP; six are watched at most"
quietly addUpsConfig '[{"Name": "rack", "Type": "local", "Description": "below the rack", "ShutdownThreshold": 20,
        "Share_enabled": 1, "List1": "10.0.0.1"},
    {"Name": "hall", "Type": "snmp", "Port": "10.0.0.9", "SnmpCommunity": "office", "ShutdownThreshold": 30}]'
table resource_id,Type,Port,SnmpMibs,ShutdownThreshold,UpsStatus getUpsConfigCollection
for name in c d e f; do
    jq -n --arg name $name '{Name: $name, Type: "snmp", Port: "10.0.0.9", SnmpCommunity: "office"}' | quietly addUpsConfig -
done
call addUpsConfig '{"Name": "seventh", "Type": "local"}' || true
call addUpsConfig '{"Name": "7th", "Type": "local"}' || true
jq -n '["c", "d", "e", "f"] | map({resource_id: (. + "@localhost")})' | quietly deleteUpsConfig -

# ---- Volumes, disks and health ---------------------------------------------------------------------------

# A disk of the tree below the root: NAME MODEL SECTORS
plug() {
    local folder=$QBOBJ_ROOT/sys/block/$1
    mkdir -p "$folder"/{device,queue}
    echo "$2" >"$folder/device/model"; echo "SN-$1" >"$folder/device/serial"
    echo "$3" >"$folder/size"; echo 1 >"$folder/queue/rotational"
}
differences() { table AddOrRemove,DiskId,Model,DiskEnclosureName,SlotName,Pool,PoolState getDiskDiff; }
sensors() { table Label,Value,ValuePrev1,ValuePrev2,ValuePrev3,Min,Max getEnclosureHealth '{"Controller": 0}'; }

step "Volumes and disks"
plug sda "Turner 500" 976773168; plug sdb "Turner 500" 976773168
quietly getDiskDiff
# What the storage side records of its box: which pool the disks are in, and the sensors.
record "UPDATE \`\$disk_info\` SET volume_id='data',pool_type='mirror',pool_state=0,pool_hostid=7;
    UPDATE _disk_enclosure SET nr_fan=2;
    INSERT INTO enclosure_health_spec VALUES(0,'Fan','1',900,6000,'front'),(0,'Fan','2',900,6000,'rear')"
quietly setDiskHealth '[{"DiskId": "sda", "Temp": 34}, {"DiskId": "sdb", "Temp": 36, "ZpoolState": "ONLINE"}]'
table VolumeName,RaidType,BlockTotal,BlockFree,BlockSize getVolumeCollection
table EnclosureName,EnclosureRows,EnclosureCols getDiskEnclosureCollection
table DevName,SlotName,Model,Serial,Capacity,Pool,PoolState,DiskState,Temperature getDiskCollection

step "A disk is pulled and another put in its slot: it is to rejoin the volume"
rm -r "$QBOBJ_ROOT/sys/block/sda"; plug sdc "Turner 1000" 1953525168
differences
echo "the disk that was in its slot:"
table DevName,SlotName,Present,Pool getDiskByDiskDiff '{"Controller": 0, "Channel": 0}'

step "Sensor readings keep their history; a UPS device is read"
for speed in 2100 2150 2300 950; do
    quietly setEnclosureHealth '{"Controller": 0, "Health": [{"Name": "Fan", "DevId": "1", "Value": '$speed'}]}'
done
quietly setEnclosureHealthForTest # the other fan: no file, so the middle of its range
sensors
quietly addUpsConfig '{"Type": "local", "Name": "cellar", "Description": "Below the stairs"}'
quietly setUpsInfo '{"resource_id": "cellar@localhost", "UpsModel": "Turner UPS 900"}'
quietly setUpsHealth '{"UpsName": "cellar", "ServerHost": "localhost", "UpsStatus": "OL CHRG", "BatteryCharge": "93",
    "BatteryRunTime": "41"}'
table UpsName,UpsModel,UpsStatus,BatteryCharge,BatteryRunTime,BatteryVoltage getUpsHealthCollection

step "A volume is deleted with everything on it"
on_volumes() {
    table ShareName,VolumeId,Path getShareCollection
    echo "homes of new users: $(call getAccountDefault | jq -r .HomeVolumeId), Time Machine:" \
        "$(query "SELECT CASE WHEN timemachine_enabled THEN volume_timemachine ELSE 'off' END FROM service_afp")"
}
record "UPDATE service_afp SET timemachine_enabled=1,volume_timemachine='data'"
echo "before:"; on_volumes
quietly deleteVolume VolumeId=data
echo "after:"; on_volumes
table VolumeName,RaidType getVolumeCollection

step "Network interfaces: two are added, one gets another address; a wrong address is refused"
quietly addNetworkInterface '[{"Name": "eth0", "Mac": "00:1b:21:0a:0b:0c", "Protocol": "static", "IP": "192.168.1.10",
        "DNS1": "192.168.1.1", "Gateway": "192.168.1.1", "Subnet": "255.255.255.0"},
    {"Name": "eth1", "Mac": "00:1b:21:0a:0b:0d", "Protocol": "dhcp"}]'
quietly modifyNetworkInterface '{"Name": "eth0", "IP": "192.168.1.20", "DNS2": "192.168.1.2"}'
table Name,Mac,Protocol,IP,DNS1,DNS2,Gateway,Subnet getNetworkInterfaceCollection
call modifyNetworkInterface '{"Name": "eth1", "IP": "192.168.1.300"}' || true

step "The log: events, from warnings up by pages, and the newest kept"
# Event: SEVERITY CATEGORY TAG TIME
event() { quietly addLog Severity="$1" Category="$2" MessageTag="LOGMSG_$3" TimeStamp="$4"; }
event info system STARTED 1700000000; event warn volume FILLING 1700000060; event err disk BROKEN 1700000120
event notice backup DONE 1700000180; event crit volume DEGRADED 1700000240; event info share ADDED 1700000300
events() { call getLog "{\"query\": $1}" | jq -r '"\(.Entries) of \(.TotalEntries) entries, of which on this page:",
    (.Log[] | "  \(.LogId) \(.Severity) \(.Category) \(.MessageTag)")'; }
events '{"severity": "warning", "order": 1, "limit": 2}'
events '{"severity": "warning", "order": 1, "limit": 2, "offset": 2}'
call addLog Severity=loud || true
quietly truncateLog n_keep=2
quietly deleteLog '{"severity": "crit"}'
echo "trimmed to the newest three, and those about critical events deleted:"
events '{}'

step "An iSCSI target: a LUN group with CHAP, a LUN and an initiator"
quietly addLunGroup '{"Name": "vault", "Target": "iqn.2001-04.com.example:vault", "ChapAuth": 1, "ChapSecret": "turnip lantern"}'
quietly addLun '{"Name": "disk0", "LunGroup": "vault", "LunN": 0}'
quietly addInitiator '{"Name": "iqn.1993-08.org.example:desk"}'
for initiator in iqn.1993-08.org.example:{desk,desk,laptop}; do # a name counts once, and needs no record
    quietly addLunGroupAccessList LunGroup=vault Initiator="$initiator"
done
table Name,Target,AnyInitiator,ChapAuth getLunGroupCollection
table Name,LunGroup,LunN getLun '{"Name": "disk0"}'
echo "let in: $(call getLunGroupAccessList LunGroup=vault | jq -r 'join(", ")')"
echo "ids: LUN $(call getLunId lun_name=disk0), group $(call getLunGroupId lun_group_name=vault)"
call getInitiatorId initiator_name=iqn.1993-08.org.example:desk || true # no share could have the name

step "The dictionary of a language, and a message of the log in it"
record "INSERT INTO _lang_supported VALUES(2,'de-de','Deutsch');
    INSERT INTO _dictionary VALUES('LOGMSG_DISK_FAILED',2,'Eine Festplatte ist ausgefallen.')"
call getDictionary code=de-de
call getTranslatedString code=de-de key=LOGMSG_DISK_FAILED | jq -r .
