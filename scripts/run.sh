#!/usr/bin/env bash
# Runs the CIM server of the array with both provider modules over a
# simulated array, on loopback, in the foreground.
#
#   - builds what it needs (installing Debian packages first when missing);
#   - seeds a demo array into var/array.db when there is none;
#   - creates a CIM user with a generated password, printed once and kept in
#     var/cim-credentials (mode 0600) for later runs;
#   - prints wbemcli commands that list the views and the capabilities;
#   - starts zar-cimserver (log in var/cimserver.log); Ctrl-C stops it.
#
# Usage: scripts/run.sh [--port N] [--user NAME] [--role browse|edit|super]
#                       [--build-dir DIR] [--var-dir DIR] [--log-level N]
#                       [--no-build] [--help]
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
port=5988
user=cimadmin
role=super
build_dir="$root/build"
var_dir="$root/var"
log_level=3
do_build=1

usage() { sed -n '2,14p' "$0" | sed 's/^# \{0,1\}//'; }
die() { echo "run.sh: $*" >&2; exit 1; }

while [ $# -gt 0 ]; do
  case "$1" in
    --port|--http-port) [ $# -ge 2 ] || die "$1 needs a number"; port=$2; shift 2 ;;
    --port=*|--http-port=*) port=${1#*=}; shift ;;
    --user) [ $# -ge 2 ] || die "--user needs a name"; user=$2; shift 2 ;;
    --role) [ $# -ge 2 ] || die "--role needs browse, edit or super"; role=$2; shift 2 ;;
    --build-dir) [ $# -ge 2 ] || die "--build-dir needs a folder"; build_dir=$2; shift 2 ;;
    --var-dir) [ $# -ge 2 ] || die "--var-dir needs a folder"; var_dir=$2; shift 2 ;;
    --log-level) [ $# -ge 2 ] || die "--log-level needs a number"; log_level=$2; shift 2 ;;
    --no-build) do_build=0; shift ;;
    -h|--help) usage; exit 0 ;;
    *) die "unknown option $1 (see --help)" ;;
  esac
done

case "$port" in ''|*[!0-9]*) die "--port: not a number: $port" ;; esac
[ "$port" -ge 1 ] && [ "$port" -le 65535 ] || die "--port: out of range: $port"
case "$role" in browse|edit|super) ;; *) die "--role: browse, edit or super, not $role" ;; esac
case "$user" in ''|*[!A-Za-z0-9_-]*) die "--user: letters, digits, '_' and '-' only" ;; esac
case "$log_level" in [1-4]) ;; *) die "--log-level: 1 to 4, not $log_level" ;; esac

build_dir=$(mkdir -p "$build_dir" && cd "$build_dir" && pwd)
mkdir -p "$var_dir"
var_dir=$(cd "$var_dir" && pwd)
chmod 700 "$var_dir"

server="$build_dir/bin/zar-cimserver"
zarcli="$build_dir/bin/zarcli"
db="$var_dir/array.db"
credentials="$var_dir/cim-credentials"

# --- Build -------------------------------------------------------------------
if [ "$do_build" -eq 1 ]; then
  "$root/scripts/setup.sh"
  if [ ! -f "$build_dir/CMakeCache.txt" ]; then
    echo "run.sh: configuring $build_dir"
    cmake -S "$root" -B "$build_dir" >/dev/null
  fi
  echo "run.sh: building the server, zarcli and the provider modules"
  cmake --build "$build_dir" -j "$(nproc)" --target \
    zar-cimserver zarcli ZAR_ArrayProvider ZAR_SCSIControllerProvider
fi
[ -x "$server" ] || die "$server is missing: run without --no-build"
[ -x "$zarcli" ] || die "$zarcli is missing: run without --no-build"
for module in ZAR_ArrayProvider ZAR_SCSIControllerProvider; do
  [ -f "$build_dir/lib/lib$module.so" ] || die "provider module lib$module.so is missing"
