"""Dialog templates: reading them, and dialog units.

A unit is a quarter of the font's average width across and an eighth of its height down.
Not modelled: extended templates, which the device's compiler of resources does not make either.
"""

import struct

from handheld.emulator.calls import export
from handheld.emulator.fonts import make_font

DS_SETFONT = 0x40
CLASSES = {0x80: "BUTTON", 0x81: "EDIT", 0x82: "STATIC", 0x83: "LISTBOX", 0x84: "SCROLLBAR",
           0x85: "COMBOBOX"}
POINTS_PER_INCH, PIXELS_PER_INCH = 72, 96


class Reader:
    """Reads a template from memory, word by word."""

    def __init__(self, memory, address):
        self.memory, self.at = memory, address

    def take(self, form):
        values = self.memory.struct(self.at, form)
        self.at += struct.calcsize(form)
        return values if len(values) > 1 else values[0]

    def align(self):
        self.at = (self.at + 3) & ~3

    def name(self):
        """A text, a number (behind 0xFFFF), or ""."""
        first = self.memory.u16(self.at)
        if first == 0xFFFF:
            self.at += 2
            return self.take("<H")
        length = self.memory.text_length(self.at)
        text = self.memory.text(self.at, length) if length else ""
        self.at += 2 * length + 2
        return text


class Control:
    """One control of a template; its rectangle is in dialog units."""

    def __init__(self, reader):
        reader.align()
        self.style, self.ex_style = reader.take("<II")
        self.rect = reader.take("<hhhh")
        self.id = reader.take("<H")
        name = reader.name()
        self.class_name = CLASSES.get(name, name)
        self.title = reader.name()
        self.extra = reader.take("<H")
        reader.at += self.extra


class Template:
    """A dialog as its resource describes it."""

    def __init__(self, memory, address):
        reader = Reader(memory, address)
        self.style, self.ex_style = reader.take("<II")
        count = reader.take("<H")
        self.rect = reader.take("<hhhh")
        self.menu, self.class_name, self.title = reader.name(), reader.name(), reader.name()
        self.font = make_font()
        if self.style & DS_SETFONT:
            points = reader.take("<H")
            height = (points * PIXELS_PER_INCH + POINTS_PER_INCH // 2) // POINTS_PER_INCH
            self.font = make_font(reader.name(), -height)
        self.controls = [Control(reader) for _ in range(count)]


def units(font):
    """Four horizontal and eight vertical units, in pixels."""
    return font.average_width, font.height


def to_pixels(rect, base):
    """(x, y, width, height) in units as pixels."""
    return tuple((value * base[n % 2] + (2, 4)[n % 2]) // (4, 8)[n % 2]
                 for n, value in enumerate(rect))


@export("COREDLL", "MapDialogRect", "window rect")
def map_dialog_rect(system, window, rect):
    pixels = to_pixels(system.memory.struct(rect, "<4i"), units(window.dialog_font))
    system.memory.put(rect, "<4i", *pixels)
    return True
