#!/usr/bin/env bash
# Builds the handheld's program and packs all that a device needs: build/quorvane-handheld-VERSION.zip
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

install_packages "${packages_native[@]}" "${packages_windows[@]}" "${packages_handheld[@]}"
build_handheld || exit 1

name=quorvane-handheld-$(version)
rm -rf "$build/$name" "$build/$name.zip"
mkdir "$build/$name"
cp build/handheld/Quorvane.exe build/handheld/SciLexer.dll samples/guide.qvx "$build/$name/"
# For readers whose lines end with CR LF.
sed 's/$/\r/' handheld/install.txt >"$build/$name/install.txt"
sed 's/$/\r/' LICENSE >"$build/$name/licence.txt"
(cd "$build" && python3 -m zipfile -c "$name.zip" "$name")
rm -rf "${build:?}/$name"
say "The package is build/$name.zip ($(stat -c %s "$build/$name.zip") bytes)."
