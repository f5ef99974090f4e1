#!/usr/bin/env python3
"""Every test source in the tree is built, and every test file asserts something.

usage: check_sources.py COMPILE_COMMANDS TEST_FOLDER
"""
import json
import pathlib
import re
import sys

built = {pathlib.Path(entry["file"]).resolve() for entry in json.loads(pathlib.Path(sys.argv[1]).read_text())}
folder = pathlib.Path(sys.argv[2]).resolve()
sources = [p for p in folder.rglob("*") if p.suffix in (".cpp", ".c") and "fuzz" not in p.parts]
problems = [f"not built: {p}" for p in sources if p not in built]
for path in sources:
    text = path.read_text()
    if re.search(r"^TEST", text, flags=re.M) and not re.search(r"EXPECT_|ASSERT_", text):
        problems.append(f"asserts nothing: {path}")
print("\n".join(problems))
sys.exit(1 if problems or not sources else 0)
