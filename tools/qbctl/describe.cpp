// Descriptions: kinds from the schemas and the table of operations, all texts from the headers.
#include "qbctl/describe.h"

#include "operations/texts.h"
#include "json/nearest.h"
#include "json/operations.h"

#include <algorithm>

using qbobj_json::Argument;
using qbobj_json::BadInput;
using qbobj_json::Operation;
using qbobj_json::suggestion;
namespace texts = qbobj::texts;

namespace qbctl
{
namespace
{

constexpr std::size_t line_width = 96;

/* ---- Names ----------------------------------------------------------------------------------------------- */

const qbobj_spec_t *find_type(std::string_view name)
{
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
        if (texts::same_name(entry->name, name))
            return entry->spec;
    return nullptr;
}

// What takes SQL is shown only to whom asks for it by its name.
bool is_offered(const qbobj_spec_t *spec, const qbobj_spec_t &row)
{
    const texts::Record *record = texts::find_record(spec->name);
    const texts::Field *field = record == nullptr ? nullptr : texts::find_field(*record, row.name);
    return field == nullptr || !field->sql;
}

const qbobj_spec_t &field_row(const qbobj_spec_t *spec, std::string_view name)
{
    std::vector<std::string> known;
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row) {
        if (texts::same_name(row->name, name))
            return *row;
        if (is_offered(spec, *row))
            known.emplace_back(row->name);
    }
    throw BadInput(std::string(spec->name) + " has no field '" + std::string(name) + "'" +
                   suggestion(std::string(name), known));
}

/* ---- Text ------------------------------------------------------------------------------------------------ */

// Paragraphs, broken between words, each line behind `indent` blanks.
void print_text(std::ostream &out, std::string_view text, std::size_t indent)
{
    std::size_t column = 0;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of(" \n", at), text.size());
        const std::size_t length = end - at;
        if (column == 0) {
            out << std::string(indent, ' ');
            column = indent;
        } else if (column + 1 + length > line_width) {
            out << '\n' << std::string(indent, ' ');
            column = indent;
        } else {
            out << ' ';
            ++column;
        }
        out << text.substr(at, length);
        column += length;
        if (end < text.size() && text[end] == '\n') {
            out << "\n\n";
            column = 0;
        }
        at = end + 1;
    }
    if (column != 0)
        out << '\n';
}

std::string joined(std::span<const std::string_view> items)
{
    std::string text;
    for (const std::string_view item : items)
        text.append(text.empty() ? "" : ", ").append(item);
    return text;
}

/* ---- Records --------------------------------------------------------------------------------------------- */

std::string kind_of(const qbobj_spec_t &row)
{
    switch (row.type) {
    case QBOBJ_KIND_STRING:
        return "text";
    case QBOBJ_KIND_INT:
        return "int";
    case QBOBJ_KIND_UINT:
        return "unsigned";
    case QBOBJ_KIND_INT64:
        return "int64";
    case QBOBJ_KIND_UINT64:
        return "uint64";
    default:
        return ((row.attr & QBOBJ_ATTR_LIST_FIELD) != 0 ? "list of " : "") + std::string(row.ospec_ptr->name);
    }
}

// What becomes of a field that is left out.
std::string_view left_out(const qbobj_spec_t &row)
{
    const bool pointer = row.type == QBOBJ_KIND_STRING || row.type == QBOBJ_KIND_RECORD;
    return pointer || (row.attr & QBOBJ_ATTR_VOIDABLE) != 0 ? "may be left out" : "0 when left out";
}

void print_field(std::ostream &out, const texts::Record &record, const qbobj_spec_t &row,
                 const std::string &name)
{
    const texts::Field *field = texts::find_field(record, row.name);
    if (field == nullptr) {
        out << name << ": " << kind_of(row) << '\n';
        return;
    }
    out << name << ": " << kind_of(row);
    if (!field->unit.empty())
        out << " in " << field->unit;
    if (!field->range.empty())
        out << ", " << field->range;
    if (!field->words.empty())
        out << ", one of " << field->words;
    if (field->secret)
        out << ", secret";
    if (field->sql)
        out << ", SQL text";
    out << ", " << (field->readonly ? "read only" : field->required ? "required" : left_out(row)) << '\n';
    print_text(out, field->text, name.find_first_not_of(' ') + 4);
}

void print_record(std::ostream &out, const qbobj_spec_t *spec)
{
    const texts::Record *record = texts::find_record(spec->name);
    if (record == nullptr)
        throw BadInput("nothing is known of the record type '" + std::string(spec->name) + "'");
    const bool list = (spec->attr & QBOBJ_ATTR_LIST) != 0;
    out << spec->name << (list ? " (one record, or a list of them)" : "") << '\n';
    print_text(out, record->text, 2);
    out << '\n';
    if ((spec->attr & QBOBJ_ATTR_STRING_ID) != 0)
        print_field(out, *record, {QBOBJ_KIND_STRING, "resource_id", 0, nullptr, 0}, "  resource_id");
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
        if (is_offered(spec, *row))
            print_field(out, *record, *row, std::string("  ") + row->name);
}

