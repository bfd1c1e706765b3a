"""The C run-time library: memory and texts of bytes and of UTF-16 units, numbers, sorting, jumps.

Doubles are the processor's own 64-bit ones; arithmetic on them is these calls, because the machine
has no instructions for it. Streams are in c_streams.py, formatted output in c_format.py.
"""

import math
import re

from handheld.emulator import machine
from handheld.emulator.calls import JUMPED, export
from handheld.emulator.memory import Fault

NUMBER = re.compile(rb"[ \t\n\v\f\r]*([+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?)")
WHOLE = re.compile(rb"[ \t\n\v\f\r]*([+-]?\d+)")
CALL = 12  # instructions of a call that does next to nothing


def by_size(place):
    """The cost of what handles as many bytes as the argument at `place` says: a word at a time."""
    return lambda system, *arguments: CALL + arguments[place] // 2


# ---- Blocks of memory ----

@export("COREDLL", "malloc", "size", cost=300)
def malloc(system, size):
    return system.memory.alloc(size, clear=False)


@export("COREDLL", "calloc", "number size", cost=300)
def calloc(system, number, size):
    return system.memory.alloc(number * size)


@export("COREDLL", "realloc", "address size", cost=600)
def realloc(system, address, size):
    return system.memory.realloc(address, size)


@export("COREDLL", "free", "address", cost=200)
def free(system, address):
    system.memory.free(address)


@export("COREDLL", "memcpy", "to from size", cost=by_size(2))
def memcpy(system, to, source, size):
    if size and max(to, source) < min(to, source) + size and to != source:
        raise Fault(f"memcpy of blocks that overlap: {to:08x}, {source:08x}, {size}")
    system.memory.put_bytes(to, system.memory.bytes(source, size))
    return to


@export("COREDLL", "memmove", "to from size", cost=by_size(2))
def memmove(system, to, source, size):
    system.memory.put_bytes(to, system.memory.bytes(source, size))
    return to


@export("COREDLL", "memset", "to value size", cost=by_size(2))
def memset(system, to, value, size):
    system.memory.put_bytes(to, bytes([value & 0xFF]) * size)
    return to


@export("COREDLL", "memcmp", "a b size", cost=by_size(2))
def memcmp(system, a, b, size):
    return sign(system.memory.bytes(a, size), system.memory.bytes(b, size))


@export("COREDLL", "memchr", "a value size", cost=by_size(2))
def memchr(system, a, value, size):
    at = system.memory.bytes(a, size).find(bytes([value & 0xFF]))
    return a + at if at >= 0 else 0


def sign(a, b):
    """-1, 0 or 1, as one is before, equal to, or after the other."""
    return (a > b) - (a < b)


# ---- Texts of bytes ----

def by_text(place):
    """The cost of going through the text that is the argument at `place`."""
    def cost(system, *arguments):
        text = arguments[place]
        length = len(text) if isinstance(text, bytes) else len(system.memory.text8(text))
        return CALL + 4 * length
    return cost


@export("COREDLL", "strlen", "text8", cost=by_text(0))
def strlen(_system, text):
    return len(text)


@export("COREDLL", "strcpy", "to text8", cost=by_text(1))
def strcpy(system, to, text):
    system.memory.put_bytes(to, text + b"\0")
    return to


@export("COREDLL", "strcat", "to text8", cost=by_text(1))
def strcat(system, to, text):
    system.memory.put_bytes(to + len(system.memory.text8(to)), text + b"\0")
    return to


@export("COREDLL", "strncat", "to from size", cost=by_text(1))
def strncat(system, to, source, size):
    text = system.memory.text8(source, size)
    system.memory.put_bytes(to + len(system.memory.text8(to)), text + b"\0")
    return to


@export("COREDLL", "strncpy", "to from size", cost=by_size(2))
def strncpy(system, to, source, size):
    text = system.memory.text8(source, size) if size else b""
    system.memory.put_bytes(to, text + b"\0" * (size - len(text)))
    return to


@export("COREDLL", "strcmp", "text8 text8", cost=by_text(0))
def strcmp(_system, a, b):
    return sign(a, b)


@export("COREDLL", "strncmp", "a b size", cost=by_text(0))
def strncmp(system, a, b, size):
    if size == 0:
        return 0
    return sign(system.memory.text8(a, size), system.memory.text8(b, size))


