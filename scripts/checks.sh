# shellcheck shell=bash
# Checks of the tree that are not programs: each is one function, silent when all is well, and counts
# as one test. Sourced by test.sh after common.sh. What passed is remembered in build/checks/ by the
# bytes that it looked at.

checks=$build/checks

# Every source of ours, one a line; arguments are patterns of names.
source_files() {
    local pattern names=()
    for pattern in "$@"; do
        names+=(-o -name "$pattern")
    done
    find core web report file program platform cli shell desktop handheld pane resources tests bench \
        -type f \( "${names[@]:1}" \) 2>/dev/null | LC_ALL=C sort
}

# digest FILE...: of the names and the bytes.
digest() { sha256sum "$@" | sha256sum | cut -c 1-40; }

# once KEY COMMAND...: runs the command unless it succeeded before under this key.
once() {
    local stamp=$checks/$1
    shift
    [ -f "$stamp" ] && return
    "$@" && touch "$stamp"
}

# ---- Layout of the text -------------------------------------------------------------------------

check_format() {
    local files
    python3 scripts/check_tree.py style || return
    mapfile -t files < <(source_files '*.cpp' '*.h')
    once "format-$(digest .clang-format "${files[@]}")" \
        clang-format --dry-run -Werror "${files[@]}"
}

check_includes() { python3 scripts/check_tree.py includes; }

check_own_header_first() { python3 scripts/check_tree.py first; }

check_circles() { python3 scripts/check_tree.py circles; }

check_sources() { python3 scripts/check_tree.py sources; }

check_seam() { python3 scripts/check_tree.py seam; }

check_messages() { python3 scripts/check_messages.py; }

# ---- Headers that compile alone -----------------------------------------------------------------

compile_header() {
    local options=(-std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        -Wsign-conversion -Werror -I. -x c++ -include "$1" /dev/null)
    case $1 in
    shell/* | desktop/* | handheld/* | pane/* | resources/* | platform/windows/*)
        "$mingw-g++-posix" -DUNICODE -D_UNICODE -Idesktop/include \
            -isystem "$build/scintilla/include" "${options[@]}"
        ;;
    *) g++ "${options[@]}" ;;
    esac
}

check_headers() {
    local headers key
    mapfile -t headers < <(source_files '*.h' | grep -Ev '^(tests|bench)/')
    key=$(digest "${headers[@]}")
    once "headers-$key" compile_headers "${headers[@]}"
}

compile_headers() {
    export -f compile_header
    export build mingw
    printf '%s\n' "$@" | xargs -P "$(nproc)" -I{} bash -c 'compile_header "$1"' - {}
}

# ---- clang-tidy, and the handheld ---------------------------------------------------------------

check_tidy() { python3 scripts/check_tidy.py "$checks"; }

check_imports() { python3 scripts/check_imports.py build/handheld/*.exe build/handheld/*.dll; }
