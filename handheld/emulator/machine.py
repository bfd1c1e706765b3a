"""The processor: an SA-1110, which executes ARM architecture 4 and no Thumb.

The program's calls into the system, and every return from code that the system called, go to an
address of the trap page. A trap loads its number into ip and jumps to the page's first word, where
the processor stops; `call` then runs the system's function in Python and goes on behind the call.
Python calls emulated code by `call` too, so window procedures nest as deep as they like, and a
longjmp within one such level is a change of registers.

A device counts one instruction a cycle at 206 MHz here: no cache misses, no memory wait. The work
that the device's system would do for a call is charged by the function itself, roughly.

Faults: access to what is no memory, below the stack or past its next page, words that are not
aligned (the device traps them), instructions that the processor lacks, code that never ends.
"""

import ctypes
import pathlib
import struct
import subprocess

import unicorn
from unicorn import arm_const as arm
from unicorn.unicorn import _uc as library

from handheld.emulator.calls import JUMPED
from handheld.emulator.memory import Fault, Memory, PAGE

TRAPS = 0xF0000000
TRAPS_SIZE = 0x10000
CODE = TRAPS + 0xF000  # code of the system's own, behind the traps
STUB_SIZE = 12
STACK_TOP = 0x400000
NAMES = [f"R{n}" for n in range(13)] + ["SP", "LR", "PC"]
IDS = [getattr(arm, f"UC_ARM_REG_{name}") for name in NAMES]
NEVER = 1 << 62
R12, SP, LR, PC = 12, 13, 14, 15


class Watch(ctypes.Structure):
    """watch.c's structure."""

    _fields_ = [("instructions", ctypes.c_uint64), ("limit", ctypes.c_uint64),
                ("misaligned", ctypes.c_uint64), ("stop", ctypes.c_void_p),
                ("next_tick", ctypes.c_uint64), ("per_tick", ctypes.c_uint64),
                ("ticks", ctypes.c_void_p), ("stack_limit", ctypes.c_uint64),
                ("stack_lowest", ctypes.c_uint64), ("skipped", ctypes.c_uint64)]


def watch_library():
    """watch.c as a library of this machine, built when it is new."""
    source = pathlib.Path(__file__).with_name("watch.c")
    built = pathlib.Path(__file__).resolve().parents[2] / "build" / "handheld" / "watch.so"
    if not built.exists() or built.stat().st_mtime < source.stat().st_mtime:
        built.parent.mkdir(parents=True, exist_ok=True)
        made = built.with_suffix(".new")
        subprocess.run(["cc", "-O2", "-shared", "-fPIC", "-o", made, source], check=True)
        made.rename(built)
    return ctypes.CDLL(str(built))


