#!/usr/bin/env python3
"""Checks of the sources' text that no compiler makes. One line for each fault, exit status 1 if any.

    check_tree.py includes    includes run downwards only, and the engine is free of the platform
    check_tree.py first       a source includes its own header first
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# What each folder may include, itself apart.
BELOW = {
    "core": set(),
    "platform": {"core"},
    "web": {"core"},
    "report": {"core", "web"},
    "file": {"core", "web", "report"},
    "cli": {"core", "web", "report", "file", "platform"},
    "shell": {"core", "web", "report", "file", "platform", "resources", "desktop"},
    "desktop": {"resources"},
    "resources": set(),
}
ENGINE = {"core", "web", "report", "file"}

# Of desktop/, a shell source may know only what the handheld can have too.
SHELL_OF_DESKTOP = {"desktop/frame.h"}

# Headers of the language that the engine may use: none that brings exceptions, streams, memory
# management of its own or the platform.
ENGINE_SYSTEM_HEADERS = {
    "algorithm", "array", "bit", "cctype", "cfloat", "climits", "cmath", "csetjmp", "cstdarg",
    "cstddef", "cstdint", "cstdio", "cstdlib", "cstring", "initializer_list", "iterator", "limits",
    "span", "string_view", "type_traits", "utility",
}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def sources():
    for folder in BELOW:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                yield folder, path


def includes_of(path):
    """Yields (line number, whether quoted, name)."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match[1] == '"', match[2]


def include_fault(folder, quoted, name):
    if not quoted:
        if folder in ENGINE and name not in ENGINE_SYSTEM_HEADERS:
            return f"the engine does not use <{name}>"
        return None
    other = name.split("/")[0]
    if not (ROOT / name).is_file():
        return f'"{name}" is not spelled from the root'
    if other != folder and other not in BELOW[folder]:
        return f"{folder}/ does not include {other}/"
    if folder == "shell" and other == "desktop" and name not in SHELL_OF_DESKTOP:
        return f'the handheld has no "{name}"'
    return None


def check_includes():
    for folder, path in sources():
        for number, quoted, name in includes_of(path):
            fault = include_fault(folder, quoted, name)
            if fault:
                yield f"{path.relative_to(ROOT)}:{number}: {fault}"


def check_first():
    for _, path in sources():
        own = path.with_suffix(".h")
        if path.suffix != ".cpp" or not own.is_file():
            continue
        first = next((name for _, _, name in includes_of(path)), None)
        if first != str(own.relative_to(ROOT)):
            yield f"{path.relative_to(ROOT)}: its own header is not included first"


def main(arguments):
    checks = {"includes": check_includes, "first": check_first}
    if len(arguments) != 1 or arguments[0] not in checks:
        sys.exit(__doc__)
    faults = list(checks[arguments[0]]())
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main(sys.argv[1:])
