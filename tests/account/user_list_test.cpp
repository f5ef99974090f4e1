// The file that users are imported from.
#include "accounts.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using namespace qbobj_test;
namespace fs = std::filesystem;

class UserListFile : public Accounts
{
  protected:
    UserListFile() { fs::create_directories(root() / "tmp"); }

    fs::path list() const { return root() / "tmp" / "user_list.txt"; }
    void write(const std::string &text) const { std::ofstream(list(), std::ios::binary) << text; }
    int check() { return call(qbobj_checkUserList, &users, &groups, &known_users, &known_groups); }
    int check(const std::string &text)
    {
        users = {};
        groups = {};
        write(text);
        return check();
    }
    // "name|group|email|password;" for each user found, then the new groups.
    std::string found() const
    {
        std::string text;
        for (const qbobj_User_t *user = users.User; user != nullptr; user = user->_link)
            text += line({user->UserName, user->GroupName, user->Email, user->Password}) + ";";
        for (const qbobj_Group_t *group = groups.Group; group != nullptr; group = group->_link)
            text += std::string("+") + group->GroupName;
        return text;
    }

    qbobj_UserCollection_t users{};
    qbobj_UserCollection_t known_users{};
    qbobj_GroupCollection_t groups{};
    qbobj_GroupCollection_t known_groups{};
};

TEST_F(UserListFile, AcceptsListsOfEveryShape)
{
    const std::string cases[][2] = {
        {"", ""},
        {"\n\r\n\n", ""},
        {"export_list\n", ""},
        {"\xEF\xBB\xBF", ""},
        {"\xEF\xBB\xBFUser_Name\tGroup_Name\tEmail_Address\tPassword\nanna\tstaff\t\t\n",
         "anna|staff||;+staff"},
        {"\xEF\xBB\xBF"
         "export_list\nanna\tstaff\t\thash\n",
         "anna|staff||hash;+staff"},
        {"User_Name\tGroup_Name\tEmail_Address\tPassword\n", ""},
        {"anna\tstaff\t\t\n", "anna|staff||;+staff"},
        {"anna\tstaff\t\t", "anna|staff||;+staff"},
        {"anna\tstaff\ta@example.org\t\r\nbert\tstaff\t\t\r\n",
         "anna|staff|a@example.org|;bert|staff||;+staff"},
        {"J\xC3\xBCrgen\tB\xC3\xBCro\t\t\n", "J\xC3\xBCrgen|B\xC3\xBCro||;+B\xC3\xBCro"},
        {"anna\tstaff\t\t\nAnna\tStaff\t\t\n", "anna|staff||;Anna|Staff||;+staff+Staff"},
        {"export_list\nUser_Name\tGroup_Name\tEmail_Address\tPassword\nanna\tstaff\t\t$1$a b\n",
         "anna|staff||$1$a b;+staff"},
        {"export_list\nanna\tstaff\t\thash\nimport_list\nbert\tstaff\t\t\n",
         "anna|staff||hash;bert|staff||;+staff"},
        // 1023 bytes, the longest line that is read as one.
        {"export_list\nanna\tstaff\t\t" + std::string(1011, 'x') + "\n",
         "anna|staff||" + std::string(1011, 'x') + ";+staff"}};
    for (const auto &[text, expected] : cases) {
        SCOPED_TRACE(text);
        EXPECT_OK(check(text));
        EXPECT_EQ(expected, found());
        EXPECT_EQ(0, users.Entries + users.TotalEntries + groups.Entries);
    }
}

TEST_F(UserListFile, EncodesThePasswordsOfAnImportOnly)
{
    EXPECT_OK(check("anna\tstaff\t\tsecret\nexport_list\nbert\tstaff\t\tsecret\n"));
    EXPECT_EQ(0U, std::string(users.User->Password).find("$1$"));
    EXPECT_EQ(34U, std::string(users.User->Password).size());
    EXPECT_STREQ("secret", users.User->_link->Password);
}

