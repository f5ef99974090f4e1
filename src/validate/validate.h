// The validators that workers apply to what callers give. All return 0 for a valid value and a small code
// otherwise; none writes an error record. The exported ones stand in <qbobj/validate.h>.
#pragma once

#include "core/call.h"

#include <qbobj/validate.h>
#include <sqlite3.h>

#include <cstddef>

namespace qbobj
{

/* ---- Names. An accepted name is handed back as the caller's own pointer -------------------------------- */

// 0 means that the name IS protected, 1 that it is not, -1 that there is none.
int qbobj_validate_protected_sharename(const char *str);
// 1 first byte (or no name), 2 later byte, 3 too long, 4 reserved beginning, 5 reserved name.
int qbobj_validate_username(const char *str, const char **uname);
// As user names, but no name is reserved.
int qbobj_validate_groupname(const char *str, const char **gname);
// Null or empty is "share".
int qbobj_validate_sharetype(const char *str, const char **sharetype);
int qbobj_validate_workgroup(const char *name);
// -11 no name, 1 first byte, 2 later byte, 3 too long, 4 a label that is empty or has no letter.
int qbobj_validate_hostname(const char *hostname);
int qbobj_validate_community(const char *str);
int qbobj_validate_netif_name(const char *str);
// `maxlen` 0 is 8. 1 no name, 2 first byte, 3 too long, 4 later byte.
int qbobj_validate_simplename(const char *str, size_t maxlen);
// 0 known, 1 unknown, 2 null.
int qbobj_validate_protocol_name(const char *str);

/* ---- Words, switches and numbers ----------------------------------------------------------------------- */

// `defstr` is used when `str` is null; when both are null the result is 1.

int qbobj_validate_access(const char *str, const char *defstr, const char **access);
// As qbobj_validate_access(), but "ReadWrite" is refused.
int qbobj_validate_access2(const char *str, const char *defstr, const char **access);
int qbobj_validate_enable_disable(const char *str, const char *defstr, const char **access);
int qbobj_validate_read_write(const char *str, const char *defstr, int *read, int *write);
int qbobj_validate_rights(const char *str, const char *defstr, int *rights, int is_dir);
// An unknown word is 2 here.
int qbobj_validate_umask(const char *str, const char *defstr, int *umask, int is_dir);
int qbobj_validate_boolean(const char *str, const char *defstr, int *bool_val);
int qbobj_validate_int(const char *str, const char *defstr, int min, int max, int *intval);
// The candidates end with a null pointer.
int qbobj_validate_string(const char *str, int ignore_case, ...) __attribute__((sentinel));
int qbobj_validate_string_array(const char *str, int ignore_case, const char *const *valid_strings);

struct qbobj_enum_map {
    const char *enumval; // the accepted word; null ends a map
    int intval;
};
using qbobj_enum_map_t = qbobj_enum_map;
int qbobj_validate_enum(const char *str, const char *defstr, const qbobj_enum_map_t *map, int *intval);

// Bit set: 1 audio, 2 video, 4 images.
int qbobj_validate_media_type(const char *str, const char *defstr, int *media_type);
// The word of a set of media types (1 audio, 2 video, 4 images, or-ed), the opposite of the validator.
const char *qbobj_media_type_word(int media_type);
// Null is "info".
int qbobj_validate_log_severity(const char *str, const char **validated_str);
// Null is "misc".
int qbobj_validate_log_category(const char *str, const char **validated_str);

// UPS drivers' MIB names, for qbobj_validate_string_array().
inline constexpr const char *valid_snmp_ups_mibs[] = {
    "auto",    "mge",     "apcc",     "netvision",  "pw",   "aphel_genesisII", "aphel_revelation",
    "raritan", "baytech", "cpqpower", "cyberpower", nullptr};

/* ---- Addresses, hosts and networks --------------------------------------------------------------------- */

// -1 null, 1 not four numbers, 2 a number above 255.
int qbobj_validate_ipv4(const char *str);
// The system's own reading of an address: 2 null, 1 not an address.
int qbobj_validate_ipv4_address(const char *str);
// -1 null, 1 character, 2 group count, 3 too many groups round "::", 4 more than one "::".
int qbobj_validate_ipv6(const char *str);
// The host name check, else the result of qbobj_validate_ip().
int qbobj_validate_host(const char *host);
int qbobj_validate_host_array(const qbobj_env_t &env, const char **array, const char ***host_list);
int qbobj_validate_host_csv(const qbobj_env_t &env, const char *csv, const char ***host_list);
int qbobj_validate_ip_csv(const qbobj_env_t &env, const char *csv);
// 0 or -1. The canonical text is in the pool; `canonicalized_net` may be null.
int qbobj_validate_net_ipv4(apr_pool_t *pool, const char *net, const char **canonicalized_net);
int qbobj_validate_net_ipv6(apr_pool_t *pool, const char *net, const char **canonicalized_net);
int qbobj_validate_net(apr_pool_t *pool, const char *net, const char **canonicalized_net);
int qbobj_validate_allow_host(const qbobj_env_t &env, const char *csv);
int qbobj_validate_host_or_net(apr_pool_t *pool, const char *host, const char **canonicalized_host);
// `str` must not be null. 1 not six fields, 2 a field out of range.
int qbobj_validate_mac(const char *str);
// 0 nothing listens on the port, -1 something does, -2 no socket, -3 "localhost" is unknown.
int qbobj_validate_unused_tcp_port(int port);

/* ---- E-mail addresses and passwords -------------------------------------------------------------------- */

// 1 none, 2 too long, 3-6 quoted local part, 7-11 plain local part, 20-24 address literal, 25-26 domain name.
// `email` may be null.
int qbobj_validate_email(const char *str, const char **email);
// `*password` receives the salted hash in the pool; the empty password stays the empty text.
int qbobj_validate_password(const qbobj_env_t &env, const char *str, const char **password);

// Whether this is the mask that reads return in a password's place. It is never a password: written back it leaves the
// stored one.
bool is_masked(const char *password);
// The system's hash of a password, in the pool; null when it refuses to hash. The work area is wiped.
const char *crypt_password(const qbobj_env_t &env, const char *plain, const char *salt);

/* ---- Names of existing rows ---------------------------------------------------------------------------- */

int qbobj_validate_db_username(Call &call, const char *str, const char *defstr, int *user_id);
int qbobj_validate_db_groupname(Call &call, const char *str, const char *defstr, int *group_id);
int qbobj_validate_db_sharename(Call &call, const char *str, const char *defstr, int *share_id);
int qbobj_validate_db_zfsname(Call &call, const char *str, const char *defstr, int *share_id);
int qbobj_validate_db_path_in_share(Call &call, const char *path, int *share_id);
// A volume that does not exist leaves `*volume_id` null with the result 0.
int qbobj_validate_db_volumename(Call &call, const char *str, const char *defstr, char **volume_id);
// A null id means the default volume.
int qbobj_validate_db_volumeid(Call &call, const char *volume_id_in, const char **volume_id);
// 0 found, 1 not found, 2 the statement failed.
int qbobj_validate_db_userid(Call &call, int user_id);
int qbobj_validate_db_groupid(Call &call, int group_id);
int qbobj_validate_db_jobname(Call &call, const char *str, int *job_id);
int qbobj_validate_db_lunname(Call &call, const char *str, const char *defstr, int *lun_id);
int qbobj_validate_db_lungroupname(Call &call, const char *str, const char *defstr, int *lun_group_id);
int qbobj_validate_db_initiatorname(Call &call, const char *str, const char *defstr, int *initiator_id);
int qbobj_validate_db_username_csv(Call &call, const char *csv, int **user_id_list, int *user_id_list_len);
int qbobj_validate_db_username_array(Call &call, const char **array, int **user_id_list,
                                     int *user_id_list_len);
int qbobj_validate_db_groupname_csv(Call &call, const char *csv, int **group_id_list, int *group_id_list_len);
int qbobj_validate_db_groupname_array(Call &call, const char **array, int **group_id_list,
                                      int *group_id_list_len);

} // namespace qbobj
