#!/bin/bash
# SPDX-License-Identifier: MIT
# Sets everything up, builds and runs the tests:
#   ./test.sh                     the release build, which is what people use
#   ./test.sh asan | tsan | debug the same tests under the sanitizers, or without optimisation
#   ./test.sh all                 release, debug, asan and tsan, one after the other
#   ./test.sh release -- -R name  what follows -- goes to ctest: here only the tests whose name matches
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

presets=()
while (($# > 0)); do
  case $1 in
    release | debug | asan | tsan) presets+=("$1") ;;
    all) presets+=(release debug asan tsan) ;;
    -h | --help) sed -n '3,/^set/{/^#/s/^# \?//p}' "${BASH_SOURCE[0]}" && exit ;;
    --) shift && break ;;
    *) die "unknown argument '$1'; expected release, debug, asan, tsan, all, or -- and arguments for ctest" ;;
  esac
  shift
done
((${#presets[@]} > 0)) || presets=(release)

"$root/scripts/setup" build test
lock_build

# The sanitizers' memory maps and a kernel that scatters addresses widely do not go together; where the system allows
# it, the tests run with the scattering switched off.
plainly=()
if setarch --addr-no-randomize true 2>/dev/null; then plainly=(setarch --addr-no-randomize); fi

for preset in "${presets[@]}"; do
  configure_with_tests "$preset"
  build "$preset"
  (cd "$root" && "${plainly[@]}" ctest --preset "$preset" --parallel "$(nproc)" "$@")
done
