#!/usr/bin/env bash
# The tree's code style (.clang-format) and static checks (.clang-tidy).
#
# Usage: scripts/format.sh [--check] [--tidy BUILD_DIR] [FILE...]
#   (no option)   formats the files in place (default: every C and C++ file
#                 under the source folders)
#   --check       changes nothing; lists the files that are not formatted
#                 and exits 1 when there is one
#   --tidy DIR    runs clang-tidy on the files with DIR's compile_commands.json
#                 (configure with -DCMAKE_EXPORT_COMPILE_COMMANDS=ON); exits 1
#                 on a finding
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
check=0
tidy=""
files=()
usage() { sed -n '2,12p' "$0" | sed 's/^# \{0,1\}//'; }
while [ $# -gt 0 ]; do
  case "$1" in
    --check) check=1; shift ;;
    --tidy) [ $# -ge 2 ] || { echo "format.sh: --tidy needs a build folder" >&2; exit 2; }
            tidy=$2; shift 2 ;;
    -h|--help) usage; exit 0 ;;
    -*) echo "format.sh: unknown option $1 (see --help)" >&2; exit 2 ;;
    *) files+=("$1"); shift ;;
  esac
done
command -v clang-format >/dev/null || { echo "format.sh: clang-format is missing (scripts/setup.sh)" >&2; exit 2; }
cd "$root"
if [ ${#files[@]} -eq 0 ]; then
  mapfile -t files < <(git ls-files -- 'ArrayApi/*' 'ArraySim/*' 'Providers/*' 'Server/*' \
    'framework/*' 'bench/*' 'fuzz/*.cpp' 'fuzz/*.h' | grep -E '\.(c|cc|cpp|h|hpp)$')
else
  # Only C and C++ files: clang-format would rewrite a CMakeLists.txt as code.
  given=("${files[@]}")
  files=()
  for f in "${given[@]}"; do
    case "$f" in
      *.c|*.cc|*.cpp|*.h|*.hpp) files+=("$f") ;;
      *) echo "format.sh: $f passed over (not C or C++)" >&2 ;;
    esac
  done
  [ ${#files[@]} -gt 0 ] || { echo "format.sh: no C or C++ file given"; exit 0; }
fi

if [ -n "$tidy" ]; then
  [ -f "$tidy/compile_commands.json" ] ||
    { echo "format.sh: $tidy/compile_commands.json is missing" >&2; exit 2; }
  sources=()
  for f in "${files[@]}"; do case "$f" in *.cpp|*.cc|*.c) sources+=("$f") ;; esac; done
  clang-tidy -p "$tidy" --quiet "${sources[@]}"
  exit $?
fi

if [ "$check" -eq 1 ]; then
  bad=()
  for f in "${files[@]}"; do
    clang-format --style=file "$f" | cmp -s - "$f" || bad+=("$f")
  done
  if [ ${#bad[@]} -gt 0 ]; then
    echo "format.sh: ${#bad[@]} file(s) do not follow .clang-format (scripts/format.sh FILE fixes them):"
    printf '  %s\n' "${bad[@]}"
    exit 1
  fi
  echo "format.sh: ${#files[@]} files follow .clang-format"
  exit 0
fi
clang-format --style=file -i "${files[@]}"
echo "format.sh: formatted ${#files[@]} files"
