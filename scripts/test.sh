#!/usr/bin/env bash
# Builds everything, runs the whole suite, runs it again under AddressSanitizer and UndefinedBehaviorSanitizer, and
# checks the formatting and the lint rules.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

scripts/format.sh --check

build release
ctest --preset release -j "$(nproc)"

build asan
ctest --preset asan -j "$(nproc)"

scripts/lint.sh
