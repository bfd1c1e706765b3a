"""SysTabControl32: a row of tabs, above what they stand for or below it.

Modelled: texts, sizes, choosing by pen and keys. Not modelled: rows, images, scrolling of tabs.
"""

from handheld.emulator.constants import (
    VK_LEFT, VK_RIGHT, WM_ERASEBKGND, WM_GETDLGCODE, WM_KEYDOWN, WM_KILLFOCUS, WM_LBUTTONDOWN,
    WM_SETFOCUS)
from handheld.emulator.controls.look import BLACK, EDGE, WHITE, font_of, notify, point_of, size_of
from handheld.emulator.dialogs import DLGC_WANTARROWS
from handheld.emulator.gdi_objects import COLOR_BTNFACE, system_colour
from handheld.emulator.windows import Window, window_class

CLASS_NAME = "SysTabControl32"
TCS_BOTTOM, TCS_FOCUSNEVER = 2, 0x8000
TCM_FIRST = 0x1300
TCM_GETITEMCOUNT = TCM_FIRST + 4
TCM_GETITEMRECT, TCM_GETCURSEL, TCM_SETCURSEL = TCM_FIRST + 10, TCM_FIRST + 11, TCM_FIRST + 12
TCM_SETITEMSIZE, TCM_SETPADDING, TCM_SETMINTABWIDTH = TCM_FIRST + 41, TCM_FIRST + 43, TCM_FIRST + 49
TCM_INSERTITEMW = TCM_FIRST + 62
TCN_SELCHANGE, TCN_SELCHANGING = -551, -552
TCIF_TEXT = 1


@window_class(CLASS_NAME)
class Tabs(Window):
    """The tabs; `selected` is -1 while there are none."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.labels, self.selected = [], -1
        self.padding, self.least, self.tab_height = 6, 0, 0

    def message(self, message, wparam, lparam):
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, wparam, lparam)
        return Window.message(self, message, wparam, lparam)

    def insert(self, wparam, lparam):
        """A place behind the end is the end."""
        mask, _, _, text = self.system.memory.struct(lparam, "<IIII")
        index = min(wparam, len(self.labels))
        self.labels.insert(index, self.system.memory.text(text) if mask & TCIF_TEXT else "")
        if self.selected < 0:
            self.selected = 0
        self.invalidate()
        return index

    def select(self, index):
        """By the program: nobody is told. What was selected before."""
        before = self.selected
        if 0 <= index < len(self.labels):
            self.selected = index
            self.invalidate()
        return before

    def choose(self, index):
        """By the user, whom the parent may refuse."""
        if index == self.selected or not 0 <= index < len(self.labels):
            return
        if notify(self, TCN_SELCHANGING):
            return
        self.select(index)
        notify(self, TCN_SELCHANGE)

    def set_size(self, _wparam, lparam):
        self.tab_height = lparam >> 16 & 0xFFFF
        self.invalidate()
        return 0

    def set_padding(self, _wparam, lparam):
        self.padding = lparam & 0xFFFF
        self.invalidate()
        return 0

    def set_least(self, _wparam, lparam):
        before, self.least = self.least, lparam
        self.invalidate()
        return before

    # ---- Places ----

    def row_height(self):
        return min(self.tab_height or font_of(self).height + 6, size_of(self)[1])

    def places(self):
        """The rectangle of each tab."""
        height, left, found = self.row_height(), 2, []
        top = size_of(self)[1] - height if self.style & TCS_BOTTOM else 0
        for label in self.labels:
            width = max(self.least, font_of(self).width(label) + 2 * self.padding)
            found.append((left, top, left + width, top + height))
            left += width
        return found

    def tab_at(self, x, y):
        for index, (left, top, right, bottom) in enumerate(self.places()):
            if left <= x < right and top <= y < bottom:
                return index
        return -1

    def pen_down(self, _wparam, lparam):
        index = self.tab_at(*point_of(lparam))
        if index >= 0 and not self.style & TCS_FOCUSNEVER and index == self.selected:
            self.system.windows.set_focus(self)
        self.choose(index)
        return 0

    def key_down(self, wparam, _lparam):
        if wparam in (VK_LEFT, VK_RIGHT):
            self.choose(self.selected + (1 if wparam == VK_RIGHT else -1))
        return 0

    def item_rect(self, wparam, lparam):
        if wparam >= len(self.labels):
            return 0
        self.system.memory.put(lparam, "<4i", *self.places()[wparam])
        return 1

    # ---- How it looks ----

    def focus_changed(self, _wparam, _lparam):
        self.invalidate()
        return 0

    def paint(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), system_colour(COLOR_BTNFACE))
        below = bool(self.style & TCS_BOTTOM)
        edge = height - self.row_height() if below else self.row_height() - 1
        dc.edge((0, edge, width, edge + 1), BLACK)
        for index, (label, place) in enumerate(zip(self.labels, self.places())):
            self.paint_tab(dc, label, place, index == self.selected, below)
        if self.system.windows.focus is self and self.selected >= 0:
            left, top, right, bottom = self.places()[self.selected]
            dc.dotted((left + 3, top + 3, right - 3, bottom - 3), EDGE)

    def paint_tab(self, dc, label, place, selected, below):
        """The selected one is open toward what it shows."""
        left, top, right, bottom = place
        if selected:
            inner = (left, top if below else top + 1, right, bottom - 1 if below else bottom)
            dc.fill(inner, WHITE)
            dc.edge((left, top, left + 1, bottom), BLACK)
            dc.edge((right - 1, top, right, bottom), BLACK)
            outer = bottom - 1 if below else top
            dc.edge((left, outer, right, outer + 1), BLACK)
        else:
            dc.edge((right - 1, top + 3, right, bottom - 3), EDGE)
        dc.label(place, label, font_of(self), BLACK, "center")


HANDLERS = {
    TCM_INSERTITEMW: Tabs.insert,
    TCM_GETITEMCOUNT: lambda tabs, wparam, lparam: len(tabs.labels),
    TCM_GETCURSEL: lambda tabs, wparam, lparam: tabs.selected,
    TCM_SETCURSEL: lambda tabs, wparam, lparam: tabs.select(wparam),
    TCM_SETITEMSIZE: Tabs.set_size,
    TCM_SETPADDING: Tabs.set_padding,
    TCM_SETMINTABWIDTH: Tabs.set_least,
    TCM_GETITEMRECT: Tabs.item_rect,
    WM_GETDLGCODE: lambda tabs, wparam, lparam: DLGC_WANTARROWS,
    WM_LBUTTONDOWN: Tabs.pen_down,
    WM_KEYDOWN: Tabs.key_down,
    WM_SETFOCUS: Tabs.focus_changed,
    WM_KILLFOCUS: Tabs.focus_changed,
    WM_ERASEBKGND: lambda tabs, wparam, lparam: 1,
}