@export("COREDLL", "strchr", "a value", cost=by_text(0))
def strchr(system, a, value):
    at = (system.memory.text8(a) + b"\0").find(bytes([value & 0xFF]))
    return a + at if at >= 0 else 0


@export("COREDLL", "strrchr", "a value", cost=by_text(0))
def strrchr(system, a, value):
    at = (system.memory.text8(a) + b"\0").rfind(bytes([value & 0xFF]))
    return a + at if at >= 0 else 0


@export("COREDLL", "strstr", "a text8", cost=by_text(0))
def strstr(system, a, part):
    at = system.memory.text8(a).find(part)
    return a + at if at >= 0 else 0


# ---- Texts of UTF-16 units ----

def units(system, address):
    """The units before the NUL, as numbers."""
    length = system.memory.text_length(address)
    return system.memory.struct(address, f"<{length}H")


def put_units(system, to, found):
    system.memory.put(to, f"<{len(found) + 1}H", *found, 0)
    return to


def by_units(place):
    return lambda system, *arguments: CALL + 4 * system.memory.text_length(arguments[place])


@export("COREDLL", "wcslen", "string", cost=by_units(0))
def wcslen(system, text):
    return system.memory.text_length(text)


@export("COREDLL", "wcscpy", "to string", cost=by_units(1))
def wcscpy(system, to, source):
    return put_units(system, to, units(system, source))


@export("COREDLL", "wcscat", "to string", cost=by_units(1))
def wcscat(system, to, source):
    put_units(system, to + 2 * system.memory.text_length(to), units(system, source))
    return to


@export("COREDLL", "wcsncpy", "to string size", cost=by_units(1))
def wcsncpy(system, to, source, size):
    found = units(system, source)[:size]
    system.memory.put(to, f"<{size}H", *found, *[0] * (size - len(found)))
    return to


@export("COREDLL", "wcscmp", "a b", cost=by_units(0))
def wcscmp(system, a, b):
    return sign(units(system, a), units(system, b))


@export("COREDLL", "wcsncmp", "a b size", cost=by_units(0))
def wcsncmp(system, a, b, size):
    return sign(units(system, a)[:size], units(system, b)[:size])


@export("COREDLL", "wcschr", "a value", cost=by_units(0))
def wcschr(system, a, value):
    found = [*units(system, a), 0]
    return a + 2 * found.index(value & 0xFFFF) if value & 0xFFFF in found else 0


@export("COREDLL", "wcsrchr", "a value", cost=by_units(0))
def wcsrchr(system, a, value):
    places = [place for place, unit in enumerate([*units(system, a), 0]) if unit == value & 0xFFFF]
    return a + 2 * places[-1] if places else 0


@export("COREDLL", "wcscspn", "a set", cost=by_units(0))
def wcscspn(system, a, unwanted):
    found, stop = units(system, a), set(units(system, unwanted))
    return next((place for place, unit in enumerate(found) if unit in stop), len(found))


@export("COREDLL", "lstrcmpiW", "text text", cost=200)
def lstrcmpi(_system, a, b):
    return sign(a.lower(), b.lower())


@export("COREDLL", "lstrcmpW", "text text", cost=200)
def lstrcmp(_system, a, b):
    return sign(a, b)


@export("COREDLL", "_wcsicmp", "text text", cost=200)
def wcsicmp(_system, a, b):
    return sign(a.lower(), b.lower())


@export("COREDLL", "towlower", "unit", cost=CALL)
def towlower(_system, unit):
    return lower_unit(unit & 0xFFFF)


@export("COREDLL", "towupper", "unit", cost=CALL)
def towupper(_system, unit):
    upper = chr(unit & 0xFFFF).upper()
    return ord(upper) if len(upper) == 1 else unit


def lower_unit(unit):
    lower = chr(unit).lower()
    return ord(lower) if len(lower) == 1 else unit


@export("COREDLL", "CharLowerBuffW", "text_address size", cost=by_size(1))
def char_lower_buff(system, buffer, size):
    found = system.memory.struct(buffer, f"<{size}H")
    system.memory.put(buffer, f"<{size}H", *map(lower_unit, found))
    return size


# ---- Numbers ----

@export("COREDLL", "atof", "text8", cost=by_text(0))
def atof(_system, text):
    found = NUMBER.match(text)
    return float(found[1]) if found else 0.0


