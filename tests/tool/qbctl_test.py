#!/usr/bin/env python3
"""The command line tool as people and scripts use it. usage: qbctl_test.py QBCTL"""
import json
import os
import pathlib
import pty
import sqlite3
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

QBCTL = sys.argv.pop(1)


class Tool(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name)
        (self.path / "root/data").mkdir(parents=True)
        self.db = self.path / "appliance.db"
        self.environment = dict(os.environ, QBOBJ_DB=str(self.db), QBOBJ_ROOT=str(self.path / "root"))
        self.ok("init", str(self.db), "--volume", "data")

    def run_tool(self, *words, stdin="", environment=None, **other):
        return subprocess.run([QBCTL, *words], input=stdin, text=True, errors="surrogateescape", check=False,
                              env=environment or self.environment,
                              start_new_session=True,  # away from the terminal
                              **{"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **other})

    def ok(self, *words, stdin=""):
        done = self.run_tool(*words, stdin=stdin)
        self.assertEqual(0, done.returncode, done.stderr)
        return done.stdout

    def fails(self, status, *words, stdin=""):
        done = self.run_tool(*words, stdin=stdin)
        self.assertEqual(status, done.returncode, done.stdout + done.stderr)
        self.assertEqual("", done.stdout)
        return done.stderr

    def call(self, *words, stdin=""):
        return json.loads(self.ok("call", *words, stdin=stdin))

    def test_init_never_replaces_a_file(self):
        before = self.db.read_bytes()
        self.assertIn("exists", self.fails(1, "init", str(self.db)))
        self.assertEqual(before, self.db.read_bytes())

    def test_records_from_word_file_and_standard_input(self):
        given = self.path / "share.json"
        given.write_text('[{"ShareName": "b", "VolumeId": "data"}, {"ShareName": "c", "VolumeId": "data"}]')
        self.assertEqual("data/a", self.call("addShare", '{"ShareName": "a", "VolumeId": "data"}')[0]["ShareId"])
        self.assertEqual(["data/b", "data/c"], [s["ShareId"] for s in self.call("addShare", f"@{given}")])
        self.call("addShare", "-", stdin='{"ShareName": "Größe", "VolumeId": "data"}')
        names = [share["ShareName"] for share in self.call("getShareCollection")["Share"]]
        self.assertEqual(["a", "b", "c", "Größe"], names)
        self.assertEqual(self.call("getShareId", "share_name=c"), self.call("getShareId", '{"share_name": "c"}'))

    def test_arrays_are_not_taken_apart(self):
        self.call("addShare", '[{"ShareName": "a", "VolumeId": "data"},{"ShareName": "b", "VolumeId": "data"}]')
        self.assertEqual(2, len(self.call("getShareCollection")["Share"]))

    def test_failures_name_code_number_and_message(self):
        text = self.fails(1, "call", "addShare", '{"ShareName": "home", "VolumeId": "data"}')
        self.assertIn("QBOBJ_ERROR_UI__SHARENAME_RESERVED (808): ShareName (home) is reserved", text)
        self.assertIn("-1", self.fails(1, "call", "getShareId", "share_name=none"))
        self.assertIn("cannot open", self.fails(1, "--db", str(self.path / "none.db"), "call", "getShareCollection"))

    def test_wrong_usage_exits_2_and_says_what(self):
        for words, text in [
            (["call", "addShare", '{"ShareNaem": "x"}'], "a Share has no field 'ShareNaem'; did you mean 'ShareName'?"),
            (["call", "addShare", '{"ShareName": '], "no JSON: parse error at line 1"),
            (["call", "addShare", "[" * 100000], "nested deeper than 64 levels"),
            (["call", "addSahre", "{}"], "there is no operation 'addSahre'; did you mean 'addShare'?"),
            (["cal", "addShare"], "there is no command 'cal'; did you mean 'call'?"),
            (["list", "--colums", "x"], "there is no option '--colums'; did you mean '--columns'?"),
            (["call", '{"Password": "secret"}'], "no operation is named"),
            (['{"Password": "secret"}'], "a word too many"),
            (["call", "addUser", '{"Password": secret}'], "invalid literal\n"),
            (["call", "addUser", '{"UserId": "secret"}'], "must be a whole number, not a text\n"),
            (["call", "getShareId", "share_name=a", "share_name=b"], "'share_name' is given twice"),
            (["call", "getShareId", '"a"', "share_name=b"], "give an object"),
            (["--columns", "Pth", "call", "getShareCollection"], "has a field 'Pth'; did you mean 'Path'?"),
            (["--columns", "Pth", "call", "--table", "getFolderAttribute", "path=/"], "no record has a field 'Pth'"),
            (["call", "addUser", "--ask", "Password"], "there is no terminal to ask for Password"),
            (["call", "addUser", "--from-fd", "Password=77"], "cannot read descriptor 77: Bad file descriptor"),
            (["call", "addUser", "--from-fd", "Password"], "PATH=N"),
            (["call", "addUser", f"@{self.path}"], "Is a directory"),
            (["batch", str(self.path)], "Is a directory"),
            (["call", "addShare\x1b[31m"], "no operation is named"),
            (["call", "addShare", '{"\\u001b\\u009b": 1}'], "no field '\\u001b\\u009b'"),
            (["call", "getShareId"], "'share_name' is missing"),
            (["call", "getShareId", "name=x"], "no argument 'name'"),
            (["call", "addShare", "@/none.json"], "cannot read /none.json"),
            (["describe", "Shrae"], "'Shrae'; did you mean 'Share'?"),
            (["describe", "adShare"], "'adShare'; did you mean 'addShare'?"),
            (["describe", "Share.Cfs"], "Share has no field 'Cfs'; did you mean 'Cifs'?"),
            (["describe", "Share.Path.x"], "Share.Path is no record"),
            (["describe", "weather"], "there is no operation or record type 'weather'\n"),
            (["call"], "OPERATION"),
            (["--log", "loud", "list"], "loud"),
            ([], "subcommand"),
        ]:
            with self.subTest(words=words):
                error = self.fails(2, *words)
                self.assertIn(text, error)
                self.assertNotIn("secret", error)
                self.assertNotIn("json.exception", error)
        without = {k: v for k, v in self.environment.items() if k != "QBOBJ_DB"}
        done = self.run_tool("call", "getShareCollection", environment=without)
        self.assertEqual(2, done.returncode)
        self.assertIn("--db", done.stderr)

    def test_input_is_used_whole_or_refused_by_its_place(self):
        self.call("addUser", '{"UserName": "ann"}')
        for given, text in [
            ("", "column 1: syntax error while parsing value - unexpected end"),
            ("NaN", "invalid literal"),
            ("{} {}", "column 4"),
            ('{"UserName": "\\ud800"}', "U+D800..U+DBFF must be followed"),
            ('{"UserName": "\udcff"}', "column 15: syntax error while parsing value - invalid string: ill-formed UTF-8"),
            ('{"UserName": "bob\\u0000by"}', "user.UserName must not hold a NUL character"),
            ('{"User\\u0000Name": "bob"}', "a name with a NUL character"),
            ('{"UserName": "bob", "\\u0055serName": "eve"}', "gives 'UserName' twice"),
            ('{"' + "x" * 50_000_000 + '": 1}', "a name of 50000000 bytes"),
            ("[" + '{"UserName": "bob"},' * 100_000 + '{"UserId": 0.5}]', "user[100000].UserId must be a whole number"),
        ]:
            with self.subTest(given=given[:40]):
                error = self.fails(2, "call", "addUser", "-", stdin=given)
                self.assertIn(text, error)
                self.assertLess(len(error), 300)
        for operation, field, fitting in [("addUser", "UserName", ['"x"']),
                                          ("addUser", "UserId", ["7", "-7", "true"]),
                                          ("addUser", "UserQuota", ["{}", "[]"]),
                                          ("addShare", "QuotaMB", ["7", "4294967296"]),
                                          ("addShare", "Cifs", ["{}"])]:
            for value in ['"x"', "7", "-7", "0.5", "1e3", "4294967296", "18446744073709551615", "-9223372036854775809",
                          "18446744073709551616", "true", "{}", "[]", "[7]"]:
                if value not in fitting:
                    with self.subTest(field=field, value=value):
                        self.assertIn("." + field, self.fails(2, "call", operation, f'{{"{field}": {value}}}'))
        self.assertEqual(["ann"], [user["UserName"] for user in self.call("getUserCollection")["User"]])
        text = "ä" * 25_000_000
        self.call("setRegistryEntry", "-", stdin=json.dumps({"key": "k", "val": text}, ensure_ascii=False))
        self.assertTrue(text == self.call("getRegistryEntry", "key=k"))
        self.call("addShare", '{"ShareName": "a", "VolumeId": "data", "QuotaMB": 9223372036854775807}')
        self.assertEqual(2**63 - 1, self.call("getShare", '{"ShareId": "data/a"}')[0]["QuotaMB"])

    def test_lists_and_descriptions_need_no_database(self):
        listed = self.ok("list")
        self.assertIn("getShareId(share_name) -> id\n", listed)
        self.assertIn("modifyShare(share:Share, [modifyOneShare]) -> share:Share\n", listed)
        described = self.ok("describe", "Share")
        self.assertIn("  QuotaMB: uint64 in MB, may be left out\n", described)
        self.assertIn("  VisibleSnapshot: int, one of 0, 1, 0 when left out\n", described)
        self.assertIn("  UsedBy: list of UsedBy, may be left out\n", described)
        self.assertEqual(102, len(self.ok("describe").splitlines()))

    def test_fields_of_sql_are_offered_only_by_name(self):
        self.assertNotIn("severity_in", self.ok("describe", "LogQuery", "getLog", "deleteLog") + self.ok("describe"))
        self.assertNotIn("severity_in", self.fails(2, "describe", "LogQuery.severity_on"))
        self.assertIn("LogQuery.severity_in: text, SQL text, may", self.ok("describe", "LogQuery.severity_in"))
        self.call("addLog", "Severity=err")
        given = json.dumps({"query": {"severity_in": "'err','crit'"}})
        self.assertEqual(1, self.call("getLog", given)["Entries"])

    def test_table_shows_chosen_columns(self):
        self.call("addShare", '{"ShareName": "docs", "VolumeId": "data", "Comment": "Ünïcode"}')
        table = self.ok("--columns", "ShareName,Comment", "call", "--table", "getShareCollection")
        self.assertEqual("ShareName  Comment\ndocs       Ünïcode\n", table)
        inner = self.ok("--columns", "VolumeName", "call", "--table", "getVolumeCollection")
        self.assertEqual("VolumeName\ndata\n", inner, "the list of the only record")

    def test_control_characters_never_reach_a_terminal(self):
        self.call("setServiceEntry", "key=a", "val=\x1b[31m\x7f\u009b\tä")
        self.assertEqual("\\u001b[31m\\u007f\\u009b\\u0009ä\n", self.ok("--table", "call", "getServiceEntry", "key=a"))
        self.assertIn("(x\\u001b)", self.fails(1, "call", "addUser", '{"UserName": "x\\u001b"}'))

    def test_passwords_stay_masked(self):
        self.call("addUser", '{"UserName": "ann", "Password": "secret"}')
        self.assertEqual("●" * 8, self.call("getUser", '{"UserId": 100}')[0]["Password"])
        for output in (self.ok("call", "getUserCollection"), self.ok("call", "getAdminPassword")):
            self.assertNotIn("$1$", output)

    def test_passwords_given_are_never_echoed(self):
        added = self.call("addUser", '{"UserName": "ann", "Password": "secret"}')
        self.assertEqual("●" * 8, added[0]["Password"])
        refused = self.fails(1, "call", "addUser", json.dumps({"UserName": "bob", "Password": "long" * 200}))
        self.assertIn("Invalid Password (●●●●●●●●)", refused)

    def test_passwords_come_from_descriptors_and_the_terminal(self):
        proof = '{"UserName": "ann", "OldPassword": "secret", "NewPassword": "other"}'
        (self.path / "file").write_text("secret\n")
        with open(self.path / "file", encoding="utf-8") as file:
            done = self.run_tool("call", "addUser", '{"UserName": "ann"}', "--from-fd", f"Password={file.fileno()}", pass_fds=[file.fileno()])
        self.assertEqual(0, done.returncode, done.stderr)
        self.ok("call", "setMyPassword", proof)
        child, terminal = pty.fork()
        if child == 0:
            os.execve(QBCTL, [QBCTL, "call", "setUserPassword", '{"UserId": 100}', "--ask", "Password"], self.environment)
        shown = os.read(terminal, 100)
        os.write(terminal, b"secret\n")
        try:
            while more := os.read(terminal, 1000):
                shown += more
        except OSError:  # the terminal's other side is closed
            pass
        self.assertEqual(0, os.waitpid(child, 0)[1])
        self.assertTrue(shown.startswith(b"Password: "))
        self.assertNotIn(b"secret", shown)
        self.ok("call", "setMyPassword", proof)

    def test_a_database_in_use_is_named_and_may_be_tried_again(self):
        for lock, words in [
            (["BEGIN IMMEDIATE"], ["call", "addUser", '{"UserName": "ann"}']),
            (["BEGIN IMMEDIATE"], ["call", "setServiceEntry", "key=a", "val=b"]),
            (["PRAGMA locking_mode=EXCLUSIVE", "BEGIN EXCLUSIVE"], ["call", "getShareCollection"]),
        ]:
            with self.subTest(words=words):
                other = sqlite3.connect(self.db, isolation_level=None)
                self.addCleanup(other.close)
                for statement in lock:
                    other.execute(statement)
                error = self.fails(75, "--wait", "0.05", *words)
                self.assertIn("the database is in use by another program", error)
                self.assertNotIn("QBOBJ_ERROR", error)
                other.close()

    def test_reading_leaves_the_file_alone(self):
        self.call("addUser", '{"UserName": "ann"}')
        writer = sqlite3.connect(self.db, isolation_level=None)
        self.addCleanup(writer.close)
        writer.execute("BEGIN IMMEDIATE")
        self.call("--wait", "0.05", "getGroupCollection")
        self.ok("--wait", "0.05", "batch", "-", stdin="getGroupCollection\ngetShareCollection\n")

    def test_output_that_cannot_be_written_is_a_failure(self):
        for words in (["list"], ["--help"], ["call", "getUserCollection"], ["batch", "-"]):
            with self.subTest(words=words), open("/dev/full", "w", encoding="utf-8") as full:
                done = self.run_tool(*words, stdin="getUserCollection", stdout=full)
                self.assertEqual(1, done.returncode)
                self.assertIn("cannot write the output: No space left", done.stderr)

    def test_arrays_have_room_for_names_without_a_record_and_trees_are_xml(self):
        names = [f"iqn.x:{i:04}" for i in range(3000)]
        other = sqlite3.connect(self.db, isolation_level=None)
        self.addCleanup(other.close)
        other.executemany("INSERT INTO `$iscsi_lun_group_access` VALUES('vault',?)", [(name,) for name in names])
        self.assertEqual(names, self.call("getLunGroupAccessList", "LunGroup=vault"))
        tree = xml.etree.ElementTree.fromstring(self.ok("call", "getDictionary"))
        self.assertEqual("A disk has failed.", tree.find("Language[@code='en-us']/item[@key='LOGMSG_DISK_FAILED']").text)

    def test_questions_are_answered_not_failed(self):
        self.call("addUser", '{"UserName": "ann"}')
        self.assertTrue(self.call("isMemberOfGroup", "uname=ann", "gname=users"))
        self.assertFalse(self.call("isMemberOfGroup", "uname=ann", "gname=admin"))

    def test_batch_runs_line_by_line_and_stops_at_the_first_failure(self):
        calls = self.path / "calls"
        calls.write_text('# two shares\n\naddShare {"ShareName": "a", "VolumeId": "data"}\n'
                         'getShareId {"share_name": "a"}\n'
                         'addShare {"ShareName": "a", "VolumeId": "data"}\n'
                         'addShare {"ShareName": "b", "VolumeId": "data"}\n')
        done = self.run_tool("batch", str(calls))
        self.assertEqual(1, done.returncode)
        self.assertEqual("1\n", done.stdout)
        self.assertIn(f"{calls}:5: addShare: QBOBJ_ERROR_UI__SHARENAME_ALREADY_EXISTS (800)", done.stderr)
        self.assertEqual(1, len(self.call("getShareCollection")["Share"]))


unittest.main()
