#!/usr/bin/env bash
# Measures the engine against its peers and prints the tables of docs/performance.md.
#
# ./bench/run.sh [ROUNDS]    of each job, 40 unless said
#
# Times need a machine that does nothing else; the counts of instructions do not.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
cd "$root"

install_packages "${packages_native[@]}" "${packages_bench[@]}"
build_preset bench
webs=$build/bench/webs
mkdir -p "$webs"
"$build/bench/bench/make_webs" "$webs"
cp samples/guide.qvx "$webs"
# XML parsers want one element around everything: the tag that a web file closes without opening.
for web in "$webs"/*.qvx; do
    { printf '<eof>' && cat "$web"; } >"$web.xml"
done
exec python3 bench/measure.py "$build/bench" "${1:-40}"
