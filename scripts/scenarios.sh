#!/usr/bin/env bash
# End-to-end wbemcli scenarios against any CIM server that runs the array's
# provider modules (zar-cimserver, OpenPegasus), and a comparison of two
# servers' answers.
#
# Usage:
#   scripts/scenarios.sh [--out DIR] [--zarcli 'CMD'] URL
#       URL is http[s]://USER:PASSWORD@HOST:PORT (no namespace). The array
#       behind the server should be freshly seeded (zarcli seed) with its
#       management address set to HOST; the method scenarios change it.
#       Each scenario's command, exit status and output go to DIR/NNN-name.out
#       (default: a new temporary folder, printed at the end); DIR/summary
#       lists them. --zarcli 'CMD' (e.g. 'build/bin/zarcli --db var/array.db')
#       adds the array's own views and exports, as zarcli shows them, before
#       and after the methods.
#   scripts/scenarios.sh --compare DIR1 DIR2
#       Compares two runs scenario by scenario after masking host and port,
#       sorting the lines of every answer and the properties and keys in each,
#       and reading CIM-XML answers as XML (escaping and order do not count).
#       Prints the scenarios that differ with a diff; exit status 1 if any.
#   scripts/scenarios.sh --help
#
# Scenarios: every class enumerated (names and instances), a get of every
# instance (up to 5 a class; not of associations), each association from both of its ends
# (associators, associator names, references, reference names), the seven
# masking methods in sequence (a new view, a second volume, a hidden volume,
# default LUs shown and hidden, a host's view made and emptied, the view
# deleted) with two refused calls, and the views and exports afterwards.
set -euo pipefail

usage() { sed -n '2,30p' "$0" | sed 's/^# \{0,1\}//'; }
die() { echo "scenarios: $*" >&2; exit 2; }

here=$(cd "$(dirname "$0")" && pwd)
out=""
zarcli_cmd=""
compare=0
args=()
while [ $# -gt 0 ]; do
  case "$1" in
    --out) [ $# -ge 2 ] || die "--out needs a folder"; out=$2; shift 2 ;;
    --zarcli) [ $# -ge 2 ] || die "--zarcli needs a command"; zarcli_cmd=$2; shift 2 ;;
    --compare) compare=1; shift ;;
    -h|--help) usage; exit 0 ;;
    -*) die "unknown option $1 (see --help)" ;;
    *) args+=("$1"); shift ;;
  esac
done
command -v python3 >/dev/null || die "python3 is missing"

