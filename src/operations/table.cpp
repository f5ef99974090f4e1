// The table of operations at run time.
#include "operations/table.h"

#include "operations/all.h"

#include <algorithm>

namespace qbobj
{
namespace
{

constexpr std::size_t operation_count = std::tuple_size_v<decltype(all_operations)>;

template <std::size_t Index>
using OperationAt = std::tuple_element_t<Index, std::remove_const_t<decltype(all_operations)>>;

template <class Type>
constexpr const qbobj_spec_t *spec_of_argument()
{
    if constexpr (RecordArgument<Type>)
        return schema_of(Type{});
    else if constexpr (RecordResult<Type>)
        return schema_of(std::remove_pointer_t<Type>{});
    else
        return nullptr;
}

template <class Type>
constexpr ArgumentEntry describe_argument(const Argument &argument)
{
    return {argument.name,
            argument.direction,
            argument.optional,
            shape_of<Type>(argument),
            spec_of_argument<Type>(),
            argument.count};
}

template <std::size_t Index, std::size_t... Arguments>
constexpr auto describe_arguments(std::index_sequence<Arguments...>)
{
    const auto &given = std::get<Index>(all_operations).arguments;
    return std::array<ArgumentEntry, sizeof...(Arguments)>{
        describe_argument<typename OperationAt<Index>::template Parameter<Arguments>>(given[Arguments])...};
}

template <std::size_t Index>
constexpr auto
    arguments_at = describe_arguments<Index>(std::make_index_sequence<OperationAt<Index>::arity>());

template <std::size_t... Index>
constexpr auto describe_all(std::index_sequence<Index...>)
{
    return std::array<OperationEntry, sizeof...(Index)>{OperationEntry{
        OperationAt<Index>::name(), OperationAt<Index>::exported(), std::get<Index>(all_operations).effect,
        std::get<Index>(all_operations).result, arguments_at<Index>}...};
}

constexpr auto table = describe_all(std::make_index_sequence<operation_count>());

} // namespace

std::span<const OperationEntry> operation_table()
{
    return table;
}

const OperationEntry *find_operation(std::string_view name)
{
    const auto found = std::ranges::find_if(
        table, [name](const OperationEntry &entry) { return entry.name == name || entry.exported == name; });
    return found == table.end() ? nullptr : &*found;
}

} // namespace qbobj
