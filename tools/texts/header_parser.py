"""Reads the comments of the public headers, by the grammar that CONTRIBUTING.md describes.

Everything that breaks the grammar becomes a problem "FILE:LINE: what", collected in `Problems`, so that one run shows all.
"""
import dataclasses
import re

IMPLIED_PARAMETERS = {"qbdb", "db", "err"}  # explained once, in the umbrella header
DIRECTIONS = {"in": "in", "out": "out", "in,out": "in_out"}
OPERATION_TAGS = ["param", "reads", "writes", "error", "return"]  # in this order
FIELD_TAGS = {"unit": True, "words": True, "range": True, "required": False, "readonly": False, "secret": False,
              "sql": False}
SECRET_NAME = re.compile(r"(password|secret|hash|community|answer)$", re.I)


@dataclasses.dataclass
class Parameter:
    name: str
    direction: str
    text: str


@dataclasses.dataclass
class Operation:
    name: str
    header: str
    brief: str = ""
    text: str = ""
    parameters: list = dataclasses.field(default_factory=list)
    reads: list = dataclasses.field(default_factory=list)
    writes: list = dataclasses.field(default_factory=list)
    errors: list = dataclasses.field(default_factory=list)  # (code, text)
    result: str = ""


@dataclasses.dataclass
class Field:
    name: str
    text: str
    tags: dict


@dataclasses.dataclass
class Record:
    name: str
    header: str
    text: str
    fields: list


class Problems(list):
    """What is wrong, as "FILE:LINE: text"."""

    def at(self, source, position, text):
        self.append(f"{source.path}:{source.line(position)}: {text}")


class Source:
    """A header: `text` without its preprocessor lines, `code` also without comments; positions agree."""

    def __init__(self, path, name):
        self.path, self.name = path, name
        blank = lambda match: re.sub(r"[^\n]", " ", match.group())
        self.text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", blank, path.read_text(), flags=re.M)
        self.code = re.sub(r"/\*.*?\*/", blank, self.text, flags=re.S)

    def line(self, position):
        return self.text.count("\n", 0, position) + 1

    def comment_before(self, position):
        """The lines of the /** */ block that ends directly above, or None."""
        match = re.search(r"/\*\*(?!<)((?:(?!\*/).)*)\*/\s*\Z", self.text[:position], flags=re.S)
        return match and comment_lines(match.group(1))

    def comment_behind(self, position):
        """The lines of the /**< */ that follows, or None."""
        match = re.compile(r"[ \t]*\n?[ \t]*/\*\*<((?:(?!\*/).)*)\*/", flags=re.S).match(self.text, position)
        return match and comment_lines(match.group(1))


def comment_lines(body):
    lines = [re.sub(r"^\s*\* ?", "", line).rstrip() for line in ("*" + body).split("\n")]
    while lines and not lines[0].strip():
        del lines[0]
    while lines and not lines[-1].strip():
        del lines[-1]
    return lines


def joined(lines):
    """Lines as paragraphs: a blank line ends one."""
    paragraphs = re.split(r"\n\s*\n", "\n".join(lines).strip())
    return "\n".join(" ".join(paragraph.split()) for paragraph in paragraphs)


# ---- Operations --------------------------------------------------------------------------------------------


class OperationReader:
    def __init__(self, source, problems, codes, tables):
        self.source, self.problems, self.codes, self.tables = source, problems, codes, tables

    def read(self, match):
        """One exported function; `match` covers "QBOBJ_API type name(parameters);"."""
        self.position = match.start()
        name = re.findall(r"\w+", match.group(1))[-1]
        self.operation = Operation(name, self.source.name)
        lines = self.source.comment_before(self.position)
        if lines is None:
            self.wrong("has no comment")
            return self.operation
        prose, tags = self.split(lines)
        self.read_prose(prose)
        self.read_tags(tags)
        self.check_parameters([re.findall(r"\w+", part)[-1] for part in match.group(2).split(",")])
        return self.operation

    def wrong(self, text):
        self.problems.at(self.source, self.position, f"{self.operation.name}: {text}")

    def split(self, lines):
        """The prose, and (tag, rest) for each tag, its continuation lines joined."""
        first = next((i for i, line in enumerate(lines) if line.startswith("@")), len(lines))
        tags = []
        for line in lines[first:]:
            if line.startswith("@"):
                word = re.match(r"@(\w*)", line).group(1)
                tags.append([word, line[len(word) + 1:]])
            else:
                tags[-1][1] += " " + line.strip()
        return lines[:first], [(word, " ".join(rest.split())) for word, rest in tags]

    def read_prose(self, lines):
        if not lines or not lines[0].endswith((".", "?")) or (len(lines) > 1 and lines[1]):
            self.wrong("the comment begins with one sentence on a line of its own")
        self.operation.brief = lines[0] if lines else ""
        self.operation.text = joined(lines[1:])

    def read_tags(self, tags):
        present = [tag for tag, _ in tags]
        for tag in sorted(set(present) - set(OPERATION_TAGS)):
            self.wrong(f"unknown tag @{tag}")
        for tag in ("reads", "writes", "return"):
            if present.count(tag) > 1:
                self.wrong(f"@{tag} stands twice")
        ranks = [OPERATION_TAGS.index(tag) for tag in present if tag in OPERATION_TAGS]
        if ranks != sorted(ranks):
            self.wrong("the tags stand in the order @param, @reads, @writes, @error, @return")
        for tag, wanted in (("reads", {"reads", "writes"}), ("error", {"error"}), ("return", {"return"})):
            if not wanted & set(present):
                self.wrong(f"no @{' or @'.join(sorted(wanted))}")
        for tag, rest in tags:
            getattr(self, "read_" + tag, lambda rest: None)(rest)

    def read_param(self, rest):
        match = re.fullmatch(r"\[([\w,]*)\] (\w+) (.+)", rest)
        if match is None or match.group(1) not in DIRECTIONS:
            self.wrong(f"@param is followed by '[in|out|in,out] name  text', not by '{rest}'")
            return
        if any(parameter.name == match.group(2) for parameter in self.operation.parameters):
            self.wrong(f"@param {match.group(2)} stands twice")
        self.operation.parameters.append(Parameter(match.group(2), DIRECTIONS[match.group(1)], match.group(3)))

    def read_reads(self, rest):
        self.operation.reads = self.table_list(rest)

    def read_writes(self, rest):
        self.operation.writes = self.table_list(rest)

    def table_list(self, rest):
        if rest == "nothing":
            return []
        names = [name.strip() for name in rest.split(",")]
        for name in names:
            if name not in self.tables:
                self.wrong(f"there is no table '{name}' in the schema")
            if names.count(name) > 1:
                self.wrong(f"table '{name}' stands twice")
        return names

    def read_error(self, rest):
        code, _, text = rest.partition(" ")
        if code == "none" and not self.operation.errors:
            return
        if code not in self.codes:
            self.wrong(f"unknown error code '{code}'")
        elif not text:
            self.wrong(f"@error {code} does not say when")
        elif any(code == other for other, _ in self.operation.errors):
            self.wrong(f"@error {code} stands twice")
        else:
            self.operation.errors.append((code, text))

    def read_return(self, rest):
        if not rest:
            self.wrong("@return says nothing")
        self.operation.result = rest

    def check_parameters(self, declared):
        declared = [name for name in declared if name not in IMPLIED_PARAMETERS and name != "void"]
        documented = [parameter.name for parameter in self.operation.parameters]
        for name in declared:
            if name not in documented:
                self.wrong(f"parameter '{name}' is not documented")
        for name in documented:
            if name not in declared:
                self.wrong(f"there is no parameter '{name}'")
        if sorted(declared) == sorted(documented) and declared != documented:
            self.wrong("the parameters are not documented in their order")


