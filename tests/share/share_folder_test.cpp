// Owner, permissions and access control lists of a share's folder.
#include "share_rows.h"

#include <dlfcn.h>
#include <linux/posix_acl_xattr.h>
#include <sys/acl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

using namespace qbobj_test;

namespace
{

// Without memory for the list of this type, while it is not 0.
acl_type_t unreadable = 0;

} // namespace

// Stands before the library's own.
__attribute__((visibility("default"))) acl_t acl_get_file(const char *path, acl_type_t type)
{
    static const auto genuine =
        reinterpret_cast<acl_t (*)(const char *, acl_type_t)>(dlsym(RTLD_NEXT, "acl_get_file"));
    if (type != unreadable)
        return genuine(path, type);
    errno = ENOMEM;
    return nullptr;
}

namespace
{

class ShareFolder : public Shares
{
};

TEST_F(ShareFolder, OwnerAndPermissionsComeFromTheFolder)
{
    add_share("s");
    const std::tuple<mode_t, const char *, int> cases[] = {{0777, "ReadWrite|ReadWrite|ReadWrite", 1},
                                                           {01754, "ReadWrite|ReadOnly|ReadOnly", 0},
                                                           {0320, "ReadWrite|ReadWrite|Disabled", 1},
                                                           {0510, "ReadOnly|Disabled|Disabled", 1}};
    for (const auto &[mode, words, non_owner_delete] : cases) {
        ASSERT_EQ(0, chmod(folder("s").c_str(), mode));
        const qbobj_FileStat_t *stat = read("s").Stat;
        EXPECT_EQ(words, fields(stat->UserAccess, stat->GroupAccess, stat->EveryoneAccess));
        EXPECT_EQ(non_owner_delete, stat->NonOwnerDelete);
        EXPECT_EQ(static_cast<int>(mode | S_IFDIR), stat->_PosixMode);
        ASSERT_TRUE(stat->User != nullptr && stat->Group != nullptr);
        EXPECT_EQ(fields(getuid(), getgid()), fields(stat->User->UserId, stat->Group->GroupId));
    }
}

TEST_F(ShareFolder, AnOwnerThatIsNotKnownReadsAsItsNumber)
{
    add_share("s");
    for (const unsigned number : {4321U, 2147483647U, 2147483648U, 4294967294U}) {
        if (chown(folder("s").c_str(), number, number) != 0)
            GTEST_SKIP() << "only the administrator gives folders away";
        auto collection = cleared(qbobj_clear_ShareCollection);
        ASSERT_OK(call(qbobj_getShareCollection, &collection));
        const qbobj_FileStat_t *stat = collection.Share->Stat;
        EXPECT_EQ(fields(number, number), fields(stat->User->UserName, stat->Group->GroupName));
        // A number that no account can have is none.
        const int id = number > 2147483647U ? -1 : static_cast<int>(number);
        EXPECT_EQ(fields(id, id, id, id), fields(stat->User->UserId, stat->User->resource_id,
                                                 stat->Group->GroupId, stat->Group->resource_id));
    }
}

TEST_F(ShareFolder, AMissingFolderIsLoggedAndNoError)
{
    add_share("gone");
    std::filesystem::remove(folder("gone"));
    reopen(QBDB_LOG_WARN);
    const qbobj_FileStat_t *stat = read("gone").Stat;
    ASSERT_NE(nullptr, stat);
    EXPECT_EQ(nullptr, stat->User);
    EXPECT_EQ(nullptr, stat->UserAccess);
    EXPECT_EQ(nullptr, stat->Acls);
    EXPECT_EQ(0, stat->AclInherit);
    const std::string tail = folder("gone").string() + ". errno=" + std::to_string(ENOENT);
    EXPECT_NE(std::string::npos, log().find("Cannot get access ACL from " + tail)) << log();
    EXPECT_NE(std::string::npos, log().find("Cannot get default ACL from " + tail)) << log();
}

constexpr uint16_t owner = 0x01, user = 0x02, owning_group = 0x04, group = 0x08, mask = 0x10, other = 0x20;
constexpr uint32_t nobody_named = 0xffffffff;

// A list in the form in which the kernel takes it.
struct AclEntry {
    uint16_t tag;
    uint16_t perm;
    uint32_t id = nobody_named;
};

// False when the file system keeps no access control lists.
bool set_acl(const std::filesystem::path &folder, const char *attribute, const std::vector<AclEntry> &entries)
{
    std::string bytes;
    const posix_acl_xattr_header header{POSIX_ACL_XATTR_VERSION};
    bytes.append(reinterpret_cast<const char *>(&header), sizeof header);
    for (const AclEntry &entry : entries) {
        const posix_acl_xattr_entry raw{entry.tag, entry.perm, entry.id};
        bytes.append(reinterpret_cast<const char *>(&raw), sizeof raw);
    }
    if (setxattr(folder.c_str(), attribute, bytes.data(), bytes.size(), 0) == 0)
        return true;
    EXPECT_EQ(EOPNOTSUPP, errno) << std::strerror(errno);
    return false;
}

constexpr const char *access_acl = "system.posix_acl_access";
constexpr const char *default_acl = "system.posix_acl_default";

std::string acls(const qbobj_PosixAcl_t *list)
{
    return joined(list, [](const qbobj_PosixAcl_t &acl) {
        return fields(acl.Type, acl.Tag, acl.Perm, acl.Id, acl.Name);
    });
}

TEST_F(ShareFolder, AccessControlListsNameTheirAccounts)
{
    add_share("s");
    add_user(101, "ann");
    add_group(201, "staff");
    ASSERT_EQ(0, chmod(folder("s").c_str(), 0750));
    EXPECT_EQ("0|1|7|-1|NULL 0|4|5|-1|NULL 0|32|0|-1|NULL", acls(read("s").Stat->Acls));

    if (!set_acl(folder("s"), access_acl,
                 {{owner, 7},
                  {user, 6, 101},
                  {user, 1, 4321},
                  {owning_group, 5},
                  {group, 4, 201},
                  {mask, 7},
                  {other, 2}}))
        GTEST_SKIP() << "the file system keeps no access control lists";
    ASSERT_TRUE(set_acl(folder("s"), default_acl, {{owner, 7}, {owning_group, 5}, {other, 0}}));
    const qbobj_FileStat_t *stat = read("s").Stat;
    EXPECT_EQ("0|1|7|-1|NULL 0|2|6|101|ann 0|2|1|4321|4321 0|4|5|-1|NULL 0|8|4|201|staff 0|16|7|-1|NULL "
              "0|32|2|-1|NULL 1|1|7|-1|NULL 1|4|5|-1|NULL 1|32|0|-1|NULL",
              acls(stat->Acls));
    EXPECT_EQ(0, stat->AclInherit);
}

TEST_F(ShareFolder, AListThatTheMemoryDoesNotHoldIsNoEmptyList)
{
    add_share("s");
    const std::vector<AclEntry> entries{{owner, 7}, {user, 5, 1}, {owning_group, 5}, {mask, 5}, {other, 5}};
    if (!set_acl(folder("s"), access_acl, entries) || !set_acl(folder("s"), default_acl, entries))
        GTEST_SKIP() << "the file system keeps no lists";
    for (const acl_type_t type : {ACL_TYPE_ACCESS, ACL_TYPE_DEFAULT}) {
        unreadable = type;
        auto collection = cleared(qbobj_clear_ShareCollection);
        EXPECT_FAILS(call(qbobj_getShareCollection, &collection), QBOBJ_ERROR_OOM,
                     "Failed to allocate resource.");
    }
    unreadable = 0;
    EXPECT_NE(nullptr, read("s").Stat->Acls);
}

TEST_F(ShareFolder, AFolderInheritsWhenItsDefaultListMatches)
{
    add_share("s");
    const auto with = [](std::vector<AclEntry> users) {
        users.insert(users.begin(), {owner, 7});
        users.insert(users.end(), {{owning_group, 5}, {mask, 7}, {other, 0}});
        return users;
    };
    const std::vector<AclEntry> access = with({{user, 6, 101}});
    if (!set_acl(folder("s"), access_acl, access))
        GTEST_SKIP() << "the file system keeps no access control lists";
    EXPECT_EQ(0, read("s").Stat->AclInherit) << "no default list";
    const std::tuple<const char *, std::vector<AclEntry>, int> cases[] = {
        {"the same", access, 1},
        {"another user", with({{user, 6, 102}}), 1},
        {"other permissions", with({{user, 4, 101}}), 0},
        {"one entry more", with({{user, 6, 101}, {user, 6, 102}}), 0},
        {"one entry less", with({}), 0}};
    for (const auto &[what, entries, inherit] : cases) {
        ASSERT_TRUE(set_acl(folder("s"), default_acl, entries));
        EXPECT_EQ(inherit, read("s").Stat->AclInherit) << what;
    }
}

} // namespace
