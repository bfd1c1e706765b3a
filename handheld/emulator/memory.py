"""The address space of the one process: 32 MB from address 0, and its heap.

    00000000  nothing: whoever reads or writes through a null pointer faults
    00010000  the program's file
    001F0000  a page that the system writes and the program reads: the clock
    00200000  stack, at its reserve's end; the page below the reserve is never mapped
    00400000  heap, mapped as it grows
    01C00000  libraries, from the top downwards

Everything lies in one buffer of the host, which the processor and this module both use, so that
reading a structure costs no call into the processor. Text is UTF-16, words are little-endian.

The heap hands out blocks of eight bytes' alignment, spoils what is new and what was freed, and
knows every block: freeing what is none, or twice, is a fault. Not modelled: several heaps,
movable blocks, the limit of memory of a real device below the 24 MB here.
"""

import contextlib
import ctypes
import mmap
import struct

SPACE = 32 << 20
PAGE = 0x1000
LOWEST = 0x10000
HEAP_START = 0x400000
HEAP_END = 0x1C00000
HEAP_STEP = 0x40000
NEW_BYTE = b"\xcd"
FREED_BYTE = b"\xdd"


class Fault(Exception):
    """The program did what ends a program: what it was is the message."""


class Memory:
    """Reads and writes by address; `map` makes a range the processor's too."""

    def __init__(self, map_range):
        """`map_range(address, size, host_address)` tells the processor."""
        self._buffer = mmap.mmap(-1, SPACE)
        self._view = memoryview(self._buffer)
        self._host = ctypes.addressof(ctypes.c_char.from_buffer(self._buffer))
        self._map_range = map_range
        self._heap_top = HEAP_START
        self._next = HEAP_START
        self._blocks = {}
        self._free = {}

    def map(self, address, size):
        """Makes [address, address + size) memory; both are multiples of a page."""
        self._map_range(address, size, self._host + address)

    def host_address(self, address):
        """Where the host has this byte."""
        return self._host + address

    def _check(self, address, size):
        if address < LOWEST or address + size > SPACE:
            raise Fault(f"the system was given the address {address:08x}")

    # ---- Numbers ----

    def struct(self, address, form):
        """Unpacks what stands at `address`."""
        self._check(address, struct.calcsize(form))
        return struct.unpack_from(form, self._view, address)

    def put(self, address, form, *values):
        """Packs `values` to `address`."""
        self._check(address, struct.calcsize(form))
        struct.pack_into(form, self._view, address, *values)

    def u8(self, address):
        return self.struct(address, "<B")[0]

    def u16(self, address):
        return self.struct(address, "<H")[0]

    def i16(self, address):
        return self.struct(address, "<h")[0]

    def u32(self, address):
        return self.struct(address, "<I")[0]

    def i32(self, address):
        return self.struct(address, "<i")[0]

    def set_u8(self, address, value):
        self.put(address, "<B", value & 0xFF)

    def set_u16(self, address, value):
        self.put(address, "<H", value & 0xFFFF)

    def set_u32(self, address, value):
        self.put(address, "<I", value & 0xFFFFFFFF)

    # ---- Bytes and texts ----

    def bytes(self, address, size):
        if size == 0:
            return b""
        self._check(address, size)
        return bytes(self._view[address:address + size])

    def put_bytes(self, address, data):
        if data:
            self._check(address, len(data))
            self._view[address:address + len(data)] = data

    def text8(self, address, limit=SPACE):
        """The bytes up to the NUL, at most `limit`."""
        self._check(address, 1)
        end = self._buffer.find(b"\0", address, min(address + limit, SPACE))
        return bytes(self._view[address:end if end >= 0 else address + limit])

    def text_length(self, address):
        """Units of a UTF-16 text before its NUL."""
        self._check(address, 2)
        at = address
        while True:
            at = self._buffer.find(b"\0\0", at, SPACE)
            if at < 0:
                raise Fault(f"a text without an end at {address:08x}")
            if (at - address) % 2 == 0:
                return (at - address) // 2
            at += 1

    def text(self, address, limit=None):
        """The UTF-16 text at `address`: up to its NUL, at most `limit` units."""
        size = 2 * (self.text_length(address) if limit is None else limit)
        found = self.bytes(address, size).decode("utf-16-le", "surrogatepass")
        return found if limit is None else found.split("\0", 1)[0]

    def put_text(self, address, text, limit):
        """Writes `text` and a NUL into `limit` units, cut when it is longer; the units without NUL."""
        if limit <= 0:
            return 0
        data = text.encode("utf-16-le", "surrogatepass")[:2 * (limit - 1)]
        self.put_bytes(address, data + b"\0\0")
        return len(data) // 2

    # ---- The heap ----

    def alloc(self, size, clear=True):
        """A block of `size` bytes; 0 when there is no memory."""
        rounded = max(8, (size + 7) & ~7)
        waiting = self._free.get(rounded)
        address = waiting.pop() if waiting else self._extend(rounded)
        if address:
            self._blocks[address] = size
            self._view[address:address + size] = (b"\0" if clear else NEW_BYTE) * size
        return address

    def _extend(self, size):
        address, self._next = self._next, self._next + size
        if self._next > HEAP_END:
            self._next = address
            return 0
        while self._next > self._heap_top:
            self.map(self._heap_top, HEAP_STEP)
            self._heap_top += HEAP_STEP
        return address

    def size_of(self, address):
        """The size that the block was asked for with."""
        if address not in self._blocks:
            raise Fault(f"no block of the heap: {address:08x}")
        return self._blocks[address]

    def free(self, address):
        """Gives a block back; 0 is nothing."""
        if address == 0:
            return
        size = self.size_of(address)
        del self._blocks[address]
        self._view[address:address + size] = FREED_BYTE * size
        self._free.setdefault(max(8, (size + 7) & ~7), []).append(address)

    def realloc(self, address, size):
        """A block of `size` bytes with the old one's beginning; 0 leaves the old one as it is."""
        if address == 0:
            return self.alloc(size, clear=False)
        old = self.size_of(address)
        moved = self.alloc(size, clear=False)
        if moved:
            self.put_bytes(moved, self.bytes(address, min(old, size)))
            self.free(address)
        return moved

    @property
    def in_use(self):
        """Bytes of the heap that the program has."""
        return sum(self._blocks.values())

    @contextlib.contextmanager
    def scratch(self, size):
        """A zeroed block for as long as the `with` lasts."""
        address = self.alloc(size)
        try:
            yield address
        finally:
            self.free(address)

    @contextlib.contextmanager
    def scratch_text(self, text):
        """A block that holds a UTF-16 text."""
        with self.scratch(2 * len(text.encode("utf-16-le", "surrogatepass")) + 2) as address:
            self.put_text(address, text, SPACE)
            yield address
