#!/usr/bin/env bash
# Sets up the machine, checks the code style, builds and runs every test:
# a normal build, then the same tests under AddressSanitizer and
# UndefinedBehaviorSanitizer, then the fuzz targets (clang, libFuzzer), each
# run 30 s on its corpus.
# Usage: scripts/test.sh [--no-sanitize] [--no-fuzz]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
sanitize=1
fuzz=1
for a in "$@"; do
  case "$a" in
    --no-sanitize) sanitize=0 ;;
    --no-fuzz) fuzz=0 ;;
    -h|--help) sed -n '2,6p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    *) echo "test.sh: unknown option $a" >&2; exit 2 ;;
  esac
done

"$root/scripts/setup.sh"

echo "== code style"
"$root/scripts/format.sh" --check

# Rebuilds share compiled objects through ccache.
launcher=()
if command -v ccache >/dev/null; then
  export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$root}"
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

jobs=$(nproc)
echo "== build (RelWithDebInfo)"
"$root/scripts/build.sh" "$root/build" -DZAR_WERROR=ON "${launcher[@]}"
echo "== tests"
ctest --test-dir "$root/build" --output-on-failure -j "$jobs"

if [ "$sanitize" -eq 1 ]; then
  echo "== build (AddressSanitizer + UndefinedBehaviorSanitizer)"
  "$root/scripts/build.sh" "$root/build-asan" -DZAR_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug "${launcher[@]}"
  echo "== tests under sanitizers"
  ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
    LSAN_OPTIONS="suppressions=$root/scripts/lsan.supp" \
    ctest --test-dir "$root/build-asan" --output-on-failure -j "$jobs"
fi

if [ "$fuzz" -eq 1 ]; then
  echo "== build (fuzz targets: clang, libFuzzer, AddressSanitizer + UndefinedBehaviorSanitizer)"
  cmake -S "$root" -B "$root/build-fuzz-ci" -DZAR_FUZZ=ON -DCMAKE_C_COMPILER=clang \
    -DCMAKE_CXX_COMPILER=clang++ "${launcher[@]}" >/dev/null
  cmake --build "$root/build-fuzz-ci" -j "$jobs" --target fuzzers
  echo "== fuzzing (30 s per target)"
  "$root/fuzz/run.sh" --build-dir "$root/build-fuzz-ci" --seconds 30
fi