@export("COREDLL", "strtod", "text end", cost=by_text(0))
def strtod(system, text, end):
    found = NUMBER.match(system.memory.text8(text))
    if end:
        system.memory.set_u32(end, text + (found.end() if found else 0))
    return float(found[1]) if found else 0.0


@export("COREDLL", "atoi", "text8", cost=by_text(0))
def atoi(_system, text):
    found = WHOLE.match(text)
    return int(found[1]) if found else 0


@export("COREDLL", "labs", "int", cost=CALL)
def labs(_system, value):
    return abs(value)


@export("COREDLL", "abs", "int", cost=CALL)
def abs_(_system, value):
    return abs(value)


def divided(a, b):
    if b:
        return a / b
    return math.nan if a == 0 or math.isnan(a) else math.copysign(math.inf, a) * math.copysign(1, b)


def whole(value, least, most):
    """Towards zero, held within what the type has."""
    return 0 if math.isnan(value) else int(max(least, min(most, value)))


ARITHMETIC = {
    "__addd": ("double double", lambda a, b: a + b),
    "__subd": ("double double", lambda a, b: a - b),
    "__muld": ("double double", lambda a, b: a * b),
    "__divd": ("double double", divided),
    "__negd": ("double", lambda a: -a),
    "__itod": ("int", float),
    "__utod": ("word", float),
    "__dtoi": ("double", lambda a: whole(a, -(1 << 31), (1 << 31) - 1)),
    "__dtou": ("double", lambda a: whole(a, 0, (1 << 32) - 1)),
    "__eqd": ("double double", lambda a, b: a == b),
    "__ned": ("double double", lambda a, b: a != b),
    "__ltd": ("double double", lambda a, b: a < b),
    "__led": ("double double", lambda a, b: a <= b),
    "__gtd": ("double double", lambda a, b: a > b),
    "__ged": ("double double", lambda a, b: a >= b),
    "floor": ("double", lambda a: float(math.floor(a)) if math.isfinite(a) else a),
    "ceil": ("double", lambda a: float(math.ceil(a)) if math.isfinite(a) else a),
    "fabs": ("double", abs),
    "fmod": ("double double", lambda a, b: math.fmod(a, b) if b and math.isfinite(a) else math.nan),
}

for _name, (_signature, _function) in ARITHMETIC.items():
    export("COREDLL", _name, _signature, cost=60)(
        lambda _system, *values, function=_function: function(*values))


# ---- Sorting ----

@export("COREDLL", "qsort", "base number size compare")
def qsort(system, base, number, size, compare):
    """A merge sort: the elements to compare are copied to where the program may look at them."""
    memory, call = system.memory, system.machine.call
    with memory.scratch(2 * size) as place:
        def before(a, b):
            memory.put_bytes(place, a + b)
            result = call(compare, place, place + size)
            return result == 0 or result & 0x80000000

        found = [memory.bytes(base + size * n, size) for n in range(number)]
        memory.put_bytes(base, b"".join(merge_sort(found, before)))


def merge_sort(found, before):
    if len(found) < 2:
        return found
    middle = len(found) // 2
    a, b = merge_sort(found[:middle], before), merge_sort(found[middle:], before)
    merged = []
    while a and b:
        merged.append(a.pop(0) if before(a[0], b[0]) else b.pop(0))
    return merged + a + b


# ---- Jumps: r4 to r11, the stack pointer, where to go on, and the level of calls ----

JUMP_REGISTERS = (4, 5, 6, 7, 8, 9, 10, 11, machine.SP, machine.LR)


@export("COREDLL", "setjmp", "buffer", cost=CALL)
def setjmp(system, buffer):
    registers = system.machine.registers()
    kept = [registers[number] for number in JUMP_REGISTERS]
    system.memory.put(buffer, "<11I", *kept, system.machine.levels[-1])
    return 0


@export("COREDLL", "longjmp", "buffer int", cost=CALL)
def longjmp(system, buffer, value):
    *kept, level = system.memory.struct(buffer, "<11I")
    if level != system.machine.levels[-1]:
        raise Fault("longjmp out of a window procedure, past the system that called it")
    registers = dict(zip(JUMP_REGISTERS, kept))
    registers[machine.PC] = registers[machine.LR]
    system.machine.set_registers({**registers, 0: value or 1})
    return JUMPED
