#!/usr/bin/env bash
# Configures and builds one tree. Usage: scripts/build.sh [BUILD_DIR] [extra cmake args...]
# Uses ccache when it is installed (cache shared by every build tree of this checkout).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-$root/build}
shift || true
launcher=()
if command -v ccache >/dev/null 2>&1; then
  export CCACHE_BASEDIR="$root"
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S "$root" -B "$dir" "${launcher[@]}" "$@" >/dev/null
cmake --build "$dir" -j "$(nproc)"
