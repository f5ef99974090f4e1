#!/usr/bin/env bash
# Reads from installed objects that they are hardened: relocations read only and bound at the start, a guarded stack,
# checked copies, and programs that can stand anywhere. usage: check_hardened.sh PREFIX
set -euo pipefail

requires() { # OBJECT PATTERN READELF_OPTION...
    readelf -W "${@:3}" "$1" | grep -e "$2" >/dev/null || { echo "$1: no $2"; exit 1; }
}
for object in $(find "$1" -name 'libqb*.so' -o -name qbctl -type f); do
    requires "$object" GNU_RELRO -l
    requires "$object" BIND_NOW -d
    requires "$object" ' __stack_chk_fail' --dyn-syms
    requires "$object" '_chk@' --dyn-syms
done
requires "$1/bin/qbctl" PIE -d
