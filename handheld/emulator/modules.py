"""Programs and libraries: how a file becomes memory, and what it has in it.

A file is loaded at the address that it asks for, a library elsewhere when it has relocations. Its
imports become traps, each of which runs the function in calls.py; a name that nobody there knows
is an error, and all of them are told at once. A library's entry is called when it is loaded.

Not modelled: libraries that import from each other, unloading, DllMain for threads.
"""

import functools

import pefile

from handheld.emulator import calls
from handheld.emulator.calls import export
from handheld.emulator.memory import Fault, HEAP_END, PAGE, SPACE
from handheld.emulator.symbols import Symbols

ARM = 0x1C0
DLL_PROCESS_ATTACH = 1
RELOCATION_WORD = 3  # IMAGE_REL_BASED_HIGHLOW
ERROR_MOD_NOT_FOUND = 126


class Module:
    """A loaded file. Its handle is its address."""

    def __init__(self, name, image, base):
        self.name = name
        self.handle = base
        self.image = image
        self.moved = base - image.OPTIONAL_HEADER.ImageBase
        self.entry = base + image.OPTIONAL_HEADER.AddressOfEntryPoint
        exported = getattr(image, "DIRECTORY_ENTRY_EXPORT", None)
        self.exports = {} if exported is None else {
            found.name.decode(): base + found.address for found in exported.symbols if found.name}

    @functools.cached_property
    def resources(self):
        """{(type, name): (address, size)}; types and names are numbers or texts in capitals."""
        found = {}
        root = getattr(self.image, "DIRECTORY_ENTRY_RESOURCE", None)
        for kind in root.entries if root is not None else ():
            for named in kind.directory.entries:
                data = named.directory.entries[0].data.struct
                place = (self.handle + data.OffsetToData, data.Size)
                found[(entry_name(kind), entry_name(named))] = place
        return found


def entry_name(entry):
    return entry.id if entry.name is None else str(entry.name).upper()


