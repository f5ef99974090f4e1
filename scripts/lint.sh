#!/usr/bin/env bash
# Runs clang-tidy over the library, the platform, the tool and the bridge; any finding fails.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
[ -f build/release/compile_commands.json ] || build release
git ls-files --cached --others --exclude-standard 'src/*.cpp' 'platform/*.cpp' 'tools/*.cpp' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build/release --quiet 2> >(grep -v 'warnings generated' >&2 || true)
echo "clang-tidy: clean"