// "Share.Cifs.UserAcl" behind "Share": the field itself and, when it holds records, what they are.
void print_path(std::ostream &out, const qbobj_spec_t *spec, std::string_view path)
{
    std::string shown = spec->name;
    for (;;) {
        const std::size_t dot = path.find('.');
        const qbobj_spec_t &row = field_row(spec, path.substr(0, dot));
        shown.append(".").append(row.name);
        const bool last = dot == std::string_view::npos;
        if (last)
            print_field(out, *texts::find_record(spec->name), row, shown);
        if (last && row.type == QBOBJ_KIND_RECORD) {
            out << '\n';
            print_record(out, row.ospec_ptr);
        }
        if (last)
            return;
        if (row.type != QBOBJ_KIND_RECORD)
            throw BadInput(shown + " is no record");
        spec = row.ospec_ptr;
        path.remove_prefix(dot + 1);
    }
}

/* ---- Operations ------------------------------------------------------------------------------------------ */

std::string argument_text(const Argument &argument)
{
    std::string text(argument.name);
    if (argument.spec != nullptr)
        text += std::string(":") + argument.spec->name;
    return argument.optional ? "[" + text + "]" : text;
}

// "modifyShare(share:Share, [modifyOneShare]) -> share:Share"
std::string signature(const Operation &operation)
{
    std::string inputs;
    std::string outputs;
    const auto add = [](std::string &list, const std::string &item) {
        list += (list.empty() ? "" : ", ") + item;
    };
    if (operation.entry->result == qbobj::ResultKind::answer)
        add(outputs, "answer");
    if (operation.entry->identifies())
        add(outputs, "id");
    for (const Argument &argument : operation.arguments()) {
        if (argument.is_input())
            add(inputs, argument_text(argument));
        if (argument.is_output())
            add(outputs, argument_text(argument));
    }
    return operation.name() + "(" + inputs + ")" + (outputs.empty() ? "" : " -> " + outputs);
}

std::string_view direction_text(texts::Direction direction)
{
    switch (direction) {
    case texts::Direction::in:
        return "given";
    case texts::Direction::out:
        return "result";
    default:
        return "given and filled";
    }
}

void print_operation(std::ostream &out, const texts::Operation &text)
{
    const Operation *operation = qbobj_json::find_operation(std::string(text.name));
    out << (operation == nullptr ? std::string(text.symbol) : signature(*operation)) << '\n';
    print_text(out, text.brief, 2);
    if (!text.text.empty()) {
        out << '\n';
        print_text(out, text.text, 2);
    }
    out << '\n';
    for (const texts::Parameter &parameter : text.parameters) {
        out << "  " << parameter.name << " (" << direction_text(parameter.direction) << ")\n";
        print_text(out, parameter.text, 6);
    }
    const auto print_tables = [&out](std::string_view title, std::span<const std::string_view> tables) {
        if (!tables.empty())
            print_text(out, std::string(title) + joined(tables), 2);
    };
    print_tables("reads: ", text.reads);
    print_tables("writes: ", text.writes);
    for (const texts::Error &error : text.errors) {
        out << "  " << error.name << " (" << error.code << ")\n";
        print_text(out, error.text, 6);
    }
    print_text(out, "returns " + std::string(text.result), 2);
}

std::vector<std::string> all_names()
{
    std::vector<std::string> names;
    for (const Operation &operation : qbobj_json::operations())
        names.emplace_back(operation.entry->name);
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
        names.emplace_back(entry->name);
    return names;
}

} // namespace

void print_operations(std::ostream &out)
{
    for (const Operation &operation : qbobj_json::operations()) {
        out << signature(operation) << '\n';
        if (const texts::Operation *text = texts::find_operation(operation.entry->name); text != nullptr)
            print_text(out, text->brief, 4);
    }
}

void print_record_types(std::ostream &out)
{
    constexpr std::size_t name_width = 32;
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        const texts::Record *record = texts::find_record(entry->name);
        std::string name = entry->name;
        name.resize(std::max(name.size() + 1, name_width), ' ');
        out << name << (record == nullptr ? "" : record->text) << '\n';
    }
}

void describe(std::ostream &out, const std::string &name)
{
    const std::size_t dot = name.find('.');
    if (const qbobj_spec_t *spec = find_type(name.substr(0, dot)); spec != nullptr) {
        if (dot == std::string::npos)
            print_record(out, spec);
        else
            print_path(out, spec, std::string_view(name).substr(dot + 1));
        return;
    }
    const texts::Operation *text = texts::find_operation(name);
    if (text == nullptr)
        throw BadInput("there is no operation or record type '" + name + "'" +
                       suggestion(name.substr(0, dot), all_names()));
    print_operation(out, *text);
}

} // namespace qbctl
