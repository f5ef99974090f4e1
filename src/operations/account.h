// Users, groups, passwords, defaults and directory security.
#pragma once

#include "operations/operation.h"

namespace qbobj
{

inline constexpr std::tuple account_operations{
    reads<qbobj_getSecurity>(out("o")),
    writes<qbobj_setSecurity>(in("o")),
    reads<qbobj_getSecurityAdsProgress>(out("o")),

    refreshes<qbobj_getUserCollection>(appended("collection"), optional("query"), optional("encrypt_flag")),
    reads<qbobj_getUser>(in_out("user")),
    reads<qbobj_getSystemUser>(in_out("user")),
    reads<qbobj_getCloudUser>(out("user")),
    reads<qbobj_getUserInGroupName>(in("gname"), optional("primaryOnly"), out("user")),
    reads<qbobj_getUID>(optional("uname"), out("uid")),
    reads<qbobj_getUserName>(in("uid"), out("uname")),
    identifies<qbobj_getPosixUID>(optional("uname")),
    identifies<qbobj_getPosixUIDbyUID>(in("uid")),
    reads<qbobj_getPosixUIDGID>(optional("uname"), out("uid"), out("gid")),

    reads<qbobj_getGroupCollection>(appended("collection"), optional("query")),
    reads<qbobj_getGroup>(in_out("group")),
    reads<qbobj_getSystemGroup>(in_out("group")),
    reads<qbobj_getGID>(optional("gname"), out("gid")),
    reads<qbobj_getGroupName>(in("gid"), out("gname")),
    reads<qbobj_getPrimaryGID>(optional("uname"), out("gid")),
    identifies<qbobj_getPosixGID>(optional("gname")),
    identifies<qbobj_getPosixGIDbyGID>(in("gid")),
    answers<qbobj_isMemberOfGroup>(in("uname"), in("gname")),
    writes<qbobj_addGroup>(in_out("group")),
    writes<qbobj_deleteGroup>(in_out("group")),
    writes<qbobj_modifyGroup>(in_out("group")),

    writes<qbobj_addUser>(in_out("user")),
    writes<qbobj_addUserList>(in_out("user")),
    reads<qbobj_checkUserList>(appended("user_collection"), appended("group_collection"),
                               in("user_collection_bak"), in("group_collection_bak")),
    writes<qbobj_modifyUser>(in_out("user")),
    writes<qbobj_setPrimaryGroupByName>(in("UserName"), in("GroupName")),
    writes<qbobj_disableEnableLocalUserByName>(in("Enable"), optional("UserName")),
    writes<qbobj_modifyUserVisibleSnapFolder>(in("UserId"), optional("VisibleSnapFolder")),
    writes<qbobj_deleteUser>(in_out("user")),
    writes<qbobj_deleteUserByName>(in_out("user")),

    reads<qbobj_getAdminPassword>(out("passwd")),
    writes<qbobj_setAdminPassword>(in("passwd")),
    writes<qbobj_setUserPassword>(in("passwd")),
    writes<qbobj_setMyPassword>(in("passwd")),
    reads<qbobj_getAccountDefault>(out("account_default")),
    writes<qbobj_setAccountDefault>(in("account_default")),
};

} // namespace qbobj
