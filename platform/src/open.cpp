// Opening and closing a database: the handle, its pool and its connection.
#include "connection.h"
#include "database_file.h"
#include "message.h"
#include "migration.h"
#include "schema_text.h"

#include <apr_general.h>
#include <apr_pools.h>

#include <cerrno>
#include <mutex>
#include <utility>

using namespace qbdb;

namespace
{

Problem damaged(const std::string &path, int rc, sqlite3 *db)
{
    const int code = rc & 0xff;
    const bool content = code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
    return {rc, (content ? "\"" + path + "\" is damaged: " : "cannot open \"" + path + "\": ") +
                    sqlite3_errmsg(db)};
}

Problem refuse_version(const std::string &path, int version, bool readonly)
{
    const std::string present = std::to_string(schema_version());
    const std::string found = std::to_string(version);
    if (version > schema_version())
        return {SQLITE_CANTOPEN, "\"" + path + "\" was made by a newer version (schema " + found +
                                     ", this is " + present + ")"};
    if (version < 1)
        return {SQLITE_CORRUPT, "\"" + path + "\" is damaged: it has schema " + found};
    if (readonly && version < schema_version())
        return {SQLITE_READONLY, "\"" + path + "\" has the older schema " + found + " (this is " + present +
                                     "): open it once for writing"};
    return {};
}

// On a file system that nobody can write, the log's index cannot be made, and is not needed.
std::string file_uri(const std::string &path, bool immutable)
{
    std::string uri = "file:";
    for (const char c : path)
        uri += c == '%' ? "%25" : c == '?' ? "%3f" : c == '#' ? "%23" : std::string(1, c);
    return immutable ? uri + "?immutable=1" : uri;
}

// Reads the schema and the version that counts, which may stand in the log.
int read_version(sqlite3 *db, int &version)
{
    Statement statement;
    const char *problem = nullptr;
    int rc =
        prepare(db, "SELECT user_version, (SELECT count(*) FROM main.sqlite_schema) FROM pragma_user_version",
                0, statement, &problem);
    if (rc == SQLITE_OK && (rc = sqlite3_step(statement.get())) == SQLITE_ROW) {
        version = sqlite3_column_int(statement.get(), 0);
        rc = SQLITE_OK;
    }
    return rc;
}

bool is_own(std::string_view sql)
{
    for (const char *const *text = schema_text; *text; text++)
        if (std::string_view(*text).find(sql) != std::string_view::npos)
            return true;
    return false;
}

// Somebody else's trigger would run within the statements that write, may undo them, and may have no end.
int find_foreign_trigger(sqlite3 *db, std::string &name)
{
    Statement statement;
    const char *problem = nullptr;
    int rc =
        prepare(db, "SELECT name, sql FROM main.sqlite_schema WHERE type='trigger'", 0, statement, &problem);
    while (rc == SQLITE_OK && (rc = sqlite3_step(statement.get())) == SQLITE_ROW) {
        rc = SQLITE_OK;
        if (name.empty() && !is_own(cell_text(statement.get(), 1)))
            name = cell_text(statement.get(), 0);
    }
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

int configure(sqlite3 *db, const qbdb_options_t &options, const FileFacts &facts)
{
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_FKEY, 1, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // No statement asks a view: one that stands in a table's place may have no end.
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    int rc = run_plain(db, "PRAGMA synchronous=%s", options.relaxed_durability ? "NORMAL" : "FULL");
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA cell_size_check=ON");
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA temp_store=MEMORY");
    if (rc == SQLITE_OK)
        rc = run_plain(db, "PRAGMA cache_size=-65536"); // KB; taken only when touched
    if (rc == SQLITE_OK && !facts.wal && !options.readonly)
        rc = run_plain(db, "PRAGMA journal_mode=WAL");
    return rc;
}

Problem connect(const std::string &path, const qbdb_options_t &options, qbdb_sysinfo &state)
{
    const bool readonly = options.readonly != 0;
    FileFacts facts;
    if (Problem problem = inspect_place(path, facts))
        return problem;
    const bool immutable = readonly && facts.readonly_place && !facts.pending_wal;
    const int flags =
        (readonly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_URI;
    sqlite3 *opened = nullptr;
    int rc = sqlite3_open_v2(file_uri(path, immutable).c_str(), &opened, flags, nullptr);
    state.db.reset(opened);
    if (!opened)
        throw std::bad_alloc();
    if (rc == SQLITE_CANTOPEN && (errno = sqlite3_system_errno(opened)) != 0)
        return system_problem(rc, "read", path);
    if (rc != SQLITE_OK)
        return damaged(path, rc, opened);
    if (Problem problem = inspect_header(opened, path, facts))
        return problem;
    if (facts.schema_version < 1 || facts.schema_version > schema_version())
        return refuse_version(path, facts.schema_version, readonly);

    state.busy.attach(opened, options.busy_timeout_ms);
    int version = 0;
    std::string trigger;
    rc = read_version(opened, version);
    // An older schema has triggers of its own; what comes out of its migration is looked at next time.
    if (rc == SQLITE_OK && !readonly && version == schema_version())
        rc = find_foreign_trigger(opened, trigger);
    if (rc == SQLITE_OK && !readonly && sqlite3_db_readonly(opened, "main") == 1)
        return {SQLITE_READONLY, "cannot write \"" + path + "\""};
    Problem problem = rc == SQLITE_OK ? refuse_version(path, version, readonly) : damaged(path, rc, opened);
    if (!problem && !trigger.empty())
        problem = {SQLITE_CANTOPEN, "\"" + path + "\" has a trigger of another program: " + trigger};
    if (problem) {
        // What the log holds stays where it is; without a log there is only an empty one to clean away.
        sqlite3_db_config(opened, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, facts.pending_wal, nullptr);
        return problem;
    }
    state.transaction.version_read_at = data_mark(opened);
    rc = configure(opened, options, facts);
    if (rc == SQLITE_OK && version < schema_version())
        rc = migrate(opened);
    if (rc == SQLITE_OK)
        rc = state.transaction.prepare_all(opened);
    if (rc != SQLITE_OK)
        return damaged(path, rc, opened);
    state.copies.attach(opened);
    return {};
}

// APR counts its initialisations without a lock, so that it is initialised once a process, and never undone.
void initialise_apr()
{
    static const bool done = [] {
        if (apr_initialize() != APR_SUCCESS)
            throw std::bad_alloc();
        return true;
    }();
    static_cast<void>(done);
}

struct DestroyPool {
    void operator()(apr_pool_t *pool) const { apr_pool_destroy(pool); }
};
using Pool = std::unique_ptr<apr_pool_t, DestroyPool>;

Pool make_pool()
{
    initialise_apr();
    apr_pool_t *pool = nullptr;
    if (apr_pool_create(&pool, nullptr) != APR_SUCCESS)
        throw std::bad_alloc();
    apr_pool_abort_set(nullptr, pool); // want of memory is an answer, not the end
    return Pool(pool);
}

// The open handles, so that a child finds those that it inherited.
class Handles
{
  public:
    void add(qbdb_sysinfo &state)
    {
        const std::lock_guard hold(mutex_);
        state.next = std::exchange(first_, &state);
    }
    void remove(const qbdb_sysinfo &state)
    {
        const std::lock_guard hold(mutex_);
        qbdb_sysinfo **link = &first_;
        while (*link != &state)
            link = &(*link)->next;
        *link = state.next;
    }
    // False when one of them could not be let go.
    bool let_inherited_go()
    {
        const std::lock_guard hold(mutex_);
        bool all = true;
        for (qbdb_sysinfo *state = first_; state; state = state->next)
            all = (!state->inherited() || let_go(*state)) && all;
        return all;
    }
    // Closes a connection that was inherited without touching the file. In the midst of a transaction that writes
    // that cannot be done.
    static bool let_go(qbdb_sysinfo &state)
    {
        if (!state.db)
            return true;
        if (sqlite3_txn_state(state.db.get(), "main") == SQLITE_TXN_WRITE)
            return false;
        state.statements = {};
        state.transaction = {};
        sqlite3_db_config(state.db.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        state.db.reset();
        return true;
    }

  private:
    std::mutex mutex_;
    qbdb_sysinfo *first_ = nullptr;
};

constinit Handles handles;

Problem open_database(const std::string &path, const qbdb_options_t &options, qbdb_handle_t **qbdb,
                      sqlite3 **db)
{
    // SQLite would let a connection of ours stand on the locks of those that were inherited, which are the parent's.
    if (!handles.let_inherited_go())
        return {SQLITE_MISUSE, "the process was forked while a handle that it inherited was writing"};
    Pool pool = make_pool();
    auto state = std::make_unique<qbdb_sysinfo>();
    if (Problem problem = connect(path, options, *state))
        return problem;
    state->root = options.root ? options.root : "/";
    state->storage_tool = options.storage_tool ? options.storage_tool : "";
    state->tool_timeout = std::chrono::milliseconds(options.tool_timeout_ms);
    state->commit_decides = options.commit_decides != 0;
    qbdb_handle_t &handle = state->handle;
    handle.log = options.log;
    handle.loglvl = options.loglvl;
    handle.jnl = options.jnl;
    handle.pool = pool.release();
    handle.root = state->root.c_str();
    handle.readonly = options.readonly != 0;
    handle.sysinfo = state.get();
    *db = state->db.get();
    handles.add(*state);
    *qbdb = &state.release()->handle; // qbdb_close() takes it back
    return {};
}

} // namespace

int qbdb_open(const char *path, const qbdb_options_t *options, qbdb_handle_t **qbdb, sqlite3 **db,
              char *message, size_t size)
{
    *qbdb = nullptr;
    *db = nullptr;
    return answer(message, size, [&] {
        return open_database(path ? path : "", options ? *options : qbdb_options_t{}, qbdb, db);
    });
}

void qbdb_close(qbdb_handle_t *qbdb)
{
    if (!qbdb || !qbdb->sysinfo)
        return;
    std::unique_ptr<qbdb_sysinfo> state(qbdb->sysinfo);
    handles.remove(*state);
    apr_pool_destroy(qbdb->pool);
    if (state->inherited() && !Handles::let_go(*state))
        static_cast<void>(state.release()); // to the end of the process
}

void qbdb_clear_pool(qbdb_handle_t *qbdb)
{
    apr_pool_clear(qbdb->pool);
}
