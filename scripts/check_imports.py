#!/usr/bin/env python3
"""Holds what the program calls against the lists in handheld/.

    check_imports.py BUILD    BUILD: the windows build's folder

The lists, one a library of the handheld, name the functions that the program may import there. The
engine's and the shell's objects are made for desktop Windows, so a call that only a desktop has
shows as a name that no list holds. A name in a list that nothing calls is a fault too.
"""

import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
TOOLS = "x86_64-w64-mingw32-"

# What this compiler's headers and 64 bits make of a function that the handheld has by another name.
HANDHELD_NAMES = {
    "_setjmp": "setjmp",
    "__intrinsic_setjmpex": "setjmp",
    "__mingw_vsprintf": "sprintf",
    "__mingw_sprintf": "sprintf",
    "__mingw_vsnprintf": "_snprintf",
    "__mingw_snprintf": "_snprintf",
    "__mingw_vsscanf": "sscanf",
    "__mingw_vfprintf": "fprintf",
    "SetWindowLongPtrW": "SetWindowLongW",
    "GetWindowLongPtrW": "GetWindowLongW",
}

# Calls that a compiler makes or drops as it likes.
COMPILERS_OWN = {"memcpy", "memmove", "memset", "memcmp"}

# What each of the two platforms defines for itself, besides what platform/ holds: declared in
# desktop/frame.h.
SEAM = {"desktop_idle()"}

REASONS = {
    "___chkstk_ms": "a stack frame of a page or more",
    "__gxx_personality_seh0": "exceptions",
    "__cxa_guard_acquire": "a static that is made on first use",
}


def read_lists():
    """Returns {name: list file}."""
    names = {}
    for path in sorted((ROOT / "handheld").glob("*.def")):
        for line in path.read_text(encoding="ascii").splitlines():
            match = re.fullmatch(r"\s+(\w+)(\s+@\d+ NONAME)?", line)
            if match and match[1] in names:
                sys.exit(f"{match[1]} stands in {names[match[1]]} and in {path.name}")
            if match:
                names[match[1]] = path.name
    return names


def list_objects(build, folder):
    """The objects that the build makes now; older ones may lie beside them."""
    commands = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    outputs = (re.search(r" -o (\S+\.obj) ", one["command"]) for one in commands)
    return [build / one[1] for one in outputs if one and one[1].startswith(folder)]


def read_objects(objects):
    """Returns (names that the objects define, {name they miss: an object that does})."""
    defined, missing = set(), {}
    # Named as what they are, they are not asked for what they hold for the link as one piece.
    command = [TOOLS + "nm", "--target=pe-x86-64", "-A", "-P", *objects]
    output = subprocess.run(command, capture_output=True, text=True,
                            check=True).stdout if objects else ""
    for line in output.splitlines():
        place, name, kind = line.rsplit(":", 1)[0], *line.rsplit(":", 1)[1].split()[:2]
        if kind == "U":
            missing.setdefault(name.removeprefix("__imp_"), pathlib.Path(place).name)
        elif kind.isupper() or kind in "wvu":
            defined.add(name)
    return defined, missing


def plain_name(name):
    """A C++ name as it is written, any other as the handheld spells it."""
    if name.startswith("_Z"):
        return subprocess.run([TOOLS + "c++filt", name], capture_output=True, text=True,
                              check=True).stdout.strip()
    return HANDHELD_NAMES.get(name, name)


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    build = pathlib.Path(arguments[0])
    lists = read_lists()
    defined, missing = read_objects(list_objects(build, "CMakeFiles/quorvane_engine.dir/"))
    if not defined:
        sys.exit("there are no objects of the engine")
    shell_defined, shell_missing = read_objects(list_objects(build, "shell/CMakeFiles/"))
    defined |= shell_defined
    missing = shell_missing | missing
    of_the_system, _ = read_objects(list_objects(build, "platform/CMakeFiles/quorvane_platform.dir/"))
    defined |= of_the_system
    used, faults = set(), []
    for name, place in sorted(missing.items()):
        plain = plain_name(name)
        if name in defined or plain in SEAM:
            continue
        used.add(plain)
        if plain not in lists:
            faults.append(f"{place}: {REASONS.get(plain, plain)}: not in handheld/")
    for name in sorted(set(lists) - used - COMPILERS_OWN):
        faults.append(f"handheld/{lists[name]}: nothing calls {name}")
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main(sys.argv[1:])
