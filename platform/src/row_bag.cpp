// Rows as bytes, and counting them.
#include "row_bag.h"

#include <cmath>
#include <cstring>
#include <new>

namespace qbdb
{

namespace
{

template <class T>
void append_raw(std::string &out, const T &value)
{
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof bytes);
}

template <class T>
T take_raw(const char *&p)
{
    T value;
    std::memcpy(&value, p, sizeof value);
    p += sizeof value;
    return value;
}

// The integer that compares equal to the number, if there is one.
bool as_integer(double value, sqlite3_int64 &integer)
{
    constexpr double limit = 9223372036854775808.0;
    if (!(value >= -limit && value < limit) || value != std::floor(value))
        return false;
    integer = static_cast<sqlite3_int64>(value);
    return true;
}

} // namespace

void RowImage::clear()
{
    key.clear();
    content.clear();
}

// Cells whose key is their content.
void RowImage::append(char type, sqlite3_int64 value, const void *bytes, std::size_t size)
{
    for (std::string *out : {&key, content.empty() ? nullptr : &content}) {
        if (!out)
            continue;
        *out += type;
        if (type != SQLITE_NULL)
            append_raw(*out, value);
        out->append(size > 0 ? static_cast<const char *>(bytes) : "", size);
    }
}

void RowImage::add_null()
{
    append(SQLITE_NULL, 0);
}

void RowImage::add_integer(sqlite3_int64 value)
{
    append(SQLITE_INTEGER, value);
}

void RowImage::add_real(double value)
{
    if (content.empty())
        content = key; // from here on they may differ
    content += static_cast<char>(SQLITE_FLOAT);
    append_raw(content, value);
    sqlite3_int64 integer = 0;
    const bool is_integer = as_integer(value, integer);
    key += static_cast<char>(is_integer ? SQLITE_INTEGER : SQLITE_FLOAT);
    if (is_integer)
        append_raw(key, integer);
    else
        append_raw(key, value);
}

void RowImage::add_bytes(char type, const void *bytes, int size)
{
    if (!bytes && (type == SQLITE_TEXT || size > 0))
        throw std::bad_alloc();
    append(type, size, bytes, static_cast<std::size_t>(size));
}

void RowImage::add(sqlite3_value *value)
{
    switch (const int type = sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return add_integer(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return add_real(sqlite3_value_double(value));
    case SQLITE_TEXT: {
        const unsigned char *text = sqlite3_value_text(value);
        return add_bytes(static_cast<char>(type), text, sqlite3_value_bytes(value));
    }
    case SQLITE_BLOB: {
        const void *blob = sqlite3_value_blob(value);
        return add_bytes(static_cast<char>(type), blob, sqlite3_value_bytes(value));
    }
    default:
        return add_null();
    }
}

void RowImage::read(sqlite3_stmt *statement)
{
    clear();
    for (int i = 0; i < sqlite3_data_count(statement); i++)
        add(sqlite3_column_value(statement, i));
}

int RowImage::bind(const std::string &exact, sqlite3_stmt *statement)
{
    const char *p = exact.data();
    const char *const end = p + exact.size();
    int rc = SQLITE_OK;
    for (int index = 1; p < end && rc == SQLITE_OK; index++) {
        const int type = static_cast<unsigned char>(*p++);
        if (type == SQLITE_INTEGER) {
            rc = sqlite3_bind_int64(statement, index, take_raw<sqlite3_int64>(p));
        } else if (type == SQLITE_FLOAT) {
            rc = sqlite3_bind_double(statement, index, take_raw<double>(p));
        } else if (type == SQLITE_NULL) {
            rc = sqlite3_bind_null(statement, index);
        } else {
            const int size = static_cast<int>(take_raw<sqlite3_int64>(p));
            rc = type == SQLITE_TEXT ? sqlite3_bind_text(statement, index, p, size, SQLITE_STATIC)
                                     : sqlite3_bind_blob(statement, index, p, size, SQLITE_STATIC);
            p += size;
        }
    }
    return rc;
}

void RowBag::add(const RowImage &row, long count)
{
    const auto [entry, is_new] = entries_.try_emplace(row.key);
    if (is_new)
        entry->second.content = row.content;
    entry->second.count += count;
    if (entry->second.count == 0)
        entries_.erase(entry);
}

} // namespace qbdb
