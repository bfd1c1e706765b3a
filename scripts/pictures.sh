#!/usr/bin/env bash
# Makes the pictures in docs/images anew, with the built program on a virtual display:
# scripts/pictures.sh (after ./run.sh or ./test.sh has built it)
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

images=$root/docs/images
program=$(find_program Quorvane.exe)
frame_width=8   # Wine's frame: pixels beside the client area,
title_height=23 # above it,
frame_height=26 # and above and below together

find_window() { xdotool search --onlyvisible --name '^Quorvane - '; }

# A moment for the window to draw: what is awaited has no sign of its own.
settle() { sleep "${1:-1.5}"; }

# click X FROM_BOTTOM: both in pixels of the client area.
click() {
    xdotool mousemove "$1" $((title_height + height - $2)) click 1
    settle
}

press() {
    xdotool key "$@"
    settle
}

picture() {
    import -window root -crop "$((width + frame_width))x$((height + frame_height))+0+0" +repage \
        "$images/$1.png"
}

# start WIDTH HEIGHT: opens the guide in a window of that client area.
start() {
    width=$1
    height=$2
    mkdir -p "$build/pictures"
    cp samples/guide.qvx "$build/pictures/"
    (cd "$build/pictures" && QUORVANE_SCREEN=${width}x$height wine_desktop pictures 500x700 \
        "$program" guide.qvx) >"$build/pictures.log" 2>&1 &
    running=$!
    wait_until 60 find_window || die "The window did not appear (see build/pictures.log)."
    settle 3
}

quit() {
    wineserver -k
    wait "$running" || true
}

text_tab() { click 50 60; }
console_tab() { click 95 60; }
report_button() { click 172 14; }

views() {
    start "$1" "$2"
    picture "list_$1x$2"
    text_tab
    picture "text_$1x$2"
    report_button
    settle 4
    console_tab
    picture "console_$1x$2"
    quit
}

# page X Y NAME: turns to a page of the settings sheet; its tab is at that place on the display.
page() {
    xdotool mousemove "$1" "$2" click 1
    settle
    picture "settings_$3"
}

# menu X UPS: opens a pop-up and takes its last item but UPS.
menu() {
    local i
    click "$1" 14
    for ((i = 0; i <= $2; i++)); do
        xdotool key Up
    done
    settle 0.5
    press Return
}

dialogs() {
    start 240 320
    press alt+n
    picture new_cell
    press Escape
    text_tab
    press ctrl+f
    xdotool type "cell"
    settle
    picture replace
    press Return
    picture search_bar
    press Escape
    menu 60 1
    picture zoom
    press Return
    menu 138 0
    picture about
    press Return
    press ctrl+t
    picture settings_report
    page 122 92 output
    page 196 92 links
    page 52 74 numbers
    page 125 92 pane
    page 196 92 search
    press Escape
    quit
}

# The guide as a page, in a browser.
export_page() {
    local page=$build/pictures/guide.html options=(--headless --hide-scrollbars)
    [ "$(id -u)" != 0 ] || options+=(--no-sandbox)
    mkdir -p "$build/pictures"
    "$build/native/cli/qvx" export samples/guide.qvx --html "$page"
    chromium "${options[@]}" --window-size=1000,700 --screenshot="$build/pictures/export.png" \
        "file://$page#what_is_a_link" 2>/dev/null
    convert "$build/pictures/export.png" +dither -colors 64 -define png:compression-level=9 \
        "$images/export.png"
}

mkdir -p "$images"
install_packages "${packages_pictures[@]}"
export_page
set_up_wine
start_display 500x700
views 240 320
views 360 560
dialogs
