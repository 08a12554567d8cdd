#!/usr/bin/env bash
# Sets up the machine, then builds and runs every test: first a normal build,
# then the same tests under AddressSanitizer and UndefinedBehaviorSanitizer.
# Usage: scripts/test.sh [--no-sanitize]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
sanitize=1
for a in "$@"; do
  case "$a" in
    --no-sanitize) sanitize=0 ;;
    -h|--help) sed -n '2,4p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    *) echo "test.sh: unknown option $a" >&2; exit 2 ;;
  esac
done

"$root/scripts/setup.sh"

jobs=$(nproc)
echo "== build (RelWithDebInfo)"
"$root/scripts/build.sh" "$root/build" -DZAR_WERROR=ON
echo "== tests"
ctest --test-dir "$root/build" --output-on-failure -j "$jobs"

if [ "$sanitize" -eq 1 ]; then
  echo "== build (AddressSanitizer + UndefinedBehaviorSanitizer)"
  "$root/scripts/build.sh" "$root/build-asan" -DZAR_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug
  echo "== tests under sanitizers"
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir "$root/build-asan" --output-on-failure -j "$jobs"
fi
