#!/usr/bin/env python3
"""Makes the table of texts from the comments of the public headers; fails when a comment breaks the grammar.

usage: make_texts.py INCLUDE_FOLDER SCHEMA_FOLDER [OUTPUT.cpp]
"""
import json
import pathlib
import re
import sys

from header_parser import read_headers

PREAMBLE = """// The texts of the public headers. Made by make_texts.py when the project is built; changes belong into the headers.
#include "operations/texts.h"

#include <qbobj/types.h>

namespace qbobj::texts
{
namespace
{
"""


def quoted(text):
    """A C++ string literal; longer than a compiler must take in one piece it is still one by concatenation."""
    return json.dumps(text, ensure_ascii=False)


def array(kind, name, items):
    """A constexpr array, or nothing for an empty one (an empty span stands for it)."""
    return f"constexpr {kind} {name}[] = {{{', '.join(items)}}};\n" if items else ""


def short_name(symbol):
    return re.sub(r"^qbobj_", "", symbol)


def operation_arrays(operation, at):
    parameters = [f"{{{quoted(p.name)}, Direction::{p.direction}, {quoted(p.text)}}}" for p in operation.parameters]
    errors = [f"{{{code}, {quoted(code)}, {quoted(text)}}}" for code, text in operation.errors]
    return (array("Parameter", f"parameters_{at}", parameters)
            + array("std::string_view", f"reads_{at}", map(quoted, operation.reads) if operation.reads else [])
            + array("std::string_view", f"writes_{at}", map(quoted, operation.writes) if operation.writes else [])
            + array("Error", f"errors_{at}", errors))


def operation_row(operation, at):
    named = lambda items, name: f"{name}_{at}" if items else "{}"
    values = [quoted(short_name(operation.name)), quoted(operation.name), quoted(operation.header),
              quoted(operation.brief), quoted(operation.text), named(operation.parameters, "parameters"),
              named(operation.reads, "reads"), named(operation.writes, "writes"), named(operation.errors, "errors"),
              quoted(operation.result)]
    return f"{{{', '.join(values)}}}"


def field_row(field):
    texts = [quoted(field.name), quoted(field.text)] + [quoted(field.tags.get(t, "")) for t in ("unit", "words", "range")]
    flags = ["true" if tag in field.tags else "false" for tag in ("required", "readonly", "secret", "sql")]
    return f"{{{', '.join(texts + flags)}}}"


def record_row(record, at):
    return f"{{{quoted(record.name)}, {quoted(record.header)}, {quoted(record.text)}, fields_{at}}}"


def table(operations, records):
    secrets = sorted((record.name, field.name) for record in records for field in record.fields if "secret" in field.tags)
    out = [PREAMBLE]
    out += [operation_arrays(operation, at) for at, operation in enumerate(operations)]
    out += [array("Field", f"fields_{at}", map(field_row, record.fields)) for at, record in enumerate(records)]
    out.append(array("Operation", "all_operations", [operation_row(o, at) for at, o in enumerate(operations)]))
    out.append(array("Record", "all_records", [record_row(r, at) for at, r in enumerate(records)]))
    out.append(array("Secret", "all_secrets", [f"{{{quoted(r)}, {quoted(f)}}}" for r, f in secrets]))
    out.append("\n} // namespace\n\n")
    for kind, name in (("Operation", "operations"), ("Record", "records"), ("Secret", "secrets")):
        out.append(f"std::span<const {kind}> {name}()\n{{\n    return all_{name};\n}}\n\n")
    out.append("} // namespace qbobj::texts\n")
    return "".join(out)


def main():
    operations, records, problems = read_headers(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
    if problems:
        print("\n".join(problems), file=sys.stderr)
        sys.exit(1)
    if len(sys.argv) > 3:
        pathlib.Path(sys.argv[3]).write_text(table(operations, records))


if __name__ == "__main__":
    main()
