#!/usr/bin/env bash
# Builds everything, runs the whole suite, runs it again under AddressSanitizer and UndefinedBehaviorSanitizer, runs the
# threads under ThreadSanitizer, and checks the formatting and the lint rules.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

scripts/format.sh --check

build release
ctest --preset release -j "$(nproc)"

build asan
ctest --preset asan -j "$(nproc)"

build tsan test_torture
build/tsan/bin/test_torture --gtest_filter='*Thread*'

scripts/lint.sh
