// The small helpers that workers share.
#include "core/qbobj_util.h"

#include "../validate/pool_env.h"

#include <gtest/gtest.h>

#include <string_view>

namespace
{

using qbobj_test::PoolEnv;

TEST(StringCopy, FillsUpOrCutsAndReturnsTheWholeLength)
{
    const std::tuple<const char *, std::size_t, std::string_view, std::size_t> cases[] = {
        {"abc", 6, std::string_view("abc\0\0\0##", 8), 3},
        {"abc", 4, std::string_view("abc\0####", 8), 3},
        {"abc", 3, std::string_view("ab\0#####", 8), 3},
        {"abcdefghij", 4, std::string_view("abc\0####", 8), 10},
        {"abc", 1, std::string_view("\0#######", 8), 3},
        {"", 2, std::string_view("\0\0######", 8), 0}};
    for (const auto &[source, room, expected, result] : cases) {
        char buffer[] = "########";
        EXPECT_EQ(result, qbobj_strlcpy(buffer, source, room));
        EXPECT_EQ(expected, std::string_view(buffer, 8)) << source << " in " << room;
    }
}

TEST(StringArray, HasRoomForItsTerminatorOrReportsOnlyTheCode)
{
    PoolEnv env;
    char **array = qbobj_util_alloc_array_of_string(env.get(), 2);
    ASSERT_NE(nullptr, array);
    array[2] = nullptr;
    EXPECT_EQ(QBOBJ_ERROR_OK, env.err().ec);

    EXPECT_EQ(nullptr, qbobj_util_alloc_array_of_string(env.get(), -1));
    EXPECT_EQ(QBOBJ_ERROR_OOM, env.err().ec);
    EXPECT_EQ(nullptr, env.err().file);
    EXPECT_EQ(nullptr, env.err().msg);
}

TEST(Hashes, AreClearedAndAppended)
{
    PoolEnv env;
    apr_hash_t *from = apr_hash_make(env.pool());
    apr_hash_t *to = apr_hash_make(env.pool());
    apr_hash_set(from, "a", APR_HASH_KEY_STRING, "new a");
    apr_hash_set(from, "b\0b", 3, "binary key");
    apr_hash_set(to, "a", APR_HASH_KEY_STRING, "old a");
    apr_hash_set(to, "c", APR_HASH_KEY_STRING, "c");

    qbobj_util_hash_append(env.get(), to, from);
    EXPECT_EQ(3U, apr_hash_count(to));
    EXPECT_STREQ("new a", static_cast<char *>(apr_hash_get(to, "a", 1)));
    EXPECT_STREQ("binary key", static_cast<char *>(apr_hash_get(to, "b\0b", 3)));
    EXPECT_STREQ("c", static_cast<char *>(apr_hash_get(to, "c", 1)));
    EXPECT_EQ(2U, apr_hash_count(from));

    qbobj_util_hash_clear(env.get(), to);
    EXPECT_EQ(0U, apr_hash_count(to));
    qbobj_util_hash_append(env.get(), from, to);
    EXPECT_EQ(2U, apr_hash_count(from));
}

TEST(PoolStates, AreNamedUnlessNoPoolHasTheDisk)
{
    const char *const names[] = {"ACTIVE",        "EXPORTED", "DESTROYED",          "SPARE",   "L2CACHE",
                                 "UNINITIALIZED", "UNAVAIL",  "POTENTIALLY_ACTIVE", "UNKNOWN", "UNKNOWN"};
    int state = 0;
    for (const char *name : names)
        EXPECT_STREQ(name, qbobj_get_pool_state_str(static_cast<pool_state_t>(state++), "data", 1));
    EXPECT_STREQ("UNKNOWN", qbobj_get_pool_state_str(static_cast<pool_state_t>(-1), "data", 1));
    EXPECT_STREQ("NEW", qbobj_get_pool_state_str(POOL_STATE_SPARE, "data", 0));
    EXPECT_STREQ("NEW", qbobj_get_pool_state_str(POOL_STATE_SPARE, "", 1));
    EXPECT_STREQ("NEW", qbobj_get_pool_state_str(POOL_STATE_SPARE, nullptr, 1));
}

} // namespace
