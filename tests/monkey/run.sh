#!/usr/bin/env bash
# Lets the monkey loose: tests/monkey/run.sh [STEPS [SEED]]
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
cd "$root"
build_scintilla
build_preset windows monkey_tests
place_scintilla
set_up_wine
start_display 1024x768
export QUORVANE_MONKEY_STEPS=${1:-100000} QUORVANE_MONKEY_SEED=${2:-1}
cd "$build/windows/tests/monkey"
status=0
time "$wine" monkey_tests.exe >steps.log 2>&1 || status=$?
tail -n 40 steps.log
exit $status
