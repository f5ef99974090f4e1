// Counting the changes of watched tables, and making their copies when they are asked for.
#ifndef SQLITE_ENABLE_PREUPDATE_HOOK
#define SQLITE_ENABLE_PREUPDATE_HOOK // declares the hook in sqlite3.h
#endif
#include "table_copies.h"

#include <algorithm>
#include <new>

namespace qbdb
{

namespace
{

// Tables of one kind differ in their lengths or at their ends, which are compared first.
bool same_name(std::string_view a, std::string_view b)
{
    constexpr int letter_case = 0x20;
    return a.size() == b.size() && (a.empty() || ((a.back() ^ b.back()) & ~letter_case) == 0) &&
           sqlite3_strnicmp(a.data(), b.data(), static_cast<int>(std::min<std::size_t>(a.size(), 1000))) == 0;
}

} // namespace

bool has_temp_table(sqlite3 *db, const char *name)
{
    return sqlite3_table_column_metadata(db, "temp", name, nullptr, nullptr, nullptr, nullptr, nullptr,
                                         nullptr) == SQLITE_OK;
}

void TableCopies::attach(sqlite3 *db)
{
    db_ = db;
    available_ = sqlite3_compileoption_used("ENABLE_PREUPDATE_HOOK") != 0;
    // Listening from the start keeps SQLite from deleting whole tables without a word about their rows.
    if (available_)
        sqlite3_preupdate_hook(db, changed, this);
}

void TableCopies::watch(std::string_view table, std::string_view copy)
{
    watches_.push_back(std::make_unique<Watch>(Watch{std::string(table), std::string(copy), {}}));
}

const RowBag *TableCopies::changes(std::string_view copy) const
{
    for (const auto &watch : watches_)
        if (same_name(watch->copy, copy))
            return &watch->changes;
    return nullptr;
}

bool TableCopies::forget(std::string_view copy)
{
    clear_journal();
    return std::erase_if(watches_, [&](const auto &watch) { return same_name(watch->copy, copy); }) > 0;
}

void TableCopies::forget_all()
{
    watches_.clear();
    clear_journal();
    broken_ = false;
}

// Keeps the memory of a few changes for the next ones.
void TableCopies::clear_journal() noexcept
{
    constexpr std::size_t few = 64;
    journaled_ = 0;
    if (journal_.size() > few)
        journal_.clear();
}

void TableCopies::statement_ends(bool succeeded) noexcept
{
    try {
        if (!succeeded)
            for (std::size_t i = 0; i < journaled_; i++)
                journal_[i].watch->changes.add(journal_[i].row, -journal_[i].count);
    } catch (const std::bad_alloc &) {
        broken_ = true;
    }
    clear_journal();
}

void TableCopies::changed(void *self, sqlite3 *, int operation, const char *schema, const char *table,
                          sqlite3_int64, sqlite3_int64)
{
    auto &copies = *static_cast<TableCopies *>(self);
    if (copies.watches_.empty() || std::string_view(schema) != "main")
        return;
    try {
        if (operation != SQLITE_INSERT)
            copies.record(table, sqlite3_preupdate_old, -1);
        if (operation != SQLITE_DELETE)
            copies.record(table, sqlite3_preupdate_new, +1);
    } catch (const std::bad_alloc &) {
        copies.broken_ = true;
    }
}

void TableCopies::record(const char *table, int (*cell)(sqlite3 *, int, sqlite3_value **), long count)
{
    const auto concerns = [name = std::string_view(table)](const auto &watch) {
        return same_name(watch->table, name);
    };
    const auto first = std::find_if(watches_.begin(), watches_.end(), concerns);
    if (first == watches_.end())
        return;
    row_.clear();
    const int columns = sqlite3_preupdate_count(db_);
    for (int i = 0; i < columns; i++) {
        sqlite3_value *value = nullptr;
        if (cell(db_, i, &value) != SQLITE_OK || !value)
            throw std::bad_alloc();
        row_.add(value);
    }
    for (auto watch = first; watch != watches_.end();
         watch = std::find_if(watch + 1, watches_.end(), concerns)) {
        if (journaled_ == journal_.size())
            journal_.emplace_back();
        Change &change = journal_[journaled_];
        change.row = row_;
        change.watch = watch->get();
        change.count = count;
        journaled_++;
        change.watch->changes.add(row_, count);
    }
}

int TableCopies::materialise_missing(std::string_view error_text)
{
    constexpr std::string_view prefix = "no such table: ";
    if (watches_.empty() || !error_text.starts_with(prefix))
        return SQLITE_NOTFOUND;
    const std::string_view name = error_text.substr(prefix.size());
    for (std::size_t i = 0; i < watches_.size(); i++)
        if (same_name(name, watches_[i]->copy) || same_name(name, "temp." + watches_[i]->copy))
            return materialise(i);
    return SQLITE_NOTFOUND;
}

int TableCopies::materialise_all()
{
    while (!watches_.empty())
        if (const int rc = materialise(watches_.size() - 1); rc != SQLITE_OK)
            return rc;
    return SQLITE_OK;
}

int TableCopies::materialise(std::size_t index)
{
    if (broken_)
        return SQLITE_NOMEM;
    const Watch &watch = *watches_[index];
    int rc = run_plain(db_, "CREATE TEMP TABLE \"%w\" AS SELECT * FROM main.\"%w\" WHERE 0",
                       watch.copy.c_str(), watch.table.c_str());
    if (rc == SQLITE_OK)
        rc = fill_copy(watch);
    if (rc == SQLITE_OK) {
        watches_.erase(watches_.begin() + static_cast<std::ptrdiff_t>(index));
        clear_journal();
    } else {
        run_plain(db_, "DROP TABLE IF EXISTS temp.\"%w\"", watch.copy.c_str());
    }
    return rc;
}

// The table's present rows without those that came, and those that went.
int TableCopies::fill_copy(const Watch &watch)
{
    Statement rows;
    Statement insert;
    const char *problem = nullptr;
    int rc = prepare(db_, "SELECT * FROM main." + quoted(watch.table), 0, rows, &problem);
    if (rc != SQLITE_OK)
        return rc;
    const int columns = sqlite3_column_count(rows.get());
    std::string text = "INSERT INTO temp." + quoted(watch.copy) + " VALUES(?";
    for (int i = 1; i < columns; i++)
        text += ",?";
    if ((rc = prepare(db_, text + ")", 0, insert, &problem)) != SQLITE_OK)
        return rc;
    const auto run_insert = [&] {
        sqlite3_step(insert.get());
        return sqlite3_reset(insert.get());
    };

    RowBag changes = watch.changes;
    while ((rc = sqlite3_step(rows.get())) == SQLITE_ROW) {
        row_.read(rows.get());
        const auto change = changes.entries().find(row_.key);
        if (change != changes.entries().end() && change->second.count > 0) {
            changes.add(row_, -1);
            continue;
        }
        for (int i = 0; i < columns; i++)
            if ((rc = sqlite3_bind_value(insert.get(), i + 1, sqlite3_column_value(rows.get(), i))) !=
                SQLITE_OK)
                return rc;
        if ((rc = run_insert()) != SQLITE_OK)
            return rc;
    }
    for (const auto &[key, change] : changes.entries()) {
        if (const int bound = RowImage::bind(change.content.empty() ? key : change.content, insert.get());
            bound != SQLITE_OK)
            return bound;
        for (long i = change.count; i < 0 && rc == SQLITE_DONE; i++)
            if (const int failure = run_insert(); failure != SQLITE_OK)
                return failure;
    }
    return rc == SQLITE_DONE ? SQLITE_OK : rc;
}

} // namespace qbdb
