#!/usr/bin/env bash
# Builds everything, runs every test and ends with one line: N passed, N failed.
#
# ./test.sh            all of it
# ./test.sh native     the engine and qvx alone, without Windows, Wine and the handheld
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"
. "$root/scripts/checks.sh"
cd "$root"

passed=0
failed=0
results=$build/results

case "$*" in
"") with_windows=yes ;;
native) with_windows=no ;;
*) die "usage: ./test.sh [native]" ;;
esac

# report NAME PASSED FAILED: adds to the totals.
report() {
    passed=$((passed + $2))
    failed=$((failed + $3))
    say "$(printf '%-28s %4d passed, %d failed' "$1" "$2" "$3")"
}

# one NAME COMMAND...: a command that counts as one test; what it says is shown when it fails.
one() {
    local name=$1 log=$results/$1.log
    shift
    if "$@" >"$log" 2>&1; then
        report "$name" 1 0
    else
        tail -n 40 "$log" >&2
        report "$name" 0 1
    fi
}

# begin NAME COMMAND...: the same beside what comes next, which waits more than it works; its result
# is reported by finish NAME.
begin() {
    local name=$1 log=$results/$1.log
    shift
    rm -f "$results/$name.status"
    (
        status=0
        renice -n 10 -p $BASHPID >/dev/null
        "$@" >"$log" 2>&1 || status=$?
        echo "$status" >"$results/$name.status"
    ) &
}

finish() {
    local name=$1
    until [ -s "$results/$name.status" ]; do sleep 0.2; done
    if [ "$(cat "$results/$name.status")" = 0 ]; then
        report "$name" 1 0
    else
        tail -n 40 "$results/$name.log" >&2
        report "$name" 0 1
    fi
}

# suite NAME COMMAND...: a test program that writes results/NAME.xml. A program that does not get
# that far has failed as a whole.
suite() {
    local name=$1 xml=$results/$1.xml log=$results/$1.log status=0 good bad
    shift
    rm -f "$xml"
    timeout 600 "$@" >"$log" 2>&1 || status=$?
    if [ ! -s "$xml" ]; then
        tail -n 40 "$log" >&2
        say "$name did not come to its end (status $status)"
        report "$name" 0 1
        return
    fi
    read -r good bad < <(python3 scripts/count_results.py "$xml")
    if [ "$bad" = 0 ] && { [ $status != 0 ] || [ "$good" = 0 ]; }; then
        bad=1 # it broke off, or ran nothing
    fi
    [ "$bad" = 0 ] || grep -v -E '^\[ +(OK|RUN) +\]|Passed +[0-9.]+ sec$' "$log" | tail -n 60 >&2
    report "$name" "$good" "$bad"
}

run_native() {
    if build_preset "$1"; then
        suite "$1" ctest --test-dir "$build/$1" --output-junit "$results/$1.xml" --parallel "$(nproc)" \
            --output-on-failure --no-tests=error
    else
        report "$1" 0 1
    fi
}

# What is built for other systems. False, with a failed test for each, when one cannot be built.
build_cross() {
    local preset status=0
    build_scintilla
    for preset in windows handheld; do
        build_preset $preset || {
            report "$preset" 0 1
            status=1
        }
    done
    return $status
}

# A test program under Wine, which writes its results beside itself.
run_in_wine() {
    local name=$1 folder=$build/windows/tests/$1 status=0
    cd "$folder"
    rm -f results.xml
    "$wine" "${name}_tests.exe" --gtest_output=xml:results.xml || status=$?
    [ ! -f results.xml ] || cp results.xml "$results/$name.xml"
    return $status
}

# The Windows programs of tests/, and their folders' scripts (NAME_test.sh), which run
# the built program as a user does; each of those is one test.
run_windows() {
    local folder name script
    place_scintilla
    set_up_wine
    start_display 1024x768
    export -f run_in_wine
    export build results wine
    for folder in tests/desktop tests/shell tests/monkey; do
        name=$(basename "$folder")
        suite "$name" bash -c 'run_in_wine "$1"' - "$name"
        for script in "$folder"/*_test.sh; do
            [ ! -f "$script" ] || one "$(basename "$script" .sh)" timeout 300 bash "$script"
        done
    done
    place_small_pane
    suite small_pane bash -c 'run_in_wine small_pane'
    one pane_traces timeout 300 bash tests/pane/compare_traces.sh 4 1500
}

# The window's tests once more, beside the handheld's editing component.
place_small_pane() {
    local folder=$build/windows/tests/small_pane
    mkdir -p "$folder"
    cp "$build/windows/tests/shell/shell_tests.exe" "$folder/small_pane_tests.exe"
    cp "$build/windows/pane/SciLexer.dll" "$folder/"
}

# The handheld's files, what makes them, and the program in the emulator: every *_test.py of
# tests/handheld. (Its other tests run with the native and the arm build.)
run_handheld() {
    local log=$results/handheld.log ran bad
    one handheld_imports check_imports
    one handheld_package scripts/package_handheld.sh
    timeout 600 "$debian_python" -m unittest discover -s tests/handheld -t . -p '*_test.py' \
        >"$log" 2>&1 || tail -n 60 "$log" >&2
    ran=$(sed -n 's/^Ran \([0-9]*\) tests\? in .*/\1/p' "$log")
    bad=$(grep -c -E '^(FAIL|ERROR): ' "$log" || true)
    [ "${ran:-0}" -gt 0 ] && grep -q -E '^(OK|FAILED)' "$log" || bad=$((bad + 1)) # it broke off
    ran=${ran:-0}
    report handheld $((ran > bad ? ran - bad : 0)) "$bad"
}

# The packages, which are made of what stands in build/, and what a user does with them.
run_packages() {
    if ! scripts/package.sh --without-handheld; then
        report packages 0 1
        return
    fi
    one package_debian timeout 300 bash tests/packages/debian_test.sh
    one package_windows timeout 300 bash tests/packages/windows_test.sh
}

install_packages "${packages_native[@]}" "${packages_arm[@]}" "${packages_check[@]}"
[ $with_windows = no ] ||
    install_packages "${packages_windows[@]}" "${packages_wine[@]}" "${packages_handheld[@]}" \
        "${packages_package[@]}"
mkdir -p "$results" "$checks"

one format check_format
one includes check_includes
one own_header_first check_own_header_first
one circles check_circles
one sources check_sources
one seam check_seam
one messages check_messages
run_native native
one tour python3 tests/packages/tour_test.py "$build/native/cli/qvx" README.md docs/qvx.md
one completion python3 tests/packages/completion_test.py "$build/native/cli/qvx" "$build/native/cli/pages"
run_native sanitize
run_native arm
if [ $with_windows = yes ] && build_cross; then
    begin headers_compile_alone check_headers
    begin clang_tidy check_tidy
    run_windows
    run_handheld
    run_packages
    finish headers_compile_alone
    finish clang_tidy
fi

printf '%s passed, %s failed\n' "$passed" "$failed"
[ "$failed" = 0 ]
