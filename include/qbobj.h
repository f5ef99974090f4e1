/**
 * @file qbobj.h
 * Typed, validated, transactional access to the configuration of a network-storage appliance.
 *
 * Rules that hold everywhere; an operation's own comment says only what is its own.
 *
 * - Calls. An operation takes the platform's handle `qbdb`, the database connection `db`, its own arguments
 * and the error record `err`. It runs as one transaction: it succeeds as a whole, or changes nothing.
 * - Result. 0, or the error code, which is then also in `err->ec`. Look-ups of an id return the id, or a
 * negative value. Test the value that is returned, not `err->ec`. A null `err` aborts the program.
 * - Everywhere. What any operation may report is not repeated at each: QBOBJ_ERROR_OOM when there is no
 * memory, QBOBJ_ERROR_DB_MISC when the database has rolled the transaction back by itself.
 * - Busy database. An operation that cannot begin its transaction returns minus SQLite's code (-5 while
 * another program holds the database), look-ups too; no error is raised then, so that the error record stays
 * empty.
 * - Commit. The result says what the operation did; whether its transaction was kept is asked with
 * qbdb_last_commit(), or becomes the result (QBOBJ_ERROR_DB_MISC) for who opens with `commit_decides`: do so.
 * - Chains. Records chained through `_link` are processed in order; the first failure ends the call and
 * undoes all of it.
 * - Collections. What is read is appended to the list of the collection given; clear it before the first use.
 * - Uniqueness. Where a table takes a thing once, the operation says what a second entry gets: a code of its
 * own, a replacement, or QBOBJ_ERROR_DB_MISC for the statement that failed.
 * - Ownership. Everything that is returned (records, strings, messages) lives in the handle's pool until its
 * owner clears or destroys that pool, and must not be freed.
 * - Strings. Strings passed in are UTF-8 and are not kept after the call.
 * - Nothing given. A null string or record, or a number whose `_void_` flag is set, is not given: a creation
 * takes its default, a modification leaves what is stored. qbobj_clear_<Type>() marks a whole record so.
 * - Nothing stored. Unless a field says otherwise a missing text is read as "" and a missing number as 0; an
 * empty list is a null head.
 * - Failure. The error record holds code, source unit, line and message. Records that the call would have
 * filled may be filled in part and are not to be used.
 * - Passwords are returned as `masked_password` unless a field says otherwise; written back, it leaves the
 * stored password as it is, and where there is none to keep (a new account) it is refused. Fields tagged
 * @secret are not for the eyes of others, masked or not.
 * - Threads. The library keeps no state between calls and takes no locks. A handle, its pool and its
 * connection are used by one thread at a time; give each thread its own.
 *
 * Comments of operations: @param[in], [out] or [in,out] for what is given, made, or given and filled; @reads
 * and @writes name tables; @error names a code, in the order in which the codes can arise. Comments of
 * fields: @unit, @words (those accepted), @range, @required (needed when the record is created), @readonly
 * (filled by reads, ignored on writes), @secret, @sql (SQL text that becomes part of a statement as it is).
 */
#ifndef QBOBJ_H
#define QBOBJ_H

#include <qbobj/account.h>
#include <qbobj/backup.h>
#include <qbobj/dictionary.h>
#include <qbobj/disk.h>
#include <qbobj/health.h>
#include <qbobj/iscsi.h>
#include <qbobj/log.h>
#include <qbobj/netif.h>
#include <qbobj/protocol.h>
#include <qbobj/schema.h>
#include <qbobj/service.h>
#include <qbobj/settings.h>
#include <qbobj/share.h>
#include <qbobj/snapshot.h>
#include <qbobj/spare.h>
#include <qbobj/storage.h>
#include <qbobj/timemachine.h>
#include <qbobj/tivo.h>
#include <qbobj/types.h>
#include <qbobj/ups.h>
#include <qbobj/validate.h>
#include <qbobj/version.h>

#endif
