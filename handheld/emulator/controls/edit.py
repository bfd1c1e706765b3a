"""EDIT: a field of one line or of several.

Modelled: typing, the keys that move and erase, selection by pen and with Shift, clipboard, undo of
the last change, limits, breaking of lines, scrolling with the caret. Not modelled: passwords,
alignment, tab stops, its own context menu.
"""

from handheld.emulator.constants import (
    VK_CONTROL, VK_DELETE, VK_DOWN, VK_END, VK_HOME, VK_LEFT, VK_NEXT, VK_PRIOR, VK_RIGHT, VK_SHIFT,
    VK_UP, WM_CHAR, WM_CLEAR, WM_COPY, WM_CREATE, WM_CTLCOLOREDIT, WM_CTLCOLORSTATIC, WM_CUT,
    WM_ERASEBKGND, WM_GETDLGCODE, WM_GETTEXT, WM_GETTEXTLENGTH, WM_KEYDOWN, WM_KILLFOCUS,
    WM_LBUTTONDBLCLK, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEMOVE, WM_PASTE, WM_SETFOCUS, WM_SETFONT,
    WM_SETTEXT, WM_SIZE, WM_UNDO)
from handheld.emulator.controls.edit_text import LINE_END, EditText
from handheld.emulator.controls.look import background, font_of, ink, point_of, signed, size_of
from handheld.emulator.dialogs import (
    DLGC_HASSETSEL, DLGC_WANTALLKEYS, DLGC_WANTARROWS, DLGC_WANTCHARS)
from handheld.emulator.gdi_objects import (
    COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, system_colour)
from handheld.emulator.windows import Window, window_class

ES_MULTILINE, ES_AUTOHSCROLL, ES_READONLY = 4, 0x80, 0x800
EM_GETSEL, EM_SETSEL, EM_GETMODIFY = 0xB0, 0xB1, 0xB8
EM_GETLINECOUNT, EM_REPLACESEL, EM_LIMITTEXT, EM_CANUNDO, EM_UNDO = 0xBA, 0xC2, 0xC5, 0xC6, 0xC7
EM_SETREADONLY, EM_GETLIMITTEXT = 0xCF, 0xD5
EN_SETFOCUS, EN_KILLFOCUS, EN_CHANGE, EN_UPDATE = 0x100, 0x200, 0x300, 0x400
NO_LIMIT = 0x7FFFFFFE
MARGIN = 2
LIST_KEYS = (VK_UP, VK_DOWN, VK_PRIOR, VK_NEXT, 0x73)  # of a combo box that it lies in


