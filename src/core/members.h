// A record's optional numbers: the number and its `_void_` flag, paired when it is compiled.
#pragma once

#include <string_view>
#include <type_traits>

namespace qbobj
{

// The name of a member, from the compiler's own description of this function.
template <auto Member>
consteval std::string_view member_name()
{
    std::string_view text = __PRETTY_FUNCTION__;
    text.remove_prefix(text.find("Member = ") + 9);
    text = text.substr(0, text.find_first_of(";]"));
    return text.substr(text.rfind(':') + 1);
}

template <class Pointer>
struct MemberPointer;
template <class Class, class Type>
struct MemberPointer<Type Class::*> {
    using Record = Class;
    using Value = Type;
};
template <auto Member>
using RecordOf = typename MemberPointer<decltype(Member)>::Record;
template <auto Member>
using ValueOf = typename MemberPointer<decltype(Member)>::Value;

// Whether the flag is the one of the number, in the same record.
template <auto Flag, auto Number>
concept FlagOf = std::is_same_v<RecordOf<Flag>, RecordOf<Number>> && std::is_same_v < ValueOf<Flag>,
int > &&member_name<Flag>().starts_with("_void_") && member_name<Flag>().substr(6) == member_name<Number>();

// The number, or `otherwise` when it is not given: `given_or<&R::_void_X, &R::X>(record, 1)`
template <auto Flag, auto Number>
requires FlagOf<Flag, Number>
constexpr ValueOf<Number> given_or(const RecordOf<Number> &record,
                                   std::type_identity_t<ValueOf<Number>> otherwise)
{
    return record.*Flag != 0 ? otherwise : record.*Number;
}

} // namespace qbobj
