// Shares created with the options of all protocols.
#include "beside.h"
#include "share_writer.h"

#include <array>
#include <cstring>

namespace qbobj_bench
{
namespace
{

constexpr int shares_there = 1000;
constexpr int new_shares = 200; // in a run, each with its own call
constexpr int chained = 10000;  // in one call
constexpr int durable_runs = 9;

const char *text_in(apr_pool_t *pool, const std::string &text)
{
    return apr_pstrdup(pool, text.c_str());
}

// A list for CIFS clients: one user, one group, one host.
void give_lists(apr_pool_t *pool, qbobj_CifsShareOption_t &option)
{
    option.UserAcl = create<qbobj_UserAcl_t>(pool);
    option.UserAcl->User = create<qbobj_SystemUser_t>(pool);
    option.UserAcl->User->resource_id = first_account_id;
    option.UserAcl->Access = "ReadOnly";
    option.GroupAcl = create<qbobj_GroupAcl_t>(pool);
    option.GroupAcl->Group = create<qbobj_SystemGroup_t>(pool);
    option.GroupAcl->Group->resource_id = first_account_id;
    option.GroupAcl->Access = "ReadOnly";
    option.HostAcl = create<qbobj_HostAcl_t>(pool);
    option.HostAcl->Host = create<qbobj_Host_t>(pool);
    option.HostAcl->Host->HostName = "10.0.0.1";
    option.HostAcl->Access = "ReadWrite";
}

qbobj_Share_t *new_share(apr_pool_t *pool, int number)
{
    auto *share = create<qbobj_Share_t>(pool);
    share->ShareName = text_in(pool, share_name(shares_there + number));
    share->VolumeId = "data";
    share->Comment = "A new share";
    share->Sync = "standard";
    share->LogBias = "latency";
    share->Cifs = create<qbobj_CifsShareOption_t>(pool);
    share->Afp = create<qbobj_AfpShareOption_t>(pool);
    share->Nfs = create<qbobj_NfsShareOption_t>(pool);
    share->Ftp = create<qbobj_FtpShareOption_t>(pool);
    share->Rsync = create<qbobj_RsyncShareOption_t>(pool);
    share->Dlna = create<qbobj_DlnaShareOption_t>(pool);
    share->Daap = create<qbobj_DaapShareOption_t>(pool);
    share->Http = create<qbobj_HttpShareOption_t>(pool);
    give_lists(pool, *share->Cifs);
    return share;
}

void add_by_library(const Connection &connection, qbobj_Share_t &share)
{
    qbobj_error_rec_t err{};
    check(qbobj_addShare(connection.qbdb, connection.db, &share, &err), err);
}

// Both leave the same content.
void compare(const Appliance &appliance)
{
    const Copy library(appliance);
    const Copy floor(appliance);
    ShareWriter writer(floor.connection);
    for (int i = 0; i < 3; i++) {
        add_by_library(library.connection, *new_share(library.connection.qbdb->pool, i));
        writer.add(*new_share(floor.connection.qbdb->pool, i));
    }
    require_equal("addShare", floor.connection.content(), library.connection.content());
}

// A run on a copy of its own; the first share finds the statements prepared.
template <class Add>
void add_shares(benchmark::State &state, const Connection &connection, Add add)
{
    std::vector<qbobj_Share_t *> shares;
    for (int i = 0; i <= new_shares; i++)
        shares.push_back(new_share(connection.qbdb->pool, i));
    add(*shares.back());
    shares.pop_back();
    for (auto _ : state)
        for (qbobj_Share_t *share : shares)
            add(*share);
}

/* ---- Many in one call ---------------------------------------------------------------------------------- */

// What a program does that knows its shares to be new: no list to clear, nothing to look up that it has stored.
class NewShares
{
  public:
    explicit NewShares(const Connection &connection) : connection_(connection) {}
    static constexpr const char *name = "addShare";
    static constexpr bool in_chain = true;

    qbobj_Share_t *record(int number) const { return new_share(connection_.qbdb->pool, number); }
    int by_library(qbobj_Share_t &shares, qbobj_error_rec_t *err) const
    {
        return qbobj_addShare(connection_.qbdb, connection_.db, &shares, err);
    }
    void by_hand(qbobj_Share_t &shares) const;
    static std::string text(const qbobj_Share_t &share) { return json("Share", share); }

