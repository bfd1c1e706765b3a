# shellcheck shell=bash disable=SC2034
# Shared by run.sh and test.sh: packages, the Scintilla component, Wine and a display.
# Sourced from the repository's root with `set -euo pipefail`; everything it makes lies in build/.
# Each step looks first whether its result is there, so that a second run costs next to nothing.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build
mingw=x86_64-w64-mingw32

packages_build=(cmake ninja-build python3 libcli11-dev nlohmann-json3-dev) # for any build here
packages_native=("${packages_build[@]}" g++ clang libncurses-dev libpcre2-dev
    libgtest-dev git python3-pyte) # and what its tests need
packages_arm=(g++-arm-linux-gnueabi qemu-user googletest)
packages_windows=(g++-mingw-w64-x86-64-posix librsvg2-bin googletest dpkg-dev make)
packages_handheld=(g++-arm-linux-gnueabi g++-mingw-w64-i686-posix librsvg2-bin
    python3-unicorn python3-pefile python3-pil fonts-dejavu-core fonts-dejavu-extra)
packages_wine=(wine wine64 fonts-wine fonts-dejavu-extra xvfb xdotool imagemagick)
packages_check=(clang-format clang-tidy-19 chromium zsh fish)
packages_package=(lowdown nsis # besides those of the native and the windows build
    lintian mandoc man-db desktop-file-utils shared-mime-info) # what looks at the packages
packages_pictures=(chromium imagemagick)
packages_bench=(libbenchmark-dev libexpat1-dev libxml2-dev libpugixml-dev valgrind x11-utils ripgrep)

say() { printf '%s\n' "$*" >&2; }

die() {
    say "$*"
    exit 1
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# apt_get ARGUMENT...: never asks, and waits for another apt to finish.
apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -y -q -o DPkg::Lock::Timeout=600 "$@"
}

missing_packages() {
    local name
    for name in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] ||
            printf '%s\n' "$name"
    done
}

# install_packages NAME...: installs those that are missing.
install_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} = 0 ] && return
    say "Installing ${missing[*]}"
    mkdir -p "$build"
    {
        apt_get install --no-install-recommends "${missing[@]}" ||
            { apt_get update && apt_get install --no-install-recommends "${missing[@]}"; }
    } >"$build/packages.log" 2>&1 || {
        tail -n 20 "$build/packages.log" >&2
        die "The packages could not be installed (see build/packages.log)."
    }
}

