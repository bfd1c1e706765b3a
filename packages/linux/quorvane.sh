#!/bin/sh
# Opens a web of notes in Quorvane's window, which is a Windows program, through Wine.
set -u

files=/usr/lib/quorvane
guide=/usr/share/doc/quorvane/examples/guide.qvx

# On a terminal a message is printed; who has clicked an icon gets it in a box.
fail() {
    printf 'quorvane: %s\n' "$1" >&2
    if [ ! -t 2 ] && [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        if command -v zenity >/dev/null; then
            zenity --error --no-markup --title Quorvane --text "$1"
        elif command -v kdialog >/dev/null; then
            kdialog --title Quorvane --error "$1"
        elif command -v notify-send >/dev/null; then
            notify-send Quorvane "$1"
        elif command -v xmessage >/dev/null; then
            xmessage -center "$1"
        fi
    fi
    exit 2
}

case ${1:-} in
-h | --help)
    printf '%s\n' 'usage: quorvane [FILE.qvx]' \
        'Opens a web of notes in a window, through Wine; without a file, your copy of the guide.'
    exit
    ;;
--) shift ;;
-*) fail "There is no option $1. The usage is: quorvane [FILE.qvx]" ;;
esac
[ $# -le 1 ] || fail 'The usage is: quorvane [FILE.qvx]'

if [ $# = 0 ]; then
    folder=${XDG_DATA_HOME:-$HOME/.local/share}/quorvane
    name=guide.qvx
    mkdir -p "$folder" || fail "The folder $folder cannot be made."
    [ -f "$folder/$name" ] || cp "$guide" "$folder/$name" || fail "The guide cannot be copied."
else
    folder=$(dirname -- "$1")
    name=$(basename -- "$1")
    [ -d "$folder" ] || fail "There is no folder $folder."
fi
# The program reads 62 characters of its command line: it is started in the file's folder and given
# the bare name.
[ ${#name} -le 60 ] || fail 'The window takes file names of at most 60 characters.'

wine=
for name_of_wine in wine wine-stable wine64; do
    if [ -z "$wine" ]; then
        wine=$(command -v "$name_of_wine") || wine=
    fi
done
[ -n "$wine" ] || fail 'The window needs Wine, which is not installed: sudo apt install wine. (qvx works without it.)'
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || fail 'The window needs a display. (qvx works without one.)'

cd -- "$folder" || fail "The folder $folder cannot be entered."
WINEDEBUG=${WINEDEBUG:--all} exec "$wine" "$files/Quorvane.exe" "$name"
