#!/usr/bin/env bash
# The two editing components, driven alike: tests/pane/compare_traces.sh [SEEDS [STEPS [FIRST]]]
#
# For each seed the same random steps go to a pane of Scintilla and to one of pane/, and what both
# print is compared. Prints the first step that differs and those before it.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"
seeds=${1:-10} steps=${2:-10000} first=${3:-1}

set_up_wine
has_display || start_display 1024x768
cd "$build/windows/tests/pane"
cp "$build/scintilla/SciLexer.dll" scintilla.dll
cp "$build/windows/pane/SciLexer.dll" small.dll

trace() { "$wine" pane_trace.exe "$1.dll" "$2" "$steps" >"$1.txt"; }

for ((seed = first; seed < first + seeds; ++seed)); do
    trace scintilla "$seed"
    trace small "$seed"
    [ "$(wc -l <scintilla.txt)" -ge "$steps" ] || die "Seed $seed came to no end."
    cmp -s scintilla.txt small.txt && continue
    differs=$( (cmp scintilla.txt small.txt || true) | sed 's/.*line //')
    head -n "$differs" scintilla.txt | tail -n 12
    say "Seed $seed: this component says instead"
    sed -n "${differs}p" small.txt
    exit 1
done
say "$seeds seeds of $steps steps: no difference"
