#!/usr/bin/env bash
# Builds the release preset and measures it: one line a figure, with its limit and "ok" or "over". Fails when one is
# over. Arguments go to the benchmark, e.g. --benchmark_filter=getShare.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

mkdir -p build
build release qbobj_bench >build/bench.log 2>&1 || {
    cat build/bench.log >&2
    exit 1
}
exec build/release/bin/qbobj_bench "$@"
