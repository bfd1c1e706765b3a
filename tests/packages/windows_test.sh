#!/usr/bin/env bash
# The packages for Windows, under Wine: the zip's programs run where they were unpacked; the installer
# puts files and registry keys where they belong, the file type opens a web with a long path, and the
# uninstaller leaves what was there before.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

zip=$build/packages/quorvane-$(version)-windows.zip
setup=$build/packages/quorvane-$(version)-setup.exe
folder=$build/windows_packages_test
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

# ---- The zip ------------------------------------------------------------------------------------

python3 -m zipfile -e "$zip" .
(cd "quorvane-$(version)-windows" && find . -type f | LC_ALL=C sort) >in_zip
for name in Quorvane.exe QuorvaneOpen.exe SciLexer.dll guide.qvx qvx.exe readme.txt \
    licences/{quorvane,scintilla,cli11,json,pcre2,gcc,mingw-w64}.txt; do
    grep -qx "./$name" in_zip || die "The zip has no $name."
done
[ "$(wc -l <in_zip)" = 13 ] || die "The zip has more than it should: $(cat in_zip)"

# ---- A fresh Wine -------------------------------------------------------------------------------

set_up_wine # the names of its settings
export WINEPREFIX=$folder/prefix
has_display || start_display 1024x768
end_wine() {
    wineserver -k 2>/dev/null || true
    stop_display
}
trap end_wine EXIT
"$wine" wineboot --init >wine.log 2>&1
wineserver -w
qvx() { "$wine" "quorvane-$(version)-windows/qvx.exe" "$@"; }
[ "$(qvx --version | tr -d '\r')" = "qvx $(version)" ] || die "qvx.exe is of another version."

# What the registry and the disk hold. Time stamps and what Wine keeps of itself do not count.
keys() {
    "$wine" reg query 'HKCU\Software' /s | tr -d '\r' | grep -v -E 'RecentDocs|\\Wine|ShellBags' |
        LC_ALL=C sort
    "$wine" reg query 'HKCU\Environment' | tr -d '\r'
}
disk() { find "$WINEPREFIX/drive_c/users" -not -path '*/Temp/*' | LC_ALL=C sort; }
"$wine" reg add 'HKCU\Environment' >>wine.log /v Path /t REG_EXPAND_SZ /d 'C:\tools;%USERPROFILE%\bin' /f
"$wine" reg add 'HKCU\Software\Classes\.qvx' >>wine.log /ve /d Somebody.Else /f
keys >keys.before
disk >disk.before

# ---- Installed ----------------------------------------------------------------------------------

"$wine" "$setup" /S /PATH
wineserver -w
keys >keys.installed
installed=$(find "$WINEPREFIX/drive_c/users" -path '*/Programs/Quorvane' -type d)
[ -n "$installed" ] || die "The installer made no folder."
(cd "$installed" && find . -type f ! -name Uninstall.exe | LC_ALL=C sort) | diff in_zip -
find "$WINEPREFIX/drive_c/users" -name Quorvane.lnk | grep -q 'Start Menu' ||
    die "There is no entry in the Start menu."
value() { "$wine" reg query "HKCU\\$1" "${@:2}" | tr -d '\r' | sed -n 's/.*REG_[A-Z_]*  *//p'; }
[ "$(value 'Software\Classes\.qvx' /ve)" = Quorvane.Web ] || die "The file type is not registered."
[ "$(value 'Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvane' /v DisplayVersion)" = \
    "$(version)" ] || die "The list of programs has another version."
in_windows=$(value 'Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvane' /v InstallLocation)
[ "$(value Environment /v Path)" = "C:\\tools;%USERPROFILE%\\bin;$in_windows" ] ||
    die "The PATH is not what it should be."

# ---- A web opened by its type, from a folder whose path the program could not take --------------

# Wine's explorer does not look at what is registered for one user, so the command is run as it is.
deep='a folder with a rather long name/and in it another one of the kind/so'
mkdir -p "$WINEPREFIX/drive_c/$deep"
cp "$root/samples/guide.qvx" "$WINEPREFIX/drive_c/$deep/my web.qvx"
command=$(value 'Software\Classes\Quorvane.Web\shell\open\command' /ve)
printf '%s\r\n' "${command/'%1'/"C:\\${deep//'/'/'\'}\\my web.qvx"}" >open.bat
"$wine" cmd /c open.bat >>wine.log 2>&1 &
is_open() { xdotool search --onlyvisible --name '^Quorvane - my web'; }
wait_until 40 is_open || die "A web does not open by its type."
xdotool search --onlyvisible --name '^Quorvane - my web' windowfocus --sync
xdotool key ctrl+q
is_gone() { ! is_open; }
wait_until 20 is_gone || die "The window stays."
wineserver -w

# ---- Removed ------------------------------------------------------------------------------------

"$wine" "$installed/Uninstall.exe" /S
is_removed() { [ ! -d "$installed" ]; }
wait_until 20 is_removed || die "The uninstaller leaves $(ls "$installed")."
wineserver -w
keys >keys.after
disk >disk.after
diff keys.before keys.after || die "Registry keys are left."
diff disk.before disk.after || die "Files are left."
