#!/usr/bin/env bash
# Tries faults of every kind for as long as one likes: scripts/torture.sh [minutes], 20 when none are given. Prints how
# often each kind was tried, how many of its tests failed, and what repeats a failure; fails when one did.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

minutes=${1:-20}
mkdir -p build
build release test_torture test_sweep >build/torture.log 2>&1 || {
    cat build/torture.log >&2
    exit 1
}
export QBOBJ_TRIALS=$PWD/build/trials.tsv
: >"$QBOBJ_TRIALS"

# The random kinds share the time, one after another; beside them the sweeps, whose cases have a slash in their names,
# visit every place of a fault and end by themselves.
tests=$(build/release/bin/test_torture --gtest_list_tests | grep -c '^  [^/]*$')
export QBOBJ_TORTURE_SECONDS=$((minutes * 60 / tests))
build/release/bin/test_sweep --gtest_filter='*Fault*:*Refused*:*NoMemory*:*Hostile*' >build/torture-sweeps.log 2>&1 &
sweeps=$!
failed=0
build/release/bin/test_torture >build/torture.log 2>&1 || failed=1
wait "$sweeps" || failed=1

awk -F'\t' '{ trials[$1] += $2; failures[$1] += $3; if ($4) repeat[$1] = $4 }
    END { printf "%-28s %10s %9s\n", "fault", "trials", "failures"
          for (kind in trials) printf "%-28s %10d %9d  %s\n", kind, trials[kind], failures[kind], repeat[kind] }' \
    "$QBOBJ_TRIALS" | { read -r head; echo "$head"; sort; }
[ "$failed" -eq 0 ] || echo "What failed stands in build/torture.log and build/torture-sweeps.log." >&2
exit "$failed"
