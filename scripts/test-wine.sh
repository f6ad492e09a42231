#!/usr/bin/env bash
# The Windows side of the simulator link, proven under Wine: cross-builds the
# mingw preset, starts the FSUIPC test partner, runs orvanta-fsbridge.exe
# --probe against it, then serves it with the bridge and reads it from the
# Linux side with orvanta-cli simlink --sim bridge:127.0.0.1:PORT status.
#   test-wine.sh [LINUX_BUILD_DIR]     (default build/debug; needs orvanta-cli)
# Environment: ORV_WINE_PORT (default 19020).
set -euo pipefail
cd "$(dirname "$0")/.."
linux_build=${1:-build/debug}
port=${ORV_WINE_PORT:-19020}

fail() { echo "test-wine: FAILED: $*" >&2; exit 1; }
for tool in wine wineserver x86_64-w64-mingw32-g++-posix; do
  command -v "$tool" > /dev/null || fail "$tool is missing (scripts/install-deps.sh installs wine, wine64 and g++-mingw-w64-x86-64)"
done
cli=$linux_build/src/cli/orvanta-cli
[ -x "$cli" ] || cli=$linux_build/orvanta-cli
[ -x "$cli" ] || fail "no orvanta-cli in $linux_build (build it first: cmake --build --preset debug --target orvanta-cli)"

echo "test-wine [${SECONDS}s]: cross-building the mingw preset"
cmake --preset mingw > build-mingw-configure.log 2>&1 || { cat build-mingw-configure.log; fail "cmake --preset mingw"; }
rm -f build-mingw-configure.log
cmake --build --preset mingw > /dev/null || fail "the mingw build"

out=build/mingw/wine-test
mkdir -p "$out"
export WINEPREFIX=$PWD/build/mingw/wineprefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# Headless: Wine's null graphics driver, no X server needed.
wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f > "$out/wineboot.log" 2>&1 \
  || { cat "$out/wineboot.log"; fail "wine could not set up its prefix in $WINEPREFIX"; }
wineserver -w
echo "test-wine [${SECONDS}s]: Wine is ready"

cleanup() { wineserver -k 2> /dev/null || true; }
trap cleanup EXIT

# Waits up to $2 seconds for the text $3 in the file $1.
wait_for() {
  for _ in $(seq 1 $(( $2 * 4 ))); do
    grep -q "$3" "$1" 2> /dev/null && return 0
    sleep 0.25
  done
  return 1
}

wine build/mingw/fsuipc-test-partner.exe --for 120 > "$out/partner.log" 2>&1 &
wait_for "$out/partner.log" 60 "partner: ready" || { cat "$out/partner.log"; fail "the test partner did not start under Wine"; }

echo "test-wine [${SECONDS}s]: orvanta-fsbridge.exe --probe"
wine build/mingw/orvanta-fsbridge.exe --probe > "$out/probe.log" 2>&1 || { cat "$out/probe.log"; fail "--probe did not connect to the partner"; }
tr -d '\r' < "$out/probe.log" > "$out/probe.txt"
for want in "FsuipcVersion 39990000" "SimVersion 8" "Latitude 51.4775" "Altitude 83" "TrueHeading 270"; do
  grep -qx "$want" "$out/probe.txt" || { cat "$out/probe.txt"; fail "--probe printed no line '$want'"; }
done

wine build/mingw/orvanta-fsbridge.exe --port "$port" --for 90 > "$out/bridge.log" 2>&1 &
wait_for "$out/bridge.log" 30 "serving\|in use\|Unable" || { cat "$out/bridge.log"; fail "the bridge did not start"; }
grep -q serving "$out/bridge.log" || { cat "$out/bridge.log"; fail "the bridge refused to serve"; }

echo "test-wine [${SECONDS}s]: orvanta-cli simlink --sim bridge:127.0.0.1:$port status"
start=$(date +%s%N)
ASAN_OPTIONS=detect_leaks=0 "$cli" simlink --sim "bridge:127.0.0.1:$port" status > "$out/status.txt" 2>&1 \
  || { cat "$out/status.txt"; fail "orvanta-cli could not read the partner through the bridge"; }
elapsed_us=$(( ($(date +%s%N) - start) / 1000 ))
for want in "Latitude 51.4775" "Longitude -0.4614001" "Altitude 83" "TrueHeading 270" "Com1 121.9" "TailNumber G-WINE" "UtcTimeText 12:14:15"; do
  grep -qx "$want" "$out/status.txt" || { cat "$out/status.txt"; fail "status printed no line '$want'"; }
done
ASAN_OPTIONS=detect_leaks=0 "$cli" simlink --sim "bridge:127.0.0.1:$port" set com1 118.3 > "$out/set.txt" 2>&1 \
  || { cat "$out/set.txt"; fail "set com1 through the bridge"; }
grep -qx "Com1 118.3" "$out/set.txt" || { cat "$out/set.txt"; fail "COM1 did not come back as 118.3"; }

wait_for "$out/bridge.log" 10 "client done" || fail "the bridge did not see the client leave"
echo "test-wine [${SECONDS}s]: status over the bridge: $(tr -d '\r' < "$out/bridge.log" | grep -m1 "client done after" | sed 's/.*client done after //')" \
     "(Linux client -> bridge -> partner under Wine; the whole command $((elapsed_us / 1000)) ms with its start)"
echo "test-wine [${SECONDS}s]: passed"