# build_preset PRESET [TARGET]: configures once, then builds what changed. False when that fails.
build_preset() {
    local preset=$1 log=$build/$1.log target=()
    [ $# = 1 ] || target=(--target "$2")
    mkdir -p "$build"
    {
        { [ -f "$build/$preset/build.ninja" ] || cmake --preset "$preset"; } &&
            cmake --build --preset "$preset" --parallel "${QUORVANE_JOBS:-$(nproc)}" "${target[@]}"
    } >"$log" 2>&1 || {
        tail -n 60 "$log" >&2
        say "The $preset build failed (see build/$preset.log)."
        return 1
    }
}

# Prints which version this is; CMakeLists.txt alone says it.
version() {
    sed -n 's/^project(quorvane VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt" | grep . ||
        die "CMakeLists.txt does not say which version this is."
}

# ---- Scintilla ----------------------------------------------------------------------------------

# Prints the apt options that give source packages without touching the system's own lists: a copy
# of the machine's Debian sources, asked for sources only, with a list directory in build/.
source_lists() {
    local lists=$build/scintilla/lists sources=$build/scintilla/sources file
    local cache=$build/scintilla/cache
    rm -rf "$sources"
    mkdir -p "$lists/partial" "$cache/archives/partial" "$sources"
    for file in /etc/apt/sources.list.d/*.sources; do
        grep -qs 'debian-archive-keyring\|/debian' "$file" || continue
        sed 's/^Types:.*/Types: deb-src/' "$file" >"$sources/$(basename "$file")"
    done
    for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        grep -qs '^deb .*/debian' "$file" || continue
        sed -n 's/^deb \(.*\/debian.*\)/deb-src \1/p' "$file" >"$sources/$(basename "$file" .list).list"
    done
    source_options=(-q -o "Dir::Etc::sourcelist=/dev/null" -o "Dir::Etc::sourceparts=$sources"
        -o "Dir::State::Lists=$lists" -o "Dir::Cache=$cache" -o "APT::Sandbox::User=root")
}

download_scintilla() {
    local source_options
    [ -f "$build/scintilla/download/complete" ] && return
    source_lists
    mkdir -p "$build/scintilla/download"
    (
        cd "$build/scintilla/download"
        apt-get "${source_options[@]}" update &&
            apt-get "${source_options[@]}" source --download-only scite &&
            touch complete
    ) || return 1
}

compile_scintilla() {
    local tree=$build/scintilla/tree
    rm -rf "$tree"
    (cd "$build/scintilla/download" && dpkg-source --no-check -x scite_*.dsc "$tree") || return 1
    # Size matters more than speed for a component that colours a few screenfuls of text. Nothing here
    # searches by regular expressions, which take a third of it. Aligned like pages, the file can be
    # mapped as it is, so that only what is used comes into memory.
    sed -i 's/-O3/-Os/g' "$tree"/scintilla/win32/makefile || return 1
    make -C "$tree/scintilla/win32" -j"${QUORVANE_JOBS:-$(nproc)}" NO_CXX11_REGEX=1 \
        CXX="$mingw-g++-posix" AR="$mingw-ar" RANLIB="$mingw-ranlib" WINDRES="$mingw-windres" \
        CXXFLAGS=-ffunction-sections \
        LDFLAGS='-shared -static -mwindows -Wl,--gc-sections -Wl,--file-alignment=4096' || return 1
    "$mingw-strip" -o "$build/scintilla/SciLexer.new" "$tree/scintilla/bin/Scintilla.dll" || return 1
    mkdir -p "$build/scintilla/include"
    cp "$tree"/scintilla/include/{Scintilla,Sci_Position}.h "$build/scintilla/include/" || return 1
    mv "$build/scintilla/SciLexer.new" "$build/scintilla/SciLexer.dll"
    echo $scintilla_state >"$build/scintilla/ready"
    rm -rf "$tree"
}

scintilla_state=2 # counts the versions of how it is built

# Leaves build/scintilla/SciLexer.dll, and the headers of its messages in build/scintilla/include.
build_scintilla() {
    [ "$(cat "$build/scintilla/ready" 2>/dev/null)" = $scintilla_state ] && return
    say "Building SciLexer.dll (once)"
    mkdir -p "$build/scintilla"
    { download_scintilla && compile_scintilla; } >"$build/scintilla/build.log" 2>&1 || {
        tail -n 20 "$build/scintilla/build.log" >&2
        die "SciLexer.dll could not be built (see build/scintilla/build.log)."
    }
}

# ---- The handheld -------------------------------------------------------------------------------

debian_python=/usr/bin/python3 # the one that Debian's packages for it are for

# Leaves Quorvane.exe and SciLexer.dll for the handheld in build/handheld, each with its map.
build_handheld() {
    build_scintilla # for its headers
    build_preset handheld
}

# emulate_handheld ARGUMENT...: the emulator with these two files; see docs/handheld.md.
emulate_handheld() {
    (cd "$root" && "$debian_python" -m handheld.emulator --exe "$build/handheld/Quorvane.exe" \
        --dll "$build/handheld/SciLexer.dll" "$@")
}

# ---- The windows build --------------------------------------------------------------------------

# Prints where it has put a program.
find_program() {
    local folder
    for folder in "" /shell /cli; do
        [ ! -f "$build/windows$folder/$1" ] || {
            printf '%s\n' "$build/windows$folder/$1"
            return
        }
    done
    die "The windows build made no $1."
}

# Puts SciLexer.dll beside the program and the tests, which load it.
place_scintilla() {
    local folder
    for folder in "$build"/windows "$build"/windows/shell "$build"/windows/tests/*; do
        if ls "$folder"/*.exe >/dev/null 2>&1; then
            cmp -s "$build/scintilla/SciLexer.dll" "$folder/SciLexer.dll" ||
                cp "$build/scintilla/SciLexer.dll" "$folder/"
        fi
    done
}

# ---- Wine and the display -----------------------------------------------------------------------

# Makes the private prefix and exports what Wine needs to know about it. Sets $wine.
set_up_wine() {
    local state=4 # counts the versions of what is set up below
    export WINEPREFIX=$build/wine WINEARCH=win64 WINEDEBUG=-all \
        WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
    # Wine writes file names as the locale can; without one it refuses all but plain letters.
    [ "$(locale charmap)" = UTF-8 ] || export LC_ALL=C.UTF-8
    wine=$(command -v wine)
    [ "$(cat "$WINEPREFIX/ready" 2>/dev/null)" = $state ] && return
    say "Setting up Wine in build/wine (once)"
    mkdir -p "$build"
    {
        "$wine" wineboot --init && wineserver -w && link_wine_fonts &&
            "$wine" regedit /S "$root/scripts/wine.reg" && wineserver -w &&
            echo $state >"$WINEPREFIX/ready"
    } >"$build/wine.log" 2>&1 || die "Wine could not be set up (see build/wine.log)."
}

# Debian's Wine does not look where Debian puts its fonts. Its Tahoma stays away: the bold letters
# are drawn as bitmaps of other widths than measured up to 9 points, and thin above. wine.reg puts
# DejaVu Sans Condensed in its place, which is as narrow and all outlines.
link_wine_fonts() {
    local fonts=$WINEPREFIX/drive_c/windows/Fonts
    rm -f "$fonts"/tahoma*.ttf
    dpkg -L fonts-wine | grep -E '/fonts/[^/]+\.(ttf|fon)$' | grep -v '/tahoma' |
        xargs -I{} ln -sf {} "$fonts/"
}

has_display() { [ -n "${DISPLAY:-}" ] && xdotool getdisplaygeometry >/dev/null 2>&1; }

# start_display WIDTHxHEIGHT: exports DISPLAY for a virtual display of our own, which ends with the
# script, and with it every program that shows a window there.
start_display() {
    local number
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp 3>"$number" >/dev/null 2>&1 &
    display_pid=$!
    trap stop_display EXIT
    wait_until 20 test -s "$number" || die "The virtual display did not start."
    DISPLAY=:$(cat "$number")
    export DISPLAY
    rm -f "$number"
}

stop_display() {
    [ -z "${display_pid:-}" ] || kill "$display_pid" 2>/dev/null || true
    display_pid=
}

# wine_desktop NAME WIDTHxHEIGHT PROGRAM [ARGUMENT]: runs a program inside a desktop window of
# Wine's own, which gives it a frame and looks after the focus where there is no window manager.
wine_desktop() {
    local name=$1 size=$2
    shift 2
    "$wine" explorer "/desktop=$name,$size" "$@"
}

# wait_until SECONDS COMMAND...: true as soon as the command succeeds, false when the time is over.
wait_until() {
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        [ $SECONDS -lt "$end" ] || return 1
        sleep 0.1
    done
}
