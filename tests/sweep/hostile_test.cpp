// Calls every operation with hostile strings in the place of each of its strings: they are data, or an error
// of the operation's own, and never reach a statement as SQL.
#include "operations/texts.h"
#include "scenarios.h"

using namespace qbobj_test;
namespace texts = qbobj::texts;
using qbobj_json::Json;

namespace
{

const std::vector<Json> &hostile_values()
{
    static const std::vector<Json> values{
        "",
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
        std::string(4096, 'A'),
        std::string(4096, '\''),
        nullptr,
    };
    return values;
}

// Paths of every string in the input.
void find_strings(const Json &json, const Json::json_pointer &at, std::vector<Json::json_pointer> &found)
{
    if (json.is_string())
        found.push_back(at);
    else if (json.is_array())
        for (std::size_t i = 0; i < json.size(); ++i)
            find_strings(json[i], at / i, found);
    else if (json.is_object())
        for (const auto &[name, value] : json.items())
            find_strings(value, at / name, found);
}

// A field that takes SQL, by contract.
bool is_sql(const qbobj_spec_t *spec, const char *field)
{
    return texts::find_field(*texts::find_record(spec->name), field)->sql;
}

// The input with every string field of the operation's first record present that holds a value.
Json with_all_strings(const qbobj_json::Operation &operation, const Json &given)
{
    Json input = qbobj_json::arrange_inputs(operation, given);
    for (std::size_t i = 0; i < operation.arguments().size(); ++i) {
        const qbobj_spec_t *spec = operation.arguments()[i].spec;
        if (!operation.arguments()[i].is_input() || spec == nullptr)
            continue;
        Json &record = input[i].is_array() && !input[i].empty() ? input[i].front() : input[i];
        if (record.is_null())
            record = Json::object();
        if (record.is_array())
            continue;
        for (const qbobj_spec_t *row = spec + 1; row->type != QBOBJ_KIND_END; ++row)
            if (row->type == QBOBJ_KIND_STRING && !record.contains(row->name) && !is_sql(spec, row->name))
                record[row->name] = "";
    }
    return input;
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

TEST_P(HostileSweep, StringsAreNeverSql)
{
    const Scenario &scenario = GetParam();
    if (scenario.operation == "getGroup")
        GTEST_SKIP() << "its statement is refused whatever the input";
    const qbobj_json::Operation &operation = *qbobj_json::find_operation(scenario.operation);
    Appliance office;
    furnish(office);
    const std::string schema = office.value("SELECT group_concat(sql) FROM sqlite_schema");
    const Json input = with_all_strings(operation, scenario.input);
    std::vector<Json::json_pointer> strings;
    find_strings(input, Json::json_pointer(), strings);

    for (const Json::json_pointer &at : strings)
        for (const Json &hostile : hostile_values()) {
            if (hostile.is_null() && is_settings_operation(operation.name()))
                continue; // a null key ends the process; a null registry value is refused by a statement that
                          // is no SQL
            SCOPED_TRACE(at.to_string() + " = " +
                         hostile.dump(-1, ' ', true, Json::error_handler_t::replace).substr(0, 60));
            Json changed = input;
            changed[at] = hostile;
            office.sql("BEGIN; COMMIT");
            const std::string before = office.content();
            const qbobj_json::Outcome outcome = operation.call(operation, {office.qbdb, office.db}, changed);
            EXPECT_FALSE(speaks_of_syntax(outcome.error.msg, hostile)) << outcome.error.msg;
            if (operation.failed(outcome.result)) {
                ASSERT_EQ(before, office.content());
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
