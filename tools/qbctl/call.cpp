// One call: its failure, its results, its columns.
#include "qbctl/call.h"

#include "qbctl/render.h"
#include "json/nearest.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>

using qbobj_json::Argument;
using qbobj_json::BadInput;
using qbobj_json::Json;
using qbobj_json::Operation;
using qbobj_json::Outcome;
using qbobj_json::Value;

namespace qbctl
{
namespace
{

// What raised no error is a look-up that found nothing, or a transaction that the database refused: then the
// result is its code, negative from the beginning of the transaction.
Failed failure_without_error(const Outcome &outcome, sqlite3 *db)
{
    const int code = std::abs(outcome.result);
    const bool of_database = outcome.result > 0 || sqlite3_errcode(db) == (code & 0xff);
    return database_failure(code, of_database
                                      ? std::string("the database failed: ") + sqlite3_errstr(code)
                                      : "not found or not valid (" + std::to_string(outcome.result) + ")");
}

Failed failure(const Operation &operation, const Outcome &outcome, sqlite3 *db, const Secrets &secrets)
{
    const qbobj_error_rec_t &error = outcome.error;
    if (error.ec == QBOBJ_ERROR_OK) {
        const Failed failed = failure_without_error(outcome, db);
        return Failed(operation.name() + ": " + failed.what(), failed.status());
    }
    std::string text =
        operation.name() + ": " + qbobj_error_name(error.ec) + " (" + std::to_string(error.ec) + ")";
    if (error.msg != nullptr)
        text += ": " + secrets.hidden(error.msg);
    return Failed(text);
}

// The fields of a record that is a result, and of the lists in it.
void add_fields(std::vector<std::string> &names, const qbobj_spec_t *spec)
{
    const auto append = [&](const qbobj_spec_t *record) {
        const std::vector<std::string> fields = qbobj_json::field_names(record);
        names.insert(names.end(), fields.begin(), fields.end());
    };
    append(spec);
    for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
        if (row->type == QBOBJ_KIND_RECORD)
            append(row->ospec_ptr);
}

// A column that no result can have is refused before anything is done.
void check_columns(const Operation &operation, const std::vector<std::string> &columns)
{
    std::vector<std::string> names;
    for (const Argument &argument : operation.arguments())
        if (argument.is_output() && argument.spec != nullptr)
            add_fields(names, argument.spec);
    for (const std::string &column : columns)
        if (!names.empty() && std::find(names.begin(), names.end(), column) == names.end())
            throw BadInput("no result of " + operation.name() + " has a field '" + column + "'" +
                           qbobj_json::suggestion(column, names));
}

void show(const Settings &settings, const Value &value, const Secrets &secrets)
{
    const bool terminal = isatty(STDOUT_FILENO) != 0;
    if (settings.table || (terminal && !settings.json))
        print_table(std::cout, value, settings.columns, secrets.hides());
    else
        qbobj_json::write_json(std::cout, value, qbobj_json::Layout::indented, secrets.hides());
}

} // namespace

Value call(const Operation &operation, const Database &database, const Json &inputs, const Secrets &secrets)
{
    const Outcome outcome = operation.call(operation, database.connection(), inputs);
    if (operation.failed(outcome.result))
        throw failure(operation, outcome, database.connection().db, secrets);
    return outcome.output;
}

void run_call(const Settings &settings, const std::string &name, const InputWords &given)
{
    const Operation &operation = operation_named(name);
    check_columns(operation, settings.columns);
    Secrets secrets;
    const Json inputs = gather_inputs(operation, given, secrets);
    const Database database(settings, access_of(operation));
    const Value value = call(operation, database, inputs, secrets);
    const bool is_tree = std::ranges::any_of(operation.arguments(), [](const Argument &argument) {
        return argument.shape == qbobj::Shape::tree_result;
    });
    if (is_tree && value.text() != nullptr)
        std::cout << *value.text() << '\n';
    else
        show(settings, value, secrets);
}

} // namespace qbctl
