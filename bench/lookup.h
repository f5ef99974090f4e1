// The statements of a hand-written program, which it keeps: a look-up with parameters, or a scan of a table in
// an order that it merges with others. Both read a row's columns from left to right into a record's fields:
//
//     for (auto row = hosts(share_id, "cifs"); row.next();)
//         row >> host.HostId >> host.HostName;
#pragma once

#include "appliance.h"

#include <apr_pools.h>
#include <apr_strings.h>

#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <tuple>
#include <utility>

namespace qbobj_bench
{

template <class Record>
Record *create(apr_pool_t *pool)
{
    return static_cast<Record *>(apr_pcalloc(pool, sizeof(Record)));
}

// Appends records to a list, at its end.
template <class Record>
class Tail
{
  public:
    Tail(apr_pool_t *pool, Record *&head) : pool_(pool), end_(&head) {}
    Record &append()
    {
        Record *record = *end_ = create<Record>(pool_);
        end_ = &record->_link;
        return *record;
    }

  private:
    apr_pool_t *pool_;
    Record **end_;
};

// A text that is "" when the column is NULL.
struct OrEmpty {
    const char *&field;
};

// The row at which a statement stands.
class Row
{
  public:
    Row(apr_pool_t *pool, sqlite3_stmt *statement) : pool_(pool), statement_(statement) {}

    Row &operator>>(const char *&field)
    {
        field = apr_pstrdup(pool_, text(column_++));
        return *this;
    }
    Row &operator>>(OrEmpty cell)
    {
        const char *const given = text(column_++);
        cell.field = given == nullptr ? empty_str : apr_pstrdup(pool_, given);
        return *this;
    }
    // Until the next row.
    Row &operator>>(std::string_view &field)
    {
        field = text(column_++);
        return *this;
    }
    Row &operator>>(int &field)
    {
        field = sqlite3_column_int(statement_, column_++);
        return *this;
    }
    Row &operator>>(uint64_t &field)
    {
        field = static_cast<uint64_t>(sqlite3_column_int64(statement_, column_++));
        return *this;
    }
    const char *text(int column) const
    {
        return reinterpret_cast<const char *>(sqlite3_column_text(statement_, column));
    }
    Row &skip(int columns)
    {
        column_ += columns;
        return *this;
    }

  protected:
    bool step()
    {
        column_ = 0;
        const int rc = sqlite3_step(statement_);
        if (rc != SQLITE_ROW && rc != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement_)));
        return rc == SQLITE_ROW;
    }
    apr_pool_t *pool_;
    sqlite3_stmt *statement_;
    int column_ = 0;
};

/* ---- Look-ups ------------------------------------------------------------------------------------------ */

class KeptRows : public Row
{
  public:
    using Row::Row;
    ~KeptRows() { sqlite3_reset(statement_); }
    KeptRows(const KeptRows &) = delete;
    KeptRows &operator=(const KeptRows &) = delete;

    bool next() { return step(); }
};

class Kept
{
  public:
    // Each conversion of the format becomes a parameter.
    Kept(const Connection &connection, const std::string &format) : pool_(connection.qbdb->pool)
    {
        std::string text;
        for (std::size_t i = 0; i < format.size(); i++) {
            if (format[i] != '%') {
                text += format[i];
                continue;
            }
            text += format[++i] == '%' ? '%' : '?';
            while (format[i] == 'l')
                i++;
        }
        sqlite3_stmt *prepared = nullptr;
        if (sqlite3_prepare_v3(connection.db, text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &prepared,
                               nullptr) != SQLITE_OK)
            throw std::runtime_error(std::string(sqlite3_errmsg(connection.db)) + ": " + text);
        statement_.reset(prepared);
    }

    template <class... Values>
    KeptRows operator()(Values... values) const
    {
        int index = 0;
        (bind(++index, values), ...);
        return {pool_, statement_.get()};
    }

  private:
    void bind(int index, int value) const { sqlite3_bind_int(statement_.get(), index, value); }
    void bind(int index, uint64_t value) const
    {
        sqlite3_bind_int64(statement_.get(), index, static_cast<sqlite3_int64>(value));
    }
    void bind(int index, const char *value) const
    {
        sqlite3_bind_text(statement_.get(), index, value, -1, SQLITE_STATIC);
    }

