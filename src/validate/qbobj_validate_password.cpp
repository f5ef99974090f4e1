// Turns a password into the salted hash that is stored in its place.
#include "core/call.h"
#include "validate/validate.h"

#include <array>
#include <crypt.h>
#include <cstring>
#include <memory>
#include <string_view>

namespace qbobj
{
namespace
{

// Not the order of crypt's own alphabet, which begins with "./".
constexpr std::string_view _base64 = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789./";

// crypt_r()'s working memory (32 KB), in which it keeps the password: zeroed before and after.
struct hashing {
    crypt_data memory{};

    hashing() = default;
    hashing(const hashing &) = delete;
    hashing &operator=(const hashing &) = delete;
    ~hashing() { explicit_bzero(&memory, sizeof memory); }
};

// "$1$", eight random characters, "$": a salt of the MD5 method.
std::array<char, 13> make_salt()
{
    std::array<char, 13> salt{'$', '1', '$'};
    std::size_t next = 3;
    for (int half = 0; half < 2; ++half) {
        const uint32_t random = qbdb_rand();
        for (unsigned shift = 0; shift < 24; shift += 6)
            salt[next++] = _base64[(random >> shift) & 63];
    }
    salt[next] = '$';
    return salt;
}

// Null when the system refuses to hash.
const char *_enc_passwd(const qbobj_env_t &env, const char *plain_passwd)
{
    if (qbobj::is_empty(plain_passwd))
        return empty_str;
    return crypt_password(env, plain_passwd, make_salt().data());
}

} // namespace

const char *crypt_password(const qbobj_env_t &env, const char *plain, const char *salt)
{
    const auto work = std::make_unique<hashing>();
    const char *hash = crypt_r(plain, salt, &work->memory);
    if (hash == nullptr || *hash == '*')
        return nullptr;
    return copy_text(env.qbdb->pool, hash);
}

bool is_masked(const char *password)
{
    return password != nullptr && std::strcmp(password, masked_password) == 0;
}

int qbobj_validate_password(const qbobj_env_t &env, const char *str, const char **password)
{
    *password = str != nullptr ? _enc_passwd(env, str) : nullptr;
    return *password != nullptr ? 0 : 1;
}

} // namespace qbobj
