#!/usr/bin/env bash
# Configures and builds into build/<type>. Usage: scripts/build.sh [Release|Debug]
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
type="${1:-Release}"
dir="$root/build/${type,,}"
extra=()
[ "${CI:-}" = "true" ] && extra+=(-DPAGEWRIGHT_WERROR=ON)
cmake -S "$root" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE="$type" "${extra[@]}" >/dev/null
cmake --build "$dir" -- -j"$(nproc)"
