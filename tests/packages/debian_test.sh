#!/usr/bin/env bash
# The package for Debian: what checkers say of it and of what is in it; then it is unpacked by dpkg into
# a system of its own, used there and removed again, and nothing may be left.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

deb=$build/packages/quorvane_$(version)_$(dpkg --print-architecture).deb
folder=$build/packages_test
system=$folder/system
rm -rf "$folder"
mkdir -p "$system/var/lib/dpkg/"{info,updates,triggers} "$folder/bin"
touch "$system/var/lib/dpkg/status" "$system/var/lib/dpkg/available"
cd "$folder"

lintian --fail-on error,warning --allow-root "$deb"

# dpkg with the system in this folder; it would not become root for it, but asks.
in_system() { dpkg --root="$system" --log=/dev/null --force-not-root --force-script-chrootless "$@"; }
files() { (cd "$system" && find . -path ./var/lib/dpkg -prune -o -print | LC_ALL=C sort); }

files >before
in_system -i "$deb"
[ "$(in_system --verify quorvane)" = "" ] || die "The files are not those that the package names."
[ "$(dpkg-query --root="$system" -W -f '${Status} ${Version}' quorvane)" = \
    "install ok installed $(version)" ] || die "The package is not installed."

usr=$system/usr
"$usr/bin/qvx" --version | grep -qx "qvx $(version)" || die "qvx is of another version."
"$usr/bin/qvx" check "$usr/share/doc/quorvane/examples/guide.qvx" >/dev/null
cmp "$usr/lib/quorvane/Quorvane.exe" "$(find_program Quorvane.exe)"
desktop-file-validate "$usr/share/applications/quorvane.desktop"

# ---- Manual pages -------------------------------------------------------------------------------

for page in "$usr"/share/man/man?/*.gz; do
    said=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    said+=$(gzip -dc "$page" | mandoc -Tlint -W warning 2>&1 || true)
    [ "$said" = "" ] || die "$page: $said"
    lexgrog "$page" >/dev/null || die "$page: apropos finds no name in it."
done
LC_ALL=C.UTF-8 MANWIDTH=80 man -l "$usr/share/man/man1/qvx.1.gz" >qvx.txt
"$usr/bin/qvx" --help | awk '/^[A-Z]/ {in_options = /^Options/} /^  [a-z]/ && !in_options {print $1}' >commands
[ "$(wc -l <commands)" -ge 8 ] || die "qvx --help names no commands."
while read -r command; do
    grep -q "^   $command\$" qvx.txt || die "qvx(1) has nothing about $command."
done <commands

# ---- The type of web files ----------------------------------------------------------------------

update-mime-database "$usr/share/mime" 2>/dev/null
grep -qx '50:application/x-quorvane-web:\*.qvx' "$usr/share/mime/globs2"
rm -rf "$usr/share/mime/"[!p]*
for icon in quorvane application-x-quorvane-web; do
    rsvg-convert -o "$icon.png" "$(find "$usr/share/icons" -name "$icon.svg" | grep .)"
done

# ---- What starts the window ---------------------------------------------------------------------

# A Wine that says how it was called.
cat >bin/wine <<'END'
#!/bin/sh
printf '%s|' "$PWD" "$@"
END
chmod +x bin/wine
mkdir 'some notes' bare
ln -s "$(command -v sh)" "$(command -v dirname)" "$(command -v basename)" bare/
launched() { env DISPLAY=:9 HOME="$folder" "$@" 2>&1 || true; }
sed "s|/usr/|$usr/|g" "$usr/bin/quorvane" >quorvane
chmod +x quorvane
expect() { [ "$1" = "$2" ] || die "quorvane: $1 is not $2"; }
expect "$(launched env PATH="$folder/bin:$PATH" ./quorvane 'some notes/my web.qvx')" \
    "$folder/some notes|$usr/lib/quorvane/Quorvane.exe|my web.qvx|"
expect "$(launched env PATH="$folder/bin:$PATH" ./quorvane)" \
    "$folder/.local/share/quorvane|$usr/lib/quorvane/Quorvane.exe|guide.qvx|"
cmp .local/share/quorvane/guide.qvx "$usr/share/doc/quorvane/examples/guide.qvx"
launched env PATH="$folder/bare" ./quorvane x.qvx | grep -q 'needs Wine' ||
    die "Nothing is said of Wine where there is none."
launched ./quorvane nowhere/x.qvx | grep -q 'no folder nowhere' || die "Any folder will do."
long=$(printf 'x%.0s' {1..61})
launched ./quorvane "$long" | grep -q '60 characters' || die "A name may be too long."

# ---- Removed ------------------------------------------------------------------------------------

in_system -P quorvane
files >after
diff before after || die "Something is left of the package."
