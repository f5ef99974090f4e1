#!/usr/bin/env python3
"""Checks schema/ against the library: what the schema must refuse and let pass (rules.sql), and every statement.

The statements are those that stand whole in the sources, and those that the sweep over all operations ran. Each must
prepare, and none may scan a table that grows, save those of scans.txt, which gives the reason. Usage:
check_schema.py SOURCE_FOLDER SWEEP_PROGRAM
"""
import os
import re
import sqlite3
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
LITERALS = re.compile(r'(?:R"(\w*)\((?P<raw>.*?)\)\1"|"(?P<plain>(?:[^"\\\n]|\\.)*)")', re.S)
STATEMENT = re.compile(r'\s*(WITH|SELECT|INSERT|UPDATE|DELETE|REPLACE)\b')
VALUES = {'%%': '%', '%Q': "'1'", '%q': 'x'}


def new_database(root):
    db = sqlite3.connect(':memory:', isolation_level=None)
    for name in sorted(os.listdir(os.path.join(root, 'schema'))):
        with open(os.path.join(root, 'schema', name), encoding='utf-8') as file:
            db.executescript(file.read())
    db.execute('PRAGMA foreign_keys=ON')
    return db


def rules(db):
    """Runs the lines of rules.sql in order and compares each outcome with its mark."""
    for number, line in enumerate(open(os.path.join(HERE, 'rules.sql'), encoding='utf-8'), 1):
        mark = re.match(r'/\*(refused|accepted|true)\*/', line)
        if not mark:
            if line.strip() and not line.startswith('--'):
                yield f'rules.sql:{number}: no mark'
            continue
        try:
            row = db.execute(line).fetchone()
            outcome = 'true' if mark[1] == 'true' and row == (1,) else 'accepted'
        except sqlite3.Error as error:
            outcome = 'refused' if isinstance(error, sqlite3.IntegrityError) else str(error)
        if outcome != mark[1]:
            yield f'rules.sql:{number}: {outcome}'


def source_statements(root):
    """Statements that are one literal, with values in the place of their conversions; those in pieces are left to the sweep."""
    for folder, _, names in os.walk(os.path.join(root, 'src')):
        for name in sorted(names):
            if not name.endswith(('.cpp', '.h')):
                continue
            text = re.sub(r'^\s*//.*', '', open(os.path.join(folder, name), encoding='utf-8').read(), flags=re.M)
            position = 0
            while match := LITERALS.search(text, position):
                start, pieces = match.start(), []
                while match and not text[position if pieces else start:match.start()].strip():
                    pieces.append(match['raw'] if match['raw'] is not None else
                                  re.sub(r'\\(.)', lambda e: {'n': '\n', 't': '\t'}.get(e[1], e[1]), match['plain']))
                    position = match.end()
                    match = LITERALS.search(text, position)
                sql = ''.join(pieces)
                if STATEMENT.match(sql) and not re.search(r'%[sw]|^SELECT(?!.*\bFROM\b)|(?:FROM|SELECT|\()\s*$', sql, re.S):
                    sql = re.sub(r'%(?:%|Q|q|l*[du])', lambda c: VALUES.get(c[0], '1'), sql)
                    yield f'{name}:{text.count(chr(10), 0, start) + 1}', sql


def swept_statements(program):
    """What the calls of all operations ran, with their parameters."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, 'statements')
        subprocess.run([program, '--gtest_filter=*EachScenario*', '--gtest_brief=1'], check=True,
                       stdout=subprocess.DEVNULL, env={**os.environ, 'QBOBJ_STATEMENTS': path})
        statements = set(open(path, encoding='utf-8').read().split('\0'))
    return [('sweep', sql) for sql in sorted(statements) if STATEMENT.match(sql)]


def listed(name):
    """The lines "fragment | reason" of a list."""
    with open(os.path.join(HERE, name), encoding='utf-8') as file:
        return [line.rsplit(' | ', 1)[0].strip() for line in file if ' | ' in line and line[0] != '#']


def table_of(sql, alias):
    alias = alias.removeprefix('temp.').removeprefix('main.')
    named = re.search(r'[\s,(][`\'"]?([$\w]+)[`\'"]?\s+(?:AS\s+)?' + re.escape(alias) + r'\b(?!\s*\.)', sql)
    return named[1] if named and named[1].upper() not in ('FROM', 'JOIN', 'UPDATE', 'INTO', 'SELECT', 'RECURSIVE') else alias


def plan_of(db, sql):
    """The steps of a statement's plan; the temporary copies of tables that an operation makes are made first."""
    for copy in re.findall(r'[`\'" ]((?:_old_|x_modify_|_)([$a-z]\w+))[`\'" ]', sql):
        if db.execute('SELECT COUNT(*),(SELECT COUNT(*) FROM sqlite_schema WHERE name=?) FROM sqlite_schema WHERE name=?',
                      copy).fetchone() == (1, 0):
            db.execute(f'CREATE TEMP TABLE IF NOT EXISTS "{copy[0]}" AS SELECT * FROM "{copy[1]}"')
    parameters = re.sub(r"'[^']*'", '', sql).count('?')
    return [row[3] for row in db.execute('EXPLAIN QUERY PLAN ' + sql, ['1'] * parameters)]


def plans(db, statements, fixed):
    """Prepares every statement and reads its plan. `fixed` are the tables that hold a bounded number of rows."""
    invalid, scans = listed('invalid.txt'), listed('scans.txt')
    used = set()
    for place, sql in statements:
        flat = ' '.join(sql.split())
        refused = next((fragment for fragment in invalid if fragment in flat), None)
        try:
            steps = plan_of(db, sql)
        except sqlite3.Error as error:
            used.add(refused)
            if not refused:
                yield f'{place}: {error}: {flat}'
            continue
        if refused:
            yield f'{place}: prepares, against invalid.txt: {flat}'
        for step in steps:
            word = step.split()
            if 'AUTOMATIC' in step or (word[0] == 'SCAN' and word[1] not in ('CONSTANT', '(subquery') and
                                       not step.startswith('SCAN SUBQUERY') and table_of(sql, word[1]) not in fixed):
                reason = next((fragment for fragment in scans if fragment in flat), None)
                used.add(reason)
                if not reason:
                    yield f'{place}: {step}: {flat}'
    for entry in set(invalid + scans) - used:
        yield f'no statement needs the entry any more: {entry}'


def main():
    root, program = sys.argv[1:3]
    problems = list(rules(new_database(root)))
    db = new_database(root)
    fixed = {row[0] for row in db.execute("SELECT name FROM sqlite_schema WHERE sql LIKE '%CHECK (id = 1)%'")}
    fixed |= set(listed('bounded.txt')) | {''}
    statements = list(source_statements(root)) + swept_statements(program)
    problems += plans(db, statements, fixed)
    if db.execute('PRAGMA integrity_check').fetchone() != ('ok',):
        problems.append('integrity check')
    if len(statements) < 300:
        problems.append(f'only {len(statements)} statements were found')
    print('\n'.join(sorted(set(problems))))
    print(f'{len(statements)} statements, {len(problems)} problems')
    return 1 if problems else 0


sys.exit(main())
