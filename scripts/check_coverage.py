"""Prints gcovr's summary as a table and fails where too few branches of a file have run."""

import json
import sys

# Every branch of these, and most of the engine's as a whole (percent). The others have guards that
# only a wrong caller meets, and functions that the engine offers and no program calls.
COMPLETE = """
    core/names.cpp core/number_format.cpp core/text.cpp web/cell_numbers.cpp web/cell_text.cpp
    web/report_selection.cpp web/trail.cpp web/words.cpp file/web_tags.cpp
    file/written_names.cpp
""".split()
AIM = 94


def percent(part, whole):
    return 100 * part / whole if whole else 100


def row(name, f, mark=""):
    lines, branches = (
        f"{f[k + '_covered']:5}/{f[k + '_total']:<5}{percent(f[k + '_covered'], f[k + '_total']):6.1f} %"
        for k in ("line", "branch")
    )
    print(f"{name:28} {lines}  {branches}  {mark}")


def main(path):
    with open(path, encoding="utf-8") as file:
        summary = json.load(file)
    failed = False
    print(f"{'':28} {'lines':^19}  {'branches':^19}")
    for f in sorted(summary["files"], key=lambda f: f["filename"]):
        name = f["filename"]
        short = name in COMPLETE and f["branch_covered"] < f["branch_total"]
        failed |= short
        row(name, f, "all of them expected" if short else "")
    short = percent(summary["branch_covered"], summary["branch_total"]) < AIM
    row("engine", summary, f"at least {AIM} % expected" if short else "")
    return 1 if failed or short else 0


sys.exit(main(sys.argv[1]))
