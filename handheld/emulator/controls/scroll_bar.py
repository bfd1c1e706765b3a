"""Scroll bars: those at a window's edges (WS_VSCROLL, WS_HSCROLL), their numbers, and the pen on
them.

A bar tells its window WM_VSCROLL or WM_HSCROLL: a line at the arrows, a page beside the thumb, the
position under the pen while the thumb is drawn. Not modelled: SCROLLBAR as a control of its own,
repetition while the pen rests.
"""

from handheld.emulator.calls import export
from handheld.emulator.gdi_objects import COLOR_BTNFACE, COLOR_BTNSHADOW, system_colour

SB_HORZ, SB_VERT = 0, 1
SIF_RANGE, SIF_PAGE, SIF_POS, SIF_DISABLENOSCROLL = 1, 2, 4, 8
SB_LINEUP, SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN = 0, 1, 2, 3
SB_THUMBPOSITION, SB_THUMBTRACK, SB_ENDSCROLL = 4, 5, 8
WM_HSCROLL, WM_VSCROLL = 0x114, 0x115
SMALLEST_THUMB = 8
BLACK, WHITE = (0, 0, 0), (255, 255, 255)


class Bar:
    """The numbers of one scroll bar."""

    def __init__(self):
        self.low, self.high, self.page, self.position = 0, 100, 0, 0
        self.track = 0         # under the pen
        self.keeps_room = False  # shown, but dead, where there is nothing to scroll

    @property
    def last(self):
        """The highest position."""
        return max(self.low, self.high - max(self.page - 1, 0))

    @property
    def scrolls(self):
        return self.last > self.low

    @property
    def shown(self):
        return self.scrolls or self.keeps_room

    def set(self, low, high, page, position):
        """True when anything changed."""
        before = (self.low, self.high, self.page, self.position)
        self.low, self.high, self.page = low, max(low, high), max(0, page)
        self.position = max(low, min(position, self.last))
        return before != (self.low, self.high, self.page, self.position)


def state(window, which):
    """The bar's numbers, made when they are first asked for."""
    if not hasattr(window, "scroll_bars"):
        window.scroll_bars = {SB_HORZ: Bar(), SB_VERT: Bar()}
    return window.scroll_bars[which]


def update(window, which, low, high, page, position):
    """New numbers, for the system's own controls and for the program: the bar is drawn again, and
    the client area grows or shrinks when the bar goes or comes."""
    bar = state(window, which)
    shown = bar.shown
    if bar.set(low, high, page, position):
        if bar.shown != shown:
            window.system.windows.frame_changed(window)
        else:
            window.system.windows.redraw_frame(window)


# ---- How it looks ----

def along(rect, which):
    """(start, end) of a bar in the direction that it scrolls."""
    return (rect[1], rect[3]) if which == SB_VERT else (rect[0], rect[2])


def across(rect, which):
    return rect[2] - rect[0] if which == SB_VERT else rect[3] - rect[1]


def piece(rect, which, start, end):
    """The part of a bar from `start` to `end`."""
    if which == SB_VERT:
        return (rect[0], start, rect[2], end)
    return (start, rect[1], end, rect[3])


