#!/usr/bin/env python3
"""Compares the exported symbols of a shared library with its headers, and finds those that no test uses.

usage: check_interface.py LIBRARY HEADER_FOLDER TEST_FOLDER [VERSION]
With a version, such as QBOBJ_1.0, every symbol must carry it.
"""
import pathlib
import re
import subprocess
import sys


def declared(folder):
    """Names that the headers publish, record types expanded."""
    names = set()
    for header in sorted(folder.rglob("*.h")):
        text = re.sub(r"/\*.*?\*/", "", header.read_text(), flags=re.S)
        types = re.search(r"#define QBOBJ_RECORD_TYPES\(X\)(.*?)\n\n", text, flags=re.S)
        if types:
            for name in re.findall(r"X\((\w+)\)", types.group(1)):
                names |= {f"spec_{name}", f"qbobj_clear_{name}"}
        text = re.sub(r"#.*?(?<!\\)\n", "\n", text, flags=re.S)
        if header.name == "qbdb.h":
            names |= set(re.findall(r"\b((?:qbdb|snapshot|strncat)_\w+)\s*\(", text))
        for declaration in re.findall(r"QBOBJ_API\s+([^;]*);", text):
            head = declaration.split("(")[0].replace("[]", "")
            names.add(re.findall(r"\w+", head)[-1])
    return names


def exported(library):
    lines = subprocess.run(["nm", "-D", "--defined-only", library], check=True, capture_output=True, text=True)
    words = [line.split() for line in lines.stdout.splitlines()]
    # A version is itself an absolute symbol.
    return {name.split("@@")[0]: (kind, *name.split("@@")[1:]) for _, kind, name in words if kind != "A"}


def unused(names, folder):
    text = "\n".join(p.read_text() for p in folder.rglob("*") if p.suffix in (".cpp", ".c", ".h"))
    words = set(re.findall(r"\w+", text))
    if "QBOBJ_RECORD_TYPES" in words:  # a test walks all record types
        words |= {n for n in names if n.startswith(("spec_", "qbobj_clear_"))}
    return {name for name in names if name not in words}


def main():
    library, headers, tests = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
    published, symbols = declared(headers), exported(library)
    problems = [f"published but not exported: {n}" for n in sorted(published - symbols.keys())]
    problems += [f"exported but not published: {n}" for n in sorted(symbols.keys() - published)]
    for version in sys.argv[4:]:
        problems += [f"not of {version}: {n}" for n, has in sorted(symbols.items()) if has[1:] != (version,)]
    functions = {n for n in published & symbols.keys() if symbols[n][0] == "T"}
    problems += [f"used by no test: {n}" for n in sorted(unused(functions, tests))]
    print(f"{len(published)} published, {len(symbols)} exported")
    print("\n".join(problems))
    sys.exit(1 if problems or not published else 0)


main()
