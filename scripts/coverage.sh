#!/usr/bin/env bash
# Runs the engine's and qvx's tests and the saved fuzz corpus over an engine that counts, prints the
# lines and branches of each file that ran, and fails when they are fewer than asked for
# (scripts/check_coverage.py).
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
cd "$root"

install_packages "${packages_native[@]}" gcovr chromium
build_preset coverage
# A run whose files are kept small on purpose cannot write its counts, and must not say so.
export GCOV_ERROR_FILE=/dev/null
find "$build/coverage" -name '*.gcda' -delete
ctest --test-dir "$build/coverage" --exclude-regex '^unsigned_char' --parallel "$(nproc)" --output-on-failure \
    >"$build/coverage/tests.log" || {
    tail -n 60 "$build/coverage/tests.log"
    die "Tests failed; their coverage says nothing."
}
# A check that fails ends the program: that side of it counts as no branch.
gcovr --gcov-ignore-parse-errors --root . --object-directory "$build/coverage" \
    --filter '(core|web|report|file|program)/' --exclude-branches-by-pattern '.*CHECK\(.*' \
    --exclude-unreachable-branches --json-summary "$build/coverage/summary.json" \
    --html-details "$build/coverage/lines.html"
python3 scripts/check_coverage.py "$build/coverage/summary.json"
