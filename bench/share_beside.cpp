// Shares modified, copied and deleted, and paths looked up among them, each beside the fewest statements.
#include "beside.h"

#include <array>
#include <string_view>

namespace qbobj_bench
{
namespace
{

constexpr int many = 10000;

class Shares
{
  public:
    explicit Shares(const Connection &connection) : connection_(connection) {}
    static constexpr bool in_chain = false;

  protected:
    apr_pool_t *pool() const { return connection_.qbdb->pool; }
    // From all over the appliance, none twice.
    const char *existing(int number, const char *prefix = "", const char *suffix = "") const
    {
        constexpr int stride = 7;
        return apr_pstrcat(pool(), prefix, share_name(number * stride % many).c_str(), suffix, nullptr);
    }

    const Connection &connection_;
};

class ModifyShare : public Shares
{
  public:
    using Shares::Shares;
    static constexpr const char *name = "modifyShare";

    qbobj_Share_t *record(int number) const
    {
        auto *share = nothing_given<qbobj_Share_t>("Share");
        share->resource_id = existing(number, "data/");
        share->Comment = "A new comment";
        share->Cifs = nothing_given<qbobj_CifsShareOption_t>("CifsShareOption");
        share->Cifs->DefaultAccess = "ReadOnly";
        return share;
    }
    int by_library(qbobj_Share_t &share, qbobj_error_rec_t *err) const
    {
        return qbobj_modifyShare(connection_.qbdb, connection_.db, &share, 0, err);
    }
    void by_hand(qbobj_Share_t &share) const;
    static std::string text(const qbobj_Share_t &share) { return json("Share", share); }

  private:
    template <class Record>
    Record *nothing_given(const char *type) const
    {
        return static_cast<Record *>(qbobj_json::empty_record(qbobj_json::find_spec(type), pool()));
    }

    Transactions transactions_{connection_};
    Kept stored_{connection_, "SELECT id,name,path,IFNULL(visible_snapdir,'')<>'' FROM share "
                              "WHERE zfs_name=%Q"};
    Kept comment_{connection_, "UPDATE share SET comment=%Q WHERE id=%d"};
    Kept cifs_{connection_,
               R"(UPDATE cifs_share_option SET cifs_access='readonly',cifs_enabledfs=%d,available=%d
        WHERE share_id=%d AND (cifs_access,cifs_enabledfs,available) IS NOT ('readonly',%d,%d))"};
    std::array<Kept, 4> lists_{Kept{connection_, "DELETE FROM host_acl WHERE share_id=%d AND proto='cifs'"},
                               Kept{connection_, "DELETE FROM user_acl WHERE share_id=%d AND proto='cifs'"},
                               Kept{connection_, "DELETE FROM group_acl WHERE share_id=%d AND proto='cifs'"},
                               Kept{connection_, "DELETE FROM cifs_dfs_option WHERE share_id=%d"}};
};

void ModifyShare::by_hand(qbobj_Share_t &share) const
{
    transactions_.run([&] {
        int id = 0;
        if (auto row = stored_(share.resource_id); row.next())
            row >> id >> share.OldShareName >> share.OldPath >> share.OldVisibleSnapshot;
        share.Path = share.OldPath;
        finish(comment_(share.Comment, id));
        qbobj_CifsShareOption_t &cifs = *share.Cifs;
        const int available = cifs.NotAvailable == 0 ? 1 : 0;
        finish(cifs_(cifs.EnableDFS, available, id, cifs.EnableDFS, available));
        int changes = sqlite3_changes(connection_.db);
        for (const Kept &list : lists_) {
            finish(list(id));
            changes += sqlite3_changes(connection_.db);
        }
        cifs.Changed = changes > 0 ? 1 : 0;
    });
}

class DeleteShare : public Shares
{
  public:
    using Shares::Shares;
    static constexpr const char *name = "deleteShare";
    static constexpr bool in_chain = true;

