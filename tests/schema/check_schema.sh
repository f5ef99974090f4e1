#!/bin/bash
# Checks schema/ against the statements of the library: each prepares, those on growing tables use an index, and the constraints refuse
# what they must. Prints each failure and the counts; exits 1 on any failure.
set -u -o pipefail
export LC_ALL=C
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
db=$work/schema.db
passed=0
failed=0

pass() { passed=$((passed + $1)); }
fail() {
    failed=$((failed + 1))
    echo "FAIL $*"
}

# Runs SQL from standard input on the database; errors name the line of the input.
run() { sqlite3 -init /dev/null "$db"; }

# The line numbers of a file's statements that match a pattern, in the file's order.
lines() { grep -nE "$2" "$1" | cut -d: -f1; }

statement='^(/\*[a-z]+\*/)?[A-Z]'

# prepares FILE EXPECT: prepares every statement; EXPECT is "yes" or "no". Comments stay as empty lines, so that numbers agree.
prepares() {
    local file=$1 expect=$2 line
    sed -E 's/^--.*//; /^$/!{/^\/\*setup\*\//!s/^/EXPLAIN /;s/$/;/}' "$file" | run >/dev/null 2>"$work/errors"
    for line in $(lines "$file" "$statement"); do
        local error
        error=$(grep -m1 -E "near line $line:" "$work/errors")
        if sed -n "${line}p" "$file" | grep -q ';'; then
            fail "$(basename "$file"):$line: more than one statement"
        elif [ "$expect" = yes ] && [ -n "$error" ]; then
            fail "$(basename "$file"):$line: $error"
        elif [ "$expect" = no ] && [ -z "$error" ]; then
            fail "$(basename "$file"):$line: prepares"
        else
            pass 1
        fi
    done
}

# indexed FILE: no plan of a marked statement scans a table, save tables of one row, or builds an index of its own.
indexed() {
    local file=$1 single
    single=$(echo "SELECT group_concat(name,'|') FROM sqlite_master WHERE sql LIKE '%CHECK (id = 1)%';" | run)
    awk '/^\/\*setup\*\// { print $0 ";" } /^\/\*indexed\*\// { print ".print @" NR; print "EXPLAIN QUERY PLAN " $0 ";" }' "$file" |
        run >"$work/plans" 2>&1
    awk -v single="^($single)\$" '
        /^@/ { line = substr($0, 2); next }
        { step = $0; sub(/^[ |`-]*/, "", step); split(step, word, " ") }
        step == "SCAN CONSTANT ROW" { next }
        word[1] == "SCAN" && word[2] !~ single || step ~ /AUTOMATIC/ || step ~ /rror near line/ { print line ": " step }
    ' "$work/plans" >"$work/scans"
    while read -r scan; do fail "$(basename "$file"):$scan"; done <"$work/scans"
    pass $(($(lines "$file" '^/\*indexed\*/' | wc -l) - $(cut -d: -f1 "$work/scans" | sort -u | wc -l)))
}

# rules FILE: runs the statements and compares each outcome with its mark.
rules() {
    local file=$1 line
    sed -E 's/^--.*//; /^$/!s/$/;/' "$file" |
        awk '{ mark = "" } /^\/\*true\*\// { mark = ".print @" NR } { print mark; print $0 }' |
        sed '1i PRAGMA foreign_keys=ON;' | run >"$work/values" 2>"$work/errors"
    for line in $(lines "$file" "$statement"); do
        local error text
        error=$(grep -m1 -E "near line $((2 * line + 1)):" "$work/errors")
        text="$(basename "$file"):$line"
        case $(sed -n "${line}p" "$file") in
        '/*refused*/'*) [[ $error == *"constraint failed"* ]] && pass 1 || fail "$text: not refused by a constraint. $error" ;;
        '/*accepted*/'*) [ -z "$error" ] && pass 1 || fail "$text: $error" ;;
        '/*true*/'*)
            [ -z "$error" ] && [ "$(grep -A1 -x "@$line" "$work/values" | tail -1)" = 1 ] && pass 1 ||
                fail "$text: not true. $error"
            ;;
        *) fail "$text: no mark" ;;
        esac
    done
}

for file in "$root"/schema/*.sql; do
    # Each file becomes one raw string literal of the platform library.
    [ "$(wc -c <"$file")" -lt 15000 ] && pass 1 || fail "$(basename "$file"): longer than a string literal may be"
    if sqlite3 -init /dev/null -bail "$db" <"$file" 2>"$work/errors"; then pass 1; else fail "$(basename "$file"): $(cat "$work/errors")"; fi
done

prepares "$here/statements.sql" yes
prepares "$here/statements_invalid.sql" no
indexed "$here/statements.sql"
rules "$here/rules.sql"

[ "$(echo 'PRAGMA integrity_check;' | run)" = ok ] && pass 1 || fail "integrity check"
[ -z "$(echo 'PRAGMA foreign_key_check;' | run)" ] && pass 1 || fail "foreign key check"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
