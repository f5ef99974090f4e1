#!/usr/bin/env python3
"""The command line tool as people and scripts use it. usage: qbctl_test.py QBCTL"""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

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

    def run_tool(self, *words, stdin="", environment=None):
        return subprocess.run([QBCTL, *words], input=stdin, capture_output=True, text=True,
                              env=environment or self.environment, check=False)

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
            (["call", "addShare", '{"ShareNaem": "x"}'], "a Share has no field 'ShareNaem'"),
            (["call", "addShare", '{"ShareName": '], "no JSON"),
            (["call", "addSahre", "{}"], "there is no operation 'addSahre'"),
            (["call", "getShareId"], "'share_name' is missing"),
            (["call", "getShareId", "name=x"], "no argument 'name'"),
            (["call", "addShare", "@/none.json"], "cannot read /none.json"),
            (["describe", "Shrae"], "'Shrae': did you mean 'Share'?"),
            (["describe", "adShare"], "'adShare': did you mean 'addShare'?"),
            (["describe", "Share.Cfs"], "Share has no field 'Cfs': did you mean 'Cifs'?"),
            (["describe", "Share.Path.x"], "Share.Path is no record"),
            (["describe", "weather"], "there is no operation or record type 'weather'\n"),
            (["call"], "OPERATION"),
            (["--log", "loud", "list"], "loud"),
            ([], "subcommand"),
        ]:
            with self.subTest(words=words):
                self.assertIn(text, self.fails(2, *words))
        without = {k: v for k, v in self.environment.items() if k != "QBOBJ_DB"}
        done = self.run_tool("call", "getShareCollection", environment=without)
        self.assertEqual(2, done.returncode)
        self.assertIn("--db", done.stderr)

    def test_lists_and_descriptions_need_no_database(self):
        listed = self.ok("list")
        self.assertIn("getShareId(share_name) -> id\n    Finds the row id of a share.\n", listed)
        self.assertIn("modifyShare(share:Share, [modifyOneShare]) -> share:Share\n", listed)
        self.assertEqual(102, len(self.ok("describe").splitlines()))
        for name, lines in [
            ("share", ["  QuotaMB: uint64 in MB, may be left out\n      size limit with snapshots",
                       "  VisibleSnapshot: int, one of 0, 1, 0 when left out\n",
                       "  UsedMB: uint64 in MB, read only\n",
                       "  UsedBy: list of UsedBy, may be left out\n"]),
            ("User", ["  Password: text, secret, may be left out\n", "  UserName: text, 1 to 31 bytes, required\n"]),
            ("Share.cifs", ["Share.Cifs: CifsShareOption, may be left out\n", "  EnableDFS: int,"]),
            ("Share.Cifs.UserAcl", ["Share.Cifs.UserAcl: list of UserAcl,", "  Access: text, one of \"ReadWrite\","]),
            ("ADDSHARE", ["Creates shares", "  share (given and filled)\n", "  reads: service_cifs, share,",
                          "  QBOBJ_ERROR_UI__NAME_TOO_LONG (806)\n", "  returns 0 or the error code\n"]),
            ("qbobj_validate_ip", ["  str (given)\n"]),
        ]:
            described = self.ok("describe", name)
            for line in lines:
                self.assertIn(line, described)

    def test_table_shows_chosen_columns(self):
        self.call("addShare", '{"ShareName": "docs", "VolumeId": "data", "Comment": "Ünïcode"}')
        table = self.ok("--columns", "ShareName,Comment", "call", "--table", "getShareCollection")
        self.assertEqual("ShareName  Comment\ndocs       Ünïcode\n", table)

    def test_passwords_stay_masked(self):
        self.call("addUser", '{"UserName": "ann", "Password": "secret"}')
        self.assertEqual("●" * 8, self.call("getUser", '{"UserId": 100}')[0]["Password"])
        for output in (self.ok("call", "getUserCollection"), self.ok("call", "getAdminPassword")):
            self.assertNotIn("$1$", output)

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
