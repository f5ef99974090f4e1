// Mixed changes through the exported operations, and what of them was acknowledged.
#pragma once

#include "processes.h"
#include "scenarios.h"

#include <sys/mman.h>

#include <random>

namespace qbobj_test
{

// In the texts ~ is the object's name, % a number of its own, # the number of the step, ? the id of the backup job of
// the name, @ the record.
struct Kind {
    const char *make, *change, *remove; // operation and input; one without a change is removed instead
    const char *record;
    const char
        *marks; // selects the number of the step from wherever it stands; no row when there is no object
};

inline constexpr Kind kinds[] = {
    {"addShare [@]", R"(modifyShare {"share": @, "modifyOneShare": 1})", "deleteShare [@]",
     R"({"resource_id": "data/~", "ShareName": "~", "VolumeId": "data", "Comment": "#", "QuotaMB": #, "Ftp": {},
"SnapshotSchedule": {"Enabled": 1, "Minute": "#"}, "Nfs": {"HostAcl": [{"Host": {"HostName": "h#"}, "Access": "ReadOnly"}]},
"Cifs": {"DfolderAcl": [{"Name": "link", "Address": "10.0.0.9", "RemoteShare": "#"}]}})",
     R"(SELECT comment, mb_quota, minute, remote_share, substr(H.name,2) FROM share S LEFT JOIN zfs_attr Z ON Z.share_id=S.id
LEFT JOIN snapshot_schedule C ON C.share_id=S.id LEFT JOIN cifs_dfs_option D ON D.share_id=S.id
LEFT JOIN host_acl A ON A.share_id=S.id AND A.proto='nfs' LEFT JOIN host H ON H.id=A.host_id WHERE S.name='~')"},
    {"addUser [@]", "modifyUser @", R"(deleteUser {"UserId": %})",
     R"({"UserName": "~", "UserId": %, "Password": "pw", "Email": "u#@x.y", "HomeFolderSettings": {"SizeLimit": #},
"TimeMachineQuota": {"Enabled": 1, "CapacityMB": #}, "UserQuota": [{"ShareId": "data/docs", "HardMB": #}]})",
     R"(SELECT substr(email,2,length(email)-5), H.quota, capacity_mb, mb_hard FROM `$user` U LEFT JOIN `$home_folder` H
ON H.user_id=U.id LEFT JOIN `$timemachine_quota` T ON T.user_id=U.id LEFT JOIN user_quota Q ON Q.user_id=U.id
WHERE uname='~' AND is_privileged>=0)"},
    {"addGroup [@]", "modifyGroup @", R"(deleteGroup {"GroupId": %})", R"({"GroupName": "~", "GroupId": %,
"GroupQuota": [{"ShareId": "data/docs", "HardMB": #}, {"ShareId": "data/plain", "HardMB": #}]})",
     R"(SELECT min(mb_hard), max(mb_hard) FROM `$group` G LEFT JOIN group_quota Q ON Q.group_id=G.id
WHERE gname='~' AND is_privileged>=0 GROUP BY G.id)"},
    {"addBackupJob [@]", "modifyBackupJob [@]", "deleteBackupJob [@]",
     R"({"JobId": ?, "JobName": "~", "Source": {"Type": "volume", "ShareNameOrProtocol": "data", "Path": "/#"}, "Option": {},
"Destination": {"Type": "share", "ShareNameOrProtocol": "plain", "Path": "/#"}, "Schedule": {"Enabled": 0}})",
     "SELECT substr(src_path,2), substr(dst_path,2) FROM backup WHERE name='~'"},
    {"addNetworkInterface [@]", "modifyNetworkInterface [@]", "deleteNetworkInterface [@]",
     R"({"Name": "~", "Mac": "00:11:22:33:44:57", "Protocol": "#"})",
     "SELECT protocol FROM network_if WHERE name='~'"},
    {"addVolumeSchedule @", R"(updateVolumeSchedule {"JobID": %, "Interval": {"Minute": "#"}})",
     R"(deleteVolumeSchedule {"JobID": %, "VolumeName": "data"})",
     R"({"VolumeName": "data", "JobID": %, "Interval": {"Minute": "#"}})",
     "SELECT minute FROM volume_schedule WHERE job_id=%"},
    {R"(addSnapshot {"Type": #, @)", nullptr, "deleteSnapshot {@",
     R"("ShareName": "docs", "VolumeName": "data", "SnapshotName": "~"})",
     "SELECT type FROM `$snapshot` WHERE name='~'"},
    {"addLunGroup [@]", "modifyLunGroup [@]", R"(deleteLunGroup {"LunGroupName": "~"})",
     R"({"Name": "~", "Target": "#", "ChapAuth": 1, "ChapSecret": "#"})",
     "SELECT target, chap_secret FROM `$iscsi_lun_group` WHERE name='~'"},
    {"addLun [@]", nullptr, R"(deleteLun {"Name": "~"})", R"({"Name": "~", "LunGroup": "vault", "LunN": #})",
     "SELECT lun_n FROM `$iscsi_lun` WHERE name='~'"},
    {"setRegistryEntry @", "setRegistryEntry @", nullptr, R"({"key": "~", "val": "#"})",
     "SELECT value FROM `$registry` WHERE key='~'"},
    {"addLog @", "addLog @", nullptr,
     R"({"Severity": "info", "Category": "disk", "MessageTag": "LOGMSG_~", "MessageArgsXml": "#"})",
     "SELECT msg_args_xml FROM `$log` WHERE msg_tag='LOGMSG_~' ORDER BY id DESC LIMIT 1"},
};

