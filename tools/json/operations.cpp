// Operations called with JSON: each argument is made from JSON, passed, and shown afterwards, as its type says.
#include "json/operations.h"

#include "common/pool.h"
#include "operations/all.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace qbobj_json
{
namespace
{

using qbobj::Direction;

// What every argument is made from.
struct Given {
    const Argument &argument;
    const Json &json;
    const Connection &connection;

    apr_pool_t *pool() const { return connection.qbdb->pool; }
    std::string name() const { return std::string(argument.name); }
};

// A copy that lives as long as the results.
template <class T>
Row<T> kept(const std::vector<T> &values, apr_pool_t *pool)
{
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
    auto *copy = static_cast<T *>(qb::allocate(pool, values.size() * sizeof(T)));
    std::uninitialized_copy(values.begin(), values.end(), copy);
    return {copy, values.size()};
}

// How one argument is made from JSON, passed, and shown afterwards.
template <class T>
struct Slot;

template <std::integral Number>
struct Slot<Number> {
    Number value = 0;
    explicit Slot(const Given &given)
    {
        if (given.json.is_null())
            return;
        if constexpr (std::is_unsigned_v<Number>)
            value = static_cast<Number>(to_unsigned(given.json, given.name()));
        else
            value = static_cast<Number>(to_integer(given.json, std::numeric_limits<Number>::min(),
                                                   std::numeric_limits<Number>::max(), given.name()));
    }
    Number pass() { return value; }
    Value show() const { return value; }
};

template <std::integral Number>
struct Slot<Number *> {
    Number value = 0;
    explicit Slot(const Given &) {}
    Number *pass() { return &value; }
    Value show() const { return value; }
};

template <>
struct Slot<const char *> {
    const char *value;
    explicit Slot(const Given &given) : value(to_text(given.json, given.pool(), given.name())) {}
    const char *pass() { return value; }
    Value show() const { return value; }
};

template <qbobj::RecordArgument Pointer>
struct Slot<Pointer> {
    static constexpr const qbobj_spec_t *spec = qbobj::schema_of(Pointer{});
    Pointer value;
    explicit Slot(const Given &given)
        : value(static_cast<Pointer>(given.json.is_null() && !given.argument.optional
                                         ? empty_record(spec, given.pool())
                                         : from_json(spec, given.json, given.pool(), given.name())))
    {
    }
    Pointer pass() { return value; }
    Value show() const { return {spec, value}; }
};

template <class Record>
requires qbobj::RecordResult<Record **>
struct Slot<Record **> {
    Record *value = nullptr;
    explicit Slot(const Given &given)
    {
        if (given.argument.direction == Direction::append)
            value = static_cast<Record *>(
                from_json(qbobj::schema_of(value), given.json, given.pool(), given.name()));
    }
    Record **pass() { return &value; }
    Value show() const { return {qbobj::schema_of(value), value}; }
};

// One text, or an array of the caller's, which another argument counts and which is not there for the first call.
template <class Text>
struct TextSlot {
    bool is_array;
    std::vector<Text> values;
    apr_pool_t *pool;
    explicit TextSlot(const Given &given)
        : is_array(!given.argument.count.empty()), values(is_array ? 0 : 1), pool(given.pool())
    {
    }
    Text *pass() { return values.empty() ? nullptr : values.data(); }
    Value show() const
    {
        if (!is_array)
            return values.front();
        return kept(std::vector<Value>(values.begin(), values.end()), pool);
    }
};
template <>
struct Slot<char **> : TextSlot<char *> {
    using TextSlot::TextSlot;
};
template <>
struct Slot<const char **> : TextSlot<const char *> {
    using TextSlot::TextSlot;
};

struct FreeNode {
    void operator()(xmlNode *node) const { xmlFreeNode(node); }
};
struct FreeBuffer {
    void operator()(xmlBuffer *buffer) const { xmlBufferFree(buffer); }
};

template <>
struct Slot<xmlNodePtr *> {
    xmlNodePtr value = nullptr;
    apr_pool_t *pool;
    explicit Slot(const Given &given) : pool(given.pool()) {}
    xmlNodePtr *pass() { return &value; }
    // The tree, which is the caller's, as its text.
    Value show() const
    {
        const std::unique_ptr<xmlNode, FreeNode> node(value);
        const std::unique_ptr<xmlBuffer, FreeBuffer> text(xmlBufferCreate());
        if (node == nullptr || text == nullptr || xmlNodeDump(text.get(), nullptr, node.get(), 0, 1) < 0)
            return {};
        return qb::copy_text(pool, reinterpret_cast<const char *>(xmlBufferContent(text.get())));
    }
};

template <>
struct Slot<qbobj_folder_attribute_t *> {
    qbobj_folder_attribute_t value{};
    apr_pool_t *pool;
    explicit Slot(const Given &given) : pool(given.pool()) {}
    qbobj_folder_attribute_t *pass() { return &value; }
    Value show() const
    {
        return kept<Member>({{"cifs_flags", value.cifs_flags},
                             {"dlna_flags", value.dlna_flags},
                             {"comment", value.comment},
                             {"is_homeshare", value.is_homeshare},
                             {"is_subfolder", value.is_subfolder}},
                            pool);
    }
};

template <class Entry, std::size_t... Index>
Outcome call_function(const Operation &operation, const Connection &connection, const Json &inputs,
                      std::index_sequence<Index...>)
{
    const std::span<const Argument> arguments = operation.arguments();
    // Braces keep the order of evaluation, so that the first bad argument is the one that is named.
    std::tuple<Slot<typename Entry::template Parameter<Index>>...> slots{
        Slot<typename Entry::template Parameter<Index>>(
            Given{arguments[Index], inputs.at(Index), connection})...};
    Outcome outcome;
    const auto run = [&] {
        outcome.result =
            Entry::function(connection.qbdb, connection.db, std::get<Index>(slots).pass()..., &outcome.error);
        return !operation.failed(outcome.result);
    };
    [[maybe_unused]] const auto number_in = [&](std::string_view name) {
        std::size_t number = 0;
        const auto take = [&](const Argument &argument, const auto &slot) {
            if constexpr (requires { static_cast<std::size_t>(slot.value); })
                if (argument.name == name)
                    number = static_cast<std::size_t>(slot.value);
        };
        (take(arguments[Index], std::get<Index>(slots)), ...);
        return number;
    };
    // An array was only counted. Others may add to it before it is filled.
    [[maybe_unused]] const auto fill = [&](const Argument &argument, auto &slot) {
        if constexpr (requires { slot.is_array; })
            if (slot.is_array) {
                slot.values.resize(2 * number_in(argument.count) + 1000);
                slot.values.resize(run() ? number_in(argument.count) : 0);
            }
    };
    if (run())
        (fill(arguments[Index], std::get<Index>(slots)), ...);

    std::vector<Member> outputs;
    if (operation.entry->identifies())
        outputs.push_back({"id", outcome.result});
    if (operation.entry->result == qbobj::ResultKind::answer)
        outputs.push_back({"answer", outcome.result == 0});

    const auto show = [&](const Argument &argument, const auto &slot) {
        const bool is_count =
            std::ranges::find(arguments, argument.name, &Argument::count) != arguments.end();
        if (argument.is_output() && !is_count)
            outputs.push_back({argument.name, slot.show()});
    };
    (show(arguments[Index], std::get<Index>(slots)), ...);
    outcome.output = outputs.size() == 1 ? outputs.front().value : kept(outputs, connection.qbdb->pool);
    return outcome;
}

template <class Entry>
Outcome call(const Operation &operation, const Connection &connection, const Json &inputs)
{
    return call_function<Entry>(operation, connection, inputs, std::make_index_sequence<Entry::arity>());
}

template <class... Entries>
std::vector<Operation> make_table(const std::tuple<Entries...> &)
{
    return {Operation{qbobj::find_operation(Entries::name()), call<Entries>}...};
}

} // namespace

std::span<const Operation> operations()
{
    static const std::vector<Operation> table = make_table(qbobj::all_operations);
    return table;
}

const Operation *find_operation(std::string_view name)
{
    for (const Operation &operation : operations())
        if (operation.entry->name == name)
            return &operation;
    return nullptr;
}

Json arrange_inputs(const Operation &operation, const Json &given)
{
    const auto find = [&](std::string_view name) -> const Argument * {
        for (const Argument &argument : operation.arguments())
            if (argument.is_input() && argument.name == name)
                return &argument;
        return nullptr;
    };
    std::vector<const Argument *> inputs;
    for (const Argument &argument : operation.arguments())
        if (argument.is_input())
            inputs.push_back(&argument);

    // By name, or the only input itself.
    bool by_name = given.is_object();
    if (by_name && inputs.size() == 1)
        for (const auto &[name, value] : given.items())
            by_name = by_name && find(name) != nullptr;
    if (!by_name && !given.is_null() && inputs.size() != 1)
        throw BadInput(operation.name() + " takes an object of its arguments by name");

    const Json named = by_name ? given : Json::object();
    for (const auto &[name, value] : named.items())
        if (find(name) == nullptr)
            throw BadInput(operation.name() + " has no argument '" + name + "'");

    Json arranged = Json::array();
    for (const Argument &argument : operation.arguments()) {
        Json value = nullptr;
        if (argument.is_input() && !by_name && !given.is_null())
            value = given;
        else if (named.contains(argument.name))
            value = named[std::string(argument.name)];
        const bool may_be_empty = argument.optional || argument.direction == Direction::append;
        if (argument.is_input() && value.is_null() && !may_be_empty)
            throw BadInput(operation.name() + ": the argument '" + std::string(argument.name) +
                           "' is missing");
        arranged.push_back(value);
    }
    return arranged;
}

} // namespace qbobj_json
