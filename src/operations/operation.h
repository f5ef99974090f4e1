// What an operation is to its callers, said once: the frame, the tool, the sweeps and every binding read it here.
//
// An entry names an exported function and states what its type does not: what the call does to the database, and what
// each argument between the connection and the error record is. A wrong number of arguments, or a direction that an
// argument's type cannot have, does not compile.
#pragma once

#include "core/schema_of.h"

#include <libxml/tree.h>
#include <qbobj.h>

#include <array>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace qbobj
{

// What a call does to the database.
enum class Effect {
    reads,     // nothing; it waits for no writer and holds none up
    refreshes, // nothing that a caller gave; it brings state of the system up to date while it reads
    writes
};

// What an operation's own result says, and so which results undo it.
enum class ResultKind {
    code,             // 0 or an error code
    identifier,       // an identifier, or a negative number
    plain_identifier, // the same, but a found identifier ends the call like an error code
    answer            // 0 for yes, 1 for no, or a negative number
};

enum class Direction {
    in,     // given
    out,    // made or filled by the call alone: what it holds before means nothing
    in_out, // given, and changed or completed by the call
    append  // a collection: results are appended to what it holds; may be left empty
};

struct Argument {
    std::string_view name;
    Direction direction{};
    bool optional = false;    // null and 0 are values of their own
    std::string_view count{}; // of an array that the caller provides: the argument that receives its length
};

constexpr Argument in(std::string_view name)
{
    return {.name = name, .direction = Direction::in};
}
constexpr Argument optional(std::string_view name)
{
    return {.name = name, .direction = Direction::in, .optional = true};
}
constexpr Argument out(std::string_view name)
{
    return {.name = name, .direction = Direction::out};
}
constexpr Argument in_out(std::string_view name)
{
    return {.name = name, .direction = Direction::in_out};
}
constexpr Argument optional_in_out(std::string_view name)
{
    return {.name = name, .direction = Direction::in_out, .optional = true};
}
constexpr Argument appended(std::string_view name)
{
    return {.name = name, .direction = Direction::append};
}
// An array of texts that the caller provides; the call stores in `count` how many there are. Without the array it only
// counts them, so that the caller can make room.
constexpr Argument out_array(std::string_view name, std::string_view count)
{
    return {.name = name, .direction = Direction::out, .count = count};
}

/* ---- From the function itself -------------------------------------------------------------------------- */

// The types between the connection and the error record.
template <class Function>
struct Signature;
template <class... Parameters>
struct Signature<int (*)(qbdb_handle_t *, sqlite3 *, Parameters...)> {
    static constexpr std::size_t arity = sizeof...(Parameters) - 1;
    template <std::size_t Index>
    using Parameter = std::tuple_element_t<Index, std::tuple<Parameters...>>;
    static_assert(std::is_same_v<Parameter<arity>, qbobj_error_rec_t *>, "the error record comes last");
};

template <auto Function>
consteval std::string_view function_name()
{
    std::string_view text = __PRETTY_FUNCTION__;
    text.remove_prefix(text.find("Function = ") + 11);
    if (text.front() == '&')
        text.remove_prefix(1);
    return text.substr(0, text.find_first_of(";]"));
}

// The exported name as a C string.
template <auto Function>
inline constexpr auto exported_name = [] {
    std::array<char, function_name<Function>().size() + 1> text{};
    function_name<Function>().copy(text.data(), text.size() - 1);
    return text;
}();

template <class Type>
concept RecordArgument = requires(Type record)
{
    schema_of(record);
};
template <class Type>
concept RecordResult = std::is_pointer_v<Type> && RecordArgument<std::remove_pointer_t<Type>>;

// The shape of an argument, which follows from its type.
enum class Shape {
    number,
    text,
    record,        // a record or list of the caller's
    record_result, // a record or list that the operation makes
    number_result,
    text_result,
    text_array,  // texts in an array of the caller's
    tree_result, // a tree of libxml2, which the caller frees
    attributes   // of a folder
};

template <class Type>
constexpr Shape shape_of(const Argument &argument)
{
    if constexpr (RecordArgument<Type>)
        return Shape::record;
    else if constexpr (RecordResult<Type>)
        return Shape::record_result;
    else if constexpr (std::is_same_v<Type, qbobj_folder_attribute_t *>)
        return Shape::attributes;
    else if constexpr (std::is_same_v<Type, xmlNodePtr *>)
        return Shape::tree_result;
    else if constexpr (std::is_same_v<Type, const char *>)
        return Shape::text;
    else if constexpr (std::is_same_v<Type, char **> || std::is_same_v<Type, const char **>)
        return argument.count.empty() ? Shape::text_result : Shape::text_array;
    else if constexpr (std::is_integral_v<Type>)
        return Shape::number;
    else {
        static_assert(std::is_integral_v<std::remove_pointer_t<Type>>,
                      "an argument of this type has no shape");
        return Shape::number_result;
    }
}

/* ---- The entry ----------------------------------------------------------------------------------------- */

template <auto Function>
struct Operation {
    static constexpr auto function = Function;
    static constexpr std::size_t arity = Signature<decltype(Function)>::arity;
    template <std::size_t Index>
    using Parameter = typename Signature<decltype(Function)>::template Parameter<Index>;

    Effect effect;
    ResultKind result;
    std::array<Argument, arity> arguments;

    static constexpr const char *exported() { return exported_name<Function>.data(); }
    // "addShare"; the few operations without the prefix keep their names.
    static constexpr std::string_view name()
    {
        constexpr std::string_view whole = function_name<Function>();
        constexpr std::string_view prefix = "qbobj_";
        return whole.starts_with(prefix) ? whole.substr(prefix.size()) : whole;
    }
};

void direction_that_the_type_of_the_argument_cannot_have(); // never defined: reaching it stops the compilation

template <class Type>
constexpr void check_argument(const Argument &argument)
{
    const bool by_value = !std::is_pointer_v<Type> || std::is_same_v<Type, const char *>;
    const bool appended_to = argument.direction == Direction::append && RecordResult<Type>;
    const bool fits = by_value ? argument.direction == Direction::in
                               : RecordArgument<Type> || appended_to || argument.direction == Direction::out;
    if (!fits)
        direction_that_the_type_of_the_argument_cannot_have();
}

template <auto Function, class... Arguments>
consteval Operation<Function> entry(Effect effect, ResultKind result, Arguments... arguments)
{
    static_assert(sizeof...(Arguments) == Operation<Function>::arity, "state every argument");
    const Operation<Function> operation{effect, result, {arguments...}};
    [&]<std::size_t... Index>(std::index_sequence<Index...>)
    {
        (check_argument<typename Operation<Function>::template Parameter<Index>>(operation.arguments[Index]),
         ...);
    }
    (std::make_index_sequence<Operation<Function>::arity>());
    return operation;
}

template <auto Function, class... Arguments>
consteval auto reads(Arguments... arguments)
{
    return entry<Function>(Effect::reads, ResultKind::code, arguments...);
}
template <auto Function, class... Arguments>
consteval auto refreshes(Arguments... arguments)
{
    return entry<Function>(Effect::refreshes, ResultKind::code, arguments...);
}
template <auto Function, class... Arguments>
consteval auto writes(Arguments... arguments)
{
    return entry<Function>(Effect::writes, ResultKind::code, arguments...);
}
template <auto Function, class... Arguments>
consteval auto identifies(Arguments... arguments)
{
    return entry<Function>(Effect::reads, ResultKind::identifier, arguments...);
}
template <auto Function, class... Arguments>
consteval auto identifies_plainly(Arguments... arguments)
{
    return entry<Function>(Effect::reads, ResultKind::plain_identifier, arguments...);
}
template <auto Function, class... Arguments>
consteval auto answers(Arguments... arguments)
{
    return entry<Function>(Effect::reads, ResultKind::answer, arguments...);
}

} // namespace qbobj