    qbobj_Share_t *record(int number) const
    {
        auto *share = create<qbobj_Share_t>(pool());
        share->resource_id = existing(number, "data/");
        return share;
    }
    int by_library(qbobj_Share_t &shares, qbobj_error_rec_t *err) const
    {
        return qbobj_deleteShare(connection_.qbdb, connection_.db, &shares, err);
    }
    void by_hand(qbobj_Share_t &shares) const
    {
        transactions_.run([&] {
            for (qbobj_Share_t *share = &shares; share != nullptr; share = share->_link)
                remove(*share);
        });
    }
    static std::string text(const qbobj_Share_t &share) { return json("Share", share); }

  private:
    void remove(qbobj_Share_t &share) const
    {
        int id = 0;
        if (auto row = alone_(share.resource_id); row.next())
            row >> id >> share.OldShareName >> share.OldPath >> share.OldVisibleSnapshot;
        share.Path = share.OldPath;
        for (const Kept &rows : rows_of_id_)
            finish(rows(id));
        for (const Kept &rows : rows_of_dataset_)
            finish(rows(share.resource_id));
        finish(web_root_(share.OldShareName));
        finish(clones_(share.OldShareName, share.OldShareName));
        finish(backups_(share.OldShareName, share.OldShareName));
        finish(share_(id));
    }
    Kept of_id(const char *table) const
    {
        return {connection_, "DELETE FROM " + std::string(table) + " WHERE share_id=%d"};
    }
    Kept of_dataset(const char *table) const
    {
        return {connection_, "DELETE FROM " + std::string(table) + " WHERE zfs_name=%Q"};
    }

    Transactions transactions_{connection_};
    // A share in whose folder no other one lies.
    Kept alone_{connection_, R"(SELECT D.id,D.name,D.path,D.visible_snapdir IS NOT NULL FROM share D
        WHERE D.zfs_name=%Q AND NOT EXISTS (SELECT 1 FROM share S WHERE S.path COLLATE NOCASE>=D.path||'/'
        AND S.path COLLATE NOCASE<D.path||'0'))"};
    std::array<Kept, 17> rows_of_id_{
        of_id("user_acl"),          of_id("group_acl"),         of_id("host_acl"),
        of_id("cifs_share_option"), of_id("afp_share_option"),  of_id("nfs_share_option"),
        of_id("ftp_share_option"),  of_id("http_share_option"), of_id("zvol_share_option"),
        of_id("cifs_dfs_option"),   of_id("snapshot_schedule"), of_id("user_quota"),
        of_id("group_quota"),       of_id("_user_quota_stat"),  of_id("_group_quota_stat"),
        of_id("zfs_attr"),          of_id("_zfs_stat")};
    std::array<Kept, 2> rows_of_dataset_{of_dataset("`$snapshot`"), of_dataset("`$application_on_share`")};
    Kept web_root_{connection_, "UPDATE service_http SET share_name='' WHERE share_name=%Q"};
    Kept clones_{connection_,
                 "DELETE FROM `$snapshot_clones` WHERE cloned_zfs_name=%Q OR parent_zfs_name=%Q"};
    Kept backups_{connection_, "DELETE FROM backup WHERE (src_type='share' AND src_share_proto=%Q) "
                               "OR (dst_type='share' AND dst_share_proto=%Q)"};
    Kept share_{connection_, "DELETE FROM share WHERE id=%d"};
};

struct CopyOf {
    const char *share;
    const char *copy;
};

class CopyShare : public Shares
{
  public:
    using Shares::Shares;
    static constexpr const char *name = "copyShare";

    CopyOf *record(int number) const
    {
        auto *copied = create<CopyOf>(pool());
        copied->share = existing(number);
        copied->copy = apr_psprintf(pool(), "copy%05d", number);
        return copied;
    }
    int by_library(const CopyOf &copied, qbobj_error_rec_t *err) const
    {
        return qbobj_copyShare(connection_.qbdb, connection_.db, "data", copied.share, nullptr, copied.copy,
                               err);
    }
    void by_hand(const CopyOf &copied) const
    {
        transactions_.run([&] {
            int id = 0;
            if (auto row = id_(apr_pstrcat(pool(), "data/", copied.share, nullptr)); row.next())
                row >> id;
            finish(share_("data", copied.copy, copied.copy, "data", copied.copy, id));
            const int new_id = static_cast<int>(sqlite3_last_insert_rowid(connection_.db));
            for (const Kept &rows : rows_)
                finish(rows(new_id, id));
        });
    }
    static std::string text(const CopyOf &) { return {}; }