  private:
    // What the shares of a chain have in common.
    struct Place {
        const char *volume;
        uint64_t free_kb;
        int owner;
        int group;
    };
    Place place_of(const char *volume_id) const;
    void add(qbobj_Share_t &share, const Place &place) const;
    void add_lists(const qbobj_CifsShareOption_t &option, int id) const;
    Kept option(const char *columns, const char *values) const
    {
        return {connection_, std::string("INSERT INTO ") + columns + " VALUES(%d," + values + ")"};
    }

    const Connection &connection_;
    Transactions transactions_{connection_};
    Kept place_{connection_,
                R"(SELECT lv_name,blk_free,(SELECT id FROM `$user` WHERE uname='guest' AND rid IS NULL),
        (SELECT id FROM `$group` WHERE gname='guest' AND rid IS NULL) FROM _volume WHERE id=%Q)"};
    Kept share_{connection_, R"(INSERT INTO share (zfs_name,type,name,comment,volume_id,path,user_access,
        group_access,everyone_access,non_owner_delete,user_id,group_id)
        VALUES(%Q,'share',%Q,%Q,%Q,%Q,7,7,7,1,%d,%d))"};
    Kept attributes_{connection_, R"(INSERT INTO zfs_attr (share_id,mb_quota,mb_reservation,mb_refquota,
        mb_refreservation,compression,bit_rot_protection,dedup,logbias,sync)
        VALUES(%d,%llu,%llu,%llu,%llu,%d,%d,%d,%Q,%Q))"};
    std::array<Kept, 9> options_{
        option("cifs_share_option (share_id,cifs_access,cifs_guest_access,cifs_hide_share,"
               "cifs_group_create_mask,cifs_everyone_create_mask,cifs_enable_masks,cifs_group_directory_mask,"
               "cifs_everyone_directory_mask,cifs_enable_forced_minimum,cifs_recycle,cifs_recycle_mb_limit,"
               "cifs_recycle_age_limit,oplocks,available,cifs_enabledfs)",
               "'writeable',0,0,6,6,0,7,7,0,0,0,0,0,1,0"),
        option("afp_share_option (share_id,available,afp_access,afp_guest_access,afp_fperm,afp_dperm)",
               "1,'writeable',0,NULL,NULL"),
        option("nfs_share_option (share_id,available,nfs_access,nfs_sync)", "1,'writeable',1"),
        option("ftp_share_option (share_id,available,ftp_access,ftp_mask,ftp_create_mask,ftp_directory_mask)",
               "1,'writeable',0,0,0"),
        option("rsync_share_option (share_id,available,rsync_access,passwordprotection)",
               "1,'writeable','disabled'"),
        option("dlna_share_option (share_id,available,access,media_type)", "1,'readonly',7"),
        option("daap_share_option (share_id,available)", "1"),
        option("http_share_option (share_id,available,http_access,http_webdav)", "1,'writeable',0"),
        option("snapshot_schedule (share_id,enabled,minute,hour,day_of_month,day_of_week,month,last_taken,"
               "purge_manual_snapshot,last_daily_taken,last_weekly_taken)",
               "1,'0','*','*','*','*',0,0,0,0")};
    Kept user_{connection_,
               "INSERT INTO user_acl (share_id,user_id,proto,read,write) VALUES(%d,%d,'cifs',1,0)"};
    Kept group_{connection_, "INSERT INTO group_acl (share_id,group_id,proto,read,write) "
                             "VALUES(%d,%d,'cifs',1,0)"};
    Kept host_{connection_, "INSERT INTO host_acl (share_id,host_id,proto,read,write,root) "
                            "SELECT %d,id,'cifs',1,1,0 FROM host WHERE name=%Q"};
};

void NewShares::by_hand(qbobj_Share_t &shares) const
{
    transactions_.run([&] {
        const char *volume_id = "";
        Place place{};
        for (qbobj_Share_t *share = &shares; share != nullptr; share = share->_link) {
            if (std::strcmp(volume_id, share->VolumeId) != 0)
                place = place_of(volume_id = share->VolumeId);
            add(*share, place);
        }
    });
}

NewShares::Place NewShares::place_of(const char *volume_id) const
{
    Place place{};
    if (auto row = place_(volume_id); row.next())
        row >> place.volume >> place.free_kb >> place.owner >> place.group;
    return place;
}

