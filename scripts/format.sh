#!/usr/bin/env bash
# Formats every C and C++ file of the tree; with --check only says which differ, and fails when any does.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mode=(-i)
[ "${1:-}" != --check ] || mode=(--dry-run --Werror)
git ls-files --cached --others --exclude-standard '*.c' '*.cpp' '*.h' | xargs clang-format "${mode[@]}"
