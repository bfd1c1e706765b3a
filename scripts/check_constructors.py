#!/usr/bin/env python3
"""Finds globals that need a constructor: the window's own entry runs none.

    check_constructors.py OBJDUMP OBJECT...

The build of Quorvane.exe calls it before the link, which does not come about when there is one.
"""

import pathlib
import re
import subprocess
import sys

SECTION = re.compile(r"\s*\d+ \.(?:ctors|init_array|preinit_array|CRT\$XC)\S*\s+([0-9a-f]+) ")
FUNCTION = re.compile(r"(_GLOBAL__(?:sub_)?I_\S*)$")


def faults_of(objdump, path):
    output = subprocess.run([objdump, "-h", "-t", path], capture_output=True, text=True,
                            check=True).stdout
    lines = output.splitlines()
    sections = [one for one in map(SECTION.match, lines) if one and int(one[1], 16) > 0]
    functions = sorted({one[1] for one in map(FUNCTION.search, lines) if one})
    if sections or functions:
        yield f"{pathlib.Path(path).name}: a global needs a constructor, which nobody calls " \
              f"({', '.join(functions)})"


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    faults = [fault for path in arguments[1:] for fault in faults_of(arguments[0], path)]
    print("\n".join(faults), end="\n" if faults else "")
    sys.exit(1 if faults else 0)


main(sys.argv[1:])