// Every owner, a process or a thread, has objects of every kind. Whoever makes or changes one lets it carry the number
// of that step in each of the rows that the step writes. What was begun and what was acknowledged stands in memory that
// owners share with the process that started them, and that outlives them.
class Workload
{
  public:
    // Furnishes the appliance, and leaves it closed.
    Workload(Appliance &appliance, std::size_t owners) : appliance_(appliance), count_(owners)
    {
        furnish(appliance);
        appliance.close();
        void *const memory =
            mmap(nullptr, owners * sizeof(Owner), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        owners_ = static_cast<Owner *>(memory);
    }
    ~Workload() { munmap(owners_, count_ * sizeof(Owner)); }
    Workload(const Workload &) = delete;
    Workload &operator=(const Workload &) = delete;

    // Opens and closes handles and makes steps with them for that time; false when one failed.
    bool work(std::size_t owner, std::size_t seed, std::chrono::milliseconds time)
    {
        std::mt19937_64 random(seed);
        bool done = true;
        for (const Deadline deadline(time); done && !deadline.passed();) {
            const Connection connection(appliance_.file());
            done = connection.is_open();
            for (std::size_t steps = random() % 20; done && steps > 0 && !deadline.passed(); --steps)
                done = step(owner, random(), {connection.qbdb, connection.db});
        }
        return done;
    }

    // One step; false when it failed or was not committed.
    bool step(std::size_t owner, std::size_t chance, const qbobj_json::Connection &connection)
    {
        const std::size_t number = chance % objects;
        const Kind &kind = kinds[number % std::size(kinds)];
        Object &object = owners_[owner].states[number];
        const bool there = object.done != 0;
        const bool remove =
            there && kind.remove != nullptr && (kind.change == nullptr || chance / objects % 4 == 0);
        const int mark = ++owners_[owner].steps;
        int32_t job = 0;
        qbdb_sql_get_int32_mprintf(connection.qbdb, connection.db, &job, nullptr, nullptr, "", 0,
                                   filled("SELECT id FROM backup WHERE name='~'", owner, number).c_str());
        qbdb_remove_deleted_accounts(connection.qbdb, connection.db, nullptr); // they keep their ids

        std::string input = remove ? kind.remove : there ? kind.change : kind.make;
        replace_all(input, '@', kind.record);
        replace_all(input, '?', std::to_string(job));
        replace_all(input, '#', std::to_string(mark));
        input = filled(std::move(input), owner, number);
        const std::size_t blank = input.find(' ');
        const qbobj_json::Operation &operation = *qbobj_json::find_operation(input.substr(0, blank));
        const qbobj_json::Json json = qbobj_json::Json::parse(input.substr(blank));
        object.begun = remove ? 0 : mark;
        const auto outcome = operation.call(operation, connection, arrange_inputs(operation, json));
        const bool done = outcome.result == 0 && qbdb_last_commit(connection.qbdb, nullptr) == 0;
        if (done)
            object.done = object.begun;
        else
            std::fprintf(stderr, "%s: %d %s\n", input.c_str(), outcome.result, outcome.error.msg);
        qbdb_clear_pool(connection.qbdb);
        return done;
    }

    // Whether every object is whole, and as it was acknowledged or as the step in flight makes it.
    void check()
    {
        appliance_.reopen();
        for (std::size_t at = 0; at < count_ * objects; ++at) {
            const std::size_t number = at % objects;
            auto &[begun, done] = owners_[at / objects].states[number];
            const std::string select = filled(kinds[number % std::size(kinds)].marks, at / objects, number);
            const std::vector<std::string> rows = appliance_.rows(select);
            const auto carries = [&](int mark) {
                std::string row = std::to_string(mark);
                while (!rows.empty() && row.size() < rows[0].size())
                    row += '|' + std::to_string(mark);
                return rows == (mark == 0 ? std::vector<std::string>{} : std::vector{row});
            };
            done = carries(begun) ? begun : done;
            EXPECT_TRUE(carries(done)) << select << "\ngives " << ::testing::PrintToString(rows)
                                       << ", acknowledged was " << done << ", begun " << begun;
            begun = done;
        }
        EXPECT_EQ("ok", appliance_.value("PRAGMA integrity_check"));
        EXPECT_TRUE(appliance_.rows("PRAGMA foreign_key_check").empty());
        appliance_.close();
    }

  private:
    static constexpr std::size_t objects = 2 * std::size(kinds);
    // The number that an object carries, 0 when it is not there: as its last step began, and as one was acknowledged.
    struct Object {
        int begun;
        int done;
    };
    struct Owner {
        std::array<Object, objects> states;
        int steps;
    };

    static void replace_all(std::string &text, char sign, const std::string &value)
    {
        for (std::size_t at = 0; (at = text.find(sign, at)) != text.npos; at += value.size())
            text.replace(at, 1, value);
    }
    static std::string filled(std::string text, std::size_t owner, std::size_t number)
    {
        replace_all(text, '~', "o" + std::to_string(owner) + "n" + std::to_string(number));
        replace_all(text, '%', std::to_string(1000 + owner * objects + number));
        return text;
    }

    Appliance &appliance_;
    std::size_t count_;
    Owner *owners_;
};

} // namespace qbobj_test
