// Tables and JSON text.
#include "qbctl/render.h"

#include "json/nearest.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <set>

using qbobj_json::BadInput;
using qbobj_json::Json;

namespace qbctl
{
namespace
{

constexpr std::size_t widest_cell = 48;

std::string cell_text(const Json &value)
{
    if (value.is_null())
        return "";
    return escape_controls(value.is_string() ? value.get<std::string>() : json_text(value, -1));
}

// Characters, not bytes: continuation bytes of UTF-8 take no column.
std::size_t width(const std::string &text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string cut(const std::string &text)
{
    if (width(text) <= widest_cell)
        return text;
    std::size_t end = 0;
    for (std::size_t characters = 0; end < text.size(); ++end)
        if ((text[end] & 0xC0) != 0x80 && characters++ == widest_cell - 1)
            break;
    return text.substr(0, end) + "…";
}

// The records to show: the list in a collection, a list itself, or a single record.
Json records_of(const Json &value)
{
    const Json &collection = value.is_array() && value.size() == 1 ? value.front() : value;
    if (collection.is_object())
        for (const auto &[name, field] : collection.items())
            if (field.is_array() && !field.empty() && field.front().is_object() && collection.size() <= 3)
                return field;
    return value.is_array() ? value : Json::array({value});
}

// The records that have the column: these, or those in their lists.
Json records_with(const std::string &column, const Json &records)
{
    const auto has_column = [&](const Json &record) { return record.is_object() && record.contains(column); };
    if (std::any_of(records.begin(), records.end(), has_column))
        return records;
    Json listed = Json::array();
    for (const Json &record : records)
        for (const Json &field : record)
            if (field.is_array())
                std::copy_if(field.begin(), field.end(), std::back_inserter(listed), has_column);
    return listed.empty() ? records : listed;
}

bool shows_nothing(const Json &field)
{
    return field.is_null() || field.is_structured() || field == 0 ||
           (field.is_string() && cell_text(field).empty());
}

// The fields that any record shows something of, in the order of the schema.
std::vector<std::string> columns_of(const Json &records)
{
    std::set<std::string> used;
    for (const Json &record : records)
        for (const auto &[name, field] : record.items())
            if (!shows_nothing(field))
                used.insert(name);
    std::vector<std::string> columns;
    for (const auto &[name, field] : records.front().items())
        if (used.contains(name))
            columns.push_back(name);
    return columns;
}

void check_columns(const Json &records, const std::vector<std::string> &columns)
{
    std::vector<std::string> names;
    for (const auto &[name, field] : records.front().items())
        names.push_back(name);
    for (const std::string &column : columns)
        if (std::none_of(records.begin(), records.end(), [&](const Json &r) { return r.contains(column); }))
            throw BadInput("no record has a field '" + column + "'" + qbobj_json::suggestion(column, names));
}

void print_row(std::ostream &out, const std::vector<std::string> &cells,
               const std::vector<std::size_t> &widths)
{
    for (std::size_t i = 0; i < cells.size(); ++i) {
        out << cells[i];
        if (i + 1 < cells.size())
            out << std::string(widths[i] - width(cells[i]) + 2, ' ');
    }
    out << '\n';
}

} // namespace

std::string json_text(const Json &value, int indent)
{
    return value.dump(indent, ' ', false, Json::error_handler_t::replace);
}

std::string escape_controls(const std::string &text)
{
    std::string shown;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<unsigned char>(text[i]);
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        const bool upper = code == 0xC2 && next >= 0x80 && next < 0xA0; // U+0080 to U+009F in UTF-8
        if (upper) {
            code = next;
            ++i;
        }
        if (upper || code < 0x20 || code == 0x7F) {
            std::array<char, 8> escaped{};
            std::snprintf(escaped.data(), escaped.size(), "\\u%04x", static_cast<unsigned>(code));
            shown += escaped.data();
        } else {
            shown += static_cast<char>(code);
        }
    }
    return shown;
}

void print_table(std::ostream &out, const Json &value, const std::vector<std::string> &columns)
{
    Json records = records_of(value);
    if (!columns.empty())
        records = records_with(columns.front(), records);
    if (records.empty() || !records.front().is_object()) {
        for (const Json &record : records)
            out << cell_text(record) << '\n';
        return;
    }
    check_columns(records, columns);
    const std::vector<std::string> names = columns.empty() ? columns_of(records) : columns;
    std::vector<std::vector<std::string>> lines{names};
    for (const Json &record : records) {
        std::vector<std::string> &line = lines.emplace_back();
        for (const std::string &name : names)
            line.push_back(record.contains(name) ? cut(cell_text(record[name])) : "");
    }
    std::vector<std::size_t> widths(names.size(), 0);
    for (const auto &line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], width(line[i]));
    for (const auto &line : lines)
        print_row(out, line, widths);
}

} // namespace qbctl