TEST_F(UserListFile, NamesTheFirstFaultAndHandsOverNothing)
{
    using namespace std::string_literals;
    const std::string long_name(32, 'a');
    const std::string endless(600, 'x');
    const std::string huge(5000, 'x');
    std::vector<Refusal<std::string>> cases{
        {"\tstaff\t\t", "UserName is required for 'add'"},
        {long_name + "\tstaff\t\t", "UserName (" + long_name + ") is too long", too_long},
        {"homes\tstaff\t\t", "UserName (homes) is reserved", reserved},
        {"b c\tstaff\t\t", "Invalid UserName (b c), rc=2"},
        {"bert\t\t\t", "GroupName is required for 'add'"},
        {"bert\t" + long_name + "\t\t", "GroupName is too long (" + long_name + ")", too_long},
        {"bert\t-\t\t", "Invalid GroupName (-)"},
        {"bert\tstaff\tx\t", "Invalid Email (x) rc=8"},
        {"bert\tstaff\t\t" + endless, "Invalid Password (" + endless + ") rc=1"},
        {"bert\tstaff\t\t" + mask, "Invalid Password (" + mask + ") rc=1"},
        {"export_list\nbert\tstaff\t\t" + mask, "Invalid Password (" + mask + ") rc=1"},
        {"anna\tstaff\t\t", "User (anna) already exists.", name_taken}};
    // The rest of a long line is a line of its own, and a byte order mark stands only at the beginning of the file.
    for (const std::string &line :
         {"one\ttwo"s, "one\ttwo\tthree"s, "a\tb\t\t\te"s, "a\tb\t\t\te\tf"s, "Export_list"s, "\r\r"s, "\0"s,
          "bert\tst\0aff\t\t"s, huge, "export_list\nbert\tstaff\t\t" + huge, "\xEF\xBB\xBF"s})
        cases.push_back({line, "User file wrong format", QBOBJ_ERROR_UNKNOWN});
    for (const auto &c : cases) {
        SCOPED_TRACE(c.given.substr(0, 60));
        EXPECT_FAILS(check("anna\tstaff\t\t\n" + c.given + "\n"), c.code, c.message.c_str());
        EXPECT_EQ("", found());
        EXPECT_STREQ("qbobj_api2_add_user", err.file);
    }
}

TEST_F(UserListFile, KnowsTheAccountsThatExist)
{
    qbobj_User_t old_user{.UserName = "bert"};
    qbobj_Group_t old_group{.GroupName = "staff"};
    known_users.User = &old_user;
    known_groups.Group = &old_group;
    EXPECT_OK(check("anna\tstaff\t\t\nBert\tclub\t\t\n"));
    EXPECT_EQ("anna|staff||;Bert|club||;+club", found());
    EXPECT_FAILS(check("bert\tstaff\t\t\n"), name_taken, "User (bert) already exists.");
}

TEST_F(UserListFile, AppendsToWhatTheCollectionsHold)
{
    qbobj_User_t first{.UserName = "first", .GroupName = "first", .Email = "first", .Password = "first"};
    qbobj_Group_t group{.GroupName = "staff"};
    users.User = &first;
    groups.Group = &group;
    write("anna\tstaff\t\t\nbert\tclub\t\t\n");
    EXPECT_OK(check());
    const std::string before = "first|first|first|first;anna|staff||;bert|club||;+staff+club";
    EXPECT_EQ(before, found());

    write("cleo\tcrew\t\t\nfirst\tcrew\t\t\n");
    EXPECT_FAILS(check(), name_taken, "User (first) already exists.");
    EXPECT_EQ(before, found());
}

