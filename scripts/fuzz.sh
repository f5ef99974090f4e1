#!/bin/sh
# Fuzzes the readers of outside text, each for a bounded time: scripts/fuzz.sh [seconds, default 20]
# A finding ends the run with a failure; its input is left in build/fuzz/findings.
set -eu

seconds=${1:-20}
case $seconds in
'' | *[!0-9]* | 0)
    echo "usage: $0 [seconds per target]" >&2
    exit 2
    ;;
esac

cd "$(dirname "$0")/.."
build=build/fuzz
sanitizers=address,undefined
mkdir -p "$build/objects" "$build/findings"

# The platform library is instrumented too: it splits the lists.
cmake -S . -B "$build/platform" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link,$sanitizers -fno-sanitize-recover=all" \
    -DQBOBJ_BUILD_TESTS=OFF -DQBOBJ_BUILD_BENCH=OFF -DQBOBJ_BUILD_TOOL=OFF >/dev/null
cmake --build "$build/platform" --target qbdb >"$build/platform.log" || {
    cat "$build/platform.log" >&2
    exit 1
}
lib=$PWD/$build/platform/lib

compile="clang++ -std=c++20 -D_GNU_SOURCE -g -O1 -fno-sanitize-recover=all
    -Iinclude -Isrc -Iplatform/include -Itests $(pkg-config --cflags apr-1 sqlite3)"
objects=
for source in src/validate/qbobj_validate_name.cpp src/validate/qbobj_validate_address.cpp \
    src/validate/qbobj_validate_email.cpp src/frame/env.cpp src/frame/constants.cpp; do
    object=$build/objects/$(basename "$source" .cpp).o
    $compile -fsanitize=fuzzer-no-link,$sanitizers -c "$source" -o "$object"
    objects="$objects $object"
done

for source in tests/fuzz/fuzz_*.cpp; do
    name=$(basename "$source" .cpp)
    corpus=$build/corpus/$name
    mkdir -p "$corpus"
    # shellcheck disable=SC2086 # the objects are separate words
    $compile -fsanitize=fuzzer,$sanitizers "$source" $objects -o "$build/$name" \
        -L"$lib" -Wl,-rpath,"$lib" -lqbdb -lapr-1
    echo "$name: $seconds s"
    "$build/$name" -max_total_time="$seconds" -max_len=400 -timeout=5 -verbosity=0 -print_final_stats=1 \
        -dict=tests/fuzz/address.dict -artifact_prefix="$build/findings/$name-" "$corpus" \
        >"$build/$name.log" 2>&1 || {
        cat "$build/$name.log" >&2
        echo "$name: FINDING, see $build/findings" >&2
        exit 1
    }
    grep number_of_executed_units "$build/$name.log"
done
echo "no findings"
