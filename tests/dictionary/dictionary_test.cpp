// The tree of a language and single texts, by setting and caller; memory that runs out while the tree is built.
#include "database.h"

#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <cstdlib>
#include <cstring>

namespace
{

class Dictionary : public qbobj_test::Database
{
  protected:
    Dictionary()
    {
        sql("DELETE FROM _dictionary; INSERT INTO _lang_supported VALUES(2,'de-de','Deutsch'),"
            "(3,'xx','\"<&>\"'),(4,'none',NULL);"
            "INSERT INTO _dictionary VALUES('a',1,'one'),('b',1,'two ]]> <&'),('c',1,NULL),"
            "('a',2,'eins'),('z',2,'nur deutsch')");
    }

    void configure(const char *locale)
    {
        sql("DELETE FROM service_misc WHERE key='PANELVIEWLOCALE'");
        if (locale != nullptr)
            sql("INSERT INTO service_misc (key,val) VALUES('PANELVIEWLOCALE'," + std::string(locale) + ")");
    }

    std::string tree(const char *code)
    {
        xmlNodePtr node = nullptr;
        EXPECT_OK(qbobj_getDictionary(qbdb, db, code, &node, &err));
        xmlBuffer *buffer = xmlBufferCreate();
        xmlNodeDump(buffer, nullptr, node, 0, 0);
        std::string text = reinterpret_cast<const char *>(xmlBufferContent(buffer));
        xmlBufferFree(buffer);
        xmlFreeNode(node);
        return text;
    }

    std::string text(const char *code, const char *key)
    {
        char *found = nullptr;
        EXPECT_OK(qbobj_getTranslatedString(qbdb, db, code, key, &found, &err));
        return found == nullptr ? "(null)" : found;
    }
};

// The whole tree, with items below one of the languages.
std::string expected(int current, const std::string &items)
{
    const char *languages[] = {R"(code="en-us" spell="English")", R"(code="de-de" spell="Deutsch")",
                               R"(code="xx" spell="&quot;&lt;&amp;&gt;&quot;")", R"(code="none" spell="")"};
    std::string all = "<Dictionary>";
    for (int i = 0; i < 4; i++)
        all += std::string("<Language ") + languages[i] +
               (i == current && !items.empty() ? ">" + items + "</Language>" : "/>");
    return all + "</Dictionary>";
}

TEST_F(Dictionary, CurrentLanguage)
{
    const std::string rest = R"(<item key="b"><![CDATA[two ]]]]><![CDATA[> <&]]></item>)"
                             R"(<item key="c"><![CDATA[]]></item>)";
    const std::string english = R"(<item key="a"><![CDATA[one]]></item>)" + rest;
    const std::string german = R"(<item key="a"><![CDATA[eins]]></item>)" + rest;
    const struct {
        const char *locale; // null: no setting
        const char *code;
        int current; // of the tree; -1: none
        std::string items;
        const char *text; // of the key "a"
    } cases[] = {
        {"'auto'", nullptr, 0, english, "one"},  {"'auto'", "de-de", 1, german, "eins"},
        {"'auto'", "xx", 2, english, "one"},     {"'auto'", "DE-DE", -1, "", "one"},
        {"'de-de'", "en-us", 1, german, "eins"}, {"'fr-fr'", "de-de", -1, "", "one"},
        {nullptr, "de-de", 0, english, "one"},   {"NULL", "de-de", 0, english, "one"},
        {"'de''de'", "x' OR '1", -1, "", "one"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.locale == nullptr ? "no setting" : c.locale) + " for " +
                     (c.code == nullptr ? "nobody" : c.code));
        configure(c.locale);
        EXPECT_EQ(expected(c.current, c.items), tree(c.code));
        EXPECT_EQ(c.text, text(c.code, "a"));
    }
}

