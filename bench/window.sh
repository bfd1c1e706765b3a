#!/usr/bin/env bash
# Measures how soon the window is there with each editing component, in turn with Wine's notepad, and
# what a key takes in a long text: ./bench/window.sh [ROUNDS]
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
cd "$root"

install_packages "${packages_native[@]}" "${packages_windows[@]}" "${packages_wine[@]}" \
    "${packages_bench[@]}"
build_scintilla
build_preset windows Quorvane
build_preset windows SciLexer
build_preset windows pane_keys
place_scintilla
build_preset bench make_webs
mkdir -p "$build/bench/webs"
"$build/bench/bench/make_webs" "$build/bench/webs"
set_up_wine
start_display 1024x768
# A program that stays keeps Wine's server and its services from starting anew each time.
"$wine" explorer /desktop=idle,100x80 >/dev/null 2>&1 &
small=$build/bench/small # the program beside the small component
mkdir -p "$small"
cp "$(find_program Quorvane.exe)" "$build/windows/pane/SciLexer.dll" "$small/"
python3 bench/window.py "$(find_program Quorvane.exe)" "$small/Quorvane.exe" \
    "$build/bench/webs/many.qvx" "${1:-7}"
echo "A key in 345,000 characters, least and median ms, with Scintilla and with the small component:"
for length in 300 0; do
    echo "in lines of $length characters (0: in one)"
    for library in "$build/scintilla/SciLexer.dll" "$small/SciLexer.dll"; do
        "$wine" "$build/windows/bench/pane_keys.exe" "$library" $length
    done
done
wineserver -k