# --- Comparison ---------------------------------------------------------------
if [ "$compare" -eq 1 ]; then
  [ ${#args[@]} -eq 2 ] || die "--compare needs two folders (see --help)"
  [ -d "${args[0]}" ] && [ -d "${args[1]}" ] || die "--compare: ${args[0]} or ${args[1]} is not a folder"
  exec python3 "$here/scenarios_compare.py" "${args[0]}" "${args[1]}"
fi

# --- Running ------------------------------------------------------------------
[ ${#args[@]} -eq 1 ] || die "give one server URL (see --help)"
url=${args[0]%/}
case "$url" in http://*@*|https://*@*) ;; *) die "URL must be http[s]://USER:PASSWORD@HOST:PORT" ;; esac
command -v wbemcli >/dev/null || die "wbemcli is missing: install sblim-wbemcli"
if [ -z "$out" ]; then out=$(mktemp -d); fi
mkdir -p "$out"
ls "$out"/*.out >/dev/null 2>&1 && die "$out already holds a run; give an empty --out"
wbem_opts=()
case "$url" in https://*) wbem_opts=(-noverify) ;; esac

ns=root/zar
n=0 failed=0
# scenario NAME ARGS...: runs wbemcli ARGS, keeps the command, status and output.
scenario() {
  local name=$1; shift
  n=$((n + 1))
  local file rc=0
  file=$(printf '%s/%03d-%s.out' "$out" "$n" "$name")
  { printf '$ wbemcli'; printf ' %q' "$@"; echo; } | sed "s|$url|URL|g" > "$file"
  wbemcli "${wbem_opts[@]}" "$@" > "$file.tmp" 2>&1 || rc=$?
  echo "exit $rc" >> "$file"
  cat "$file.tmp" >> "$file"; rm -f "$file.tmp"
  [ "$rc" -eq 0 ] || failed=$((failed + 1))
  printf '%03d %-60s exit %d\n' "$n" "$name" "$rc" >> "$out/summary"
  last="$file"
}
# array NAME: the array's own view of itself through zarcli, when given.
array() {
  [ -n "$zarcli_cmd" ] || return 0
  n=$((n + 1))
  local file
  file=$(printf '%s/%03d-%s.out' "$out" "$n" "$1")
  { echo "\$ zarcli views; zarcli vluns"; $zarcli_cmd views; $zarcli_cmd vluns; } > "$file" 2>&1 || true
  printf '%03d %-60s\n' "$n" "$1" >> "$out/summary"
}
# Paths that wbemcli printed (one a line, host:port/ns:Class.keys), as URLs.
paths_of() { sed -n 's|^[^ /]*/\([^ ]*\).*|\1|p' "$1" | grep -v '^$' || true; }
as_url() { echo "$url/$1"; }
# The DeviceID of the first view a method answer returns.
# (Servers may break the XML into lines anywhere between elements.)
view_in() {
  tr -d '\n' < "$1" |
    sed -n 's|.*INSTANCENAME CLASSNAME="ZAR_SCSIController">.*<KEYBINDING NAME="DeviceID"> *<KEYVALUE VALUETYPE="string">\([^<]*\)</KEYVALUE>.*|\1|p' | head -1
}
name_of() { sed -n 's|.*[ ,]Name="\([^"]*\)".*|\1|p' <<<"$1" | head -1; }

objects="ZAR_StorageSystem ZAR_StorageVolume ZAR_SCSIController ZAR_iSCSIController
ZAR_SCSIProtocolFCEndpoint ZAR_iSCSIProtocolEndpoint ZAR_ControllerConfigurationService
ZAR_ProtocolControllerMaskingCapabilities"
classes="$objects ZAR_SystemControllerMaskingCapabilities
ZAR_ConfigServicesForSCSIController ZAR_ControllerForUnit ZAR_iSCSIControllerForUnit
ZAR_SAPAvailableForElement ZAR_iSCSISAPAvailableForElement ZAR_SystemDevice ZAR_HostedAccessPoint"
# association: its class, then a class at each end.
associations="ZAR_ControllerForUnit ZAR_SCSIController ZAR_StorageVolume
ZAR_iSCSIControllerForUnit ZAR_iSCSIController ZAR_StorageVolume
ZAR_SAPAvailableForElement ZAR_SCSIProtocolFCEndpoint ZAR_SCSIController
ZAR_iSCSISAPAvailableForElement ZAR_iSCSIProtocolEndpoint ZAR_iSCSIController
ZAR_SystemDevice ZAR_StorageSystem ZAR_StorageVolume
ZAR_SystemDevice ZAR_StorageSystem ZAR_SCSIController
ZAR_HostedAccessPoint ZAR_StorageSystem ZAR_SCSIProtocolFCEndpoint
ZAR_HostedAccessPoint ZAR_StorageSystem ZAR_iSCSIProtocolEndpoint
ZAR_ConfigServicesForSCSIController ZAR_ControllerConfigurationService ZAR_SCSIController
ZAR_SystemControllerMaskingCapabilities ZAR_StorageSystem ZAR_ProtocolControllerMaskingCapabilities"

# 1. Every class: names, instances, and a get of each instance (but of the
# associations: wbemcli prints their paths in a form it cannot read back).
declare -A listing
for c in $classes; do
  scenario "ein-$c" ein "$url/$ns:$c"
  listing[$c]=$last
  scenario "ei-$c" ei "$url/$ns:$c"
done
scenario "ei-ZAR_InternalCache" ei "$url/root/PG_Internal:ZAR_InternalCache"
for c in $objects; do
  k=0
  for p in $(paths_of "${listing[$c]}" | sort | head -5); do
    k=$((k + 1))
    scenario "gi-$c-$k" gi "$(as_url "$p")"
  done
done

# 2. Associations, from the first instances of each end.
while read -r assoc left right; do
  for end in "$left" "$right"; do
    p=$(paths_of "${listing[$end]}" | sort | head -1)
    [ -n "$p" ] || continue
    scenario "ain-$assoc-from-$end" ain -ac "$assoc" "$(as_url "$p")"
    scenario "ai-$assoc-from-$end" ai -ac "$assoc" "$(as_url "$p")"
    scenario "rin-$assoc-from-$end" rin -arc "$assoc" "$(as_url "$p")"
    scenario "ri-$assoc-from-$end" ri -arc "$assoc" "$(as_url "$p")"
  done
done <<<"$associations"

# 3. The seven methods in sequence.
array "array-before-methods"
volumes="$out/volumes.txt" ports="$out/fc-ports.txt"
wbemcli "${wbem_opts[@]}" ei "$url/$ns:ZAR_StorageVolume" > "$volumes"
wbemcli "${wbem_opts[@]}" ei "$url/$ns:ZAR_SCSIProtocolFCEndpoint" > "$ports"
lu1=$(name_of "$(grep -F 'ElementName="finance-08"' "$volumes")")
lu2=$(name_of "$(grep -F 'ElementName="finance-10"' "$volumes")")
port=$(name_of "$(grep -F 'ElementName="FC port 1:1:1"' "$ports")")
[ -n "$lu1" ] && [ -n "$lu2" ] && [ -n "$port" ] ||
  die "the array lacks finance-08, finance-10 or FC port 1:1:1: seed it with 'zarcli seed'"
service=$(paths_of "${listing[ZAR_ControllerConfigurationService]}" | head -1)
[ -n "$service" ] || die "no ZAR_ControllerConfigurationService instance"
service=$(as_url "$service")
system=$(sed -n 's|.*SystemName="\([^"]*\)".*|\1|p' <<<"$service")
view_ref() {
  echo "ZAR_SCSIController.SystemCreationClassName=\"ZAR_StorageSystem\",SystemName=\"$system\",CreationClassName=\"ZAR_SCSIController\",DeviceID=\"$1\""
}
initiator=10000000C9A0FF01

scenario "method-1-ExposePaths-new-view" cmx "$service" \
  "ExposePaths.LUNames=\"$lu1\",InitiatorPortIDs=\"$initiator\""
view=$(view_in "$last")
[ -n "$view" ] || die "ExposePaths made no view: $(cat "$last")"
scenario "method-2-ExposePaths-second-volume" cmx "$service" \
  "ExposePaths.LUNames=\"$lu2\",ProtocolControllers=$(view_ref "$view")"
scenario "method-3-HidePaths-first-volume" cmx "$service" \
  "HidePaths.LUNames=\"$lu1\",ProtocolControllers=$(view_ref "$view")"
scenario "method-4-ExposeDefaultLUs" cmx "$service" \
  "ExposeDefaultLUs.LUNames=\"$lu1\",TargetPortIDs=\"$port\",DeviceAccesses=2"
# The default LUs of a port are in its view "PP:<port>:default".
default_view=$(view_in "$last")
default_view=${default_view%:default}:default
scenario "method-5-HideDefaultLUs" cmx "$service" \
  "HideDefaultLUs.LUNames=\"$lu1\",ProtocolControllers=$(view_ref "$default_view")"
scenario "method-6-ExposeLUsToStorageHardwareIDCollection" cmx "$service" \
  "ExposeLUsToStorageHardwareIDCollection.LUNames=\"$lu1\",HostNames=\"dr01\",DeviceAccesses=2"
host_view=$(view_in "$last")
scenario "method-7-HideLUsFromStorageHardwareIDCollection" cmx "$service" \
  "HideLUsFromStorageHardwareIDCollection.LUNames=\"$lu1\",ProtocolControllers=$(view_ref "${host_view:-none}")"
scenario "method-8-DeleteProtocolController" cmx "$service" \
  "DeleteProtocolController.ProtocolController=$(view_ref "$view")"
scenario "method-9-DeleteProtocolController-gone" cmx "$service" \
  "DeleteProtocolController.ProtocolController=$(view_ref "$view")"
scenario "method-10-HidePaths-unknown-volume" cmx "$service" \
  "HidePaths.LUNames=\"60002AC0000000000000D621000000FF\",InitiatorPortIDs=\"$initiator\""

# 4. The array afterwards.
for c in ZAR_SCSIController ZAR_ControllerForUnit ZAR_StorageVolume ZAR_SystemDevice; do
  scenario "after-ei-$c" ei "$url/$ns:$c"
done
array "array-after-methods"
rm -f "$volumes" "$ports"

# (cmx exits 0 on a CIM error too: its refusals are in the answers, not in $failed.)
echo "scenarios: $n run, $failed with a non-zero wbemcli exit status; answers in $out"
