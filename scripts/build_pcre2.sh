#!/usr/bin/env bash
# Leaves build/pcre2/libpcre2-8.a, the library of regular expressions for Windows, and its header in
# build/pcre2/include. Debian has it built for its own machines alone, so it is compiled from Debian's
# sources, once. The build of qvx.exe runs this.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

place=$build/pcre2

# What a mirror lists it may no longer have, when it is about to be replaced: then the release's own.
download() {
    local release source_options
    release=$(. /etc/os-release && echo "${VERSION_CODENAME:-stable}")
    source_lists
    mkdir -p "$place/download"
    cd "$place/download" && apt-get "${source_options[@]}" update &&
        { apt-get "${source_options[@]}" source --download-only pcre2 ||
            apt-get "${source_options[@]}" source --download-only "pcre2/$release"; }
}

compile() {
    rm -rf "$place/tree" "$place/include" && mkdir "$place/include" &&
        dpkg-source --no-check --no-copy -x "$place"/download/pcre2_*.dsc "$place/tree" &&
        cmake -G Ninja -S "$place/tree" -B "$place/tree/build" -DCMAKE_BUILD_TYPE=MinSizeRel \
            -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" -DBUILD_SHARED_LIBS=OFF \
            -DPCRE2_SUPPORT_JIT=OFF -DPCRE2_BUILD_PCRE2GREP=OFF -DPCRE2_BUILD_TESTS=OFF &&
        cmake --build "$place/tree/build" --target pcre2-8-static &&
        cp "$place/tree/build/pcre2.h" "$place/include/" &&
        mv "$place/tree/build/libpcre2-8.a" "$place/" &&
        rm -rf "$place/tree"
}

[ -f "$place/libpcre2-8.a" ] && exit
mkdir -p "$place"
{ (download) && compile; } >"$place/build.log" 2>&1 || {
    tail -n 20 "$place/build.log" >&2
    die "The library of regular expressions could not be built (see build/pcre2/build.log)."
}