@window_class("EDIT")
class Edit(Window):
    """The field. `first` is the first pixel (one line) or line (several) that is shown."""

    class_style = 8  # double clicks

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.content = EditText(False)
        self.first = 0
        self.selecting = False

    @property
    def multiline(self):
        return bool(self.style & ES_MULTILINE)

    @property
    def read_only(self):
        return bool(self.style & ES_READONLY)

    # ---- Messages ----

    def message(self, message, wparam, lparam):
        self.content.multiline = self.multiline
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, signed(wparam), signed(lparam))
        result = Window.message(self, message, wparam, lparam)
        if message == WM_CREATE:
            self.content.set(self.text)
        elif message == WM_SETTEXT:
            self.content.set(self.text)
            self.first = 0
            self.changed(by_user=False)
        elif message in (WM_SETFONT, WM_SIZE):
            self.show_caret()
        return result

    def changed(self, by_user=True):
        """The text is another: the parent hears it, and it is drawn."""
        self.text = self.content.text
        self.show_caret()
        if by_user or not self.multiline:
            self.notify_command(EN_UPDATE)
            self.notify_command(EN_CHANGE)

    def dialog_code(self, _wparam, _lparam):
        code = DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS
        return code | (DLGC_WANTALLKEYS if self.multiline else 0)

    def get_selection(self, wparam, lparam):
        start, end = self.content.selection
        for address, value in ((wparam, start), (lparam, end)):
            if address:
                self.system.memory.set_u32(address, value)
        return (end & 0xFFFF) << 16 | start & 0xFFFF

    def set_selection(self, wparam, lparam):
        self.content.select(wparam, lparam)
        self.show_caret()
        return 1

    def set_limit(self, wparam, _lparam):
        self.content.limit = wparam or NO_LIMIT
        return 0

    def replace_selection(self, _wparam, lparam):
        if self.content.replace(self.system.memory.text(lparam)):
            self.changed()
        return 0

    def undo(self, _wparam, _lparam):
        if not self.read_only and self.content.undo():
            self.changed()
            return 1
        return 0

    # ---- Clipboard ----

    def copy(self, _wparam=0, _lparam=0):
        if self.content.selected:
            self.system.clipboard.put_text(self.content.selected)
        return 0

    def cut(self, _wparam=0, _lparam=0):
        self.copy()
        return self.clear()

    def clear(self, _wparam=0, _lparam=0):
        if self.content.selected and not self.read_only:
            self.content.replace("")
            self.changed()
        return 0

    def paste(self, _wparam=0, _lparam=0):
        text = self.system.clipboard.get_text()
        if text and not self.read_only:
            self.type(text if self.multiline else text.split("\r")[0].split("\n")[0])
        return 0

    def type(self, text):
        if self.content.replace(text):
            self.changed()

    # ---- Keys ----

    def character(self, wparam, _lparam):
        commands = {"\x03": self.copy, "\x16": self.paste, "\x18": self.cut}
        letter = chr(wparam & 0xFFFF)
        if letter in commands:
            commands[letter]()
        elif letter == "\x1a":
            self.undo(0, 0)
        elif letter == "\x01":
            self.set_selection(0, -1)
        elif not self.read_only:
            self.type_letter(letter)
        return 0

    def type_letter(self, letter):
        if letter == "\b":
            if self.content.erase_back():
                self.changed()
        elif letter in "\r\n":
            if self.multiline:
                self.type(LINE_END)
        elif letter >= " ":
            self.type(letter)

    def key_down(self, wparam, _lparam):
        extend = bool(self.system.windows.key_state(VK_SHIFT))
        words = bool(self.system.windows.key_state(VK_CONTROL))
        content = self.content
        if wparam == VK_DELETE:
            if not self.read_only and content.erase_forward():
                self.changed()
        elif wparam in (VK_LEFT, VK_RIGHT):
            way = -1 if wparam == VK_LEFT else 1
            step = content.word_step if words else content.step
            self.go(step(content.caret, way), extend)
        elif wparam in (VK_HOME, VK_END):
            self.go(self.line_edge(wparam == VK_END, words), extend)
        elif wparam in (VK_UP, VK_DOWN) and self.multiline:
            self.go(self.line_step(-1 if wparam == VK_UP else 1), extend)
        elif wparam in LIST_KEYS and self.parent.class_name == "COMBOBOX":
            self.system.windows.send(self.parent, WM_KEYDOWN, wparam, 0)
        return 0

    def go(self, position, extend):
        self.content.caret = position
        if not extend:
            self.content.anchor = position
        self.show_caret()

    def line_edge(self, at_end, whole):
        if whole:
            return len(self.content.text) if at_end else 0
        start, end = self.lines()[self.line_of(self.content.caret)]
        return end if at_end else start

    def line_step(self, way):
        x, _ = self.place_of(self.content.caret)
        line = self.line_of(self.content.caret) + way
        lines = self.lines()
        if not 0 <= line < len(lines):
            return self.content.caret
        return self.position_in(lines[line], x)

    # ---- The pen ----

    def pen_down(self, _wparam, lparam):
        windows = self.system.windows
        windows.set_focus(self)
        windows.set_capture(self)
        self.selecting = True
        self.go(self.position_at(*point_of(lparam)), bool(windows.key_state(VK_SHIFT)))
        return 0

    def pen_moved(self, _wparam, lparam):
        if self.selecting:
            self.go(self.position_at(*point_of(lparam)), True)
        return 0

    def pen_up(self, _wparam, _lparam):
        if self.selecting:
            self.selecting = False
            self.system.windows.set_capture(None)
        return 0

    def double_tap(self, _wparam, lparam):
        self.content.anchor, self.content.caret = self.content.word_at(
            self.position_at(*point_of(lparam)))
        self.show_caret()
        return 0

    # ---- Focus ----

    def got_focus(self, _wparam, _lparam):
        self.system.caret.make(self, 1, font_of(self).height)
        self.system.caret.count(self, -1)
        self.show_caret()
        self.notify_command(EN_SETFOCUS)
        return 0

    def lost_focus(self, _wparam, _lparam):
        if self.system.caret.window is self:
            self.system.caret.destroy()
        self.invalidate()
        self.notify_command(EN_KILLFOCUS)
        return 0

    # ---- Where things stand ----

    def lines(self):
        breaks = self.multiline and not self.style & ES_AUTOHSCROLL
        width = size_of(self)[0] - 2 * MARGIN if breaks else None
        return self.content.lines(font_of(self), width) if self.multiline \
            else [(0, len(self.content.text))]

    def line_of(self, position):
        """The last line that begins at or before a position."""
        lines = self.lines()
        return max(index for index, (start, _) in enumerate(lines) if start <= position)

    def text_top(self):
        """Where the first line stands: one line is in the middle."""
        return MARGIN - 1 if self.multiline else max(0, (size_of(self)[1]
                                                         - font_of(self).height) // 2)

    def place_of(self, position):
        """(x, y) of a position in the client area."""
        font, line = font_of(self), self.line_of(position)
        start = self.lines()[line][0]
        x = MARGIN + font.width(self.content.text[start:position])
        if self.multiline:
            return x, self.text_top() + (line - self.first) * font.height
        return x - self.first, self.text_top()

    def position_at(self, x, y):
        lines = self.lines()
        line = 0
        if self.multiline:
            line = min(max(0, self.first + (y - self.text_top()) // font_of(self).height),
                       len(lines) - 1)
        else:
            x += self.first
        return self.position_in(lines[line], x)

    def position_in(self, line, x):
        start, end = line
        at = MARGIN
        for position in range(start, end):
            width = font_of(self).advance(self.content.text[position])
            if x < at + width // 2 + 1:
                return position
            at += width
        return end

    def show_caret(self):
        """Scrolls so that the caret can be seen, and draws."""
        width, height = size_of(self)
        font = font_of(self)
        if self.multiline:
            shown = max(1, (height - self.text_top()) // font.height)
            line = self.line_of(self.content.caret)
            self.first = min(max(self.first, line - shown + 1), line)
        elif width > 0:
            at = font.width(self.content.text[:self.content.caret])
            room = max(1, width - 2 * MARGIN - 1)
            if not self.first <= at <= self.first + room:
                self.first = max(0, at - room * 2 // 3)
        if self.system.caret.window is self:
            self.system.caret.x, self.system.caret.y = self.place_of(self.content.caret)
        self.invalidate()

    # ---- How it looks ----

    def paint(self, dc):
        width, height = size_of(self)
        quiet = self.read_only or not self.enabled
        fill = background(self, dc, WM_CTLCOLORSTATIC if quiet else WM_CTLCOLOREDIT)
        dc.fill((0, 0, width, height), fill)
        colour = ink(self, dc)
        for index, (start, end) in enumerate(self.lines()):
            _, y = self.place_of(start) if not self.multiline else (
                0, self.text_top() + (index - self.first) * font_of(self).height)
            if -font_of(self).height < y < height:
                self.paint_line(dc, start, end, y, colour)

    def paint_line(self, dc, start, end, y, colour):
        """The line in up to three pieces: before, inside and behind the selection."""
        font = font_of(self)
        x = MARGIN - (0 if self.multiline else self.first)
        first, last = self.content.selection
        focused = self.system.windows.focus is self
        first, last = (max(first, start), min(last, end)) if focused else (end, end)
        pieces = [(start, min(first, end), False), (first, last, True),
                  (max(last, start), end, False)]
        for begin, stop, selected in pieces if first < last else [(start, end, False)]:
            text = self.content.text[begin:stop]
            if text:
                box = (x, y, x + font.width(text), y + font.height)
                if selected:
                    dc.fill(box, system_colour(COLOR_HIGHLIGHT))
                dc.text(x, y, text, font,
                        system_colour(COLOR_HIGHLIGHTTEXT) if selected else colour)
                x = box[2]

    def get_text(self, wparam, lparam):
        return self.system.memory.put_text(lparam, self.content.text, wparam)

    def text_length(self, _wparam, _lparam):
        return len(self.content.text)


def set_read_only(edit, wparam, _lparam):
    edit.style = edit.style | ES_READONLY if wparam else edit.style & ~ES_READONLY
    edit.invalidate()
    return 1


HANDLERS = {
    WM_GETDLGCODE: Edit.dialog_code,
    WM_GETTEXT: Edit.get_text,
    WM_GETTEXTLENGTH: Edit.text_length,
    EM_GETSEL: Edit.get_selection,
    EM_SETSEL: Edit.set_selection,
    EM_LIMITTEXT: Edit.set_limit,
    EM_GETLIMITTEXT: lambda edit, wparam, lparam: edit.content.limit,
    EM_REPLACESEL: Edit.replace_selection,
    EM_GETMODIFY: lambda edit, wparam, lparam: int(edit.content.modified),
    EM_GETLINECOUNT: lambda edit, wparam, lparam: len(edit.lines()),
    EM_CANUNDO: lambda edit, wparam, lparam: int(edit.content.before is not None),
    EM_UNDO: Edit.undo,
    WM_UNDO: Edit.undo,
    EM_SETREADONLY: set_read_only,
    WM_COPY: Edit.copy,
    WM_CUT: Edit.cut,
    WM_CLEAR: Edit.clear,
    WM_PASTE: Edit.paste,
    WM_CHAR: Edit.character,
    WM_KEYDOWN: Edit.key_down,
    WM_LBUTTONDOWN: Edit.pen_down,
    WM_LBUTTONDBLCLK: Edit.double_tap,
    WM_MOUSEMOVE: Edit.pen_moved,
    WM_LBUTTONUP: Edit.pen_up,
    WM_SETFOCUS: Edit.got_focus,
    WM_KILLFOCUS: Edit.lost_focus,
    WM_ERASEBKGND: lambda edit, wparam, lparam: 1,
}