    struct Finalize {
        void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
    };
    apr_pool_t *pool_;
    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

/* ---- Rows by share ------------------------------------------------------------------------------------- */

// A SELECT of what belongs to shares: by the column of their ids, and in lists by that of the protocol too.
struct ShareRows {
    std::string columns;
    std::string from;
    std::string share_id;
    std::string proto = {};
    std::string condition = "1";
    std::string order = {};
    bool by_name = false; // their table knows the shares by a name, and holds rows of few

    std::string select(const std::string &keys, const std::string &more, const std::string &end) const
    {
        return "SELECT " + keys + columns + " FROM " + from + " WHERE " + condition + more + end;
    }
};

// Looks a share's rows up.
class EachShare
{
  public:
    EachShare(const Connection &connection, const ShareRows &rows)
        : kept_(connection, rows.select("",
                                        " AND " + rows.share_id + "=%d" +
                                            (rows.proto.empty() ? "" : " AND " + rows.proto + "=%Q"),
                                        rows.order.empty() ? "" : " ORDER BY " + rows.order))
    {
    }
    template <class... Key>
    KeptRows operator()(Key... key) const
    {
        return kept_(key...);
    }

  private:
    Kept kept_;
};

// Finds the rows in one scan of all shares', which are asked for in the order of their ids, and of the protocols
// of each. A share before the one asked for last begins the scan anew.
class InOneScan
{
  public:
    class Rows
    {
      public:
        Rows(InOneScan &scan, int share_id, std::string_view proto)
            : scan_(scan), share_id_(share_id), proto_(proto)
        {
        }
        bool next() { return scan_.next(share_id_, proto_); }
        template <class Field>
        Row &operator>>(Field &&field)
        {
            return *scan_.rows_ >> std::forward<Field>(field);
        }

      private:
        InOneScan &scan_;
        int share_id_;
        std::string_view proto_;
    };

    InOneScan(const Connection &connection, const ShareRows &rows)
        : by_proto_(!rows.proto.empty()), scan_(connection, text(rows))
    {
    }
    Rows operator()(int share_id, std::string_view proto = "")
    {
        if (rows_ == nullptr || share_id < asked_)
            begin();
        asked_ = share_id;
        return {*this, share_id, proto};
    }

  private:
    static std::string text(const ShareRows &rows)
    {
        std::string keys = rows.share_id;
        for (const std::string &key : {rows.proto, rows.order})
            keys += key.empty() ? "" : "," + key;
        // The plus keeps from looking the rows up for one share after the other, to have their order.
        return rows.select(rows.share_id + "," + (rows.proto.empty() ? "" : rows.proto + ","), "",
                           (rows.by_name ? " ORDER BY +" : " ORDER BY ") + keys);
    }
    void begin()
    {
        rows_.reset();
        rows_ = std::unique_ptr<KeptRows>(new KeptRows(scan_()));
        advance();
    }
    void advance()
    {
        is_read_ = false;
        share_id_ = std::numeric_limits<int>::max();
        if (!rows_->next())
            return;
        *rows_ >> share_id_;
        if (by_proto_)
            *rows_ >> proto_;
    }
    bool next(int share_id, std::string_view proto)
    {
        if (is_read_)
            advance();
        while (std::tie(share_id_, proto_) < std::tie(share_id, proto))
            advance();
        is_read_ = share_id_ == share_id && proto_ == proto;
        return is_read_;
    }

    bool by_proto_;
    Kept scan_;
    std::unique_ptr<KeptRows> rows_;
    int asked_ = 0;
    int share_id_ = 0; // of the row at which the scan stands; the highest number behind the last
    std::string_view proto_;
    bool is_read_ = false;
};

// Runs a statement that returns no rows, or whose rows do not matter.
template <class Rows>
void finish(Rows &&rows)
{
    while (rows.next()) {
    }
}

// One transaction, as the library begins it: one that reads only holds no lock.
class Transactions
{
  public:
    explicit Transactions(const Connection &connection, const char *begin = "BEGIN IMMEDIATE")
        : begin_(connection, begin), commit_(connection, "COMMIT")
    {
    }
    template <class Work>
    void run(Work work) const
    {
        finish(begin_());
        work();
        finish(commit_());
    }

  private:
    Kept begin_;
    Kept commit_;
};

} // namespace qbobj_bench
