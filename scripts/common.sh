# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Sourced by run.sh, test.sh and the scripts beside it: messages, quiet steps, configuring, one build at a time.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

say() { printf '%s\n' "$*" >&2; }

die() {
  say "$(basename "$0"): $*"
  exit 1
}

# quietly TITLE COMMAND...: runs the command without a word when it is done soon. After three seconds it says TITLE and
# shows the command's output as it comes. When the command fails, all of its output has been shown.
quietly() {
  local title=$1 log pid shown="" polls=60 status=0
  shift
  log=$(mktemp "${TMPDIR:-/tmp}/modrift.XXXXXX")
  set -m  # a process group of its own, so that an interruption can be passed on to all that the command has started
  "$@" >"$log" 2>&1 </dev/null &
  pid=$!
  set +m
  trap 'kill -- "-$pid" 2>/dev/null || true; rm -f "$log"; exit 130' INT TERM HUP
  while ((polls-- > 0)) && kill -0 "$pid" 2>/dev/null; do sleep 0.05; done
  if kill -0 "$pid" 2>/dev/null; then
    say "$title ..."
    shown=yes
    tail -n +1 -f --pid="$pid" "$log" >&2
  fi
  wait "$pid" || status=$?
  trap - INT TERM HUP
  if ((status != 0)) && [[ -z $shown ]]; then cat "$log" >&2; fi
  rm -f "$log"
  return "$status"
}

# The build folders belong to one command at a time; a second one waits. Closed by unlock_build, or with the script.
lock_build() {
  mkdir -p "$root/build" 2>/dev/null || die "cannot make the folder $root/build; is this place writable?"
  exec 9>"$root/build/.lock"
  flock --nonblock 9 && return
  say "Waiting for another run.sh or test.sh in $root ..."
  flock 9
}
unlock_build() { exec 9>&-; }

# cached PRESET LINE: whether the preset's folder was configured with that line in its cache.
cached() { grep -qsxF "$2" "$root/build/$1/CMakeCache.txt"; }
made_here() { cached "$1" "CMAKE_HOME_DIRECTORY:INTERNAL=$root"; }

# True when the preset's folder must be configured: never done, the presets are newer, or the checkout was moved.
# Later changes of the CMakeLists.txt files are noticed by the build itself.
needs_configure() {
  local rules=$root/build/$1/build.ninja
  [[ ! -f $rules || $root/CMakePresets.json -nt $rules ]] || ! made_here "$1"
}

# configure PRESET OPTION...
configure() {
  local preset=$1 fresh=()
  shift
  made_here "$preset" || fresh=(--fresh)
  (cd "$root" && quietly "Configuring build/$preset" cmake --preset "$preset" "${fresh[@]}" "$@") ||
    die "build/$preset could not be configured; the lines above tell what is missing"
}

# build PRESET [TARGET...]
build() {
  local preset=$1 targets=()
  shift
  (($# == 0)) || targets=(--target "$@")
  (cd "$root" && quietly "Building build/$preset" cmake --build --preset "$preset" "${targets[@]}") ||
    die "the build in build/$preset failed; the first error above tells why"
}

# configure_with_tests PRESET: also where ./run.sh, which leaves the tests out, has been first.
configure_with_tests() {
  local options=(-DMODRIFT_TESTS=ON)
  # The sanitizer presets leave the benchmarks out: their times would say nothing.
  [[ $1 == asan || $1 == tsan ]] || options+=(-DMODRIFT_BENCH=ON)
  if needs_configure "$1" || ! cached "$1" "MODRIFT_TESTS:BOOL=ON"; then configure "$1" "${options[@]}"; fi
}
