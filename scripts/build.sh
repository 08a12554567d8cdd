#!/usr/bin/env bash
# Configures and builds one tree. Usage: scripts/build.sh [BUILD_DIR] [extra cmake args...]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=${1:-$root/build}
shift || true
cmake -S "$root" -B "$dir" "$@" >/dev/null
cmake --build "$dir" -j "$(nproc)"