done

cli() { "$zarcli" --db "$db" "$@"; }

# --- The array ----------------------------------------------------------------
seeded=0
if [ ! -f "$db" ]; then
  echo "run.sh: seeding a demo array into $db"
  cli seed >/dev/null
  # The demo array is managed through this machine's loopback: clients such as
  # wbemcli put the address they connect to into every reference they pass,
  # and the providers accept only references that name the array's address.
  cli config set ipv4 127.0.0.1 >/dev/null
  seeded=1
fi

# --- The CIM user -------------------------------------------------------------
# var/cim-credentials holds "NAME PASSWORD"; the password is printed only when
# it is made.
user_exists() {
  cli users list | awk -v u="$1" 'NR > 1 && $1 == u { found = 1 } END { exit !found }'
}

new_password=""
if [ -f "$credentials" ]; then
  read -r user password < "$credentials" || die "$credentials is unreadable"
  [ -n "${password:-}" ] || die "$credentials holds no password; remove it to make a new user"
  if ! user_exists "$user"; then
    # A new array (the state file was removed): the same user again.
    printf '%s\n' "$password" | cli users add "$user" --role "$role" >/dev/null
  fi
else
  if user_exists "$user"; then
    die "user $user already exists in $db but $credentials is missing;" \
      "choose another --user, or reset it with: $zarcli --db $db users passwd $user"
  fi
  # Letters and digits only, so that the password can stand in a URL.
  password=$(LC_ALL=C tr -dc 'A-Za-z0-9' < /dev/urandom | head -c 24 || true)
  [ ${#password} -eq 24 ] || die "could not generate a password"
  printf '%s\n' "$password" | cli users add "$user" --role "$role" >/dev/null
  (umask 077 && printf '%s %s\n' "$user" "$password" > "$credentials.tmp")
  mv "$credentials.tmp" "$credentials"
  chmod 600 "$credentials"
  new_password=$password
fi

# --- What to type -------------------------------------------------------------
system_name=$(cli show | awk '$1 == "name" { print $2; exit }')
url="http://$user:\$(cut -d' ' -f2 $credentials)@127.0.0.1:$port"

echo
if [ -n "$new_password" ]; then
  echo "CIM user \"$user\" (role $role) was created with the password:"
  echo
  echo "    $new_password"
  echo
  echo "It is shown only this once; it is kept in $credentials (mode 0600)."
else
  echo "CIM user \"$user\"; its password is in $credentials."
fi
echo
echo "Once the server is listening, in another shell:"
echo
echo "  # the views (SCSI protocol controllers) of the array"
echo "  wbemcli ei \"$url/root/zar:ZAR_SCSIController\""
echo "  # their names only"
echo "  wbemcli ein \"$url/root/zar:ZAR_SCSIController\""
echo "  # the masking capabilities"
echo "  wbemcli ei \"$url/root/zar:ZAR_ProtocolControllerMaskingCapabilities\""
if [ -n "$system_name" ]; then
  echo "  wbemcli gi \"$url/root/zar:ZAR_ProtocolControllerMaskingCapabilities.InstanceID=\\\"KESTREL:$system_name\\\"\""
fi
echo "  # the storage system and its capabilities"
echo "  wbemcli ei \"$url/root/zar:ZAR_StorageSystem\""
echo "  wbemcli ein \"$url/root/zar:ZAR_SystemControllerMaskingCapabilities\""
echo
echo "Log: $var_dir/cimserver.log.  Ctrl-C stops the server."
echo

# --- The server ---------------------------------------------------------------
exec "$server" \
  --listen 127.0.0.1 \
  --http-port "$port" \
  --array-db "$db" \
  --schema-dir "$root/schema" \
  --provider-dir "$build_dir/lib" \
  --socket "$var_dir/cimxml.socket" \
  --log-level "$log_level" \
  --log-file "$var_dir/cimserver.log"
