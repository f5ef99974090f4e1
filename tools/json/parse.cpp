// Parsing, with the limits that the walks over the value rely on.
#include "json/parse.h"

#include <set>
#include <vector>

namespace qbobj_json
{
namespace
{

constexpr int deepest = 64;
constexpr std::size_t longest_name = 128;

// Watches the values that a parser meets.
class Limits
{
  public:
    bool operator()(int depth, Json::parse_event_t event, const Json &value)
    {
        switch (event) {
        case Json::parse_event_t::object_start:
            names_.emplace_back();
            [[fallthrough]];
        case Json::parse_event_t::array_start:
            if (depth >= deepest)
                throw BadInput("the input is nested deeper than " + std::to_string(deepest) + " levels");
            break;
        case Json::parse_event_t::key:
            check_name(value.get_ref<const std::string &>());
            if (!names_.back().insert(value.get<std::string>()).second)
                throw BadInput("the input gives '" + value.get<std::string>() + "' twice in one object");
            break;
        case Json::parse_event_t::object_end:
            names_.pop_back();
            break;
        default:
            break;
        }
        return true;
    }

  private:
    // Errors show names.
    static void check_name(const std::string &name)
    {
        if (name.size() > longest_name)
            throw BadInput("the input holds a name of " + std::to_string(name.size()) +
                           " bytes, longer than any field's");
        if (name.find('\0') != std::string::npos)
            throw BadInput("the input holds a name with a NUL character");
    }

    std::vector<std::set<std::string>> names_; // of the objects that are open
};

// What the parser says, without its own prefix and without what it read last.
std::string complaint(const Json::parse_error &error)
{
    std::string text = error.what();
    if (const std::size_t prefix = text.find("] "); text.starts_with('[') && prefix != std::string::npos)
        text.erase(0, prefix + 2);
    return text.substr(0, text.find("; last read"));
}

} // namespace

Json parse(const std::string &text)
{
    Limits limits;
    const auto watch = [&](int depth, Json::parse_event_t event, Json &value) {
        return limits(depth, event, value);
    };
    try {
        return Json::parse(text, watch);
    } catch (const Json::parse_error &error) {
        throw BadInput("the input is no JSON: " + complaint(error));
    } catch (const Json::out_of_range &) {
        throw BadInput("the input holds a number that is too large");
    }
}

} // namespace qbobj_json
