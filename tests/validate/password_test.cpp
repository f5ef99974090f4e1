// Passwords become salted hashes that the system's own crypt() verifies.
#include "pool_env.h"
#include "validate/validate.h"

#include <crypt.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace qbobj;

namespace
{

TEST(Password, WhatCannotBeHashedIsRefusedAndTheEmptyOneStoredAsItIs)
{
    qbobj_test::PoolEnv env;
    const std::string endless(CRYPT_MAX_PASSPHRASE_SIZE, 'x');
    const char *stored = nullptr;
    for (const char *password : {static_cast<const char *>(nullptr), endless.c_str()}) {
        stored = "before";
        EXPECT_EQ(1, qbobj_validate_password(env, password, &stored));
        EXPECT_EQ(nullptr, stored);
    }
    EXPECT_EQ(0, qbobj_validate_password(env, "", &stored));
    EXPECT_STREQ("", stored);
}

TEST(Password, TheHashVerifiesAndItsSaltIsNeverTheSame)
{
    qbobj_test::PoolEnv env;
    std::set<std::string> salts;
    for (const std::string password : {"secret", "secret", "\xC3\xA4 '\"%s", "x"}) {
        const char *stored = nullptr;
        ASSERT_EQ(0, qbobj_validate_password(env, password.c_str(), &stored));
        const std::string hash = stored;
        EXPECT_EQ(34U, hash.size()) << hash;
        EXPECT_EQ("$1$", hash.substr(0, 3));
        EXPECT_EQ('$', hash[11]) << hash;
        EXPECT_STREQ(stored, crypt(password.c_str(), stored));
        EXPECT_TRUE(salts.insert(hash.substr(3, 8)).second) << "salt used twice: " << hash;
    }
}

} // namespace