class Modules:
    """What is loaded: the program and its libraries."""

    def __init__(self, system):
        self.system = system
        self.program = None
        self.loaded = {}     # by name in capitals
        self.folder = {}     # files that LoadLibraryW finds: {name in capitals: host path}
        self._free_top = SPACE

    # ---- Loading ----

    def load_program(self, path):
        self.program = self._load(path, fixed=True)
        return self.program

    def load_library(self, name):
        """The module, or None when there is no such file."""
        key = name.rsplit("\\", 1)[-1].upper()
        if key in self.loaded or key not in self.folder:
            return self.loaded.get(key)
        module = self._load(self.folder[key], fixed=False)
        if module.entry != module.handle:
            self.system.machine.call(module.entry, module.handle, DLL_PROCESS_ATTACH, 0)
        return module

    def _load(self, path, fixed):
        image = pefile.PE(str(path))
        if image.FILE_HEADER.Machine != ARM:
            raise Fault(f"{path.name} is not for this processor")
        base = image.OPTIONAL_HEADER.ImageBase if fixed else self._place(image)
        module = Module(path.name, image, base)
        self._copy(module)
        self._relocate(module)
        self._bind(module)
        self._name(module, path.with_suffix(".map"))
        self.loaded[path.name.upper()] = module
        return module

    def _place(self, image):
        size = (image.OPTIONAL_HEADER.SizeOfImage + 0xFFFF) & ~0xFFFF
        self._free_top -= size
        if self._free_top < HEAP_END:
            raise Fault("no room for another library")
        return self._free_top

    def _copy(self, module):
        memory, image = self.system.memory, module.image
        size = (image.OPTIONAL_HEADER.SizeOfImage + PAGE - 1) & -PAGE
        memory.map(module.handle, size)
        headers = image.OPTIONAL_HEADER.SizeOfHeaders
        memory.put_bytes(module.handle, image.__data__[:headers])
        for section in image.sections:
            data = section.get_data()[:section.Misc_VirtualSize]
            memory.put_bytes(module.handle + section.VirtualAddress, data)

    def _relocate(self, module):
        if module.moved == 0:
            return
        blocks = getattr(module.image, "DIRECTORY_ENTRY_BASERELOC", None)
        if blocks is None:
            raise Fault(f"{module.name} has no relocations")
        memory = self.system.memory
        for entry in (entry for block in blocks for entry in block.entries):
            if entry.type == RELOCATION_WORD:
                place = module.handle + entry.rva
                memory.set_u32(place, memory.u32(place) + module.moved)

    def _bind(self, module):
        unknown = []
        for library in getattr(module.image, "DIRECTORY_ENTRY_IMPORT", ()):
            for wanted in library.imports:
                name = wanted.name.decode() if wanted.name else wanted.ordinal
                trap = self.trap_of(library.dll.decode(), name)
                if trap is None:
                    unknown.append(f"{library.dll.decode()}: {name}")
                else:
                    self.system.memory.set_u32(wanted.address + module.moved, trap)
        if unknown:
            raise Fault(f"{module.name} calls what the emulator does not know: "
                        + ", ".join(unknown))

    def _name(self, module, path):
        if self.system.machine.symbols is None:
            self.system.machine.symbols = Symbols()
        if path.exists():
            self.system.machine.symbols.add(path, module.moved)

    @functools.lru_cache(maxsize=None)
    def trap_of(self, library, name):
        """The address at which a function of the system is called, or None."""
        system = self.system
        if name in system.machine.system_code:
            return system.machine.system_code[name]
        found = calls.find_export(library, name)
        if found is None:
            return None
        return system.machine.trap(
            lambda registers: calls.run_export(system, found, registers[:4], registers[13]))

    # ---- Resources ----

    def resource(self, instance, kind, name):
        """(address, size) or None. Kind and name are numbers or texts; "#5" is the number 5."""
        wanted = (resource_name(kind), resource_name(name))
        for module in self.loaded.values():
            if module.handle == instance or instance == 0:
                return module.resources.get(wanted)
        return None

    def string(self, instance, number):
        """A text of the string table, or None. They lie 16 together."""
        found = self.resource(instance, 6, number // 16 + 1)
        if found is None:
            return None
        memory, at = self.system.memory, found[0]
        for _ in range(number % 16):
            at += 2 + 2 * memory.u16(at)
        length = memory.u16(at)
        return memory.text(at + 2, length) if length else None


def resource_name(name):
    if isinstance(name, int):
        return name
    return int(name[1:]) if name.startswith("#") else name.upper()


def decode_name(system, word):
    """A resource's name or type in a call: a number below 65,536, or a text's address."""
    return word if word < 0x10000 else system.memory.text(word)


calls.add_kind("resource", decode_name)


@export("COREDLL", "FindResourceW", "instance resource resource")
def find_resource(system, instance, name, kind):
    """A handle for LoadResource: the data's address, which is what it has of it."""
    found = system.modules.resource(instance, kind, name)
    return found[0] if found else 0


@export("COREDLL", "LoadResource", "instance found")
def load_resource(_system, _instance, found):
    return found


@export("COREDLL", "LoadStringW", "instance number buffer count")
def load_string(system, instance, number, buffer, count):
    text = system.modules.string(instance, number)
    return system.memory.put_text(buffer, text, count) if text is not None else 0


@export("COREDLL", "LoadLibraryW", "text")
def load_library(system, name):
    module = system.modules.load_library(name or "")
    if module is None:
        system.kernel.last_error = ERROR_MOD_NOT_FOUND
    return module


@export("COREDLL", "GetProcAddressW", "instance text")
def get_proc_address(system, instance, name):
    for module in system.modules.loaded.values():
        if module.handle == instance:
            return module.exports.get(name, 0)
    return 0


@export("COREDLL", "GetModuleHandleW", "text")
def get_module_handle(system, name):
    if name is None:
        return system.modules.program
    return system.modules.loaded.get(name.rsplit("\\", 1)[-1].upper())


@export("COREDLL", "GetModuleFileNameW", "instance buffer count")
def get_module_file_name(system, instance, buffer, count):
    for module in system.modules.loaded.values():
        if instance in (0, module.handle):
            return system.memory.put_text(buffer, f"\\Program Files\\Quorvane\\{module.name}", count)
    return 0


@export("COREDLL", "DisableThreadLibraryCalls", "instance")
def disable_thread_library_calls(_system, _instance):
    return True
