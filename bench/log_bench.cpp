// A page of a long log, an entry added to it, and its trimming.
#include "lookup.h"
#include "measurements.h"

namespace qbobj_bench
{
namespace
{

constexpr int few = 1000;
constexpr int many = 1000000;
constexpr int page = 50;
constexpr int kept_entries = 100000;
constexpr int additions = 500; // in a run

struct Subject {
    explicit Subject(int entries)
    {
        library.run(
            ("INSERT INTO `$log` (tstamp,severity,category,msg_tag,msg_args_xml) "
             "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT " +
             std::to_string(entries) +
             ") SELECT 1700000000+i,CASE WHEN i%100=0 THEN 'err' WHEN i%10=0 THEN 'warning' ELSE 'info' "
             "END,CASE i%3 WHEN 0 THEN 'disk' WHEN 1 THEN 'share' ELSE 'misc' END,'LOGMSG_'||(i%20),"
             "'<args><a>'||i||'</a></args>' FROM n; PRAGMA wal_checkpoint(TRUNCATE)")
                .c_str());
    }

    Appliance appliance{{.users = 0}};
    Connection library = appliance.connect();
    Connection kept = appliance.connect();
};

/* ---- A page -------------------------------------------------------------------------------------------- */

struct Page {
    qbobj_LogEntry_t *entries = nullptr;
    int matching = 0;
    int total = 0;
};

Page read_by_library(const Connection &connection)
{
    Page read;
    qbobj_LogQuery_t query{};
    query.limit = page;
    query.order = 1;
    qbobj_error_rec_t err{};
    check(qbobj_getLog(connection.qbdb, connection.db, &read.entries, &read.matching, &read.total, &query,
                       &err),
          err);
    return read;
}

class Reader
{
  public:
    explicit Reader(const Connection &connection) : connection_(connection) {}

    Page read() const
    {
        Page read;
        finish(begin_());
        count(matching_, read.matching);
        count(total_, read.total);
        Tail<qbobj_LogEntry_t> tail(connection_.qbdb->pool, read.entries);
        for (auto row = entries_(page); row.next();) {
            qbobj_LogEntry_t &entry = tail.append();
            row >> entry.LogId >> entry.TimeStamp >> OrEmpty{entry.Severity} >> OrEmpty{entry.Category} >>
                OrEmpty{entry.MessageTag} >> OrEmpty{entry.MessageArgsXml};
        }
        finish(commit_());
        return read;
    }

  private:
    static void count(const Kept &statement, int &counted)
    {
        if (auto row = statement(); row.next())
            row >> counted;
    }

    const Connection &connection_;
    Kept begin_{connection_, "BEGIN"};
    Kept commit_{connection_, "COMMIT"};
    Kept matching_{connection_, "SELECT COUNT(*) FROM `$log` L "};
    Kept total_{connection_, "SELECT COUNT(*) FROM `$log` L"};
    Kept entries_{connection_,
                  "SELECT L.id,L.tstamp,L.severity,L.category,L.msg_tag,L.msg_args_xml FROM `$log` L"
                  " ORDER BY L.id DESC LIMIT %d"};
};

void measure_page(Figures &figures, const std::shared_ptr<Subject> &subject)
{
    const auto reader = figures.keep<Reader>(subject->kept);
    const Page library = read_by_library(subject->library);
    const Page kept = reader->read();
    require_same_records("LogEntry", *kept.entries, *library.entries);
    require_equal("counts", std::pair(kept.matching, kept.total), std::pair(library.matching, library.total));
    figures.measure("getLog/library",
                    timed(subject->library, [subject] { read_by_library(subject->library); }));
    figures.measure("getLog/kept", timed(subject->kept, [subject, reader] { reader->read(); }));
    figures.ratio_at_most("getLog-page-to-kept-statements", "getLog/library", "getLog/kept", 1.5);
}

/* ---- Additions ----------------------------------------------------------------------------------------- */

void measure_additions(Figures &figures, const std::shared_ptr<Subject> &subject, const std::string &suffix)
{
    figures.measure("addLog" + suffix, [subject](benchmark::State &state) {
        const Copy copy(subject->appliance);
        qbobj_error_rec_t err{};
        for (auto _ : state)
            for (int i = 0; i < additions; i++)
                check(qbobj_addLog(copy.connection.qbdb, copy.connection.db, 0, "info", "disk", "LOGMSG_HOT",
                                   "<args/>", &err),
                      err);
    });
}

/* ---- Trimming ------------------------------------------------------------------------------------------ */

constexpr const char *trimming = "DELETE FROM `$log` WHERE tstamp < "
                                 "(SELECT tstamp FROM `$log` ORDER BY tstamp DESC LIMIT 1 OFFSET %d)";

void trim_by_library(const Connection &connection)
{
    qbobj_error_rec_t err{};
    check(qbobj_truncateLog(connection.qbdb, connection.db, kept_entries - 1, &err), err);
}

void trim_by_hand(const Connection &connection)
{
    Transactions(connection).run([&] { finish(Kept(connection, trimming)(kept_entries - 1)); });
}

int number(const Connection &connection, const char *select)
{
    int value = 0;
    const Kept statement(connection, select);
    if (auto row = statement(); row.next())
        row >> value;
    return value;
}

// What one trimming does beside its time.
void count_trimming(Figures &figures, const Subject &subject)
{
    const Copy copy(subject.appliance);
    const Connection &connection = copy.connection;
    const int pages = number(connection, "PRAGMA page_count");
    int statements = 0;
    sqlite3_trace_v2(
        connection.db, SQLITE_TRACE_STMT,
        [](unsigned, void *counted, void *, void *) { return ++*static_cast<int *>(counted), 0; },
        &statements);
    trim_by_library(connection);
    sqlite3_trace_v2(connection.db, 0, nullptr, nullptr);
    require_equal("entries left", kept_entries, number(connection, "SELECT COUNT(*) FROM `$log`"));
    figures.value_at_most("truncateLog-statements-with-begin-and-commit", statements, 3);
    figures.value_at_most(
        "truncateLog-pages-added",
        number(connection, "PRAGMA page_count") - pages + number(connection, "PRAGMA temp.page_count"), 1);
}

void measure_trimming(Figures &figures, const std::shared_ptr<Subject> &subject)
{
    constexpr int repetitions = 3;
    count_trimming(figures, *subject);
    for (const auto &[name, trim] :
         {std::pair("truncateLog/library", &trim_by_library), std::pair("truncateLog/kept", &trim_by_hand)})
        figures.measure(
            name,
            [subject, trim = trim](benchmark::State &state) {
                const Copy copy(subject->appliance);
                for (auto _ : state)
                    trim(copy.connection);
            },
            repetitions);
    figures.ratio_at_most("truncateLog-to-kept-statement", "truncateLog/library", "truncateLog/kept", 1.5);
}

} // namespace

void add_log_figures(Figures &figures)
{
    const auto small = figures.keep<Subject>(few);
    const auto large = figures.keep<Subject>(many);
    measure_page(figures, large);
    measure_additions(figures, small, "/1000");
    measure_additions(figures, large, "/1000000");
    figures.ratio_at_most("addLog-time-in-1000x-log", "addLog/1000000", "addLog/1000", 1.5);
    measure_trimming(figures, large);
}

} // namespace qbobj_bench
