#!/usr/bin/env python3
"""Makes the handheld's executable out of what the linker left.

    make_pe.py program.elf --output Quorvane.exe --imports LIST.def... [--resources FILE.o]
               [--dll] [--stack BYTES] [--limit BYTES] [--map FILE]

The file is a PE (docs/handheld.md has the table that this follows): headers, then .text, .rdata and
.data as they were linked, .idata with the names that are imported, .rsrc with the resources, and
for a DLL .edata and .reloc. Every address in the ELF file is final; nothing is moved here.

--map writes a line for each function and each piece of data: address, size (hexadecimal), name.
"""

import argparse
import pathlib
import struct
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from make_imports import read_list  # noqa: E402

PAGE = 0x1000  # sections in memory
SECTOR = 0x200  # and in the file

MACHINE_ARM = 0x1C0
SUBSYSTEM_CE_GUI = 9
HEAP_RESERVE = 0x100000

READ, WRITE, EXECUTE = 0x40000000, 0x80000000, 0x20000000
CODE, INITIALISED, DISCARDABLE = 0x20, 0x40, 0x02000000


def fail(*faults):
    sys.exit("\n".join(f"make_pe: {fault}" for fault in faults))


def round_up(value, unit):
    return -(-value // unit) * unit


# ---- The ELF file -------------------------------------------------------------------------------

SHT_SYMTAB, SHT_NOBITS, SHT_REL = 2, 8, 9
SHN_ABSOLUTE = 0xFFF1
R_ARM_ABS32 = 2
RELATIVE = (1, 28, 29)  # branches, which move with what they lead to


class Elf:
    """Sections by name, symbols, and the addresses that hold addresses."""

    def __init__(self, path):
        self.data = pathlib.Path(path).read_bytes()
        if self.data[:7] != b"\x7fELF\x01\x01\x01":
            fail(f"{path} is no ELF file of 32 bits")
        self.entry, = struct.unpack_from("<I", self.data, 24)
        start, = struct.unpack_from("<I", self.data, 32)
        size, count, names = struct.unpack_from("<HHH", self.data, 46)
        self.headers = [struct.unpack_from("<10I", self.data, start + i * size)
                        for i in range(count)]
        self.names = [self.string(names, header[0]) for header in self.headers]
        self.symbols = list(self.read_symbols())

    def string(self, section, offset):
        start = self.headers[section][4] + offset
        return self.data[start:self.data.index(b"\0", start)].decode()

    def section(self, name):
        """Returns (address, bytes, size in memory)."""
        if name not in self.names:
            return 0, b"", 0
        _, kind, _, address, offset, size = self.headers[self.names.index(name)][:6]
        return address, b"" if kind == SHT_NOBITS else self.data[offset:offset + size], size

    def read_symbols(self):
        """Yields (name, address, size, type, section's number)."""
        for header in self.headers:
            if header[1] == SHT_SYMTAB:
                for at in range(header[4], header[4] + header[5], 16):
                    name, *place, info, _, section = struct.unpack_from("<IIIBBH", self.data, at)
                    yield self.string(header[6], name), *place, info & 15, section

    def relocations(self):
        """Yields (address, type, section's number of what it names) in what is loaded."""
        for header in self.headers:
            if header[1] == SHT_REL and self.headers[header[7]][3] != 0:
                for at in range(header[4], header[4] + header[5], 8):
                    place, info = struct.unpack_from("<II", self.data, at)
                    yield place, info & 255, self.symbols[info >> 8][4]


# ---- What a handheld's processor does not know --------------------------------------------------

# (mask, value, what it is), of the conditional instructions that came after armv4; the first row
# that fits counts, and None is what armv4 has.
LATER_INSTRUCTIONS = (
    (0x0FFFFFD0, 0x012FFF10, "bx or blx"),
    (0x0FFF0FF0, 0x016F0F10, "clz"),
    (0x0FF000F0, 0x01200070, "bkpt"),
    (0x0E1000D0, 0x000000D0, "ldrd or strd"),
    (0x0F900090, 0x01000080, "a multiplication of half words"),
    (0x0F9000F0, 0x01000050, "a saturating addition"),
    (0x0FB000F0, 0x01000090, None),  # swp
    (0x0F0000F0, 0x01000090, "ldrex or strex"),
    (0x0FD000F0, 0x00400090, "umaal or mls"),
    (0x0F000010, 0x06000010, "an instruction on media"),
    (0x0F000010, 0x07000010, "an instruction on media"),
    (0x0FF00000, 0x03000000, "movw"),
    (0x0FF00000, 0x03400000, "movt"),
    (0x0FFFFF00, 0x0320F000, "a hint"),
)
UNCONDITIONAL = 0xF  # as a condition: blx, pld and all that came later


def instruction_fault(word):
    if word >> 28 == UNCONDITIONAL:
        return "an instruction without a condition"
    return next((what for mask, value, what in LATER_INSTRUCTIONS if word & mask == value), None)


def code_faults(elf):
    """Looks at every instruction of .text; $a and $d mark where code and data begin."""
    address, text, _ = elf.section(".text")
    marks = {value: name[1] for name, value, *_ in elf.symbols
             if name.split(".")[0] in ("$a", "$d", "$t")}
    functions = {value: name for name, value, _, kind, _ in elf.symbols if kind == 2}
    mode, function = "d", "?"
    for offset in range(0, len(text), 4):
        mode = marks.get(address + offset, mode)
        function = functions.get(address + offset, function)
        word, = struct.unpack_from("<I", text, offset)
        fault = instruction_fault(word) if mode == "a" else "thumb code" if mode == "t" else None
        if fault:
            yield f"{function} at {address + offset:#x}: {fault} ({word:#010x})"


def constructor_faults(elf):
    """A word for each global that wants to be constructed when the program begins."""
    _, words, _ = elf.section(".constructors")
    functions = {value: name for name, value, _, kind, _ in elf.symbols if kind == 2}
    for place, in struct.iter_unpack("<I", words):
        yield f"a global needs a constructor, which nobody calls ({functions.get(place, '?')})"


# ---- Imports ------------------------------------------------------------------------------------


def find_imports(elf, lists):
    """Returns [(library, first address, [(name, ordinal)])]: each library has a run of addresses."""
    libraries = []
    places = {name.removeprefix("__imp_"): address for name, address, _, _, section in elf.symbols
              if name.startswith("__imp_") and section != 0}
    for path in lists:
        library, names = read_list(path)
        used = sorted((places.pop(name), name, ordinal) for name, ordinal in names.items()
                      if name in places)
        if used:
            first = used[0][0]
            if [place for place, *_ in used] != list(range(first, first + 4 * len(used), 4)):
                fail(f"the addresses of {library} do not follow one another")
            libraries.append((library, first, [one[1:] for one in used]))
    if places:
        fail(*(f"no list of imports holds {name}" for name in sorted(places)))
    return libraries


def make_imports(libraries, base, rva):
    """The directory, then for each library its lookup table and its names. All but the addresses,
    which are words of .data that the loader overwrites."""
    directory_size = 20 * (len(libraries) + 1)
    directory, body = b"", b""

    def here():
        return rva + directory_size + len(body)

    def text(name, before=b""):
        data = before + name.encode("ascii") + b"\0"
        return data + bytes(len(data) % 2)

    tables = []
    for library, first, functions in libraries:
        table = []
        for name, ordinal in functions:
            table.append(here() if ordinal is None else 0x80000000 | ordinal)
            body += b"" if ordinal is not None else text(name, b"\0\0")
        tables.append((table, here(), first))
        body += text(library + ".dll")
    body += bytes(-len(body) % 4)
    lookups = {}
    for table, name, first in tables:
        directory += struct.pack("<5I", here(), 0, 0, name, first - base)
        lookups[first] = table
        body += struct.pack(f"<{len(table) + 1}I", *table, 0)
    return directory + bytes(20) + body, directory_size, lookups


def fill_addresses(data, address, lookups):
    """Before they are loaded the addresses hold what the lookup tables hold."""
    data = bytearray(data)
    for first, table in lookups.items():
        struct.pack_into(f"<{len(table)}I", data, first - address, *table)
    return bytes(data)


# ---- Resources, exports and relocations ----------------------------------------------------------


def read_resources(path, rva):
    """The .rsrc section of a COFF object; its relocations are the places that hold an RVA."""
    data = pathlib.Path(path).read_bytes()
    sections, = struct.unpack_from("<H", data, 2)
    optional, = struct.unpack_from("<H", data, 16)
    for i in range(sections):
        name, _, _, size, offset, relocations, _, count = struct.unpack_from(
            "<8sIIIIIIH", data, 20 + optional + 40 * i)
        if name.rstrip(b"\0") == b".rsrc":
            body = bytearray(data[offset:offset + size])
            for j in range(count):
                place, = struct.unpack_from("<I", data, relocations + 10 * j)
                value, = struct.unpack_from("<I", body, place)
                struct.pack_into("<I", body, place, value + rva)
            return bytes(body)
    fail(f"{path} has no resources")


def make_exports(name, exports, base, rva):
    """The export directory of a DLL; exports: {name: address}, in order."""
    functions = rva + 40
    names = functions + 4 * len(exports)
    ordinals = names + 4 * len(exports)
    texts, places = b"", []
    start = round_up(ordinals + 2 * len(exports), 4)
    for one in (name, *exports):
        places.append(start + len(texts))
        texts += one.encode("ascii") + b"\0"
    count = len(exports)
    data = struct.pack("<10I", 0, 0, 0, places[0], 1, count, count, functions, names, ordinals)
    data += struct.pack(f"<{count}I", *(address - base for address in exports.values()))
    data += struct.pack(f"<{count}I", *places[1:]) + struct.pack(f"<{count}H", *range(count))
    return data.ljust(start - rva, b"\0") + texts


def make_relocations(elf, base):
    """A block a page: its RVA, its size, and a half word for each word that holds an address."""
    pages = {}
    for place, kind, section in elf.relocations():
        if kind == R_ARM_ABS32 and section != SHN_ABSOLUTE:
            pages.setdefault((place - base) & -PAGE, set()).add(place % PAGE)
        elif kind != R_ARM_ABS32 and kind not in RELATIVE:
            fail(f"a relocation of type {kind} at {place:#x}")
    data = b""
    for page, places in sorted(pages.items()):
        entries = [0x3000 | place for place in sorted(places)] + [0] * (len(places) % 2)
        data += struct.pack(f"<II{len(entries)}H", page, 8 + 2 * len(entries), *entries)
    return data


# ---- The file -----------------------------------------------------------------------------------


class Image:
    """The sections in the order of their addresses."""

    def __init__(self, base):
        self.base = base
        self.sections = []  # (name, RVA, bytes, size in memory, characteristics)

    def next_rva(self):
        if not self.sections:
            return PAGE
        _, rva, _, size, _ = self.sections[-1]
        return round_up(rva + size, PAGE)

    def add(self, name, data, size, flags, rva=None):
        rva = self.next_rva() if rva is None else rva
        if size > 0:
            self.sections.append((name, rva, data, size, flags))
        return rva


def optional_header(image, options, entry, directories, headers_size):
    sizes = {flag: sum(round_up(len(data), SECTOR) for _, _, data, _, flags in image.sections
                       if flags & flag) for flag in (CODE, INITIALISED)}
    unset = sum(size - len(data) for _, _, data, size, _ in image.sections if size > len(data))
    rvas = {name: rva for name, rva, *_ in image.sections}
    stack = 0 if options.dll else options.stack
    header = struct.pack("<HBB9I", 0x10B, 6, 0, sizes[CODE], sizes[INITIALISED], unset, entry,
                         rvas[".text"], rvas.get(".data", 0), image.base, PAGE, SECTOR)
    header += struct.pack("<6H4I2H6I", 4, 0, 0, 0, 3, 0, 0, image.next_rva(), headers_size, 0,
                          SUBSYSTEM_CE_GUI, 0, stack, PAGE if stack else 0, HEAP_RESERVE, PAGE, 0,
                          16)
    return header + b"".join(struct.pack("<II", *directories.get(i, (0, 0))) for i in range(16))


def file_header(image, options):
    # executable, no line numbers, no symbols, 32-bit; also a DLL, or without relocations
    flags = 0x210E if options.dll else 0x10F
    return struct.pack("<4sHHIIIHH", b"PE\0\0", MACHINE_ARM, len(image.sections), 0, 0, 0, 224,
                       flags)


def write_image(image, options, entry, directories):
    dos = struct.pack("<2s58xI", b"MZ", 64)
    table_end = 64 + 24 + 224 + 40 * len(image.sections)
    offset = headers_size = round_up(table_end, SECTOR)
    table, body = b"", b""
    for name, rva, data, size, flags in image.sections:
        raw = round_up(len(data), SECTOR)
        table += struct.pack("<8sIIIIIIHHI", name.encode("ascii"), size, rva, raw,
                             offset if raw else 0, 0, 0, 0, 0, flags)
        body += data.ljust(raw, b"\0")
        offset += raw
    head = (dos + file_header(image, options) +
            optional_header(image, options, entry, directories, headers_size) + table)
    return head.ljust(headers_size, b"\0") + body


def write_map(elf, path):
    kinds = (1, 2)  # data and functions
    rows = sorted({(address, size, name) for name, address, size, kind, section in elf.symbols
                   if kind in kinds and section != 0 and size > 0})
    names = subprocess.run(["c++filt"], input="\n".join(row[2] for row in rows), text=True,
                           capture_output=True, check=True).stdout.splitlines()
    with open(path, "w", encoding="ascii") as output:
        for (address, size, _), name in zip(rows, names):
            output.write(f"{address:08x} {size:08x} {name}\n")


def build_image(elf, options):
    base = elf.section(".text")[0] - PAGE
    image, directories = Image(base), {}
    address, data, size = elf.section(".text")
    image.add(".text", data, size, CODE | READ | EXECUTE, address - base)
    address, data, size = elf.section(".rdata")
    image.add(".rdata", data, size, INITIALISED | READ, address - base)

    libraries = find_imports(elf, options.imports)
    address, data, size = elf.section(".data")
    bss, _, bss_size = elf.section(".bss")
    whole = bss + bss_size - address if bss_size else size
    after_data = round_up(address - base + whole, PAGE)
    imports, directory_size, lookups = make_imports(libraries, base, after_data)
    image.add(".data", fill_addresses(data, address, lookups), whole, INITIALISED | READ | WRITE,
              address - base)
    rva = image.add(".idata", imports, len(imports), INITIALISED | READ)
    directories[1] = rva, directory_size
    if lookups:
        first, last = min(lookups), max(lookups)
        directories[12] = first - base, last + 4 * len(lookups[last]) + 4 - first

    if options.export:
        addresses = {name: value for name, value, *_ in elf.symbols}
        exports = make_exports(pathlib.Path(options.output).name,
                               {name: addresses[name] for name in sorted(options.export)}, base,
                               image.next_rva())
        directories[0] = (image.add(".edata", exports, len(exports), INITIALISED | READ),
                          len(exports))
    if options.resources:
        resources = read_resources(options.resources, image.next_rva())
        directories[2] = (image.add(".rsrc", resources, len(resources), INITIALISED | READ),
                          len(resources))
    if options.dll:
        relocations = make_relocations(elf, base)
        directories[5] = (image.add(".reloc", relocations, len(relocations),
                                    INITIALISED | READ | DISCARDABLE), len(relocations))
    return image, directories


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("elf")
    parser.add_argument("--output", required=True)
    parser.add_argument("--imports", nargs="+", required=True)
    parser.add_argument("--resources")
    parser.add_argument("--dll", action="store_true")
    parser.add_argument("--export", action="append", default=[])
    parser.add_argument("--stack", type=int, default=65536)
    parser.add_argument("--limit", type=int)
    parser.add_argument("--map")
    options = parser.parse_args()

    elf = Elf(options.elf)
    faults = [*code_faults(elf), *constructor_faults(elf)]
    if faults:
        fail(*faults)
    image, directories = build_image(elf, options)
    data = write_image(image, options, elf.entry - image.base, directories)
    if options.limit and len(data) > options.limit:
        fail(f"{options.output} takes {len(data)} bytes, over {options.limit}")
    output = pathlib.Path(options.output)
    new = output.with_suffix(".new")
    new.write_bytes(data)
    if options.map:
        write_map(elf, options.map)
    new.replace(output)


if __name__ == "__main__":
    main()
