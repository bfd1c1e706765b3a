#!/usr/bin/env python3
"""Holds what the handheld's files import against the lists in handheld/.

    check_imports.py FILE...           one line for each fault, exit status 1 if any
    check_imports.py --list FILE...    prints the imports of each file

The lists, one a library of the handheld, name the functions that the program may import there: by
name, or by ordinal where the library exports no name. A name in a list that no file imports is a
fault too.
"""

import pathlib
import re
import struct
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Calls that a compiler makes or drops as it likes.
COMPILERS_OWN = {"memcpy", "memmove", "memset", "memcmp"}


def read_lists():
    """Returns {(library, name or ordinal): name}."""
    names = {}
    for path in sorted((ROOT / "handheld").glob("*.def")):
        library = None
        for line in path.read_text(encoding="ascii").splitlines():
            match = re.fullmatch(r"\s+(\w+)(?:\s+@(\d+) NONAME)?", line)
            if line.startswith("LIBRARY "):
                library = line.split()[1]
            elif match:
                names[library, int(match[2]) if match[2] else match[1]] = match[1]
    return names


class Image:
    """A PE file of 32 bits, as far as its imports go."""

    def __init__(self, path):
        self.data = path.read_bytes()
        start, = struct.unpack_from("<I", self.data, 60)
        sections, = struct.unpack_from("<H", self.data, start + 6)
        optional, = struct.unpack_from("<H", self.data, start + 20)
        self.imports_at, = struct.unpack_from("<I", self.data, start + 24 + 104)
        self.sections = [struct.unpack_from("<4I", self.data, start + 24 + optional + 40 * i + 8)
                         for i in range(sections)]

    def place(self, rva):
        for _, address, size, offset in self.sections:
            if address <= rva < address + size:
                return rva - address + offset
        raise ValueError(f"{rva:#x} is in no section")

    def text(self, rva):
        start = self.place(rva)
        return self.data[start:self.data.index(b"\0", start)].decode("ascii")

    def words(self, rva):
        """The words there, up to a zero."""
        for at in range(self.place(rva), len(self.data), 4):
            word, = struct.unpack_from("<I", self.data, at)
            if word == 0:
                return
            yield word

    def imports(self):
        """Yields (library without .dll, name or ordinal)."""
        at = self.place(self.imports_at)
        while True:
            lookup, _, _, name, addresses = struct.unpack_from("<5I", self.data, at)
            if addresses == 0:
                return
            library = self.text(name).removesuffix(".dll")
            for word in self.words(lookup):
                yield library, word & 0xFFFF if word >> 31 else self.text(word + 2)
            at += 20


def print_imports(path, lists):
    rows = sorted({(library, lists.get((library, name), str(name)))
                   for library, name in Image(path).imports()})
    print(f"{path.name}: {len(rows)} imports")
    for library in sorted({library for library, _ in rows}):
        print(f"  {library}: " + ", ".join(name for other, name in rows if other == library))


def main(arguments):
    paths = [pathlib.Path(name) for name in arguments if name != "--list"]
    if not paths:
        sys.exit(__doc__)
    lists = read_lists()
    if "--list" in arguments:
        for path in paths:
            print_imports(path, lists)
        return
    used, faults = set(), []
    for path in paths:
        imports = set(Image(path).imports())
        used |= imports
        faults += [f"{path.name}: {library} {name}: not in handheld/"
                   for library, name in sorted(imports - set(lists), key=str)]
    faults += [f"handheld/: nothing imports {lists[row]}"
               for row in sorted(set(lists) - used, key=str) if lists[row] not in COMPILERS_OWN]
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main(sys.argv[1:])