class Machine:
    """Processor and memory; `symbols` (None or with name_of) gives faults their names."""

    def __init__(self):
        self.uc = unicorn.Uc(unicorn.UC_ARCH_ARM, unicorn.UC_MODE_ARM)
        self.uc.ctl_set_cpu_model(arm.UC_CPU_ARM_SA1110)
        self.memory = Memory(self._map_range)
        self.symbols = None
        self.levels = []
        self.stack_limit = STACK_TOP
        self.system_code = {}  # functions of the system that are code: {name: address}
        self.charged = 0       # of the instructions so far
        self._traps = []
        self._serial = 0
        self._accessed = None
        self._make_registers()
        self._make_traps()
        self._make_hooks()

    # ---- Construction ----

    def _map_range(self, address, size, host):
        code = library.uc_mem_map_ptr(self.uc._uch, ctypes.c_uint64(address), ctypes.c_size_t(size),
                                      ctypes.c_uint32(unicorn.UC_PROT_ALL), ctypes.c_void_p(host))
        assert code == unicorn.UC_ERR_OK, f"{address:08x} is mapped already"

    def _make_registers(self):
        self._values = (ctypes.c_uint32 * 16)()
        size = ctypes.sizeof(ctypes.c_uint32)
        base = ctypes.addressof(self._values)
        self._ids = (ctypes.c_int * 16)(*IDS)
        self._places = (ctypes.c_void_p * 16)(*(base + size * n for n in range(16)))

    def _make_traps(self):
        self._next_code = CODE
        self.uc.mem_map(TRAPS, TRAPS_SIZE)
        self._return = self.trap(None)

    def _make_hooks(self):
        hooks = watch_library()
        self._watch = Watch(0, NEVER, 0, ctypes.cast(library.uc_emu_stop, ctypes.c_void_p), NEVER)
        self._hooks = hooks
        self._hook(unicorn.UC_HOOK_BLOCK, hooks.on_block)
        self._hook(unicorn.UC_HOOK_MEM_READ | unicorn.UC_HOOK_MEM_WRITE, hooks.on_access)
        self.uc.hook_add(unicorn.UC_HOOK_MEM_INVALID, self._on_invalid)

    def _hook(self, kind, function):
        handle = ctypes.c_size_t()
        code = library.uc_hook_add(self.uc._uch, ctypes.byref(handle), kind,
                                   ctypes.cast(function, ctypes.c_void_p),
                                   ctypes.byref(self._watch), ctypes.c_uint64(1), ctypes.c_uint64(0))
        assert code == unicorn.UC_ERR_OK

    def _on_invalid(self, _uc, access, address, size, value, _user):
        self._accessed = (access, address)
        return False

    # ---- Registers ----

    def registers(self):
        """r0 to pc, a list."""
        library.uc_reg_read_batch(self.uc._uch, self._ids, self._places, 16)
        return list(self._values)

    def set_registers(self, values):
        """{number: value}; the program counter is set by going on there."""
        for number, value in values.items():
            self.uc.reg_write(IDS[number], value & 0xFFFFFFFF)

    # ---- Instructions ----

    @property
    def instructions(self):
        """Executed so far, with what calls into the system are counted as."""
        return self._watch.instructions

    def charge(self, instructions):
        """Counts work that the device's own system would do."""
        self._watch.instructions += instructions
        self.charged += instructions

    def set_clock(self, address, instructions_per_tick):
        """From now on the word at `address` counts ticks of so many instructions."""
        self._watch.next_tick = self._watch.instructions + instructions_per_tick
        self._watch.per_tick = instructions_per_tick
        self._watch.ticks = self.memory.host_address(address)

    def pass_ticks(self):
        """Counts the ticks of what was charged; while code runs they are counted as they pass."""
        watch = self._watch
        if watch.instructions >= watch.next_tick:
            self._hooks.on_block(None, ctypes.c_uint64(0), 0, ctypes.byref(watch))

    def allow(self, instructions):
        """From now on so many may be executed before `allow` is called again."""
        self._watch.limit = self._watch.instructions + instructions

    # ---- Traps ----

    def trap(self, function):
        """An address to call. `function(registers)` gives the words for r0 and r1, or JUMPED."""
        number = len(self._traps)
        self._traps.append(function)
        address = TRAPS + 16 + STUB_SIZE * number
        if address + STUB_SIZE > CODE:
            raise Fault("no room for another trap")
        back = ((TRAPS - (address + 12)) >> 2) & 0xFFFFFF
        self.uc.mem_write(address, struct.pack("<III", 0xE59FC000, 0xEA000000 | back, number))
        return address

    def place_code(self, *words):
        """The address of instructions that the program may call like any function."""
        address, self._next_code = self._next_code, self._next_code + 4 * len(words)
        self.uc.mem_write(address, struct.pack(f"<{len(words)}I", *words))
        return address

    # ---- Calls ----

    def set_stack(self, reserve):
        """Makes the stack: `reserve` bytes, nothing below. Each page must be touched before the
        next one lower, or the device takes it for an access to nothing (watch.c)."""
        reserve = (reserve + PAGE - 1) & -PAGE
        self.stack_limit = STACK_TOP - PAGE - reserve
        self.memory.map(self.stack_limit, reserve)
        self._watch.stack_limit, self._watch.stack_lowest = self.stack_limit, STACK_TOP - 2 * PAGE
        self.set_registers({SP: STACK_TOP - PAGE - 64})

    def call(self, address, *words):
        """Runs the function at `address` with these arguments; what it returns (r0)."""
        words = [word & 0xFFFFFFFF for word in words]
        sp = self.uc.reg_read(IDS[SP])
        stack = (sp - 4 * max(0, len(words) - 4)) & -8
        if len(words) > 4:
            self.memory.put(stack, f"<{len(words) - 4}I", *words[4:])
        self.set_registers({**dict(enumerate(words[:4])), SP: stack, LR: self._return})
        self._serial += 1
        self.levels.append(self._serial)
        self._run(address, stack)
        self.levels.pop()
        result = self.uc.reg_read(IDS[0])
        self.set_registers({SP: sp})
        return result

    def _run(self, pc, top):
        """Runs from `pc` until this level's return; its stack begins at `top`."""
        while True:
            self._execute(pc)
            registers = self.registers()
            function = self._traps[registers[R12]]
            if function is None:
                return
            if registers[SP] > top:
                raise Fault("a jump out of a window procedure, past the system that called it")
            found = function(registers)
            if found is JUMPED:
                pc = self.uc.reg_read(IDS[PC])
            else:
                self._values[0], self._values[1] = found
                library.uc_reg_write_batch(self.uc._uch, self._ids, self._places, 2)
                pc = registers[LR]

    def _execute(self, pc):
        """Runs from `pc` to the next trap."""
        try:
            self.uc.emu_start(pc, TRAPS)
        except unicorn.UcError as error:
            raise Fault(self._explain(error)) from error
        if self._watch.misaligned:
            raise Fault(self._report(f"a word at {self._watch.misaligned:08x}, which is not aligned"))
        if self._watch.skipped:
            raise Fault(self._report(f"an access to the stack that skips a page, at "
                                     f"{self._watch.skipped:08x}"))
        if self._watch.instructions > self._watch.limit:
            raise Fault(self._report("no call into the system for too long"))

    # ---- Faults ----

    def _explain(self, error):
        if error.errno == unicorn.UC_ERR_INSN_INVALID:
            return self._report("an instruction that the processor does not have")
        if self._accessed is None:
            return self._report(str(error))
        access, address = self._accessed
        if self.stack_limit - 0x10000 <= address < self.stack_limit:
            return self._report(f"stack overflow, at {address:08x}")
        kind = {unicorn.UC_MEM_WRITE_UNMAPPED: "write to", unicorn.UC_MEM_FETCH_UNMAPPED: "jump to"}
        return self._report(f"{kind.get(access, 'read from')} {address:08x}, which is no memory")

    def _report(self, what):
        """What happened, where, and who had called: addresses on the stack behind a call."""
        registers = self.registers()
        lines = [what, f"  at {self.name_of(registers[PC])}, from {self.name_of(registers[LR])}"]
        lines += [f"  called by {name}" for name in self.callers(registers[SP])]
        lines += ["  " + " ".join(f"{name.lower()}={value:08x}"
                                  for name, value in zip(NAMES, registers))]
        return "\n".join(lines)

    def name_of(self, address):
        """The function and how far into it."""
        named = self.symbols.name_of(address) if self.symbols is not None else None
        return f"{address:08x}" if named is None else f"{address:08x} {named}"

    def callers(self, sp, most=12):
        """The functions that the words on the stack return to, a guess."""
        found = []
        for place in range(sp & ~3, STACK_TOP - PAGE, 4):
            if place < self.stack_limit or len(found) == most:
                continue
            address = self.memory.u32(place)
            if self.symbols is not None and self._follows_call(address):
                found.append(self.name_of(address))
        return found

    def _follows_call(self, address):
        if address & 3 or self.symbols.name_of(address) is None:
            return False
        before = self.memory.u32(address - 4)
        return before & 0x0F000000 == 0x0B000000 or before & 0x0FFFFFFF == 0x01A0E00F
