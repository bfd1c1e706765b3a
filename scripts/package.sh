#!/usr/bin/env bash
# Makes every package of this version, each anew, in build/packages:
#
#     quorvane_VERSION_amd64.deb       qvx, its pages, and the window for use with Wine
#     quorvane-VERSION-windows.zip     the window and qvx for Windows, to unpack anywhere
#     quorvane-VERSION-setup.exe       the same with an installer
#     quorvane-handheld-VERSION.zip    the program for the handheld; not with --without-handheld
#     SHA256SUMS                       of these files
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

with_handheld=yes
case "$*" in
"") ;;
--without-handheld) with_handheld=no ;;
*) die "usage: scripts/package.sh [--without-handheld]" ;;
esac

# pack PRESET: builds what belongs to the preset's packages, then packs it.
pack() {
    local log=$build/packages.$1.log
    {
        cmake --preset "$1" -DQUORVANE_PACKAGES=ON &&
            cmake --build --preset "$1" --parallel "${QUORVANE_JOBS:-$(nproc)}" \
                --target package_files &&
            (cd "$build/$1" && cpack)
    } >"$log" 2>&1 || {
        tail -n 40 "$log" >&2
        die "The packages of the $1 build could not be made (see build/packages.$1.log)."
    }
}

install_packages "${packages_native[@]}" "${packages_windows[@]}" "${packages_package[@]}"
umask 022
mkdir -p "$build/packages"
find "$build/packages" -mindepth 1 -maxdepth 1 -exec rm -rf {} +
build_scintilla
pack windows
pack native
rm -rf "$build/packages/_CPack_Packages"
if [ $with_handheld = yes ]; then
    scripts/package_handheld.sh
    cp "$build/quorvane-handheld-$(version).zip" "$build/packages/"
fi
(cd "$build/packages" && sha256sum -- *[-_]"$(version)"* >SHA256SUMS)
say "The packages are in build/packages:"
(cd "$build/packages" && stat -c '%9s  %n' -- *) >&2
