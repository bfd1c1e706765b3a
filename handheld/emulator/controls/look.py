"""What the controls have in common: the font they were given, colours that their parent may set,
and edges.
"""

from handheld.emulator.constants import WM_CTLCOLORSTATIC, WM_NOTIFY
from handheld.emulator.fonts import make_font
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_GRAYTEXT, COLOR_WINDOW, OBJ_FONT, system_colour)

NMHDR = "<IIi"
NMHDR_SIZE = 12
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
EDGE = (127, 125, 116)


def font_of(window):
    """The control's font, the system's when it was given none."""
    item = window.system.gdi.table.objects.get(window.font)
    return item.font if item is not None and item.kind == OBJ_FONT else make_font()


def size_of(window):
    """Width and height of the client area."""
    left, top, right, bottom = window.client_rect()
    return right - left, bottom - top


def background(window, dc, message=WM_CTLCOLORSTATIC):
    """The colour behind the control, which its parent is asked for; it may set the context's
    colours too. None: nothing is to be filled."""
    handle = window.system.windows.send(window.parent, message, dc.handle, window.handle)
    if handle:
        return window.system.gdi.brush_colour(handle)
    return system_colour(COLOR_BTNFACE if message == WM_CTLCOLORSTATIC else COLOR_WINDOW)


def ink(window, dc):
    return dc.text_colour if window.enabled else system_colour(COLOR_GRAYTEXT)


def notify(window, code, extra=b""):
    """WM_NOTIFY to the parent: NMHDR and what follows it; the parent's answer."""
    system = window.system
    with system.memory.scratch(NMHDR_SIZE + len(extra)) as record:
        system.memory.put(record, NMHDR, window.handle, window.id, code)
        system.memory.put_bytes(record + NMHDR_SIZE, extra)
        return system.windows.send(window.parent, WM_NOTIFY, window.id, record)


def point_of(lparam):
    """The pen's place from a message: two signed halves."""
    x, y = lparam & 0xFFFF, lparam >> 16 & 0xFFFF
    return x - (x & 0x8000) * 2, y - (y & 0x8000) * 2


def signed(word):
    """A word as a signed number."""
    return word - 0x100000000 if word & 0x80000000 else word