# ---- Records -----------------------------------------------------------------------------------------------


class RecordReader:
    def __init__(self, source, problems):
        self.source, self.problems = source, problems

    def read(self, match):
        """One struct; `match` covers "struct name { members }"."""
        name = re.sub(r"^qbobj_", "", match.group(1))
        lines = self.source.comment_before(match.start())
        if lines is None:
            self.problems.at(self.source, match.start(), f"{name}: has no comment")
        record = Record(name, self.source.name, joined(lines or []), [])
        begin = match.start(2)
        for member in re.finditer(r"([^;]+);", match.group(2)):
            start = begin + member.start() + len(member.group()) - len(member.group().lstrip())
            record.fields.append(self.read_field(name, member.group(1), start, begin + member.end()))
        return record

    def read_field(self, record, declaration, start, end):
        name = re.findall(r"\w+", declaration)[-1]
        wrong = lambda text: self.problems.at(self.source, start, f"{record}.{name}: {text}")
        lines = self.source.comment_behind(end) or self.source.comment_before(start)
        if not lines:
            wrong("has no comment")
            return Field(name, "", {})
        text, *rest = re.split(r"(?:(?<=\s)|^)@(\w+)", joined(lines))
        tags = {}
        for tag, value in zip(rest[::2], (value.strip() for value in rest[1::2])):
            if tag not in FIELD_TAGS:
                wrong(f"unknown tag @{tag}")
            elif tag in tags:
                wrong(f"@{tag} stands twice")
            elif bool(value) != FIELD_TAGS[tag]:
                wrong(f"@{tag} {'has no value' if FIELD_TAGS[tag] else 'takes no value'}")
            tags[tag] = value
        if not text.strip():
            wrong("the comment has no text")
        if "char" in declaration and SECRET_NAME.search(name) and "secret" not in tags:
            wrong("looks like a secret: @secret")
        return Field(name, text.strip().rstrip("."), tags)


# ---- Headers -----------------------------------------------------------------------------------------------


def error_codes(folder):
    """The names of the error codes, wherever the headers list them."""
    text = "\n".join(path.read_text() for path in sorted(folder.rglob("*.h")))
    return set(re.findall(r"\bQBOBJ_ERROR_\w+", re.sub(r"/\*.*?\*/", "", text, flags=re.S)))


def schema_tables(folder):
    text = "\n".join(path.read_text() for path in sorted(folder.glob("*.sql")))
    return set(re.findall(r"CREATE TABLE (?:IF NOT EXISTS )?[`'\"]?([$\w]+)", text))


def read_headers(include, schema):
    """(operations, records, problems) of all headers below `include`."""
    problems, operations, records = Problems(), [], []
    codes, tables = error_codes(include), schema_tables(schema)
    for path in sorted(include.rglob("*.h")):
        source = Source(path, path.relative_to(include).as_posix())
        reader = OperationReader(source, problems, codes, tables)
        for match in re.finditer(r"\bQBOBJ_API\b([^;()]*)\(([^;]*)\)[^;()]*;", source.code):
            operations.append(reader.read(match))
        for match in re.finditer(r"\bQBOBJ_API\b[^;()]*;", source.code):
            if not (source.comment_behind(match.end()) or source.comment_before(match.start())):
                problems.at(source, match.start(), "exported data has no comment")
        for match in re.finditer(r"(?:typedef\s+)?struct\s+(\w+)\s*\{([^}]*)\}", source.code):
            records.append(RecordReader(source, problems).read(match))
    if not operations or not records:
        problems.append(f"{include}: no operations or no records")
    return operations, records, problems
