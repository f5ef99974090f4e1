// The texts of one language as a tree, and single texts.
#include "dictionary/dictionary.h"

#include <libxml/tree.h>

#include <cstring>
#include <memory>

namespace qbobj
{

namespace
{

/* ---- Trees, whose parts may lack for want of memory what they should hold -------------------------------- */

struct FreeNode {
    void operator()(xmlNode *node) const { xmlFreeNode(node); }
};
using Node = std::unique_ptr<xmlNode, FreeNode>;

const xmlChar *xml(const char *text)
{
    return reinterpret_cast<const xmlChar *>(text);
}

Node new_element(const char *name)
{
    Node element(xmlNewNode(nullptr, xml(name)));
    if (element == nullptr || element->name == nullptr)
        throw std::bad_alloc();
    return element;
}

Node new_cdata(const char *text)
{
    Node section(xmlNewCDataBlock(nullptr, xml(text), static_cast<int>(std::strlen(text))));
    if (section == nullptr || section->content == nullptr)
        throw std::bad_alloc();
    return section;
}

void add_attribute(xmlNode &element, const char *name, const char *value)
{
    const xmlAttr *attribute = xmlNewProp(&element, xml(name), xml(value));
    if (attribute == nullptr || attribute->name == nullptr || attribute->children == nullptr ||
        attribute->children->content == nullptr)
        throw std::bad_alloc();
}

xmlNode &append(xmlNode &parent, Node child)
{
    if (xmlAddChild(&parent, child.get()) == nullptr)
        throw std::bad_alloc();
    return *child.release();
}

/* ---- Languages ----------------------------------------------------------------------------------------- */

struct Language {
    Language *_link;
    const char *code;
    const char *spell;
};
constexpr auto languages = select("SELECT lang,spell FROM _lang_supported ORDER BY id",
                                  "Failed DB Query for 'SELECT FROM _lang_supported'. %s",
                                  or_empty(&Language::code), or_empty(&Language::spell));

// The configured language, or with "auto" the caller's; English when there is neither.
int find_current_language(Call &call, const Failure &failure, const char *code, const char *&current)
{
    if (const int rc = call.text(failure, current,
                                 "SELECT CASE WHEN val='auto' THEN IFNULL(%Q,'en-us') ELSE val END "
                                 "FROM service_misc WHERE key='PANELVIEWLOCALE'",
                                 code))
        return rc;
    if (current == nullptr)
        current = "en-us";
    return 0;
}

/* ---- Texts --------------------------------------------------------------------------------------------- */

// Its texts live as long as the row.
struct Text {
    const char *key;
    const char *text;
};
constexpr auto of_row(const char *Text::*member)
{
    return [member](const qbobj_env_t &, Text &text, const char *cell) { text.*member = or_empty(cell); };
}
// Every key that English has, in English where the language lacks it.
constexpr auto texts = select<const char *>(
    "SELECT EN.id,IFNULL(D.str,EN.str) FROM (SELECT id,str FROM _dictionary "
    "WHERE lang_id=(SELECT id FROM _lang_supported WHERE lang='en-us')) AS EN "
    "LEFT JOIN _dictionary D ON D.id=EN.id AND "
    "D.lang_id=(SELECT id FROM _lang_supported WHERE lang=%Q)",
    "Failed DB Query for 'SELECT FROM _dictionary'. %s", of_row(&Text::key), of_row(&Text::text));

int add_items(Call &call, xmlNode &language, const char *code)
{
    const auto add = [&](const Text &text) {
        xmlNode &item = append(language, new_element("item"));
        add_attribute(item, "key", text.key);
        append(item, new_cdata(text.text));
    };
    return call.scan<Text>(texts, add, code);
}

} // namespace

int x_qbobj_getDictionary(Call &call, const char *code, xmlNodePtr *node)
{
    if (node == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "node cannot be NULL.");
    Node dictionary = new_element("Dictionary");
    Language *supported = nullptr;
    if (const int rc = call.append(languages, supported))
        return rc;
    const char *current = nullptr;
    if (const int rc =
            find_current_language(call, "Failed DB Query for 'SELECT FROM service_misc'. %s", code, current))
        return rc;
    for (const Language &language : Chain(supported)) {
        xmlNode &element = append(*dictionary, new_element("Language"));
        add_attribute(element, "code", language.code);
        add_attribute(element, "spell", language.spell);
        if (std::strcmp(language.code, current) == 0)
            if (const int rc = add_items(call, element, current))
                return rc;
    }
    *node = dictionary.release();
    return 0;
}

int x_qbobj_getTranslatedString(Call &call, const char *code, const char *key, char **str)
{
    if (str == nullptr)
        return raise(call, QBOBJ_ERROR_API_ARGS, "str cannot be NULL.");
    const char *current = nullptr;
    if (const int rc = find_current_language(call, "Failed DB Query for 'SELECT FROM service_misc'. %s\n",
                                             code, current))
        return rc;
    int lang_id = 0;
    if (const int rc = call.number("Failed DB Query for 'SELECT FROM _lang_supported'. %s\n", lang_id,
                                   "SELECT IFNULL((SELECT id FROM _lang_supported WHERE lang=%Q),"
                                   "(SELECT id FROM _lang_supported WHERE lang='en-us'))",
                                   current))
        return rc;
    return call.text("Failed DB Query for 'SELECT FROM _dictionary'. %s", *str,
                     "SELECT COALESCE((SELECT D.str FROM _dictionary D WHERE D.lang_id=%d AND D.id=%Q),"
                     "(SELECT EN.str FROM _dictionary EN WHERE EN.lang_id="
                     "(SELECT L.id FROM _lang_supported L WHERE L.lang='en-us') AND EN.id=%Q),%Q)",
                     lang_id, key, key, key);
}

} // namespace qbobj
