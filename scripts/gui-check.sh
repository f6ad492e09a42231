#!/usr/bin/env bash
# Drives the real program under a virtual X server with real key and mouse
# events (xdotool) and keeps a picture of each step (ImageMagick's import):
#   gui-check.sh OUT_DIR [BUILD_DIR]
# It opens a plan through the file dialog, rests the pointer on the
# departure airport, opens the side windows through their menus and toggles
# the reduced window. It fails when a window does not appear or a picture is
# blank.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
out=$(realpath -m "${1:?usage: gui-check.sh OUT_DIR [BUILD_DIR]}")
build=$(realpath -m "${2:-$here/build/debug}")
mkdir -p "$out"

work=$(mktemp -d)
pids=()
cleanup() {
  for p in "${pids[@]}"; do kill "$p" 2> /dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT

# The demo folder, opened straight on the map, with a plan to open.
app="$work/app"
bash "$here/scripts/make-demo.sh" "$build" "$app" > /dev/null
echo "DIRCON=1" > "$app/orv.ini"
plan="$work/EDDF-EDDM.pln"
"$build/orvanta-cli" --appdir "$app" plan EDDF EDDM --high --save "$plan" > /dev/null

# A display of its own: the first free number from 90 up.
num=90
while [ -e "/tmp/.X11-unix/X$num" ] || [ -e "/tmp/.X$num-lock" ]; do num=$((num + 1)); done
Xvfb ":$num" -screen 0 1280x960x24 -nolisten tcp > "$work/xvfb.log" 2>&1 &
pids+=($!)
export DISPLAY=":$num"
for _ in $(seq 50); do xdpyinfo > /dev/null 2>&1 && break; sleep 0.2; done

export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" ASAN_OPTIONS=detect_leaks=0 QT_QPA_PLATFORM=xcb
mkdir -p "$HOME"
"$build/orvanta" --appdir "$app" > "$work/orvanta.log" 2>&1 &
pids+=($!)

fail() {
  echo "gui-check: $*" >&2
  sed 's/^/  orvanta: /' "$work/orvanta.log" | tail -20 >&2
  exit 1
}

# The window whose title matches, waited for up to 30 seconds.
window() {
  local id=""
  for _ in $(seq 150); do
    id=$(xdotool search --onlyvisible --name "$1" 2> /dev/null | tail -1 || true)
    [ -n "$id" ] && break
    sleep 0.2
  done
  [ -n "$id" ] || fail "the window '$1' did not appear"
  echo "$id"
}

# A picture of the whole screen; a picture of one colour is a failure.
shot() {
  sleep "${2:-1}"
  import -window root "$out/$1.png"
  local spread
  spread=$(convert "$out/$1.png" -format '%[fx:standard_deviation]' info:)
  awk -v s="$spread" 'BEGIN { exit !(s > 0.01) }' || fail "the picture $1.png is blank"
  echo "gui-check: $1.png"
}

keys() {
  xdotool windowfocus --sync "$main" 2> /dev/null || true
  xdotool key --delay 150 "$@"
}

main=$(window '^Orvanta$')
xdotool windowmove "$main" 0 0 windowsize "$main" 1200 900
shot 01-map 2

# Flight Plan > Open, the path typed into the file dialog.
keys alt+f o
dialog=$(window 'Open Flight Plan')
xdotool windowfocus --sync "$dialog" 2> /dev/null || true
sleep 0.5
xdotool type --delay 20 "$plan"
xdotool key Return
sleep 1
shot 02-plan 2

# The pointer resting on the departure airport, at the centre of the map
# the plan is opened on: the hover box.
eval "$(xdotool getwindowgeometry --shell "$main")"
xdotool mousemove --window "$main" $((WIDTH / 2)) $((HEIGHT / 2))
sleep 0.5
xdotool mousemove_relative 1 1
shot 03-hover 2

# The side windows through their menus; Esc closes the dialogs, the others
# are closed by the window system.
open_side() {
  local name=$1 title=$2
  shift 2
  keys "$@"
  local id
  id=$(window "$title")
  shot "$name" 1
  xdotool windowfocus --sync "$id" 2> /dev/null || true
  xdotool key Escape
  sleep 0.5
  if xdotool search --onlyvisible --name "$title" > /dev/null 2>&1; then xdotool windowclose "$id" 2> /dev/null || xdotool windowunmap "$id"; fi
  sleep 0.5
}
open_side 04-find 'Find Object' alt+m o
open_side 05-aircraft '^Aircraft$' alt+w c
open_side 06-fuel 'Fuel' alt+w f
open_side 07-user 'User Waypoints' alt+w u
open_side 08-airports 'Airport Selection' alt+w g

# The reduced window: its button's key, the window loses its bars.
eval "$(xdotool getwindowgeometry --shell "$main")"
before=$HEIGHT
keys ctrl+r
sleep 1
shot 09-reduced 1
eval "$(xdotool getwindowgeometry --shell "$main")"
[ "$HEIGHT" -lt "$before" ] || fail "the reduced window kept its height ($HEIGHT, was $before)"
keys ctrl+r
shot 10-normal 1
echo "gui-check: all windows appeared; pictures in $out"
