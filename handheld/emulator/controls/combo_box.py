"""COMBOBOX: a field with a list that drops down. The field can be typed into (CBS_DROPDOWN: it is
an EDIT within the box) or only shows what is selected (CBS_DROPDOWNLIST).

The list is a window of its own in front of everything, which takes the pen while it is open. The
order of what the parent hears is the system's: CBN_DROPDOWN before the list opens; by the pen
CBN_SELCHANGE when the list has closed, by keys at each step; the field is written behind
CBN_SELCHANGE. Not modelled: the list that is always open (CBS_SIMPLE), items that the program
draws.
"""

from handheld.emulator import frame
from handheld.emulator.constants import (
    VK_DOWN, VK_ESCAPE, VK_NEXT, VK_PRIOR, VK_RETURN, VK_UP, WM_CHAR,
    WM_COMMAND, WM_CREATE, WM_DESTROY, WM_ENABLE, WM_ERASEBKGND, WM_GETDLGCODE,
    WM_GETTEXT, WM_GETTEXTLENGTH, WM_KEYDOWN, WM_KILLFOCUS, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN,
    WM_LBUTTONUP, WM_SETFOCUS, WM_SETFONT, WM_SETTEXT, WM_SIZE, WS_BORDER, WS_CHILD,
    WS_EX_NOACTIVATE, WS_EX_TOPMOST, WS_POPUP, WS_VISIBLE, WS_VSCROLL)
from handheld.emulator.controls.edit import EM_LIMITTEXT, EM_SETSEL, ES_AUTOHSCROLL
from handheld.emulator.controls.list_box import LB_ERR, LBS_SORT, ListBox
from handheld.emulator.controls.look import BLACK, EDGE, WHITE, font_of, point_of, signed, size_of
from handheld.emulator.dialogs import (
    DLGC_HASSETSEL, DLGC_WANTALLKEYS, DLGC_WANTARROWS, DLGC_WANTCHARS)
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_GRAYTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, COLOR_WINDOWTEXT,
    system_colour)
from handheld.emulator.windows import Window, window_class

CBS_DROPDOWN, CBS_DROPDOWNLIST, CBS_KIND, CBS_SORT = 2, 3, 3, 0x100
CB_LIMITTEXT = 0x141
CB_ADDSTRING, CB_DELETESTRING, CB_GETCOUNT, CB_GETCURSEL = 0x143, 0x144, 0x146, 0x147
CB_GETLBTEXT, CB_GETLBTEXTLEN, CB_INSERTSTRING, CB_RESETCONTENT = 0x148, 0x149, 0x14A, 0x14B
CB_FINDSTRING, CB_SETCURSEL, CB_SHOWDROPDOWN = 0x14C, 0x14E, 0x14F
CB_GETITEMDATA, CB_SETITEMDATA, CB_GETDROPPEDSTATE, CB_FINDSTRINGEXACT = 0x150, 0x151, 0x157, 0x158
CBN_SELCHANGE, CBN_SETFOCUS, CBN_KILLFOCUS, CBN_EDITCHANGE = 1, 3, 4, 5
CBN_EDITUPDATE, CBN_DROPDOWN, CBN_CLOSEUP, CBN_SELENDOK, CBN_SELENDCANCEL = 6, 7, 8, 9, 10
EN_CHANGE, EN_UPDATE, EN_SETFOCUS, EN_KILLFOCUS = 0x300, 0x400, 0x100, 0x200
EDIT_ID = 1001
BUTTON_WIDTH = 15
VK_F4 = 0x73
LEAST_ROWS = 1


@window_class("ComboLBox")
class DropList(ListBox):
    """The list of a combo box while it is dropped down."""

    box = None

    def colour_behind(self, dc):
        return WHITE

    def message(self, message, wparam, lparam):
        if message in (WM_LBUTTONDOWN, WM_LBUTTONDBLCLK):
            return self.box.pressed_in_list(*point_of(lparam))
        if message == WM_LBUTTONUP:
            return self.lifted(*point_of(lparam))
        return ListBox.message(self, message, wparam, lparam)

    def choose(self, index):
        """The pen moves over the items; the choice is made when it is lifted."""
        if self.items.has(index):
            self.select(index)

    def lifted(self, x, y):
        if self.held:
            self.held = False
            if self.item_at(x, y) != LB_ERR:
                self.box.close(True)
        return 0


