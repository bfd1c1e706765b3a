#!/usr/bin/env python3
"""Writes an assembly source with a way into each function that the system's libraries export.

    make_imports.py OUTPUT.s LIST.def...

A list names a library (LIBRARY) and what is called of it (EXPORTS: a name, or a name with @ORDINAL
NONAME). Each function gets a thunk of its name, which jumps to where the loader has put its address
(__imp_NAME, a word in section .iat.LIBRARY). The linker drops those that nothing calls.
"""

import re
import sys

THUNK = """\
    .section .text.import.{name}, "ax", %progbits
    .global {name}
    .type {name}, %function
{name}:
    ldr ip, 1f
    ldr pc, [ip]
1:  .word __imp_{name}
    .size {name}, . - {name}
    .section .iat.{library}.{name}, "aw", %progbits
    .global __imp_{name}
    .type __imp_{name}, %object
__imp_{name}:
    .word 0
    .size __imp_{name}, 4
"""


def read_list(path):
    """Returns (library, {name: ordinal or None})."""
    library, names = None, {}
    with open(path, encoding="ascii") as lines:
        for line in lines:
            function = re.fullmatch(r"\s+(\w+)(?:\s+@(\d+) NONAME)?\s*", line)
            if line.startswith("LIBRARY "):
                library = line.split()[1]
            elif function:
                names[function[1]] = int(function[2]) if function[2] else None
    return library, names


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    with open(arguments[0], "w", encoding="ascii") as output:
        output.write("    .syntax unified\n    .arm\n")
        for path in arguments[1:]:
            library, names = read_list(path)
            for name in names:
                output.write(THUNK.format(name=name, library=library))
        output.write('    .section .note.GNU-stack, "", %progbits\n')


if __name__ == "__main__":
    main(sys.argv[1:])
