/**
 * @file validate.h
 * The validators that callers may use themselves before they call an operation.
 *
 * They return 0 for a valid value and a small code otherwise. None of them fills an error record or logs;
 * only qbobj_validate_db_sharename() touches a database. Letters and digits are the ASCII ones, byte by byte,
 * whatever the process locale; lengths are in bytes, so that a character of several bytes counts as several.
 * Any text, valid UTF-8 or not, may be given. What stands at @return are codes of their own, not error codes.
 */
#ifndef QBOBJ_VALIDATE_H
#define QBOBJ_VALIDATE_H

#include <qbobj/env.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Is `str` a name that a share may have?
 *
 * Accepted: 1 to 31 bytes. The first is a letter, a digit, "$" or a byte 0xC0-0xFF (the first byte of a UTF-8
 * character); each later one is a letter, a digit, "_", "$", "-", "." or a byte 0x80-0xFF. Names that the
 * appliance uses itself, or that begin as such names do ("usb_", "job_", "c_", ...), are reserved in any
 * spelling of upper and lower case.
 *
 * @param[in]  str        the name; may be null
 * @param[out] sharename  receives `str` itself (no copy) when the name is valid, else null; may be null
 * @reads nothing
 * @error none
 * @return 0 valid; -1 null or empty; 1 wrong first byte; 2 wrong later byte; 3 longer than 31 bytes; 4 begins
 * like a family of reserved names; 5 is a reserved name
 */
QBOBJ_API int qbobj_validate_sharename(const char *str, const char **sharename);

/**
 * Is `str` a name that a snapshot may have?
 *
 * Accepted: the bytes of a share's name, 1 to 49 of them. No name is reserved.
 *
 * @param[in] str  the name; may be null
 * @reads nothing
 * @error none
 * @return 0 valid; -1 null or empty; 1 wrong first byte; 2 wrong later byte; 3 longer than 49 bytes
 */
QBOBJ_API int qbobj_validate_snapshotname(const char *str);

/**
 * Is `hostname` a name that the appliance itself may have?
 *
 * Accepted: 1 to 15 bytes, the longest NetBIOS name (RFC 1001). The first is a letter (RFC 952), each later
 * one a letter, a digit, "-" or, beyond RFC 952, "_". There is no dot: the domain is set elsewhere.
 *
 * @param[in] hostname  the name; may be null
 * @reads nothing
 * @error none
 * @return 0 valid; -11 null or empty; 1 wrong first byte; 2 wrong later byte; 3 longer than 15 bytes
 */
QBOBJ_API int qbobj_validate_myhostname(const char *hostname);

/**
 * Is `str` an IPv4 or an IPv6 address?
 *
 * Accepted as IPv4: four decimal numbers of up to three digits, at most 255 each, with dots between them and
 * nothing behind them. They are read as scanf() reads "%3u" (ISO C), so blanks in front of a number are
 * skipped and leading zeros are decimal.
 *
 * Accepted as IPv6 (after RFC 4291, section 2.2): hexadecimal digits, dots (of an IPv4 tail) and colons;
 * either exactly seven single colons, or exactly one "::" and at most six single colons. The lengths of the
 * groups are not examined.
 *
 * @param[in] str  the address; may be null
 * @reads nothing
 * @error none
 * @return 0 valid; -1 null; otherwise the code of the IPv6 reading: 1 a character that has no place in it; 2
 * empty, or without "::" and not of eight groups; 3 too many groups beside a "::"; 4 more than one "::"
 */
QBOBJ_API int qbobj_validate_ip(const char *str);

/**
 * Finds the share of a name.
 *
 * Asks outside of any transaction of its own. Names compare as the table compares them.
 *
 * @param[in]  qbobj     the handle to work with; its error record is left alone
 * @param[in]  str       the name; when it is null, `defstr` is used
 * @param[in]  defstr    the name in its place; may be null
 * @param[out] share_id  receives the share's id; its content is unspecified after a failure
 * @reads share
 * @error none
 * @return 0 found; 1 no such share, no name, or the database failed
 */
QBOBJ_API int qbobj_validate_db_sharename(qbobj_env_t *qbobj, sqlite3 *db, const char *str,
                                          const char *defstr, int *share_id);

#ifdef __cplusplus
}
#endif

#endif
