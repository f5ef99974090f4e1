// Calls every operation with hostile values in the place of each of its strings and numbers: they are data, or an error
// of the operation's own, and never reach a statement as SQL.
#include "operations/texts.h"
#include "scenarios.h"
#include "trials.h"

#include <climits>

using namespace qbobj_test;
namespace texts = qbobj::texts;
using qbobj_json::Json;

namespace
{

const std::vector<Json> hostile_strings{"",
                                        "'",
                                        "\"",
                                        "`",
                                        "x' OR '1'='1",
                                        "x'); DELETE FROM share; --",
                                        "x', is_privileged=1, email='",
                                        "%s%n%Q%d%",
                                        "a%b_c\\",
                                        "Größe/日本語",
                                        "\xff\xfe",
                                        "\x01\t\r\n\x1b[2J\x7f",
                                        std::string(4096, '\''),
                                        std::string(1 << 20, '/'),
                                        nullptr};

// Those that a type cannot hold are refused before the call.
const std::vector<Json> hostile_numbers{0, -1, INT_MAX, INT_MIN, UINT_MAX, INT64_MAX, INT64_MIN, UINT64_MAX};

using Place = std::pair<Json::json_pointer, bool>; // and whether a string stands there

// A field that takes SQL, by contract.
bool is_sql(const qbobj_spec_t *spec, const char *field)
{
    return texts::find_field(*texts::find_record(spec->name), field)->sql;
}

// Every string and number of a record, or of each record of a list, and of the records in it that are given.
void find_places(const qbobj_spec_t *spec, const Json &json, const Json::json_pointer &at,
                 std::vector<Place> &found)
{
    for (std::size_t i = 0; json.is_array() && i < json.size(); ++i)
        find_places(spec, json[i], at / i, found);
    for (const qbobj_spec_t *row = spec + 1; !json.is_array() && row->type != QBOBJ_KIND_END; ++row)
        if (row->type != QBOBJ_KIND_RECORD && !is_sql(spec, row->name))
            found.emplace_back(at / row->name, row->type == QBOBJ_KIND_STRING);
        else if (row->type == QBOBJ_KIND_RECORD && json.is_object() && json.contains(row->name))
            find_places(row->ospec_ptr, json[row->name], at / row->name, found);
}

std::vector<Place> places_of(const qbobj_json::Operation &operation, const Json &input)
{
    std::vector<Place> found;
    for (std::size_t i = 0; i < input.size(); ++i) {
        const qbobj_json::Argument &argument = operation.arguments()[i];
        const Json::json_pointer at = Json::json_pointer() / i;
        if (argument.is_input() && argument.spec != nullptr)
            find_places(argument.spec, input[i], at, found);
        else if (argument.is_input())
            found.emplace_back(at, argument.shape == qbobj::Shape::text);
    }
    return found;
}

bool is_settings_operation(const std::string &name)
{
    return name.ends_with("ServiceEntry") || name.ends_with("RegistryEntry");
}

// What the database says when a value has become SQL. In a table's place the whole value may name a missing table, and
// behind a table's alias a missing column: there it was quoted.
bool speaks_of_syntax(const char *message, const Json &value)
{
    std::string text = message == nullptr ? "" : message;
    if (value.is_string() && text.ends_with("no such column: S." + value.get<std::string>()))
        return false;
    constexpr std::string_view missing = "no such table";
    const std::size_t table = text.find(missing);
    if (table != text.npos && value.is_string() && text.find(value.get<std::string>(), table) != text.npos)
        text.erase(table, missing.size());
    for (const char *sign :
         {"syntax error", "unrecognized token", "no such column", "no such table", "incomplete input"})
        if (text.find(sign) != std::string::npos)
            return true;
    return false;
}

class HostileSweep : public ::testing::TestWithParam<Scenario>
{
};

// Counts commits of what was written.
int count_commit(void *commits)
{
    ++*static_cast<int *>(commits);
    return 0;
}

TEST_P(HostileSweep, ValuesAreNeverSql)
{
    const Scenario &scenario = GetParam();
    if (scenario.operation == "getGroup")
        GTEST_SKIP() << "its statement is refused whatever the input";
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(scenario.operation);
    Tally tally("hostile");
    Appliance office;
    furnish(office);
    office.sql("PRAGMA synchronous=OFF");
    const std::string schema = office.value("SELECT group_concat(sql) FROM sqlite_schema");
    const Json input = qbobj_json::arrange_inputs(operation, scenario.input);
    int commits = 0;
    sqlite3_commit_hook(office.db, count_commit, &commits);

    for (const auto &[at, is_string] : places_of(operation, input))
        for (const Json &hostile : is_string ? hostile_strings : hostile_numbers) {
            if (hostile.is_null() && is_settings_operation(operation.name()))
                continue; // a null key ends the process; a null registry value is refused by a statement that
                          // is no SQL
            SCOPED_TRACE(at.to_string() + " = " +
                         hostile.dump(-1, ' ', true, Json::error_handler_t::replace).substr(0, 60));
            tally.count();
            Json changed = input;
            changed[at] = hostile;
            office.sql("BEGIN; COMMIT");
            commits = 0;
            try {
                const qbobj_json::Outcome outcome =
                    operation.call(operation, {office.qbdb, office.db}, changed);
                EXPECT_FALSE(speaks_of_syntax(outcome.error.msg, hostile)) << outcome.error.msg;
                EXPECT_FALSE(operation.failed(outcome.result) && commits != 0) << "what failed was kept";
            } catch (const qbobj_json::BadInput &refused) {
                EXPECT_FALSE(is_string) << refused.what();
            }
            ASSERT_EQ("1",
                      office.value("SELECT COUNT(*) FROM `$user` WHERE uname='admin' AND is_privileged=1"));
            ASSERT_EQ("0", office.value("SELECT COUNT(*) FROM `$user` WHERE id>=100 AND is_privileged=1"));
            qbdb_clear_pool(office.qbdb);
        }
    EXPECT_EQ(schema, office.value("SELECT group_concat(sql) FROM sqlite_schema"));
    EXPECT_EQ("ok", office.value("PRAGMA integrity_check"));
}

INSTANTIATE_TEST_SUITE_P(All, HostileSweep, ::testing::ValuesIn(scenarios()), name_of);

} // namespace
