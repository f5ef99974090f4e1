// The dictionary of one language.
#include "lookup.h"
#include "measurements.h"

#include <libxml/tree.h>

namespace qbobj_bench
{
namespace
{

constexpr int few = 2000; // texts
constexpr int many = 20000;

struct FreeNode {
    void operator()(xmlNode *node) const { xmlFreeNode(node); }
};
using Tree = std::unique_ptr<xmlNode, FreeNode>;

// Two languages; the second lacks a tenth of the texts.
void furnish(const Connection &connection, int count)
{
    connection.run(
        ("DELETE FROM _dictionary; INSERT INTO _lang_supported VALUES(2,'de-de','Deutsch');"
         "CREATE TEMP TABLE n AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n LIMIT " +
         std::to_string(count) +
         ") SELECT i FROM n;"
         "INSERT INTO _dictionary SELECT printf('LABEL_%06d',i),1,printf('The text of label %d, "
         "of usual length.',i) FROM n;"
         "INSERT INTO _dictionary SELECT printf('LABEL_%06d',i),2,printf('Der Text des Schildes "
         "%d, nicht zu lang.',i) FROM n WHERE i%10")
            .c_str());
}

Tree build_by_library(const Connection &connection)
{
    qbobj_error_rec_t err{};
    xmlNodePtr node = nullptr;
    check(qbobj_getDictionary(connection.qbdb, connection.db, "de-de", &node, &err), err);
    return Tree(node);
}

const xmlChar *xml(const char *text)
{
    return reinterpret_cast<const xmlChar *>(text);
}

// Reads the same rows on statements that it keeps and builds the same tree, checking nothing.
class Builder
{
  public:
    explicit Builder(const Connection &connection) : connection_(connection) {}

    Tree build() const
    {
        finish(begin_());
        Tree dictionary(xmlNewNode(nullptr, xml("Dictionary")));
        for (auto row = languages_(); row.next();) {
            xmlNode *language = xmlNewChild(dictionary.get(), nullptr, xml("Language"), nullptr);
            xmlNewProp(language, xml("code"), xml(row.text(0)));
            xmlNewProp(language, xml("spell"), xml(row.text(1)));
            if (std::strcmp(row.text(0), "de-de") == 0)
                add_items(language);
        }
        finish(commit_());
        return dictionary;
    }

  private:
    void add_items(xmlNode *language) const
    {
        for (auto row = texts_("de-de"); row.next();) {
            xmlNode *item = xmlNewChild(language, nullptr, xml("item"), nullptr);
            xmlNewProp(item, xml("key"), xml(row.text(0)));
            const char *text = row.text(1);
            xmlAddChild(item, xmlNewCDataBlock(nullptr, xml(text), static_cast<int>(std::strlen(text))));
        }
    }

    const Connection &connection_;
    Kept begin_{connection_, "BEGIN"};
    Kept commit_{connection_, "COMMIT"};
    Kept languages_{connection_, "SELECT lang,spell FROM _lang_supported ORDER BY id"};
    Kept texts_{connection_, R"(SELECT EN.id,IFNULL(D.str,EN.str) FROM (SELECT id,str FROM _dictionary
        WHERE lang_id=(SELECT id FROM _lang_supported WHERE lang='en-us')) AS EN LEFT JOIN _dictionary D
        ON D.id=EN.id AND D.lang_id=(SELECT id FROM _lang_supported WHERE lang=%Q))"};
};

struct Subject {
    explicit Subject(int texts) { furnish(appliance.connect(), texts); }

    Appliance appliance{{.users = 0}};
    Connection library = appliance.connect();
    Connection kept = appliance.connect();
    Builder builder{kept};
};

std::string text_of(const Tree &tree)
{
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> buffer(xmlBufferCreate(), xmlBufferFree);
    xmlNodeDump(buffer.get(), nullptr, tree.get(), 0, 0);
    return reinterpret_cast<const char *>(xmlBufferContent(buffer.get()));
}

} // namespace

void add_dictionary_figures(Figures &figures)
{
    for (const int texts : {few, many}) {
        const auto subject = figures.keep<Subject>(texts);
        require_equal("dictionary", text_of(subject->builder.build()),
                      text_of(build_by_library(subject->library)));
        figures.measure("getDictionary/library/" + std::to_string(texts),
                        timed(subject->library, [subject] { build_by_library(subject->library); }));
        figures.measure("getDictionary/by-hand/" + std::to_string(texts),
                        timed(subject->kept, [subject] { subject->builder.build(); }));
    }
    figures.ratio_at_most("getDictionary-to-rows-and-tree-by-hand", "getDictionary/library/20000",
                          "getDictionary/by-hand/20000", 2);
    figures.ratio_at_most("getDictionary-time-of-10x-texts", "getDictionary/library/20000",
                          "getDictionary/library/2000", 12);
}

} // namespace qbobj_bench
