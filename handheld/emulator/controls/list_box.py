"""LISTBOX: a list of texts of which one is selected. The drop-down list of a combo box is one too.

Modelled: adding, sorting, finding, selecting by pen and keys, scrolling, item data. Not modelled:
several selections, columns, items that the program draws.
"""

from handheld.emulator import frame
from handheld.emulator.constants import (
    VK_DOWN, VK_END, VK_HOME, VK_NEXT, VK_PRIOR, VK_UP, WM_CTLCOLORLISTBOX, WM_ERASEBKGND,
    WM_GETDLGCODE, WM_KEYDOWN, WM_KILLFOCUS, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN, WM_LBUTTONUP,
    WM_MOUSEMOVE, WM_SETFOCUS, WM_SETFONT, WM_SIZE, WM_VSCROLL, WS_VSCROLL)
from handheld.emulator.controls import scroll_bar
from handheld.emulator.controls.look import background, font_of, ink, point_of, signed, size_of
from handheld.emulator.dialogs import DLGC_WANTARROWS, DLGC_WANTCHARS
from handheld.emulator.gdi_objects import COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, system_colour
from handheld.emulator.windows import Window, window_class

LBS_NOTIFY, LBS_SORT = 1, 2
LB_ADDSTRING, LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT = 0x180, 0x181, 0x182, 0x184
LB_SETCURSEL, LB_GETCURSEL, LB_GETTEXT, LB_GETTEXTLEN = 0x186, 0x188, 0x189, 0x18A
LB_GETCOUNT, LB_GETTOPINDEX, LB_FINDSTRING, LB_SETTOPINDEX = 0x18B, 0x18E, 0x18F, 0x197
LB_GETITEMDATA, LB_SETITEMDATA, LB_FINDSTRINGEXACT = 0x199, 0x19A, 0x1A2
LBN_SELCHANGE, LBN_DBLCLK = 1, 2
LB_ERR = -1


class Items:
    """Texts with a word of the program's each."""

    def __init__(self, sort):
        self.sort = sort
        self.texts, self.data = [], []

    def add(self, text):
        index = len(self.texts)
        if self.sort:
            index = sum(1 for other in self.texts if other.casefold() <= text.casefold())
        return self.insert(index, text)

    def insert(self, index, text):
        index = len(self.texts) if index < 0 else index
        self.texts.insert(index, text)
        self.data.insert(index, 0)
        return index

    def remove(self, index):
        del self.texts[index], self.data[index]

    def clear(self):
        self.texts, self.data = [], []

    def find(self, text, behind, exact):
        """The next item behind an index that is the text, or begins with it; round the end."""
        wanted, count = text.casefold(), len(self.texts)
        for step in range(count):
            index = (behind + 1 + step) % count
            found = self.texts[index].casefold()
            if found == wanted or not exact and found.startswith(wanted):
                return index
        return LB_ERR

    def has(self, index):
        return 0 <= index < len(self.texts)


