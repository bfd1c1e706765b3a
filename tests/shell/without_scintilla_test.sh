#!/usr/bin/env bash
# The tests of a program that finds no SciLexer.dll, from a folder that has none.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/common.sh"

set_up_wine
has_display || start_display 1024x768
folder=$build/windows/tests/without_scintilla
mkdir -p "$folder"
cp "$build/windows/tests/shell/shell_tests.exe" "$folder/"
cd "$folder"
rm -f SciLexer.dll
timeout 120 "$wine" shell_tests.exe '--gtest_filter=WithoutScintilla.*' | tee output.txt
grep -q 'PASSED.* 1 test' output.txt
