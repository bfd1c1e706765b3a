"""Formatted output: sprintf and its kin, of bytes and of UTF-16 units.

%s means the function's own kind of text; %S the other kind, %hs bytes, %ls units. Numbers with an
exponent have three digits there, as this platform's library writes them. Not modelled: %n, %p's
own form.
"""

import re

from handheld.emulator.calls import WordList, export

SPECIFIER = re.compile(r"%([-+ #0]*)(\*|\d*)(?:\.(\*|\d*))?(h|ll|l|I64|w)?([a-zA-Z%])")
EXPONENT = re.compile(r"e([+-])(\d\d)(?!\d)", re.IGNORECASE)
LIMIT_OF_WSPRINTF = 1024


def formatted(system, template, arguments, wide):
    """The text that a template makes of arguments; both kinds of text are str here."""
    def replace(match):
        flags, width, precision, size, kind = match.groups()
        if kind == "%":
            return "%"
        if width == "*":
            width = str(arguments.signed())
        if precision == "*":
            precision = str(arguments.signed())
        text = converted(system, arguments, wide, flags, precision, size, kind)
        return padded(text, flags, int(width or 0), kind)
    return SPECIFIER.sub(replace, template)


def converted(system, arguments, wide, flags, precision, size, kind):
    """One argument, not yet as wide as it should be."""
    if kind in "sS":
        units = size in ("l", "w") or size != "h" and wide == (kind == "s")
        return text_at(system, arguments.word(), units)[:int(precision) if precision else None]
    if kind in "cC":
        return chr(arguments.word() & 0xFFFF)
    if kind in "eEfgG":
        mask = "%" + flags.replace("0", "").replace("-", "") + "." + (precision or "6") + kind
        return EXPONENT.sub(lambda m: m[0][0] + m[1] + "0" + m[2], mask % arguments.double())
    long = size in ("ll", "I64")
    value = arguments.int64() if long else arguments.signed()
    if kind in "uxXop" and value < 0:
        value += 1 << (64 if long else 32)
    digits = {"x": "%x", "X": "%X", "p": "%08X", "o": "%o"}.get(kind, "%d") % abs(value)
    digits = digits.rjust(int(precision), "0") if precision else digits
    return ("-" if value < 0 else "+" if "+" in flags else " " if " " in flags else "") + digits


def text_at(system, address, units):
    if address == 0:
        return "(null)"
    return system.memory.text(address) if units else system.memory.text8(address).decode("latin-1")


def padded(text, flags, width, kind):
    if "-" in flags:
        return text.ljust(width)
    return text.zfill(width) if "0" in flags and kind not in "sScC" else text.rjust(width)


def put8(system, buffer, text, limit=None):
    """The characters that were written, -1 when they did not fit."""
    data = text.encode("latin-1", "replace")
    if limit is not None and len(data) > limit:
        system.memory.put_bytes(buffer, data[:limit])
        return -1
    system.memory.put_bytes(buffer, data if len(data) == limit else data + b"\0")
    return len(data)


@export("COREDLL", "sprintf", "buffer text8 ...", cost=500)
def sprintf(system, buffer, template, arguments):
    return put8(system, buffer, formatted(system, template.decode("latin-1"), arguments, False))


@export("COREDLL", "_snprintf", "buffer size text8 ...", cost=500)
def snprintf(system, buffer, size, template, arguments):
    return put8(system, buffer, formatted(system, template.decode("latin-1"), arguments, False),
                size)


@export("COREDLL", "vsprintf", "buffer text8 list", cost=500)
def vsprintf(system, buffer, template, words):
    return sprintf(system, buffer, template, WordList(system, words))


@export("COREDLL", "wsprintfW", "buffer text ...", cost=500)
def wsprintf(system, buffer, template, arguments):
    text = formatted(system, template, arguments, True)
    return system.memory.put_text(buffer, text, LIMIT_OF_WSPRINTF)


@export("COREDLL", "wvsprintfW", "buffer text list", cost=500)
def wvsprintf(system, buffer, template, words):
    return wsprintf(system, buffer, template, WordList(system, words))


@export("COREDLL", "swprintf", "buffer text ...", cost=500)
def swprintf(system, buffer, template, arguments):
    text = formatted(system, template, arguments, True)
    return system.memory.put_text(buffer, text, len(text) * 2 + 1)