void NewShares::add(qbobj_Share_t &share, const Place &place) const
{
    if (share.RefQuotaMB > place.free_kb / 1024)
        throw std::runtime_error("cannot add a share");
    const char *const path =
        apr_pstrcat(connection_.qbdb->pool, "/", place.volume, "/", share.ShareName, nullptr);
    finish(share_(path + 1, share.ShareName, share.Comment, share.VolumeId, path, place.owner, place.group));
    const int id = static_cast<int>(sqlite3_last_insert_rowid(connection_.db));
    finish(attributes_(id, share.QuotaMB, share.ReserveMB, share.RefQuotaMB, share.RefReserveMB,
                       share.Compression, share.BitRotProtection, share.Dedup, share.LogBias, share.Sync));
    for (const Kept &option : options_)
        finish(option(id));
    add_lists(*share.Cifs, id);
    share.resource_id = share.ShareId =
        apr_pstrcat(connection_.qbdb->pool, share.VolumeId, "/", share.ShareName, nullptr);
}

// Of hosts that are known.
void NewShares::add_lists(const qbobj_CifsShareOption_t &option, int id) const
{
    for (const qbobj_UserAcl_t *entry = option.UserAcl; entry != nullptr; entry = entry->_link)
        finish(user_(id, entry->User->resource_id));
    for (const qbobj_GroupAcl_t *entry = option.GroupAcl; entry != nullptr; entry = entry->_link)
        finish(group_(id, entry->Group->resource_id));
    for (const qbobj_HostAcl_t *entry = option.HostAcl; entry != nullptr; entry = entry->_link)
        finish(host_(id, entry->Host->HostName));
}

/* ---- On the disk --------------------------------------------------------------------------------------- */

void run(sqlite3 *db, const char *sql)
{
    if (sqlite3_exec(db, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(db));
}

// As many commits of one row by plain SQLite, on the same disk.
void add_rows(benchmark::State &state)
{
    const TemporaryFolder folder;
    sqlite3 *opened = nullptr;
    const int rc = sqlite3_open((folder.path() / "rows.db").c_str(), &opened);
    const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(opened, sqlite3_close);
    if (rc != SQLITE_OK)
        throw std::runtime_error(sqlite3_errstr(rc));
    run(opened, "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; CREATE TABLE t (a INTEGER PRIMARY "
                "KEY, b TEXT)");
    run(opened, "INSERT INTO t (b) VALUES('share')");
    for (auto _ : state)
        for (int i = 0; i < new_shares; i++)
            run(opened, "INSERT INTO t (b) VALUES('share')");
}

} // namespace

void add_new_share_figures(Figures &figures)
{
    const auto appliance = figures.keep<Appliance>(Contents{.shares = shares_there});
    compare(*appliance);
    figures.measure("addShare/library", [appliance](benchmark::State &state) {
        const Copy copy(*appliance);
        add_shares(state, copy.connection,
                   [&copy](qbobj_Share_t &share) { add_by_library(copy.connection, share); });
    });
    figures.measure("addShare/kept", [appliance](benchmark::State &state) {
        const Copy copy(*appliance);
        ShareWriter writer(copy.connection);
        add_shares(state, copy.connection, [&writer](qbobj_Share_t &share) { writer.add(share); });
    });
    figures.ratio_at_most("addShare-to-kept-statements", "addShare/library", "addShare/kept", 1.5);
    measure_beside<NewShares>(figures, appliance, chained, 1.5);
}

// A share that has to be on the disk, beside a row of plain SQLite that has to be.
void add_durable_figures(Figures &figures)
{
    const auto appliance = figures.keep<Appliance>(Contents{.shares = shares_there});
    figures.measure(
        "addShare/durable",
        [appliance](benchmark::State &state) {
            const Copy copy(*appliance, Commits::durable);
            add_shares(state, copy.connection,
                       [&copy](qbobj_Share_t &share) { add_by_library(copy.connection, share); });
        },
        durable_runs, Figures::Clock::wall);
    figures.measure("row/durable", add_rows, durable_runs, Figures::Clock::wall);
    figures.ratio_at_most("durable-addShare-to-a-durable-row", "addShare/durable", "row/durable", 1.6);
}

} // namespace qbobj_bench