def thumb(rect, bar, which):
    """(start, end) of the thumb; None where there is none."""
    start, end = along(rect, which)
    arrow = arrow_size(rect, which)
    room = end - start - 2 * arrow
    if not bar.scrolls or room <= SMALLEST_THUMB:
        return None
    positions = bar.high - bar.low + 1
    size = max(SMALLEST_THUMB, room * max(bar.page, 1) // positions)
    steps = bar.last - bar.low
    first = start + arrow + (room - size) * (bar.position - bar.low) // steps
    return (first, first + size)


def arrow_size(rect, which):
    start, end = along(rect, which)
    return min(across(rect, which), (end - start) // 2)


def draw(dc, rect, bar, which):
    face, shadow = system_colour(COLOR_BTNFACE), system_colour(COLOR_BTNSHADOW)
    dc.fill(rect, (250, 249, 245))
    start, end = along(rect, which)
    arrow = arrow_size(rect, which)
    ink = BLACK if bar.scrolls else shadow
    for place, toward_end in ((start, False), (end - arrow, True)):
        button = piece(rect, which, place, place + arrow)
        dc.fill(button, face)
        dc.frame(button, shadow)
        draw_arrow(dc, button, which, toward_end, ink)
    found = thumb(rect, bar, which)
    if found:
        grip = piece(rect, which, *found)
        dc.fill(grip, face)
        dc.frame(grip, shadow)


def draw_arrow(dc, button, which, toward_end, ink):
    middle_x = (button[0] + button[2]) // 2
    middle_y = (button[1] + button[3]) // 2
    for row in range(4):
        step = row - 2 if not toward_end else 1 - row
        if which == SB_VERT:
            y = middle_y + step
            dc.edge((middle_x - row, y, middle_x + row + 1, y + 1), ink)
        else:
            x = middle_x + step
            dc.edge((x, middle_y - row, x + 1, middle_y + row + 1), ink)


# ---- The pen ----

class Tracker:
    """The pen on a bar, from its press to its release. Coordinates count from the window."""

    def __init__(self, system, window, which, rect):
        self.system, self.window, self.which, self.rect = system, window, which, rect
        self.bar = state(window, which)
        self.held = None  # (thumb's start, pen) when the thumb was pressed

    def begin(self, x, y):
        pen = y if self.which == SB_VERT else x
        self.system.windows.tracker = self
        start, end = along(self.rect, self.which)
        arrow = arrow_size(self.rect, self.which)
        found = thumb(self.rect, self.bar, self.which)
        if pen < start + arrow:
            self.tell(SB_LINEUP)
        elif pen >= end - arrow:
            self.tell(SB_LINEDOWN)
        elif found and found[0] <= pen < found[1]:
            self.held = (found[0], pen)
        elif found:
            self.tell(SB_PAGEUP if pen < found[0] else SB_PAGEDOWN)

    def tell(self, code, position=0):
        message = WM_VSCROLL if self.which == SB_VERT else WM_HSCROLL
        self.system.windows.send(self.window, message, code | (position & 0xFFFF) << 16, 0)

    def moved(self, x, y):
        if self.held:
            pen = (y - self.window.top) if self.which == SB_VERT else (x - self.window.left)
            self.bar.track = self.position_at(pen)
            self.tell(SB_THUMBTRACK, self.bar.track)

    def position_at(self, pen):
        start, end = along(self.rect, self.which)
        arrow = arrow_size(self.rect, self.which)
        size = max(SMALLEST_THUMB, (end - start - 2 * arrow) * max(self.bar.page, 1)
                   // (self.bar.high - self.bar.low + 1))
        room = end - start - 2 * arrow - size
        first = self.held[0] + pen - self.held[1] - start - arrow
        steps = self.bar.last - self.bar.low
        return self.bar.low + max(0, min(steps, (first * steps + room // 2) // max(room, 1)))

    def released(self, x, y):
        self.system.windows.tracker = None
        if self.held:
            self.moved(x, y)
            self.tell(SB_THUMBPOSITION, self.bar.track)
        self.tell(SB_ENDSCROLL)


# ---- What the program calls ----

@export("COREDLL", "SetScrollInfo", "window which info redraw")
def set_scroll_info(system, owner, which, info, _redraw):
    """The position afterwards."""
    bar = state(owner, which)
    _, mask, low, high, page, position, _ = system.memory.struct(info, "<IIiiIii")
    bar.keeps_room = bool(mask & SIF_DISABLENOSCROLL)
    update(owner, which,
           low if mask & SIF_RANGE else bar.low, high if mask & SIF_RANGE else bar.high,
           page if mask & SIF_PAGE else bar.page, position if mask & SIF_POS else bar.position)
    return bar.position


@export("COREDLL", "GetScrollInfo", "window which info")
def get_scroll_info(system, window, which, info):
    bar = state(window, which)
    size, mask = system.memory.struct(info, "<II")
    system.memory.put(info, "<IIiiIii", size, mask, bar.low, bar.high, bar.page, bar.position,
                      bar.track)
    return 1


@export("COREDLL", "SetScrollPos", "window which int redraw")
def set_scroll_position(system, owner, which, position, _redraw):
    bar = state(owner, which)
    before = bar.position
    update(owner, which, bar.low, bar.high, bar.page, position)
    return before


@export("COREDLL", "SetScrollRange", "window which int int redraw")
def set_scroll_range(system, owner, which, low, high, _redraw):
    bar = state(owner, which)
    update(owner, which, low, high, bar.page, bar.position)
    return 1
