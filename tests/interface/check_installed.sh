#!/usr/bin/env bash
# Installs into a temporary folder and builds the example callers against it: with the CMake package and with pkg-config.
# usage: check_installed.sh BUILD_FOLDER SOURCE_FOLDER
set -euo pipefail
build=$1 source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/prefix" >/dev/null
[ "${HARDENED:-OFF}" = OFF ] || "$(dirname "$0")/check_hardened.sh" "$work/prefix"

cmake -S "$source/examples" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" \
    -DCMAKE_C_FLAGS="${SANITIZE:-}" -DCMAKE_CXX_FLAGS="${SANITIZE:-}" >/dev/null
cmake --build "$work/build" >/dev/null

libdir=$(dirname "$(find "$work/prefix" -name libqbobj.so)")
# Of other packages a caller needs SQLite alone.
mkdir "$work/packages"
cp "$(pkg-config --variable=pcfiledir sqlite3)/sqlite3.pc" "$work/packages"
flags=$(PKG_CONFIG_LIBDIR=$libdir/pkgconfig:$work/packages pkg-config --cflags --libs qbobj)
# shellcheck disable=SC2086
cc -std=c11 -Wall -Wextra -Wpedantic -Werror ${SANITIZE:-} "$source/examples/caller.c" -o "$work/caller" $flags \
    -Wl,-rpath,"$libdir"

[ "$("$work/prefix/bin/qbctl" --version)" = "$(PKG_CONFIG_PATH=$libdir/pkgconfig pkg-config --modversion qbobj)" ]
"$work/prefix/bin/qbctl" init "$work/appliance.db" --volume data
[ "$("$work/build/caller_cpp" "$work/appliance.db" docs data)" = "data/docs at /data/docs, SMB ReadOnly" ]
[ "$("$work/build/caller_c" "$work/appliance.db")" = "$(printf 'docs\t/data/docs\t')" ]
[ "$("$work/caller" "$work/appliance.db")" = "$(printf 'docs\t/data/docs\t')" ]
