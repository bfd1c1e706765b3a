#!/usr/bin/env bash
# Measures how soon the window is there, in turn with Wine's notepad: ./bench/window.sh [ROUNDS]
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
cd "$root"

install_packages "${packages_native[@]}" "${packages_windows[@]}" "${packages_wine[@]}" \
    "${packages_bench[@]}"
build_scintilla
build_preset windows Quorvane
place_scintilla
build_preset bench make_webs
mkdir -p "$build/bench/webs"
"$build/bench/bench/make_webs" "$build/bench/webs"
set_up_wine
start_display 1024x768
# A program that stays keeps Wine's server and its services from starting anew each time.
"$wine" explorer /desktop=idle,100x80 >/dev/null 2>&1 &
python3 bench/window.py "$(find_program Quorvane.exe)" "$build/bench/webs/many.qvx" "${1:-7}"
wineserver -k
