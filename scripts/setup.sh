#!/usr/bin/env bash
# Installs what a Debian (12 or later) or Ubuntu (24.04 or later) machine lacks to build, test and check the project. Asks
# for nothing; does nothing when all is there. Needs root (or sudo) only when something has to be installed.
set -euo pipefail

packages=(
    g++ cmake ninja-build pkgconf ccache git
    libapr1-dev libsqlite3-dev libxml2-dev libacl1-dev libcrypt-dev
    libcli11-dev nlohmann-json3-dev libgtest-dev libbenchmark-dev
    clang clang-format clang-tidy libclang-rt-dev sqlite3 python3 jq
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -q
"${as_root[@]}" apt-get install -q -y --no-install-recommends "${missing[@]}"
