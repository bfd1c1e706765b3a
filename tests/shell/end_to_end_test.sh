#!/usr/bin/env bash
# The built program, used with a real mouse and real keys: follows a link, writes, comes back, makes
# a cell of a word, saves and quits. What it saved must be what qvx makes of the same changes.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

set_up_wine
has_display || start_display 1024x768
program=$(find_program Quorvane.exe)
qvx=$build/native/cli/qvx
folder=$build/end_to_end
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

"$qvx" new trip.qvx
"$qvx" set trip.qvx home --text $'plan\r\nlater\r\n'
"$qvx" set trip.qvx plan --text soon
cp trip.qvx expected.qvx
"$qvx" set expected.qvx plan --text 'very soon'
"$qvx" set expected.qvx later --text "It's a \"word\" & <so> on"
chmod 600 trip.qvx # the notes are this user's alone, and stay so

window=
find_window() {
    window=$(xdotool search --onlyvisible --name "$1" | head -n 1) && [ -n "$window" ]
}

# at X Y CLICKS: where X and Y are in the window; a negative Y counts from its bottom.
at() {
    local x=$1 y=$2 WINDOW X Y WIDTH HEIGHT SCREEN
    eval "$(xdotool getwindowgeometry --shell "$window")"
    [ "$y" -ge 0 ] || y=$((HEIGHT + y))
    xdotool mousemove $((X + x)) $((Y + y)) click --repeat "${3:-1}" --delay 60 1
}

# The program shows the text pane a moment after the tab was pressed; nothing on the X side tells
# when, but the picture does.
picture() { import -window "$window" "$folder/$1.png"; }
looks_other() { picture now && ! cmp -s now.png before.png; }
changed_by() {
    picture before
    "$@"
    wait_until 10 looks_other || die "Nothing was seen to happen after: $*"
}

QUORVANE_SCREEN=240x320 wine_desktop EndToEnd 900x700 "$program" trip.qvx >run.log 2>&1 &
wait_until 60 find_window '^Quorvane - trip' || die "The window did not appear."

changed_by at 50 -62        # the text tab
changed_by at 12 56         # the first word, a link
changed_by xdotool type --delay 30 'very '
changed_by xdotool key alt+Left
at 15 70 2                  # the word in the second line
wait_until 10 find_window '^later$' || die "The question about a new cell did not come."
xdotool key Return
wait_until 10 find_window '^Quorvane - trip'
wait_until 10 looks_other
changed_by xdotool type --delay 30 "It's a \"word\" & <so> on"
xdotool key ctrl+s
wait_until 10 cmp -s trip.qvx expected.qvx || {
    diff trip.qvx expected.qvx || true
    picture failed
    die "The saved file is not what was written."
}
xdotool key ctrl+q
is_gone() { ! xdotool search --onlyvisible --name '^Quorvane - trip'; }
wait_until 10 is_gone || die "The program did not quit."
cmp trip.qvx expected.qvx
[ "$(stat -c %a trip.qvx)" = 600 ] || die "Others may read the saved file."
