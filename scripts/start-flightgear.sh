#!/usr/bin/env bash
# Starts FlightGear so that Orvanta's "flightgear" source can follow it:
# the generic protocol data/flightgear/orvanta.xml out over UDP to
# 127.0.0.1:5500 (20 times a second) and the HTTP property server on 5400.
# Installs FlightGear (Debian's flightgear, about 3 GB with its data) when it
# is missing, and runs it under a virtual X server when there is no display.
#   start-flightgear.sh [--airport ICAO] [--udp PORT] [--http PORT]
# Leaves FlightGear running; its process id is in build/flightgear/fgfs.pid,
# its log in build/flightgear/fgfs.log. FlightGear runs in a process group of
# its own (with its X server and session bus); stop all of it with:
#   kill -- -"$(cat build/flightgear/fgfs.pid)"
set -euo pipefail
cd "$(dirname "$0")/.."
# Debian installs fgfs in /usr/games, which is not on root's path.
export PATH="$PATH:/usr/games"
airport=KSFO udp=5500 http=5400
while [ $# -gt 0 ]; do
  case "$1" in
    --airport) airport=$2; shift 2 ;;
    --udp) udp=$2; shift 2 ;;
    --http) http=$2; shift 2 ;;
    *) echo "usage: start-flightgear.sh [--airport ICAO] [--udp PORT] [--http PORT]" >&2; exit 2 ;;
  esac
done

if ! command -v fgfs > /dev/null; then
  echo "start-flightgear: installing FlightGear (about 3 GB)"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq flightgear > /dev/null
fi
fg_root=${FG_ROOT:-/usr/share/games/flightgear}
[ -d "$fg_root/Protocol" ] || { echo "start-flightgear: no FlightGear data at $fg_root (set FG_ROOT)" >&2; exit 1; }
# The protocol file goes where FlightGear looks for protocols.
cp data/flightgear/orvanta.xml "$fg_root/Protocol/orvanta.xml"

out=build/flightgear
mkdir -p "$out"
args=(--fg-root="$fg_root" --airport="$airport" --aircraft=c172p --timeofday=noon
      --disable-sound --disable-splash-screen --disable-real-weather-fetch --disable-terrasync
      --geometry=640x480 --disable-clouds --disable-clouds3d --disable-random-objects --fog-fastest
      --generic=socket,out,20,127.0.0.1,"$udp",udp,orvanta --httpd="$http")
# FlightGear asks the session bus to keep the screen awake; without a session
# bus (a server, a container) libdbus aborts the process, so give it one.
bus=()
if [ -z "${DBUS_SESSION_BUS_ADDRESS:-}" ]; then
  if command -v dbus-run-session > /dev/null; then bus=(dbus-run-session --); else export DBUS_FATAL_WARNINGS=0; fi
fi
if [ -z "${DISPLAY:-}" ]; then
  command -v xvfb-run > /dev/null || { echo "start-flightgear: no display and no xvfb-run (apt-get install xvfb)" >&2; exit 1; }
  setsid nohup "${bus[@]}" xvfb-run -a -s "-screen 0 1024x768x24" fgfs "${args[@]}" > "$out/fgfs.log" 2>&1 &
else
  setsid nohup "${bus[@]}" fgfs "${args[@]}" > "$out/fgfs.log" 2>&1 &
fi
echo $! > "$out/fgfs.pid"
echo "start-flightgear: FlightGear starting at $airport (pid $(cat "$out/fgfs.pid")), UDP $udp, HTTP $http"
echo "start-flightgear: connect with the source flightgear:$udp:$http"