  private:
    Kept rows(const std::string &table, const std::string &columns) const
    {
        return {connection_, "INSERT INTO " + table + " (share_id," + columns + ") SELECT %d," + columns +
                                 " FROM " + table + " WHERE share_id=%d"};
    }

    Transactions transactions_{connection_};
    Kept id_{connection_, "SELECT id FROM share WHERE zfs_name=%Q"};
    Kept share_{connection_, R"(INSERT INTO share(zfs_name,type,volume_id,usb_storage_id,name,path,comment,
        user_access,group_access,everyone_access,non_owner_delete,user_id,group_id)
        SELECT %Q||'/'||%Q,type,volume_id,usb_storage_id,%Q,'/'||%Q||'/'||%Q,comment,user_access,group_access,
        everyone_access,non_owner_delete,user_id,group_id FROM share WHERE id=%d)"};
    std::array<Kept, 15> rows_{
        rows("user_quota", "user_id,mb_soft,mb_hard"),
        rows("group_quota", "group_id,mb_soft,mb_hard"),
        rows("user_acl", "user_id,proto,read,write"),
        rows("group_acl", "group_id,proto,read,write"),
        rows("host_acl", "host_id,proto,read,write,root"),
        rows("cifs_share_option",
             "available,cifs_access,cifs_guest_access,cifs_hide_share,cifs_recycle,cifs_recycle_mb_limit,"
             "cifs_recycle_age_limit,cifs_enable_masks,cifs_group_create_mask,cifs_everyone_create_mask,"
             "cifs_group_directory_mask,cifs_everyone_directory_mask,cifs_enable_forced_minimum,oplocks,"
             "cifs_enabledfs"),
        rows("afp_share_option", "available,afp_access,afp_guest_access,afp_fperm,afp_dperm"),
        rows("nfs_share_option", "available,nfs_access,nfs_sync"),
        rows("http_share_option", "available,http_access,http_webdav"),
        rows("ftp_share_option", "available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask"),
        rows("dlna_share_option", "available,access,media_type"),
        rows("daap_share_option", "available"),
        rows("zvol_share_option", "kb_size,is_sparse"),
        rows("snapshot_schedule", "enabled,minute,hour,day_of_month,day_of_week,month,last_taken,"
                                  "purge_manual_snapshot,last_daily_taken,last_weekly_taken"),
        rows("zfs_attr", "mb_quota,mb_reservation,mb_refquota,mb_refreservation,compression,"
                         "bit_rot_protection,dedup,logbias,origin,sync")};
};

/* ---- Paths --------------------------------------------------------------------------------------------- */

// The folders that a path lies in, from the outermost on; the measured paths have as many.
constexpr std::size_t depth = 4;
std::array<const char *, depth> folders_above(apr_pool_t *pool, std::string_view path)
{
    std::array<const char *, depth> folders{};
    std::size_t end = 0;
    for (const char *&folder : folders) {
        folder = apr_pstrmemdup(pool, path.data(), end);
        end = path.find('/', end + 1);
    }
    return folders;
}

struct PathAccess {
    const char *path;
    const char *user;
    const char *access;
};

class GetPathAccess : public Shares
{
  public:
    using Shares::Shares;
    static constexpr const char *name = "getPathAccess";

    PathAccess *record(int number) const
    {
        auto *asked = create<PathAccess>(pool());
        asked->path = existing(number, "/data/", "/folder/file");
        asked->user = apr_pstrdup(pool(), user_name(number % listed_accounts).c_str());
        return asked;
    }
    int by_library(PathAccess &asked, qbobj_error_rec_t *err) const
    {
        char *access = nullptr;
        const int rc =
            qbobj_getPathAccess(connection_.qbdb, connection_.db, asked.path, asked.user, &access, err);
        asked.access = access;
        return rc;
    }
    // All may read the measured shares.
    void by_hand(PathAccess &asked) const
    {
        const auto above = folders_above(pool(), asked.path);
        transactions_.run([&] {
            int id = 0;
            int may_write = 0;
            if (auto row = share_(asked.path, above[0], above[1], above[2], above[3]); row.next())
                row >> id;
            if (auto row = may_write_(asked.user, id); row.next())
                row >> may_write;
            asked.access = apr_pstrdup(pool(), may_write != 0 ? "ReadWrite" : "ReadOnly");
        });
    }
    static std::string text(const PathAccess &asked) { return asked.access; }