TEST_F(Dictionary, SingleTexts)
{
    for (const auto &[key, found] : {std::pair{"b", "two ]]> <&"},
                                     {"z", "nur deutsch"},
                                     {"c", "c"},
                                     {"no'key", "no'key"},
                                     {static_cast<const char *>(nullptr), "(null)"}})
        EXPECT_EQ(found, text("de-de", key));
    EXPECT_EQ("z", text("en-us", "z"));
    EXPECT_FAILS(qbobj_getTranslatedString(qbdb, db, nullptr, "a", nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "str cannot be NULL.");
    EXPECT_FAILS(qbobj_getDictionary(qbdb, db, nullptr, nullptr, &err), QBOBJ_ERROR_API_ARGS,
                 "node cannot be NULL.");
}

TEST_F(Dictionary, FailuresAreTold)
{
    const struct {
        const char *table;
        const char *of_tree, *of_text;
    } cases[] = {
        {"_dictionary", "Failed DB Query for 'SELECT FROM _dictionary'. no such table: _dictionary",
         "Failed DB Query for 'SELECT FROM _dictionary'. no such table: _dictionary"},
        {"service_misc", "Failed DB Query for 'SELECT FROM service_misc'. no such table: service_misc",
         "Failed DB Query for 'SELECT FROM service_misc'. no such table: service_misc\n"},
        {"_lang_supported",
         "Failed DB Query for 'SELECT FROM _lang_supported'. no such table: _lang_supported",
         "Failed DB Query for 'SELECT FROM _lang_supported'. no such table: _lang_supported\n"},
    };
    for (const auto &c : cases) {
        sql("DROP TABLE " + std::string(c.table));
        xmlNodePtr node = nullptr;
        EXPECT_FAILS(qbobj_getDictionary(qbdb, db, nullptr, &node, &err), QBOBJ_ERROR_DB_MISC, c.of_tree);
        EXPECT_EQ(nullptr, node);
        char *str = nullptr;
        if (std::strcmp(c.table, "_lang_supported") == 0) // asked for after the setting
            sql("CREATE TABLE service_misc (key,val)");
        EXPECT_FAILS(qbobj_getTranslatedString(qbdb, db, nullptr, "a", &str, &err), QBOBJ_ERROR_DB_MISC,
                     c.of_text);
    }
}

/* ---- libxml2's memory ---------------------------------------------------------------------------------- */

int left = -1; // allocations until the one that fails
int held = 0;

bool runs_out()
{
    return left >= 0 && left-- == 0;
}
void *allocate(size_t size)
{
    void *memory = runs_out() ? nullptr : std::malloc(size);
    held += memory != nullptr;
    return memory;
}
void release(void *memory)
{
    held -= memory != nullptr;
    std::free(memory);
}
void *reallocate(void *memory, size_t size)
{
    return runs_out() ? nullptr : std::realloc(memory, size);
}
char *duplicate(const char *text)
{
    const size_t size = std::strlen(text) + 1;
    void *copy = allocate(size);
    return static_cast<char *>(copy == nullptr ? nullptr : std::memcpy(copy, text, size));
}
void say_nothing(void *, const char *, ...) {}

TEST_F(Dictionary, MemoryRunsOutWhileTheTreeIsBuilt)
{
    xmlMemSetup(release, allocate, reallocate, duplicate);
    xmlSetGenericErrorFunc(nullptr, say_nothing);
    int failures = 0;
    for (int n = 0;; n++) {
        SCOPED_TRACE(n);
        held = 0;
        left = n;
        xmlNodePtr node = nullptr;
        const int rc = qbobj_getDictionary(qbdb, db, "de-de", &node, &err);
        const bool failed = left < 0;
        left = -1;
        xmlResetLastError();
        if (!failed) {
            EXPECT_OK(rc);
            xmlFreeNode(node);
            EXPECT_EQ(0, held);
            break;
        }
        ++failures;
        ASSERT_EQ(QBOBJ_ERROR_OOM, rc);
        EXPECT_STREQ("Failed to allocate resource.", err.msg);
        EXPECT_EQ(nullptr, node);
        EXPECT_EQ(0, held) << "something of the tree is left";
    }
    EXPECT_GT(failures, 40);
    xmlMemSetup(std::free, std::malloc, std::realloc, strdup);
}

} // namespace
