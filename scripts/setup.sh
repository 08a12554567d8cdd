#!/usr/bin/env bash
# Installs the Debian packages that the build, the tests and the demo need.
# Idempotent: runs apt-get update (once) and install only when something is missing.
set -euo pipefail

packages=(
  build-essential cmake pkg-config
  libsqlite3-dev sqlite3
  libexpat1-dev
  libssl-dev openssl
  libgtest-dev libgmock-dev libbenchmark-dev
  sblim-wbemcli
  curl procps
  # Fuzz targets (fuzz/): clang with libFuzzer and the sanitizer runtimes,
  # llvm-symbolizer for readable reports, ccache for the CI's rebuilds.
  clang libclang-rt-14-dev llvm-14 ccache
  # The code style and static checks (.clang-format, .clang-tidy).
  clang-format clang-tidy
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "setup: all packages present"
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
