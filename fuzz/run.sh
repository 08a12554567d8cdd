#!/usr/bin/env bash
# Runs the fuzz targets, each for a while on its seed corpus and dictionary,
# at low priority (nice 10), one after the other.
#
# Usage: fuzz/run.sh [--build-dir DIR] [--seconds N] [--runs N] [--work DIR] [TARGET...]
#   --build-dir DIR  the build with -DZAR_FUZZ=ON (default: build-fuzz)
#   --seconds N      run each target N seconds (default 30)
#   --runs N         stop a target earlier, after N executions
#   --work DIR       keep the inputs each run adds in DIR/<target>/ and reuse
#                    them next time (default: a temporary folder, removed)
#   TARGET...        target names, e.g. http_request (default: all of them)
#
# Prints one line per target (runs, edges covered, outcome). Exits non-zero
# when any target found a crash, a leak or a time-out; the input that caused
# it is saved as DIR/artifacts/<target>-crash-<sha1> (or leak-, timeout-,
# oom-) and its report in DIR/<target>.log.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/.." && pwd)
build="$root/build-fuzz"
seconds=30
max_runs=""
work=""
targets=()

usage() { sed -n '2,16p' "$0" | sed 's/^# \{0,1\}//'; }
die() { echo "fuzz/run.sh: $*" >&2; exit 2; }

while [ $# -gt 0 ]; do
  case "$1" in
    --build-dir) [ $# -ge 2 ] || die "--build-dir needs a folder"; build=$2; shift 2 ;;
    --seconds) [ $# -ge 2 ] || die "--seconds needs a number"; seconds=$2; shift 2 ;;
    --runs) [ $# -ge 2 ] || die "--runs needs a number"; max_runs=$2; shift 2 ;;
    --work) [ $# -ge 2 ] || die "--work needs a folder"; work=$2; shift 2 ;;
    -h|--help) usage; exit 0 ;;
    -*) die "unknown option $1 (see --help)" ;;
    *) targets+=("$1"); shift ;;
  esac
done
case "$seconds" in ''|*[!0-9]*) die "--seconds: not a number: $seconds" ;; esac
case "$max_runs" in *[!0-9]*) die "--runs: not a number: $max_runs" ;; esac

if [ ${#targets[@]} -eq 0 ]; then
  for f in "$here"/corpus/*/; do targets+=("$(basename "$f")"); done
fi

cleanup=""
if [ -z "$work" ]; then
  work=$(mktemp -d "${TMPDIR:-/tmp}/zar-fuzz.XXXXXX")
  cleanup=$work
fi
trap '[ -z "$cleanup" ] || rm -rf "$cleanup"' EXIT
mkdir -p "$work/artifacts"

failed=()
for t in "${targets[@]}"; do
  bin="$build/bin/fuzz_$t"
  [ -x "$bin" ] || die "$bin is missing: build with -DZAR_FUZZ=ON (see fuzz/README.md)"
  [ -d "$here/corpus/$t" ] || die "no seed corpus fuzz/corpus/$t"
  mkdir -p "$work/$t"
  opts=()
  [ -z "$max_runs" ] || opts+=(-runs="$max_runs")
  [ -f "$here/dict/$t.dict" ] && opts+=(-dict="$here/dict/$t.dict")
  log="$work/$t.log"
  # New inputs go to the work folder; the seed corpus in the tree is only read.
  set +e
  LSAN_OPTIONS="suppressions=$here/../scripts/lsan.supp${LSAN_OPTIONS:+:$LSAN_OPTIONS}" \
    nice -n 10 "$bin" "${opts[@]}" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
      -print_final_stats=1 -artifact_prefix="$work/artifacts/$t-" \
      "$work/$t" "$here/corpus/$t" > "$log" 2>&1
  rc=$?
  set -e
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | cut -d' ' -f2)
  if [ "$rc" -eq 0 ]; then
    echo "fuzz $t: ${runs:-?} runs, ${cov:-?} edges, no finding"
  else
    echo "fuzz $t: FAILED (exit $rc) after ${runs:-?} runs; report: $log"
    grep -E '^(==[0-9]+==ERROR|SUMMARY|fuzz check failed|artifact_prefix|Test unit written)' "$log" \
      | head -8 | sed 's/^/    /'
    failed+=("$t")
    # Keep the evidence when the work folder would be removed.
    if [ -n "$cleanup" ]; then cleanup=""; echo "    (work folder kept: $work)"; fi
  fi
done

if [ ${#failed[@]} -gt 0 ]; then
  echo "fuzz: findings in ${failed[*]}" >&2
  exit 1
fi
