// Arguments as JSON, by NAME=VALUE, typed unseen, or from a descriptor.
#include "qbctl/arguments.h"

#include "qbctl/input.h"
#include "json/nearest.h"

#include <algorithm>
#include <cctype>
#include <charconv>

using qbobj_json::Argument;
using qbobj_json::BadInput;
using qbobj_json::Json;
using qbobj_json::Operation;

namespace qbctl
{
namespace
{

bool is_pair(const std::string &word)
{
    const std::size_t equals = word.find('=');
    return equals != std::string::npos && equals > 0 && is_name(word.substr(0, equals));
}

const Argument &input_named(const Operation &operation, const std::string &name)
{
    std::vector<std::string> names;
    for (const Argument &argument : operation.arguments()) {
        if (!argument.is_input())
            continue;
        if (argument.name == name)
            return argument;
        names.emplace_back(argument.name);
    }
    throw BadInput(operation.name() + " has no argument '" + name + "'" +
                   qbobj_json::suggestion(name, names));
}

// The place of a name in an object, which must still be free.
Json &free_place(Json &object, const std::string &name)
{
    if (!object.is_null() && !object.is_object())
        throw BadInput("'" + name + "' cannot be put into a list or a value: give an object");
    if (object.contains(name))
        throw BadInput("'" + name + "' is given twice");
    return object[name];
}

// Adds NAME=VALUE to the arguments: a text, or a number where the operation takes one, or the JSON of a
// record.
void add_pair(const Operation &operation, Json &given, const std::string &pair)
{
    const std::size_t equals = pair.find('=');
    const Argument &argument = input_named(operation, pair.substr(0, equals));
    const std::string value = pair.substr(equals + 1);
    Json &place = free_place(given, std::string(argument.name));
    place = argument.shape == qbobj::Shape::text ? Json(value) : read_json(value);
}

// Puts a text at a path such as "Password" or "user.Password" into the input.
void add_secret(Json &given, const std::string &path, const std::string &text)
{
    Json *object = &given;
    std::size_t start = 0;
    for (std::size_t dot; (dot = path.find('.', start)) != std::string::npos; start = dot + 1) {
        const std::string name = path.substr(start, dot - start);
        const bool opened = object->is_object() && object->contains(name) && !(*object)[name].is_null();
        object = opened ? &(*object)[name] : &(free_place(*object, name) = Json::object());
    }
    free_place(*object, path.substr(start)) = text;
}

// The text that PATH=N leads to; files mostly end with a line end that is not meant.
std::string text_of_descriptor(const std::string &pair)
{
    const std::size_t equals = std::min(pair.find('='), pair.size());
    int number = -1;
    const char *end = pair.data() + pair.size();
    const auto read = std::from_chars(std::min(pair.data() + equals + 1, end), end, number);
    if (equals == 0 || read.ec != std::errc() || read.ptr != end || number < 0)
        throw BadInput("--from-fd takes PATH=N: the place of a text and an open descriptor's number");
    std::string text = read_descriptor(number, "descriptor " + std::to_string(number));
    if (text.ends_with('\n'))
        text.pop_back();
    return text;
}

} // namespace

bool is_name(const std::string &word)
{
    return std::all_of(word.begin(), word.end(),
                       [](unsigned char c) { return std::isalnum(c) != 0 || c == '-' || c == '_'; });
}

const Operation &operation_named(const std::string &name)
{
    if (const Operation *operation = qbobj_json::find_operation(name))
        return *operation;
    std::vector<std::string> names;
    for (const Operation &operation : qbobj_json::operations())
        names.push_back(operation.name());
    const std::string nearest = qbobj_json::suggestion(name, names);
    throw BadInput((is_name(name) ? "there is no operation '" + name + "'" : "no operation is named") +
                   (nearest.empty() ? ": see 'qbctl list'" : nearest));
}

Json gather_inputs(const Operation &operation, const InputWords &given, Secrets &secrets)
{
    Json inputs = nullptr;
    for (const std::string &word : given.words)
        if (!is_pair(word)) {
            if (!inputs.is_null())
                throw BadInput("only one JSON input can be given");
            inputs = read_json(word);
        }
    for (const std::string &word : given.words)
        if (is_pair(word))
            add_pair(operation, inputs, word);
    const auto add = [&](const std::string &path, const std::string &text) {
        add_secret(inputs, path, text);
        secrets.add(text);
    };
    for (const std::string &pair : given.from_descriptors) {
        const std::string text = text_of_descriptor(pair);
        add(pair.substr(0, pair.find('=')), text);
    }
    for (const std::string &path : given.asked)
        add(path, ask(path));
    secrets.add_all(inputs);
    return qbobj_json::arrange_inputs(operation, inputs);
}

} // namespace qbctl
