# What the scripts share: the project's root, its dependencies, and building a preset. To be sourced.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup.sh

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    local launcher=()
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake --preset "$preset" "${launcher[@]}" >/dev/null
    cmake --build --preset "$preset" ${1:+--target "$@"}
}
