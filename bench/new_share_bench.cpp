// Shares created with the options of all protocols.
#include "measurements.h"
#include "share_writer.h"

namespace qbobj_bench
{
namespace
{

constexpr int shares_there = 1000;
constexpr int new_shares = 200; // in a run, each with its own call
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
    run(opened,
        "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; CREATE TABLE t (a INTEGER PRIMARY KEY, b TEXT)");
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
