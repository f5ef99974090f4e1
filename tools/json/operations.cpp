// The table of operations. An entry names an exported function and its arguments; all else follows from the
// function's type.
#include "json/operations.h"

#include <array>
#include <climits>
#include <cstring>
#include <tuple>
#include <type_traits>
#include <utility>

namespace qbobj_json
{
namespace
{

// The schema that a pointer to a record type leads to.
#define QBOBJ_SPEC_OF(Type)                                                                                  \
    [[maybe_unused]] constexpr const qbobj_spec_t *spec_of(const qbobj_##Type##_t *)                         \
    {                                                                                                        \
        return spec_##Type;                                                                                  \
    }
QBOBJ_RECORD_TYPES(QBOBJ_SPEC_OF)
#undef QBOBJ_SPEC_OF

// How one argument is made from JSON, passed, and shown afterwards.
template <class T>
struct Slot;

template <>
struct Slot<int> {
    static constexpr ArgumentKind kind = ArgumentKind::integer;
    static constexpr const qbobj_spec_t *spec = nullptr;
    int value;
    Slot(const Argument &argument, const Json &json, apr_pool_t *)
        : value(json.is_null() ? 0 : static_cast<int>(to_integer(json, INT_MIN, INT_MAX, argument.name)))
    {
    }
    int pass() { return value; }
    Json show() const { return value; }
};

template <>
struct Slot<uint64_t> {
    static constexpr ArgumentKind kind = ArgumentKind::size;
    static constexpr const qbobj_spec_t *spec = nullptr;
    uint64_t value;
    Slot(const Argument &argument, const Json &json, apr_pool_t *)
        : value(json.is_null() ? 0 : to_unsigned(json, argument.name))
    {
    }
    uint64_t pass() { return value; }
    Json show() const { return value; }
};

template <>
struct Slot<const char *> {
    static constexpr ArgumentKind kind = ArgumentKind::text;
    static constexpr const qbobj_spec_t *spec = nullptr;
    const char *value;
    Slot(const Argument &argument, const Json &json, apr_pool_t *pool)
        : value(to_text(json, pool, argument.name))
    {
    }
    const char *pass() { return value; }
    Json show() const { return value == nullptr ? Json(nullptr) : Json(value); }
};

template <class Record>
struct Slot<Record *> {
    static constexpr ArgumentKind kind = ArgumentKind::record;
    static constexpr const qbobj_spec_t *spec = spec_of(static_cast<const Record *>(nullptr));
    Record *value;
    Slot(const Argument &argument, const Json &json, apr_pool_t *pool)
        : value(static_cast<Record *>(json.is_null() && !argument.optional
                                          ? empty_record(spec, pool)
                                          : from_json(spec, json, pool, argument.name)))
    {
    }
    Record *pass() { return value; }
    Json show() const { return to_json(spec, value); }
};

template <class Record>
struct Slot<Record **> {
    static constexpr ArgumentKind kind = ArgumentKind::record_result;
    static constexpr const qbobj_spec_t *spec = spec_of(static_cast<const Record *>(nullptr));
    Record *value = nullptr;
    Slot(const Argument &, const Json &, apr_pool_t *) {}
    Record **pass() { return &value; }
    Json show() const { return to_json(spec, value); }
};

template <class Text>
struct TextResult {
    static constexpr ArgumentKind kind = ArgumentKind::text_result;
    static constexpr const qbobj_spec_t *spec = nullptr;
    Text value = nullptr;
    TextResult(const Argument &, const Json &, apr_pool_t *) {}
    Text *pass() { return &value; }
    Json show() const { return value == nullptr ? Json(nullptr) : Json(value); }
};
template <>
struct Slot<char **> : TextResult<char *> {
    using TextResult::TextResult;
};
template <>
struct Slot<const char **> : TextResult<const char *> {
    using TextResult::TextResult;
};

template <>
struct Slot<int *> {
    static constexpr ArgumentKind kind = ArgumentKind::integer_result;
    static constexpr const qbobj_spec_t *spec = nullptr;
    int value = 0;
    Slot(const Argument &, const Json &, apr_pool_t *) {}
    int *pass() { return &value; }
    Json show() const { return value; }
};

template <>
struct Slot<qbobj_folder_attribute_t *> {
    static constexpr ArgumentKind kind = ArgumentKind::folder_result;
    static constexpr const qbobj_spec_t *spec = nullptr;
    qbobj_folder_attribute_t value{};
    Slot(const Argument &, const Json &, apr_pool_t *) {}
    qbobj_folder_attribute_t *pass() { return &value; }
    Json show() const
    {
        return {{"cifs_flags", value.cifs_flags},
                {"dlna_flags", value.dlna_flags},
                {"comment", value.comment == nullptr ? Json(nullptr) : Json(value.comment)},
                {"is_homeshare", value.is_homeshare},
                {"is_subfolder", value.is_subfolder}};
    }
};

// The types between the connection and the error record.
template <class Function>
struct Signature;
template <class... Parameters>
struct Signature<int (*)(qbdb_handle_t *, sqlite3 *, Parameters...)> {
    static constexpr std::size_t arity = sizeof...(Parameters) - 1;
    template <std::size_t Index>
    using Parameter = std::tuple_element_t<Index, std::tuple<Parameters...>>;
};

template <auto Function, std::size_t... Index>
Outcome call_function(const Operation &operation, const Connection &connection, const Json &inputs,
                      std::index_sequence<Index...>)
{
    using Types = Signature<decltype(Function)>;
    // Braces keep the order of evaluation, so that the first bad argument is the one that is named.
    std::tuple<Slot<typename Types::template Parameter<Index>>...> slots{
        Slot<typename Types::template Parameter<Index>>(operation.arguments[Index], inputs.at(Index),
                                                        connection.qbdb->pool)...};
    Outcome outcome;
    outcome.result =
        Function(connection.qbdb, connection.db, std::get<Index>(slots).pass()..., &outcome.error);
    if (operation.result == ResultKind::identifier)
        outcome.outputs["id"] = outcome.result;
    if (operation.result == ResultKind::answer)
        outcome.outputs["answer"] = outcome.result == 0;
    const auto show = [&](const Argument &argument, const auto &slot) {
        if (argument.is_output())
            outcome.outputs[argument.name] = slot.show();
    };
    (show(operation.arguments[Index], std::get<Index>(slots)), ...);
    return outcome;
}

template <auto Function>
Outcome call(const Operation &operation, const Connection &connection, const Json &inputs)
{
    return call_function<Function>(operation, connection, inputs,
                                   std::make_index_sequence<Signature<decltype(Function)>::arity>());
}

// An argument's name ending in '?' may be left out.
template <auto Function, std::size_t... Index>
std::vector<Argument> describe(const std::array<const char *, sizeof...(Index)> &names,
                               std::index_sequence<Index...>)
{
    using Types = Signature<decltype(Function)>;
    std::vector<Argument> arguments;
    const auto add = [&](const char *name, ArgumentKind kind, const qbobj_spec_t *spec) {
        const std::size_t length = std::strlen(name);
        const bool optional = name[length - 1] == '?';
        arguments.push_back({std::string(name, optional ? length - 1 : length), optional, kind, spec});
    };
    (add(names[Index], Slot<typename Types::template Parameter<Index>>::kind,
         Slot<typename Types::template Parameter<Index>>::spec),
     ...);
    return arguments;
}

template <auto Function, class... Names>
Operation operation(const char *name, Names... names)
{
    static_assert(sizeof...(Names) == Signature<decltype(Function)>::arity, "name every argument");
    return {name,
            describe<Function>(std::array<const char *, sizeof...(Names)>{names...},
                               std::make_index_sequence<sizeof...(Names)>()),
            ResultKind::code, call<Function>};
}

template <auto Function, class... Names>
Operation lookup(const char *name, Names... names)
{
    Operation entry = operation<Function>(name, names...);
    entry.result = ResultKind::identifier;
    return entry;
}

template <auto Function, class... Names>
Operation question(const char *name, Names... names)
{
    Operation entry = operation<Function>(name, names...);
    entry.result = ResultKind::answer;
    return entry;
}

std::vector<Operation> make_table()
{
    return {
        operation<getServiceEntry>("getServiceEntry", "key", "val"),
        operation<setServiceEntry>("setServiceEntry", "key", "val?"),
        operation<getRegistryEntry>("getRegistryEntry", "key", "val"),
        operation<setRegistryEntry>("setRegistryEntry", "key", "val?"),
        operation<getFolderAttribute>("getFolderAttribute", "path", "attr"),

        operation<qbobj_getShareCollection>("getShareCollection", "collection"),
        operation<qbobj_getSimpleShareCollection>("getSimpleShareCollection", "collection"),
        operation<qbobj_getShareAndZvolCollection>("getShareAndZvolCollection", "collection"),
        operation<qbobj_getAccessibleShareCollection>("getAccessibleShareCollection", "collection",
                                                      "UserName?", "ProtocolName"),
        operation<qbobj_getShare>("getShare", "share"),
        operation<qbobj_queryShare>("queryShare", "VolumeId?", "ShareNameLike?", "ShareId?", "shares"),
        lookup<qbobj_getShareId>("getShareId", "share_name"),
        operation<qbobj_getShareAccess>("getShareAccess", "ShareName", "UserName", "Access"),
        operation<qbobj_getPathAccess>("getPathAccess", "Path", "UserName", "Access"),
        operation<qbobj_getShareSnapshotSchedule>("getShareSnapshotSchedule", "share_name",
                                                  "snapshot_schedule"),
        operation<qbobj_getShareProcess>("getShareProcess", "ShareId", "procs"),
        operation<qbobj_addShareProcess>("addShareProcess", "ShareId", "procs?"),
        operation<qbobj_deleteShareProcess>("deleteShareProcess", "ShareId", "procs?"),
        operation<qbobj_getUsedByOn>("getUsedByOn", "ZfsName", "usedby"),
        operation<qbobj_addShareUsedBy>("addShareUsedBy", "ShareId", "usedby"),
        operation<qbobj_deleteShareUsedBy>("deleteShareUsedBy", "ShareId", "usedby"),
        operation<qbobj_modifyShareUsedBy>("modifyShareUsedBy", "usedby?", "ShareId?", "share_id?"),
        operation<qbobj_modifyShareUsedByExclusive>("modifyShareUsedByExclusive", "usedby", "ShareId?"),
        operation<qbobj_addShare>("addShare", "share"),
        operation<qbobj_modifyShare>("modifyShare", "share", "modifyOneShare?"),
        operation<qbobj_modifyShareVisibleSnapFolder>("modifyShareVisibleSnapFolder", "ZfsName",
                                                      "VisibleSnapFolder?"),
        operation<qbobj_modifyZvol>("modifyZvol", "ZfsName", "ShareName", "Comment?", "SizeKB", "IsSparse"),
        operation<qbobj_deleteShare>("deleteShare", "share"),
        operation<qbobj_deleteZvol>("deleteZvol", "ZfsName"),
        operation<qbobj_deleteShareOnVolume>("deleteShareOnVolume", "VolumeId"),
        operation<qbobj_preMigrateShare>("preMigrateShare", "ShareId", "VolumeId"),
        operation<qbobj_postMigrateShare>("postMigrateShare", "ShareId", "Commit", "NewPath"),
        operation<qbobj_copyShare>("copyShare", "VolumeName", "ShareName", "SnapshotName?", "NewShareName"),

        operation<qbobj_getSecurity>("getSecurity", "o"),
        operation<qbobj_setSecurity>("setSecurity", "o"),
        operation<qbobj_getSecurityAdsProgress>("getSecurityAdsProgress", "o"),
        operation<qbobj_getUserCollection>("getUserCollection", "collection", "query?", "encrypt_flag?"),
        operation<qbobj_getUser>("getUser", "user"),
        operation<qbobj_getSystemUser>("getSystemUser", "user"),
        operation<qbobj_getCloudUser>("getCloudUser", "user"),
        operation<qbobj_getUserInGroupName>("getUserInGroupName", "gname", "primaryOnly?", "user"),
        operation<qbobj_getUID>("getUID", "uname?", "uid"),
        operation<qbobj_getUserName>("getUserName", "uid", "uname"),
        lookup<qbobj_getPosixUID>("getPosixUID", "uname?"),
        lookup<qbobj_getPosixUIDbyUID>("getPosixUIDbyUID", "uid"),
        operation<qbobj_getPosixUIDGID>("getPosixUIDGID", "uname?", "uid", "gid"),
        operation<qbobj_getGroupCollection>("getGroupCollection", "collection", "query?"),
        operation<qbobj_getGroup>("getGroup", "group"),
        operation<qbobj_getSystemGroup>("getSystemGroup", "group"),
        operation<qbobj_getGID>("getGID", "gname?", "gid"),
        operation<qbobj_getGroupName>("getGroupName", "gid", "gname"),
        operation<qbobj_getPrimaryGID>("getPrimaryGID", "uname?", "gid"),
        lookup<qbobj_getPosixGID>("getPosixGID", "gname?"),
        lookup<qbobj_getPosixGIDbyGID>("getPosixGIDbyGID", "gid"),
        question<qbobj_isMemberOfGroup>("isMemberOfGroup", "uname", "gname"),
        operation<qbobj_addGroup>("addGroup", "group"),
        operation<qbobj_deleteGroup>("deleteGroup", "group"),
        operation<qbobj_modifyGroup>("modifyGroup", "group"),
        operation<qbobj_addUser>("addUser", "user"),
        operation<qbobj_addUserList>("addUserList", "user"),
        operation<qbobj_checkUserList>("checkUserList", "user_collection", "group_collection",
                                       "user_collection_bak", "group_collection_bak"),
        operation<qbobj_modifyUser>("modifyUser", "user"),
        operation<qbobj_setPrimaryGroupByName>("setPrimaryGroupByName", "UserName", "GroupName"),
        operation<qbobj_disableEnableLocalUserByName>("disableEnableLocalUserByName", "Enable", "UserName?"),
        operation<qbobj_modifyUserVisibleSnapFolder>("modifyUserVisibleSnapFolder", "UserId",
                                                     "VisibleSnapFolder?"),
        operation<qbobj_deleteUser>("deleteUser", "user"),
        operation<qbobj_deleteUserByName>("deleteUserByName", "user"),
        operation<qbobj_getAdminPassword>("getAdminPassword", "passwd"),
        operation<qbobj_setAdminPassword>("setAdminPassword", "passwd"),
        operation<qbobj_setUserPassword>("setUserPassword", "passwd"),
        operation<qbobj_setMyPassword>("setMyPassword", "passwd"),
        operation<qbobj_getAccountDefault>("getAccountDefault", "account_default"),
        operation<qbobj_setAccountDefault>("setAccountDefault", "account_default"),
    };
}

} // namespace

bool Operation::writes() const
{
    return !name.starts_with("get") && !name.starts_with("query") && !name.starts_with("check") &&
           !name.starts_with("is");
}

std::span<const Operation> operations()
{
    static const std::vector<Operation> table = make_table();
    return table;
}

const Operation *find_operation(const std::string &name)
{
    for (const Operation &entry : operations())
        if (entry.name == name)
            return &entry;
    return nullptr;
}

Json arrange_inputs(const Operation &operation, const Json &given)
{
    const auto find = [&](const std::string &name) -> const Argument * {
        for (const Argument &argument : operation.arguments)
            if (argument.is_input() && argument.name == name)
                return &argument;
        return nullptr;
    };
    std::vector<const Argument *> inputs;
    for (const Argument &argument : operation.arguments)
        if (argument.is_input())
            inputs.push_back(&argument);

    // By name, or the only input itself.
    bool by_name = given.is_object();
    if (by_name && inputs.size() == 1)
        for (const auto &[name, value] : given.items())
            by_name = by_name && find(name) != nullptr;
    if (!by_name && !given.is_null() && inputs.size() != 1)
        throw BadInput(operation.name + " takes an object of its arguments by name");

    const Json named = by_name ? given : Json::object();
    for (const auto &[name, value] : named.items())
        if (find(name) == nullptr)
            throw BadInput(operation.name + " has no argument '" + name + "'");

    Json arranged = Json::array();
    for (const Argument &argument : operation.arguments) {
        Json value = nullptr;
        if (argument.is_input() && !by_name && !given.is_null())
            value = given;
        else if (named.contains(argument.name))
            value = named[argument.name];
        // What only reads may be given an empty record to fill.
        const bool fills = argument.kind == ArgumentKind::record && !operation.writes();
        if (argument.is_input() && value.is_null() && !argument.optional && !fills)
            throw BadInput(operation.name + ": the argument '" + argument.name + "' is missing");
        arranged.push_back(value);
    }
    return arranged;
}

} // namespace qbobj_json
