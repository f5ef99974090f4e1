// What the headers say of an operation is what it does: its arguments, and the tables that it reads and writes.
#include "operations/texts.h"
#include "scenarios.h"

#include <algorithm>
#include <set>

using namespace qbobj_test;
namespace texts = qbobj::texts;

namespace
{

// The tables that a connection's statements touch while it stands.
class Touched
{
  public:
    explicit Touched(sqlite3 *db) : db_(db) { sqlite3_set_authorizer(db, prepared, this); }
    ~Touched() { sqlite3_set_authorizer(db_, nullptr, nullptr); }
    Touched(const Touched &) = delete;
    Touched &operator=(const Touched &) = delete;

    std::set<std::string, std::less<>> read;
    std::set<std::string, std::less<>> written;

  private:
    static int prepared(void *self, int action, const char *table, const char *, const char *database,
                        const char *)
    {
        if (database == nullptr || std::string_view(database) != "main" ||
            std::string_view(table).starts_with("sqlite_"))
            return SQLITE_OK;
        if (action == SQLITE_READ)
            static_cast<Touched *>(self)->read.insert(table);
        if (action == SQLITE_INSERT || action == SQLITE_UPDATE || action == SQLITE_DELETE)
            static_cast<Touched *>(self)->written.insert(table);
        return SQLITE_OK;
    }

    sqlite3 *db_;
};

bool names(std::span<const std::string_view> tables, std::string_view table)
{
    return std::ranges::find(tables, table) != tables.end();
}

class EachText : public ::testing::TestWithParam<Scenario>
{
};

TEST_P(EachText, NamesTheTablesThatAreTouched)
{
    Appliance office;
    furnish(office);
    const texts::Operation *text = texts::find_operation(GetParam().operation);
    ASSERT_NE(nullptr, text);
    office.sql("PRAGMA foreign_keys=OFF"); // the database's own look-ups are not the operation's
    const Touched touched(office.db);
    call(office, GetParam().operation, GetParam().input);
    for (const std::string &table : touched.written)
        EXPECT_TRUE(names(text->writes, table)) << "@writes lacks " << table;
    // Changing a row reads it.
    for (const std::string &table : touched.read)
        EXPECT_TRUE(names(text->reads, table) || touched.written.contains(table)) << "@reads lacks " << table;
}

INSTANTIATE_TEST_SUITE_P(All, EachText, ::testing::ValuesIn(scenarios()), name_of);

TEST(Texts, DescribeTheArgumentsOfEveryOperation)
{
    for (const qbobj::OperationEntry &operation : qbobj::operation_table()) {
        SCOPED_TRACE(operation.name);
        const texts::Operation *text = texts::find_operation("QBOBJ_" + std::string(operation.name));
        ASSERT_NE(nullptr, text);
        ASSERT_EQ(operation.arguments.size(), text->parameters.size());
        for (std::size_t i = 0; i < text->parameters.size(); ++i) {
            const qbobj::ArgumentEntry &argument = operation.arguments[i];
            const texts::Parameter &parameter = text->parameters[i];
            EXPECT_EQ(argument.name, parameter.name);
            EXPECT_EQ(argument.is_input(), parameter.direction != texts::Direction::out) << argument.name;
            EXPECT_EQ(argument.is_output(), parameter.direction != texts::Direction::in) << argument.name;
        }
        // What only reads begins a transaction that cannot wait for a writer, and must not write.
        EXPECT_TRUE(operation.effect != qbobj::Effect::reads || text->writes.empty());
    }
}

TEST(Texts, DescribeEveryFieldOfEverySchema)
{
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry) {
        const texts::Record *record = texts::find_record(entry->name);
        ASSERT_NE(nullptr, record) << entry->name;
        for (const qbobj_spec_t *row = entry->spec + 1; row->type != QBOBJ_KIND_END; ++row)
            EXPECT_NE(nullptr, texts::find_field(*record, row->name)) << entry->name << '.' << row->name;
    }
    EXPECT_TRUE(texts::is_secret("MyPassword", "OldPassword"));
    EXPECT_FALSE(texts::is_secret("MyPassword", "UserName"));
}

} // namespace