@window_class("LISTBOX")
class ListBox(Window):
    """The list; `selected` is -1 for none, `first` the first item shown."""

    class_style = 8  # double clicks

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.items = None
        self.selected, self.first, self.held = LB_ERR, 0, False

    # ---- Items ----

    def message(self, message, wparam, lparam):
        if self.items is None:
            self.items = Items(bool(self.style & LBS_SORT))
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, signed(wparam), lparam)
        result = Window.message(self, message, wparam, lparam)
        if message in (WM_SIZE, WM_SETFONT):
            self.update_bar()
        return result

    def add(self, _wparam, lparam):
        index = self.items.add(self.system.memory.text(lparam))
        return self.added(index)

    def insert(self, wparam, lparam):
        return self.added(self.items.insert(wparam, self.system.memory.text(lparam)))

    def added(self, index):
        if self.selected >= index:
            self.selected += 1
        self.update_bar()
        self.invalidate()
        return index

    def remove(self, wparam, _lparam):
        if not self.items.has(wparam):
            return LB_ERR
        self.items.remove(wparam)
        if self.selected == wparam:
            self.selected = LB_ERR
        elif self.selected > wparam:
            self.selected -= 1
        self.update_bar()
        self.invalidate()
        return len(self.items.texts)

    def reset(self, _wparam, _lparam):
        self.items.clear()
        self.selected, self.first = LB_ERR, 0
        self.update_bar()
        self.invalidate()
        return 0

    def get_text(self, wparam, lparam):
        if not self.items.has(wparam):
            return LB_ERR
        text = self.items.texts[wparam]
        return self.system.memory.put_text(lparam, text, len(text) + 1)

    def find(self, wparam, lparam, exact):
        return self.items.find(self.system.memory.text(lparam), wparam, exact)

    # ---- Selection ----

    def select(self, index):
        """Selects and brings into view; -1 for none."""
        if index != LB_ERR and not self.items.has(index):
            return LB_ERR
        self.selected = index
        if index != LB_ERR:
            self.scroll_to(min(max(self.first, index - self.shown() + 1), index))
        self.invalidate()
        return index

    def choose(self, index):
        """The user selects."""
        if self.items.has(index) and index != self.selected:
            self.select(index)
            self.tell(LBN_SELCHANGE)

    def tell(self, code):
        if self.style & LBS_NOTIFY:
            self.notify_command(code)

    def key_down(self, wparam, _lparam):
        steps = {VK_UP: -1, VK_DOWN: 1, VK_PRIOR: -self.shown(), VK_NEXT: self.shown()}
        last = len(self.items.texts) - 1
        if wparam in steps:
            self.choose(min(max(self.selected + steps[wparam], 0), last))
        elif wparam in (VK_HOME, VK_END):
            self.choose(0 if wparam == VK_HOME else last)
        return 0

    def pen_down(self, _wparam, lparam):
        if self.parent is not None:
            self.system.windows.set_focus(self)
        self.system.windows.set_capture(self)
        self.held = True
        self.choose(self.item_at(*point_of(lparam)))
        return 0

    def pen_moved(self, _wparam, lparam):
        if self.held:
            self.choose(self.item_at(*point_of(lparam)))
        return 0

    def pen_up(self, _wparam, _lparam):
        if self.held:
            self.held = False
            self.system.windows.set_capture(None)
        return 0

    def double_tap(self, _wparam, lparam):
        if self.item_at(*point_of(lparam)) == self.selected != LB_ERR:
            self.tell(LBN_DBLCLK)
        return 0

    # ---- Places ----

    def row_height(self):
        return font_of(self).height + 1

    def shown(self):
        """How many items fit."""
        return max(1, size_of(self)[1] // self.row_height())

    def item_at(self, x, y):
        """The item at a point; -1 beside the list and below its end."""
        width, height = size_of(self)
        if not (0 <= x < width and 0 <= y < height):
            return LB_ERR
        index = self.first + y // self.row_height()
        return index if self.items.has(index) else LB_ERR

    def scroll_to(self, top):
        last = max(0, len(self.items.texts) - self.shown())
        self.first = max(0, min(top, last))
        self.update_bar()
        self.invalidate()

    def update_bar(self):
        if self.style & WS_VSCROLL and self.items is not None:
            scroll_bar.update(self, scroll_bar.SB_VERT, 0, max(0, len(self.items.texts) - 1),
                              self.shown(), self.first)

    def scrolled(self, wparam, _lparam):
        steps = {scroll_bar.SB_LINEUP: -1, scroll_bar.SB_LINEDOWN: 1,
                 scroll_bar.SB_PAGEUP: -self.shown(), scroll_bar.SB_PAGEDOWN: self.shown()}
        code = wparam & 0xFFFF
        if code in steps:
            self.scroll_to(self.first + steps[code])
        elif code in (scroll_bar.SB_THUMBTRACK, scroll_bar.SB_THUMBPOSITION):
            self.scroll_to(wparam >> 16 & 0xFFFF)
        return 0

    # ---- How it looks ----

    def focus_changed(self, _wparam, _lparam):
        self.invalidate()
        return 0

    def paint(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), self.colour_behind(dc))
        row = self.row_height()
        for index in range(self.first, min(len(self.items.texts), self.first + height // row + 1)):
            y = (index - self.first) * row
            self.paint_item(dc, self.items.texts[index], (0, y, width, y + row),
                            index == self.selected)

    def colour_behind(self, dc):
        return background(self, dc, WM_CTLCOLORLISTBOX)

    def paint_item(self, dc, text, place, selected):
        colour = ink(self, dc)
        if selected:
            dc.fill(place, system_colour(COLOR_HIGHLIGHT))
            colour = system_colour(COLOR_HIGHLIGHTTEXT)
        left, top, right, bottom = place
        dc.label((left + 3, top, right, bottom), text.replace("&", "&&"), font_of(self), colour)

    def border(self):
        """What the frame takes from the height."""
        _, top, _, bottom = frame.insets(self)
        return top + bottom


def item_data(box, wparam, _lparam):
    return box.items.data[wparam] if box.items.has(wparam) else LB_ERR


def set_item_data(box, wparam, lparam):
    if not box.items.has(wparam):
        return LB_ERR
    box.items.data[wparam] = lparam
    return 0


def text_length(box, wparam, _lparam):
    return len(box.items.texts[wparam]) if box.items.has(wparam) else LB_ERR


HANDLERS = {
    WM_GETDLGCODE: lambda box, wparam, lparam: DLGC_WANTARROWS | DLGC_WANTCHARS,
    LB_ADDSTRING: ListBox.add,
    LB_INSERTSTRING: ListBox.insert,
    LB_DELETESTRING: ListBox.remove,
    LB_RESETCONTENT: ListBox.reset,
    LB_SETCURSEL: lambda box, wparam, lparam: box.select(wparam),
    LB_GETCURSEL: lambda box, wparam, lparam: box.selected,
    LB_GETTEXT: ListBox.get_text,
    LB_GETTEXTLEN: text_length,
    LB_GETCOUNT: lambda box, wparam, lparam: len(box.items.texts),
    LB_GETTOPINDEX: lambda box, wparam, lparam: box.first,
    LB_SETTOPINDEX: lambda box, wparam, lparam: box.scroll_to(wparam) or 0,
    LB_FINDSTRING: lambda box, wparam, lparam: box.find(wparam, lparam, False),
    LB_FINDSTRINGEXACT: lambda box, wparam, lparam: box.find(wparam, lparam, True),
    LB_GETITEMDATA: item_data,
    LB_SETITEMDATA: set_item_data,
    WM_KEYDOWN: ListBox.key_down,
    WM_LBUTTONDOWN: ListBox.pen_down,
    WM_LBUTTONDBLCLK: ListBox.double_tap,
    WM_MOUSEMOVE: ListBox.pen_moved,
    WM_LBUTTONUP: ListBox.pen_up,
    WM_VSCROLL: ListBox.scrolled,
    WM_SETFOCUS: ListBox.focus_changed,
    WM_KILLFOCUS: ListBox.focus_changed,
    WM_ERASEBKGND: lambda box, wparam, lparam: 1,
}