TEST_F(UserListFile, ReadsNothingThatOthersMayHavePutThere)
{
    const std::string good = "anna\tstaff\t\t\n";
    const fs::path elsewhere = root() / "elsewhere";
    std::ofstream(elsewhere) << good;
    const auto refuses = [&](const char *what) {
        SCOPED_TRACE(what);
        EXPECT_FAILS(check(), QBOBJ_ERROR_UNKNOWN, "User file wrong format");
        fs::remove(list());
    };
    EXPECT_FAILS(check(), QBOBJ_ERROR_UNKNOWN, "User file not exist");
    fs::create_directory(list());
    refuses("a folder");
    EXPECT_EQ(0, ::mkfifo(list().c_str(), 0600)); // nobody writes to it
    refuses("a pipe");
    fs::create_symlink(elsewhere, list());
    refuses("a link");
    if (::geteuid() == 0) {
        write(good);
        EXPECT_EQ(0, ::chown(list().c_str(), 65534, 65534));
        refuses("another's file");
    }
    EXPECT_OK(check(good));
}

// Whether a text stands in the memory that this process writes to. Its bits are turned, so that asking leaves no copy.
bool in_memory(const std::string &turned)
{
    std::ifstream maps("/proc/self/maps");
    std::ifstream memory("/proc/self/mem", std::ios::binary);
    std::string part;
    for (std::string region; std::getline(maps, region);) {
        unsigned long from = 0, to = 0;
        char access[5] = "";
        constexpr unsigned long longest = 1UL << 28; // the shadow of a sanitizer is larger
        if (std::sscanf(region.c_str(), "%lx-%lx %4s", &from, &to, access) != 3 || access[1] != 'w' ||
            to - from > longest)
            continue;
        part.resize(to - from);
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(from));
        memory.read(part.data(), static_cast<std::streamsize>(part.size()));
        part.resize(static_cast<std::size_t>(memory.gcount()));
        const auto same = [](char a, char b) { return a == static_cast<char>(~b); };
        if (std::search(part.begin(), part.end(), turned.begin(), turned.end(), same) != part.end())
            return true;
    }
    return false;
}

TEST_F(UserListFile, LeavesNoPlainPasswordInMemory)
{
    std::string turned;
    for (int i = 0; i < 24; ++i)
        turned += static_cast<char>(~('a' + (i * 7 + ::getpid()) % 26));
    write("anna\tstaff\t\t");
    const int file = ::open(list().c_str(), O_WRONLY | O_APPEND);
    for (const char hidden : turned) {
        const char plain = static_cast<char>(~hidden);
        EXPECT_EQ(1, ::write(file, &plain, 1));
    }
    ::close(file);
    EXPECT_OK(check());
    EXPECT_EQ(34U, std::string(users.User->Password).size());
    EXPECT_FALSE(in_memory(turned));
    const std::string plain(users.User->Password); // what is there is found
    std::string hash;
    for (const char c : plain)
        hash += static_cast<char>(~c);
    EXPECT_TRUE(in_memory(hash));
}

TEST_F(UserListFile, NamesTheCollectionThatIsMissing)
{
    EXPECT_FAILS(call(qbobj_checkUserList, nullptr, &groups, &known_users, &known_groups), bad_args,
                 "user_collection cannot be NULL.");
    EXPECT_FAILS(call(qbobj_checkUserList, &users, &groups, &known_users, nullptr), bad_args,
                 "group_collection_bak cannot be NULL.");
}

TEST_F(UserListFile, ReadsThirtyThousandUsersAndInsertsThem)
{
    std::string text = "export_list\n";
    for (int i = 0; i < 30000; ++i)
        text += "user" + std::to_string(i) + "\tgroup" + std::to_string(i / 10) + "\t\thash\n";
    EXPECT_OK(check(text));
    const Lines found = each(groups.Group, [](const qbobj_Group_t &group) { return group.GroupName; });
    ASSERT_EQ(3000U, found.size());
    EXPECT_EQ("group2999", found.back());
    for (qbobj_User_t *user = users.User; user != nullptr; user = user->_link)
        user->GroupName = "users";
    EXPECT_OK(call(qbobj_addUserList, users.User));
    EXPECT_EQ("30099|hash|99",
              rows("SELECT id,passwd,group_id FROM `$user` WHERE uname='user29999'").front());
}

} // namespace