@window_class("COMBOBOX")
class ComboBox(Window):
    """The box. Its height without the list is that of its field; `drop_height` is with it."""

    class_style = 8  # double clicks

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.list = self.edit = None
        self.drop_height, self.is_open, self.opened_with = 0, False, LB_ERR
        self.fitting = False

    @property
    def has_edit(self):
        return self.style & CBS_KIND == CBS_DROPDOWN

    def message(self, message, wparam, lparam):
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, signed(wparam), lparam)
        result = Window.message(self, message, wparam, lparam)
        if message in (WM_ENABLE, WM_SETTEXT):
            self.invalidate()
        return result

    # ---- Parts ----

    def created(self, _wparam, _lparam):
        windows = self.system.windows
        self.style &= ~WS_VSCROLL  # the list's
        style = WS_POPUP | WS_BORDER | WS_VSCROLL | (LBS_SORT if self.style & CBS_SORT else 0)
        self.list = windows.create("ComboLBox", "", style, WS_EX_TOPMOST | WS_EX_NOACTIVATE,
                                   0, 0, 10, 10, self)
        self.list.box = self
        if self.has_edit:
            self.edit = windows.create("EDIT", self.text, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 0,
                                       1, 1, 10, 10, self, EDIT_ID)
        return 0

    def sized(self, _wparam, _lparam):
        """Whoever sizes the box gives the height with its list."""
        if not self.fitting:
            self.drop_height = self.bottom - self.top
            self.fit()
        self.place_edit()
        return 0

    def fit(self):
        """Makes the box as high as its field."""
        left, top = (0, 0) if self.parent is None else self.parent.client_rect()[:2]
        self.fitting = True
        self.system.windows.move(self, self.left - left, self.top - top, self.right - self.left,
                                 font_of(self).height + 6)
        self.fitting = False

    def place_edit(self):
        if self.edit is not None:
            width, height = size_of(self)
            self.system.windows.move(self.edit, 2, 2, width - BUTTON_WIDTH - 3, height - 4)

    def set_font(self, wparam, lparam):
        self.font = wparam & 0xFFFFFFFF
        for part in (self.list, self.edit):
            if part is not None:
                self.system.windows.send(part, WM_SETFONT, wparam, lparam)
        self.fit()
        self.place_edit()
        self.invalidate()
        return 0

    def destroyed_now(self, _wparam, _lparam):
        if self.list is not None:
            self.system.windows.destroy(self.list)
        return 0

    # ---- The field ----

    def field_text(self):
        if self.edit is not None:
            return self.edit.content.text
        items = self.list.items
        return items.texts[self.list.selected] if items.has(self.list.selected) else ""

    def write_field(self, text):
        if self.edit is not None:
            with self.system.memory.scratch_text(text) as address:
                self.system.windows.send(self.edit, WM_SETTEXT, 0, address)
            self.system.windows.send(self.edit, EM_SETSEL, 0, -1)
        self.invalidate()

    def set_text(self, _wparam, lparam):
        """The field's alone; the list stays as it is."""
        if self.edit is not None:
            self.system.windows.send(self.edit, WM_SETTEXT, 0, lparam)
            self.text = self.edit.content.text
        self.invalidate()
        return 1

    def get_text(self, wparam, lparam):
        return self.system.memory.put_text(lparam, self.field_text(), wparam)

    # ---- The list ----

    def drop(self, wparam, _lparam):
        if wparam and not self.is_open:
            self.open()
        elif not wparam and self.is_open:
            self.close(False)
        return 1

    def open(self):
        self.notify_command(CBN_DROPDOWN)
        if self.is_open or self.destroyed:
            return
        self.is_open, self.opened_with = True, self.list.selected
        windows = self.system.windows
        windows.move(self.list, self.left, *self.list_place())
        self.list.select(self.list.selected)
        windows.raise_window(self.list)
        windows.show(self.list, True)
        windows.set_capture(self.list)
        self.invalidate()

    def list_place(self):
        """(top, width, height) of the list on the screen: below the field, or above it."""
        rows = max(LEAST_ROWS, len(self.list.items.texts) if self.list.items else 0)
        row, border = self.list.row_height(), self.list.border()
        room = max(row, self.drop_height - (self.bottom - self.top) - border)
        height = min(rows, max(1, room // row)) * row + border
        top = self.bottom
        if top + height > self.system.screen.HEIGHT and self.top - height >= 0:
            top = self.top - height
        return top, self.right - self.left, height

    def close(self, chosen):
        """Rolls the list up. `chosen`: with a choice, which the field then shows."""
        if not self.is_open:
            return
        self.is_open = False
        windows = self.system.windows
        windows.show(self.list, False)
        if windows.capture is self.list:
            windows.set_capture(None)
        if not chosen:
            self.list.selected = self.opened_with
        self.notify_command(CBN_SELENDOK if chosen else CBN_SELENDCANCEL)
        self.notify_command(CBN_CLOSEUP)
        if chosen:
            self.tell_choice()
        self.invalidate()

    def tell_choice(self):
        self.notify_command(CBN_SELCHANGE)
        if not self.destroyed and self.list.items.has(self.list.selected):
            self.write_field(self.list.items.texts[self.list.selected])

    def pressed_in_list(self, x, y):
        """The pen goes down while the list is open: on it, on the box, or elsewhere."""
        index = self.list.item_at(x, y)
        if index != LB_ERR:
            self.list.held = True
            self.list.select(index)
            return 0
        screen_x, screen_y = x + self.list.client_rect()[0], y + self.list.client_rect()[1]
        if self.list.left <= screen_x < self.list.right \
                and self.list.top <= screen_y < self.list.bottom:
            self.press_scroll_bar(screen_x, screen_y)
            return 0
        self.close(False)
        return 0

    def press_scroll_bar(self, x, y):
        frame.press(self.system, self.list, x, y)

    def select(self, index):
        result = self.list.select(index)
        text = self.list.items.texts[index] if self.list.items.has(index) else ""
        self.write_field(text)
        return result

    def reset(self, _wparam, _lparam):
        self.list.reset(0, 0)
        self.write_field("")
        return 0

    # ---- Pen and keys ----

    def pen_down(self, _wparam, lparam):
        width, _ = size_of(self)
        windows = self.system.windows
        target = self.edit or self
        windows.set_focus(target)
        if not self.has_edit or point_of(lparam)[0] >= width - BUTTON_WIDTH:
            self.drop(not self.is_open, 0)
        return 0

    def key_down(self, wparam, _lparam):
        """Also what the field within passes on."""
        steps = {VK_UP: -1, VK_DOWN: 1, VK_PRIOR: -self.list.shown(), VK_NEXT: self.list.shown()}
        last = len(self.list.items.texts) - 1
        if wparam in steps and last >= 0:
            index = min(max(self.list.selected + steps[wparam], 0), last)
            if index != self.list.selected:
                self.list.select(index)
                self.tell_choice()
        elif wparam == VK_F4:
            self.drop(not self.is_open, 0)
        elif self.is_open and wparam in (VK_RETURN, VK_ESCAPE):
            self.close(wparam == VK_RETURN)
        return 0

    def character(self, wparam, _lparam):
        """A letter goes to the next item that begins with it."""
        index = self.list.items.find(chr(wparam), self.list.selected, False)
        if index not in (LB_ERR, self.list.selected):
            self.list.select(index)
            self.tell_choice()
        return 0

    def dialog_code(self, _wparam, _lparam):
        code = DLGC_WANTARROWS | DLGC_WANTCHARS | (DLGC_HASSETSEL if self.edit else 0)
        return code | (DLGC_WANTALLKEYS if self.is_open else 0)

    def focused(self, _wparam, _lparam):
        if self.edit is not None:
            self.system.windows.set_focus(self.edit)
        else:
            self.notify_command(CBN_SETFOCUS)
            self.invalidate()
        return 0

    def unfocused(self, _wparam, _lparam):
        if self.edit is None:
            self.close(False)
            self.notify_command(CBN_KILLFOCUS)
            self.invalidate()
        return 0

    def heard(self, wparam, _lparam):
        """What the field within tells."""
        code = wparam >> 16 & 0xFFFF
        codes = {EN_CHANGE: CBN_EDITCHANGE, EN_UPDATE: CBN_EDITUPDATE, EN_SETFOCUS: CBN_SETFOCUS,
                 EN_KILLFOCUS: CBN_KILLFOCUS}
        if code == EN_KILLFOCUS:
            self.close(False)
        if code in codes:
            self.notify_command(codes[code])
        return 0

    # ---- How it looks ----

    def paint(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), WHITE)
        dc.frame((0, 0, width, height), BLACK)
        left = width - BUTTON_WIDTH
        dc.fill((left, 1, width - 1, height - 1), system_colour(COLOR_BTNFACE))
        dc.edge((left, 1, left + 1, height - 1), EDGE)
        dc.triangle(left + 4, height // 2 - 1, 4, BLACK)
        if self.edit is None:
            self.paint_choice(dc, (2, 2, left - 1, height - 2))

    def paint_choice(self, dc, place):
        colour = system_colour(COLOR_WINDOWTEXT if self.enabled else COLOR_GRAYTEXT)
        if self.system.windows.focus is self and not self.is_open:
            dc.fill(place, system_colour(COLOR_HIGHLIGHT))
            colour = system_colour(COLOR_HIGHLIGHTTEXT)
        left, top, right, bottom = place
        dc.label((left + 2, top, right, bottom), self.field_text().replace("&", "&&"),
                 font_of(self), colour)


def pass_to_list(message):
    """The message of the list box that does the same."""
    return lambda box, wparam, lparam: box.list.message(message, wparam & 0xFFFFFFFF, lparam)


def pass_to_edit(message):
    return lambda box, wparam, lparam: box.system.windows.send(box.edit, message, wparam, lparam)


HANDLERS = {
    WM_CREATE: ComboBox.created,
    WM_SIZE: ComboBox.sized,
    WM_DESTROY: ComboBox.destroyed_now,
    WM_SETFONT: ComboBox.set_font,
    WM_GETDLGCODE: ComboBox.dialog_code,
    WM_SETTEXT: ComboBox.set_text,
    WM_GETTEXT: ComboBox.get_text,
    WM_GETTEXTLENGTH: lambda box, wparam, lparam: len(box.field_text()),
    WM_SETFOCUS: ComboBox.focused,
    WM_KILLFOCUS: ComboBox.unfocused,
    WM_COMMAND: ComboBox.heard,
    WM_KEYDOWN: ComboBox.key_down,
    WM_CHAR: ComboBox.character,
    WM_LBUTTONDOWN: ComboBox.pen_down,
    WM_LBUTTONDBLCLK: ComboBox.pen_down,
    WM_ERASEBKGND: lambda box, wparam, lparam: 1,
    CB_ADDSTRING: pass_to_list(0x180),
    CB_INSERTSTRING: pass_to_list(0x181),
    CB_DELETESTRING: pass_to_list(0x182),
    CB_GETLBTEXT: pass_to_list(0x189),
    CB_GETLBTEXTLEN: pass_to_list(0x18A),
    CB_GETCOUNT: pass_to_list(0x18B),
    CB_FINDSTRING: pass_to_list(0x18F),
    CB_FINDSTRINGEXACT: pass_to_list(0x1A2),
    CB_GETITEMDATA: pass_to_list(0x199),
    CB_SETITEMDATA: pass_to_list(0x19A),
    CB_RESETCONTENT: ComboBox.reset,
    CB_SETCURSEL: lambda box, wparam, lparam: box.select(wparam),
    CB_GETCURSEL: lambda box, wparam, lparam: box.list.selected,
    CB_SHOWDROPDOWN: ComboBox.drop,
    CB_GETDROPPEDSTATE: lambda box, wparam, lparam: int(box.is_open),
    CB_LIMITTEXT: pass_to_edit(EM_LIMITTEXT),
}
