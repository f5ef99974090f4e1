// Tables.
#include "qbctl/render.h"

#include "json/nearest.h"
#include "json/record_json.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdio>
#include <iterator>
#include <set>

using qbobj_json::BadInput;
using qbobj_json::elements_of;
using qbobj_json::Hides;
using qbobj_json::Member;
using qbobj_json::members_of;
using qbobj_json::shown;
using qbobj_json::Value;

namespace qbctl
{
namespace
{

constexpr std::size_t widest_cell = 48;

std::string cell_text(const Value &value, const Hides &hides)
{
    if (value.is_null())
        return "";
    const std::string_view *text = value.text();
    return escape_controls(text != nullptr
                               ? std::string(*text)
                               : qbobj_json::json_text(value, qbobj_json::Layout::one_line, hides));
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

bool is_list_of_objects(const Value &value)
{
    const std::vector<Value> elements = elements_of(value);
    return !elements.empty() && elements.front().is_object();
}

// The records to show: the list in a collection, a list itself, or a single record.
std::vector<Value> records_of(const Value &value)
{
    std::vector<Value> elements = value.is_array() ? elements_of(value) : std::vector<Value>{value};
    if (elements.size() != 1)
        return elements;
    const std::vector<Member> fields = members_of(elements.front());
    const auto list = std::ranges::find_if(fields, is_list_of_objects, &Member::value);
    return list == fields.end() || fields.size() > 3 ? elements : elements_of(list->value);
}

bool has_field(const Value &record, const std::string &name)
{
    const std::vector<Member> fields = members_of(record);
    return std::ranges::find(fields, name, &Member::name) != fields.end();
}

// The records that have the column: these, or those in their lists.
std::vector<Value> records_with(const std::string &column, const std::vector<Value> &records)
{
    const auto has_column = [&](const Value &record) { return has_field(record, column); };
    if (std::ranges::any_of(records, has_column))
        return records;
    std::vector<Value> listed;
    for (const Value &record : records)
        for (const Member &field : members_of(record))
            std::ranges::copy_if(elements_of(field.value), std::back_inserter(listed), has_column);
    return listed.empty() ? records : listed;
}

bool shows_nothing(const Value &field)
{
    const auto is_zero = []<class Held>(const Held &held) {
        if constexpr (std::same_as<Held, int64_t> || std::same_as<Held, uint64_t>)
            return held == 0;
        else
            return false;
    };
    return field.is_null() || field.is_object() || field.is_array() || std::visit(is_zero, field.held) ||
           (field.text() != nullptr && field.text()->empty());
}

std::vector<std::string> names_of(const Value &record)
{
    std::vector<std::string> names;
    for (const Member &field : members_of(record))
        names.emplace_back(field.name);
    return names;
}

// The fields that any record shows something of, in the order of the schema.
std::vector<std::string> columns_of(const std::vector<Value> &records)
{
    std::set<std::string_view> used;
    for (const Value &record : records)
        for (const Member &field : members_of(record))
            if (!shows_nothing(field.value))
                used.insert(field.name);
    std::vector<std::string> columns = names_of(records.front());
    std::erase_if(columns, [&](const std::string &name) { return !used.contains(name); });
    return columns;
}

void check_columns(const std::vector<Value> &records, const std::vector<std::string> &columns)
{
    for (const std::string &column : columns)
        if (std::ranges::none_of(records, [&](const Value &record) { return has_field(record, column); }))
            throw BadInput("no record has a field '" + column + "'" +
                           qbobj_json::suggestion(column, names_of(records.front())));
}

// The cells of a record; in place of a text that must not be shown stands the mask.
std::vector<std::string> line_of(const Value &record, const std::vector<std::string> &columns,
                                 const Hides &hides)
{
    const std::vector<Member> fields = members_of(record);
    std::vector<std::string> line;
    for (const std::string &column : columns) {
        const auto field = std::ranges::find(fields, column, &Member::name);
        line.push_back(field == fields.end() ? "" : cut(cell_text(shown(*field, hides), hides)));
    }
    return line;
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

void print_table(std::ostream &out, const Value &value, const std::vector<std::string> &columns,
                 const Hides &hides)
{
    std::vector<Value> records = records_of(value);
    if (!columns.empty())
        records = records_with(columns.front(), records);
    if (records.empty() || !records.front().is_object()) {
        for (const Value &record : records)
            out << cell_text(record, hides) << '\n';
        return;
    }
    check_columns(records, columns);
    const std::vector<std::string> names = columns.empty() ? columns_of(records) : columns;
    std::vector<std::vector<std::string>> lines{names};
    for (const Value &record : records)
        lines.push_back(line_of(record, names, hides));
    std::vector<std::size_t> widths(names.size(), 0);
    for (const auto &line : lines)
        for (std::size_t i = 0; i < line.size(); ++i)
            widths[i] = std::max(widths[i], width(line[i]));
    for (const auto &line : lines)
        print_row(out, line, widths);
}

} // namespace qbctl