  private:
    Transactions transactions_{connection_, "BEGIN"};
    Kept share_{connection_,
                "SELECT MIN(id) FROM share WHERE path=%Q OR path COLLATE NOCASE IN (%Q,%Q,%Q,%Q)"};
    Kept may_write_{connection_, R"(WITH listed(write) AS (
            SELECT A.write FROM user_acl A WHERE A.share_id=O.share_id AND A.proto='cifs' AND A.user_id=U.id
            UNION ALL SELECT A.write FROM group_acl A WHERE A.share_id=O.share_id AND A.proto='cifs'
            AND (A.group_id=U.group_id OR EXISTS(SELECT 1 FROM `$group_has_user` GU
            WHERE GU.group_id=A.group_id AND GU.user_id=U.id)))
        SELECT CASE WHEN O.cifs_access='writeable' THEN NOT EXISTS(SELECT 1 FROM listed WHERE write=0)
        ELSE EXISTS(SELECT 1 FROM listed WHERE write<>0) END
        FROM `$user` U CROSS JOIN cifs_share_option O WHERE U.uname=%Q
        AND (U.rid IS NULL OR U.is_privileged=1) AND O.share_id=%d)"};
};

struct FolderAttribute {
    const char *path;
    qbobj_folder_attribute_t attribute;
};

// Paths in shares: neither a share itself nor in a home.
class GetFolderAttribute : public Shares
{
  public:
    using Shares::Shares;
    static constexpr const char *name = "getFolderAttribute";

    FolderAttribute *record(int number) const
    {
        auto *asked = create<FolderAttribute>(pool());
        asked->path = existing(number, "/data/", "/folder/file");
        return asked;
    }
    int by_library(FolderAttribute &asked, qbobj_error_rec_t *err) const
    {
        return getFolderAttribute(connection_.qbdb, connection_.db, asked.path, &asked.attribute, err);
    }
    void by_hand(FolderAttribute &asked) const
    {
        const auto above = folders_above(pool(), asked.path);
        transactions_.run([&] {
            qbobj_folder_attribute_t &found = asked.attribute;
            if (auto row = flags_(asked.path, asked.path, above[0], above[1], above[2], above[3]); row.next())
                row >> found.is_subfolder >> found.cifs_flags >> found.dlna_flags >> found.comment;
        });
    }
    static std::string text(const FolderAttribute &asked)
    {
        const qbobj_folder_attribute_t &found = asked.attribute;
        return std::to_string(found.cifs_flags) + " " + std::to_string(found.dlna_flags) + " " +
               std::to_string(found.is_homeshare) + " " + std::to_string(found.is_subfolder) + " " +
               (found.comment == nullptr ? "null" : found.comment);
    }

  private:
    Transactions transactions_{connection_, "BEGIN"};
    Kept flags_{
        connection_,
        R"(SELECT S.path<>%Q,(CIFS.share_id NOT NULL)|(CASE WHEN CIFS.cifs_hide_share THEN 2 ELSE 0 END),
        IFNULL(DLNA.media_type,0),S.comment FROM share S
        LEFT JOIN cifs_share_option CIFS ON CIFS.share_id=S.id
        LEFT JOIN dlna_share_option DLNA ON DLNA.share_id=S.id
        WHERE S.path=%Q OR S.path COLLATE NOCASE IN (%Q,%Q,%Q,%Q) ORDER BY 1,S.id LIMIT 1)"};
};

} // namespace

void add_share_beside_figures(Figures &figures)
{
    const auto appliance = figures.keep<Appliance>(Contents{.shares = many});
    measure_beside<ModifyShare>(figures, appliance, 1000, 1.6);
    measure_beside<DeleteShare>(figures, appliance, 1000, 1.6);
    measure_beside<CopyShare>(figures, appliance, 1000, 1.6);
    measure_beside<GetPathAccess>(figures, appliance, 2000, 1.6);
    measure_beside<GetFolderAttribute>(figures, appliance, 2000, 1.6);
}

} // namespace qbobj_bench
