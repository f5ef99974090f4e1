// The table of operations and the schemas of the records, for people.
#include "qbctl/describe.h"

#include "qbctl/render.h"
#include "json/nearest.h"
#include "json/operations.h"

#include <iostream>

using qbobj_json::Argument;
using qbobj_json::BadInput;
using qbobj_json::Operation;

namespace qbctl
{
namespace
{

std::string argument_text(const Argument &argument)
{
    std::string text = argument.name;
    if (argument.spec != nullptr)
        text += std::string(":") + argument.spec->name;
    return argument.optional ? "[" + text + "]" : text;
}

std::string unknown_type(const std::string &type)
{
    std::vector<std::string> names;
    for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
        names.emplace_back(entry->name);
    const std::string nearest = qbobj_json::suggestion(type, names);
    return "there is no record type '" + type + "'" +
           (nearest.empty() ? ": 'qbctl describe' lists them" : nearest);
}

} // namespace

void run_list()
{
    for (const Operation &operation : qbobj_json::operations()) {
        std::cout << operation.name << '(';
        std::string separator;
        for (const Argument &argument : operation.arguments)
            if (argument.is_input()) {
                std::cout << separator << argument_text(argument);
                separator = ", ";
            }
        std::cout << ')';
        separator = " -> ";
        if (operation.result != qbobj_json::ResultKind::code) {
            std::cout << separator << (operation.result == qbobj_json::ResultKind::answer ? "answer" : "id");
            separator = ", ";
        }
        for (const Argument &argument : operation.arguments)
            if (argument.is_output()) {
                std::cout << separator << argument_text(argument);
                separator = ", ";
            }
        std::cout << '\n';
    }
}

void run_describe(const std::vector<std::string> &types)
{
    if (types.empty())
        for (const struct all_spec *entry = all_spec; entry->name != nullptr; ++entry)
            std::cout << entry->name << '\n';
    for (const std::string &type : types) {
        const qbobj_spec_t *spec = qbobj_json::find_spec(type);
        if (spec == nullptr)
            throw BadInput(unknown_type(type));
        print_description(std::cout, spec);
    }
}

} // namespace qbctl
