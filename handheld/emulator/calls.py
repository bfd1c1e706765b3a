"""The system's functions as the program calls them: one table of what is known, and how a call's
words become arguments.

    @export("COREDLL", "GetWindowTextW", "window buffer count")
    def get_window_text(system, window, buffer, count): ...

The signature has a word an argument. Most are names alone: the argument is an unsigned word. Those
in KINDS are more: `window` is a Window or None, `text` a str or None, `int` and its kin are signed,
`double` takes two words, `...` hands over a reader for what follows. A result is None (0), a bool,
a number, a float (a double in r0 and r1), or whatever has a handle.

Functions without a name in their library are exported by their number.
"""

import functools
import struct

EXPORTS = {}
JUMPED = object()  # a call's result: it has set the registers, and where to go on
KINDS = {}
SIGNED = "int x y width height left top right bottom index count dx dy".split()


class Export:
    """One function: what it is called, what it takes, and what it costs besides.

    `cost` is the instructions that a call is counted as: the work that the device's processor would
    do there. It is a number, or a function of the same arguments.
    """

    def __init__(self, library, name, signature, function, cost):
        self.library = library
        self.name = name
        self.names = signature.split()
        self.function = function
        self.cost = cost

    @functools.cached_property
    def decoders(self):
        return [KINDS.get(name, word) for name in self.names]

    @functools.cached_property
    def is_plain(self):
        """All arguments are words as they stand in r0 to r3."""
        return len(self.names) <= 4 and not any(name in KINDS for name in self.names)

    def __str__(self):
        return f"{self.library}.{self.name}"


class Arguments:
    """The words of a call, taken one by one."""

    def __init__(self, system, words, stack):
        self.system = system
        self._words = words
        self._stack = stack
        self._taken = 0

    def word(self):
        taken, self._taken = self._taken, self._taken + 1
        if taken < 4:
            return self._words[taken]
        return self.system.memory.u32(self._stack + 4 * (taken - 4))

    def signed(self):
        value = self.word()
        return value - 0x100000000 if value & 0x80000000 else value

    def double(self):
        low = self.word()
        return struct.unpack("<d", struct.pack("<II", low, self.word()))[0]

    def int64(self):
        low = self.word()
        return struct.unpack("<q", struct.pack("<II", low, self.word()))[0]


class WordList(Arguments):
    """Arguments that a list in memory holds, as the v... functions take them."""

    def __init__(self, system, address):
        super().__init__(system, (), address)
        self._taken = 4


def word(arguments):
    """The decoder of every name that stands for nothing special."""
    return arguments.word()


def signed(arguments):
    return arguments.signed()


def add_kind(name, decode):
    """From now on signatures may have `name`: decode(system, word) makes the argument."""
    KINDS[name] = lambda arguments: decode(arguments.system, arguments.word())


for _name in SIGNED:
    KINDS[_name] = signed
KINDS["double"] = Arguments.double
KINDS["int64"] = Arguments.int64
KINDS["..."] = lambda arguments: arguments
add_kind("window", lambda system, value: system.windows.find(value))
add_kind("text", lambda system, value: system.memory.text(value) if value else None)
add_kind("text8", lambda system, value: system.memory.text8(value) if value else None)


def export(library, name, signature="", cost=0):
    """Makes the function below what the program finds under `library` and `name`."""
    def register(function):
        key = (library.upper(), name)
        assert key not in EXPORTS, f"{key} is there twice"
        EXPORTS[key] = Export(library, name, signature, function, cost)
        return function
    return register


def find_export(library, name):
    """The export, or None. `library` may end with .dll."""
    return EXPORTS.get((library.upper().removesuffix(".DLL"), name))


def run_export(system, called, words, stack):
    """Calls it; the words for r0 and r1."""
    if called.is_plain:
        arguments = words[:len(called.names)]
    else:
        reader = Arguments(system, words, stack)
        arguments = [decode(reader) for decode in called.decoders]
    log = system.log
    if log.wanted:
        log.call(called, arguments)
    result = called.function(system, *arguments)
    if called.cost:
        cost = called.cost
        system.machine.charge(cost if isinstance(cost, int) else cost(system, *arguments))
    if log.wanted:
        log.result(result)
    return result if result is JUMPED else result_words(result)


def result_words(result):
    """A Python result as it stands in r0 and r1."""
    if result is None:
        return 0, 0
    if isinstance(result, float):
        return struct.unpack("<II", struct.pack("<d", result))
    if isinstance(result, int):
        return int(result) & 0xFFFFFFFF, int(result) >> 32 & 0xFFFFFFFF
    return result.handle, 0


class Log:
    """The log of all calls, when somebody wants it: a line a call, deeper ones indented."""

    def __init__(self, file=None):
        self.wanted = file is not None
        self._file = file
        self._depth = 0

    def call(self, called, arguments):
        parts = [f"{name}={describe(value)}" for name, value in zip(called.names, arguments)]
        self._line(f"{called.name}({', '.join(parts)})")
        self._depth += 1

    def result(self, result):
        self._depth -= 1
        if result is not None:
            self._line(f"-> {describe(result)}")

    def message(self, text):
        """Something that is no call: a message that a window gets."""
        if self.wanted:
            self._line(text)

    def _line(self, text):
        self._file.write("  " * self._depth + text + "\n")


def describe(value):
    """An argument as the log writes it."""
    if value is None or isinstance(value, (bool, float, str, bytes)):
        return repr(value)
    if isinstance(value, int):
        return str(value) if -1000 < value < 1000 else f"0x{value & 0xFFFFFFFF:x}"
    handle = getattr(value, "handle", None)
    name = getattr(value, "class_name", type(value).__name__)
    return f"{name}:{handle:x}" if isinstance(handle, int) else name
