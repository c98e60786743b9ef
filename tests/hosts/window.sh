# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by the checks of the editor in real hosts: an X server and an audio server of their own, windows found by their
# titles, and all that is done to the editor, which is the same in every host.

check=$(basename "$0")

# prepare BUILD PICTURES TOOL...: skips the check when a tool is missing. Makes a scratch folder that goes with the
# script, and a home of its own in it.
prepare() {
  local tool
  build=$(realpath "${1:-build/release}")
  pictures=$2
  [[ -z $pictures ]] || { mkdir -p "$pictures" && pictures=$(realpath "$pictures"); }
  for tool in Xvfb jackd openbox xdotool xwininfo import identify convert compare "${@:3}"; do
    type -P "$tool" >/dev/null || { echo "$check: skipped, $tool is not installed" && exit 77; }
  done
  export plugin=$build/Modrift.vst/Contents/x86_64-linux/Modrift.so
  unset DISPLAY # fail takes pictures of the display that start_servers makes
  scratch=$(mktemp -d)
  log=$scratch/host.log
  started=()
  export JACK_DEFAULT_SERVER=modrift$$ JACK_NO_AUDIO_RESERVATION=1
  trap finish EXIT
  export HOME=$scratch/home XDG_CONFIG_HOME=$scratch/config XDG_CACHE_HOME=$scratch/cache LC_ALL=C.UTF-8
  mkdir -p "$HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME"
}

# end_process ID: asks first. A JACK server that is killed stays in the list of the eight that a machine may have.
end_process() {
  kill "$1" 2>/dev/null || return 0
  for _ in {1..30}; do
    kill -0 "$1" 2>/dev/null || return 0
    sleep 0.1
  done
  kill -9 "$1" 2>/dev/null || true
}
finish() {
  local i
  disown -a # or the shell would tell of those that had to be killed
  for ((i = ${#started[@]} - 1; i >= 0; i--)); do end_process "${started[i]}"; done
  rm -rf "$scratch" /dev/shm/jack_sem.*_"$JACK_DEFAULT_SERVER"_*
}

fail() {
  echo "$check: FAILED: $*" >&2
  [[ -z $pictures || -z ${DISPLAY:-} ]] || import -window root "$pictures/failed.png" || true
  tail -5 "$log" >&2 || true
  exit 1
}

start_servers() {
  Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp 3>"$scratch/display" >/dev/null 2>&1 &
  started+=($!)
  for _ in {1..100}; do
    [[ ! -s $scratch/display ]] || break
    sleep 0.1
  done
  DISPLAY=:$(<"$scratch/display")
  export DISPLAY
  openbox >/dev/null 2>&1 &
  started+=($!)
  jackd -n "$JACK_DEFAULT_SERVER" -r -d dummy -r 48000 -p 1024 >"$log" 2>&1 &
  started+=($!)
  sleep 2
  kill -0 "${started[-1]}" 2>/dev/null || fail "JACK did not start"
}

# start_host COMMAND...: its process is $host.
start_host() {
  "$@" >"$log" 2>&1 &
  host=$!
  started+=("$host")
}
host_lives() { kill -0 "$host" 2>/dev/null || fail "the host ended"; }

# find_window TITLE: the first visible window whose title holds the text.
find_window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | head -1 || true; }
# await_window TITLE SECONDS: waits for it, and puts its number into $window.
await_window() {
  local turn
  for ((turn = 0; turn < 5 * $2; turn++)); do
    window=$(find_window "$1")
    [[ -z $window ]] || return 0
    host_lives
    sleep 0.2
  done
  fail "no window named '$1'"
}
# at WINDOW X Y: moves the pointer to a place in the window.
at() {
  local left top
  left=$(xwininfo -id "$1" | awk '/Absolute upper-left X/{print $4}')
  top=$(xwininfo -id "$1" | awk '/Absolute upper-left Y/{print $4}')
  xdotool mousemove $((left + $2)) $((top + $3)) sleep 0.2
}
double_click() { at "$@" && xdotool click --repeat 2 --delay 80 1; }
size() { xwininfo -id "$1" | awk '/^  Width/{w=$2} /^  Height/{print w"x"$2}'; }

# shot NAME: with the pointer at rest beside the graph, takes a picture of the editor, and says what it is.
shot() {
  at "$editor" 20 330
  sleep 0.5
  import -window "$editor" "$scratch/$1.png"
  [[ -z $pictures ]] || import -window root "$pictures/$1.png"
  echo "$1: $(size "$editor"), $(identify -format %k "$scratch/$1.png") colours"
}
# same NAME NAME: whether two pictures are the same, pixel by pixel.
same() { compare -metric AE "$scratch/$1.png" "$scratch/$2.png" null: >/dev/null 2>&1; }
# similar NAME NAME: whether they are the same but for a line of pixels across and one along. A dragged size may have a
# fraction and a stored one has none, so that what is measured from it may end a pixel earlier.
similar() {
  local different width height
  different=$(compare -metric AE -fuzz 2% "$scratch/$1.png" "$scratch/$2.png" null: 2>&1) || true
  IFS=x read -r width height <<<"$(identify -format %wx%h "$scratch/$1.png")"
  [[ $different =~ ^[0-9]+$ ]] && ((different <= width + height))
}

# The editor of a window that the host's open_window has brought up is the innermost one of useful size.
open_editor() {
  open_window
  await_window Modrift 10
  sleep 1.5
  editor=$(xwininfo -id "$window" -tree | sed -n 's/^ *\(0x[0-9a-f]*\) .* \([0-9]*\)x\([0-9]*\)+.*/\1 \2 \3/p' |
    awk '$2 >= 576 && $3 >= 284 {print $1}' | tail -1)
  [[ -n $editor ]] || fail "no editor in the plug-in's window"
}
close_editor() {
  xdotool windowactivate --sync "$window" key alt+F4 sleep 1
  [[ -z $(find_window Modrift) ]] || fail "the window did not close"
}

# static NAME: without the bar beside the graph, which shows what the audio did last.
static() { convert "$scratch/$1.png" -fill black -draw 'rectangle 541,28 548,276' "$scratch/$1-static.png"; }

# The pictures on the screen are held to one that the same module draws into memory.
check_drawing() {
  [[ $(size "$editor") == 708x343 ]] || fail "the editor is $(size "$editor") and not 708x343"
  env -u DISPLAY "$build/bin/modrift" screenshot --plugin "$build/Modrift.vst" -o "$scratch/expected.png" >/dev/null
  shot opened
  static opened
  static expected
  same opened-static expected-static || fail "the picture is not the one that the editor draws without a host"
  at "$editor" 260 200 && xdotool click --repeat 2 --delay 60 1 sleep 1
  shot drawn
  ! same opened drawn || fail "drawing changed nothing"
  xdotool key ctrl+z sleep 0.5
  shot undone
  same opened undone || fail "Ctrl+Z did not bring the first picture back"
  xdotool key ctrl+shift+z sleep 0.5
  shot redone
  same drawn redone || fail "Shift+Ctrl+Z did not bring the point back"
}

check_resizing() {
  local step
  at "$editor" 701 337 && xdotool mousedown 1
  for step in {1..10}; do at "$editor" $((701 + 20 * step)) 337; done
  xdotool mouseup 1 sleep 1.5
  shot resized
  [[ $(size "$editor") == 9[0-9][0-9]x4[0-9][0-9] ]] || fail "the editor is $(size "$editor") after its corner was dragged"
}

check_reopening() {
  for _ in 1 2 3; do
    close_editor
    open_editor
  done
  shot reopened
  same resized reopened || fail "the editor looks different when opened again"
  host_lives
}
