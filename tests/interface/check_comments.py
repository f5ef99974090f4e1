#!/usr/bin/env python3
"""A comment that breaks the grammar of the public headers fails the build, with its place and what is wrong.

usage: check_comments.py MAKE_TEXTS.py
"""
import pathlib
import subprocess
import sys
import tempfile

HEADER = """enum qbobj_error { QBOBJ_ERROR_OK, QBOBJ_ERROR_DB_MISC };
/** A job. */
struct qbobj_Job {
    int Size; /**< how large. @unit MB @required */
    /** Who may run it. @words "user", "@all" */
    const char *Owner;
    const char *Password; /**< plain. @secret */
    const char *Where;    /**< a condition. @sql */
};

/**
 * Starts a job.
 *
 * It may take a while.
 *
 * @param[in,out] job   the job
 * @param[in]     count how often
 * @reads  share, $user
 * @writes share
 * @error QBOBJ_ERROR_DB_MISC  a statement failed,
 *                             or two
 * @return 0 or the error code
 */
QBOBJ_API int qbobj_startJob(qbdb_handle_t *qbdb, sqlite3 *db, qbobj_Job_t *job, int count, qbobj_error_rec_t *err);
"""

# What is planted in place of what, and what is said of it.
FAULTS = [
    (" * Starts a job.", " * Starts a job", "the comment begins with one sentence on a line of its own"),
    ("/**\n * Starts", "/*\n * Starts", "has no comment"),
    ("[in,out] job ", "job ", "parameter 'job' is not documented"),
    ("[in,out]", "[inout]", "@param is followed by '[in|out|in,out] name  text'"),
    (" * @param[in]     count how often\n", "", "parameter 'count' is not documented"),
    ("count how", "number how", "there is no parameter 'number'"),
    ("count how often", "job how often", "@param job stands twice"),
    ("int count, ", "", "there is no parameter 'count'"),
    ("qbobj_Job_t *job, int count", "int count, qbobj_Job_t *job", "not documented in their order"),
    (" * @reads  share, $user\n * @writes share\n", "", "no @reads or @writes"),
    ("$user", "$usr", "there is no table '$usr' in the schema"),
    ("share, $user", "share, share", "table 'share' stands twice"),
    ("@writes share", "@writes share\n * @writes share", "@writes stands twice"),
    ("@error QBOBJ_ERROR_DB_MISC  a", "@note a", "no @error"),
    ("@error QBOBJ_ERROR_DB_MISC  a", "@note a", "unknown tag @note"),
    ("@error QBOBJ_ERROR_DB_MISC", "@error QBOBJ_ERROR_DB_MUSIC", "unknown error code 'QBOBJ_ERROR_DB_MUSIC'"),
    ("  a statement failed,\n *                             or two", "", "does not say when"),
    ("@return", "@error QBOBJ_ERROR_DB_MISC  again\n * @return", "@error QBOBJ_ERROR_DB_MISC stands twice"),
    (" * @return 0 or the error code\n", "", "no @return"),
    ("@return 0 or the error code", "@return", "@return says nothing"),
    (" * @writes share\n", " * @return 1\n * @writes share\n", "the tags stand in the order"),
    ("/** A job. */", "", "Job: has no comment"),
    (" /**< how large. @unit MB @required */", "", "Job.Size: has no comment"),
    ("how large. ", "", "the comment has no text"),
    ("@unit MB", "@unit MB @unit KB", "@unit stands twice"),
    ("@unit MB", "@unit", "@unit has no value"),
    ("@required", "@required always", "@required takes no value"),
    ("@required", "@requird", "unknown tag @requird"),
    ("@sql", "@sql text", "@sql takes no value"),
    (" @secret", "", "looks like a secret"),
]


def run(script, header):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "job.h").write_text(header)
        (folder / "tables.sql").write_text("CREATE TABLE share (id);\nCREATE TABLE `$user` (id);\n")
        command = [sys.executable, "-B", script, folder, folder, folder / "texts.cpp"]
        done = subprocess.run(command, capture_output=True, text=True)
        made = (folder / "texts.cpp").exists()
        return done.returncode, done.stderr, made


def main():
    script = sys.argv[1]
    code, said, made = run(script, HEADER)
    problems = [] if code == 0 and made else [f"the sample itself is refused: {said}"]
    for old, new, expected in FAULTS:
        code, said, made = run(script, HEADER.replace(old, new, 1))
        if HEADER.count(old) == 0 or code == 0 or made or "job.h:" not in said or expected not in said:
            problems.append(f"{old!r} -> {new!r}: expected '{expected}', exit {code}, said: {said}")
    print("\n".join(problems))
    sys.exit(1 if problems else 0)


main()
