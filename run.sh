#!/usr/bin/env bash
# Builds Quorvane and opens a web in its window: ./run.sh [--handheld] [FILE.qvx]
#
# The window opens on the user's display, through Wine. Where there is none, it opens on a virtual
# one, leaves build/screenshot.png and ends. With --handheld the handheld's program is built and run
# in the emulator, and build/handheld/screenshot.png is its screen. Without a file it opens a copy of
# the guide that is made once, so that trying things out leaves the sample as it is.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

handheld=no
if [ "${1:-}" = --handheld ]; then
    handheld=yes
    shift
fi
if [ $# -gt 1 ]; then
    die "usage: ./run.sh [--handheld] [FILE.qvx]"
fi

# Where the program takes the file from. It reads at most 62 characters of its command line, so it
# is started in the file's folder and given the bare name.
find_file() {
    if [ $# = 0 ]; then
        mkdir -p "$build"
        [ -f "$build/guide.qvx" ] || cp "$root/samples/guide.qvx" "$build/guide.qvx"
        set -- "$build/guide.qvx"
    fi
    [ -d "$(dirname "$1")" ] || die "There is no folder $(dirname "$1")."
    folder=$(cd "$(dirname "$1")" && pwd)
    name=$(basename "$1")
    [ ${#name} -le 60 ] || die "The program takes file names of at most 60 characters."
}

picture() { import -window "$window" "$build/screenshot.new.png"; }

# True when the window looks as it did a moment ago, so that nothing is being drawn any more.
picture_is_settled() {
    picture
    if cmp -s "$build/screenshot.new.png" "$build/screenshot.png"; then
        rm "$build/screenshot.new.png"
        return 0
    fi
    mv "$build/screenshot.new.png" "$build/screenshot.png"
    sleep 0.5
    return 1
}

# The program's title is its name alone until a web is there.
find_window() {
    window=$(xdotool search --onlyvisible --name '^Quorvane - ' | head -n 1) && [ -n "$window" ]
}

take_screenshot() {
    local size=${QUORVANE_SCREEN:-360x560}
    start_display "$((${size%x*} + 60))x$((${size#*x} + 60))"
    rm -f "$build/screenshot.png"
    (cd "$folder" && wine_desktop screen "$((${size%x*} + 60))x$((${size#*x} + 60))" \
        "$program" "$name") >"$build/run.log" 2>&1 &
    wait_until 60 find_window || die "The window did not appear (see build/run.log)."
    wait_until 30 picture_is_settled || say "The window is still changing."
    say "There is no display: the picture of the window is build/screenshot.png."
}

# The file's folder is the handheld's \My Documents, which stands before the name on the program's
# command line.
run_handheld() {
    local picture=$build/handheld/screenshot.png
    [ ${#name} -le 46 ] || die "On the handheld a file's name has at most 46 characters."
    install_packages "${packages_native[@]}" "${packages_windows[@]}" "${packages_handheld[@]}"
    build_handheld || exit 1
    emulate_handheld --picture "$picture" "$folder/$name"
    say "The handheld's screen is build/handheld/screenshot.png."
}

find_file "$@"
cd "$root"
if [ $handheld = yes ]; then
    run_handheld
    exit
fi
install_packages "${packages_build[@]}" "${packages_windows[@]}" "${packages_wine[@]}"
build_scintilla
build_preset windows Quorvane || exit 1
place_scintilla
set_up_wine
program=$(find_program Quorvane.exe)
if has_display; then
    cd "$folder"
    exec "$wine" "$program" "$name"
fi
take_screenshot
