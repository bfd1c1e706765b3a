"""BUTTON: push buttons, check boxes, radio buttons, group boxes.

Modelled: pressing by pen, Space and BM_CLICK; the automatic kinds, which check themselves, a radio
button for its whole group. Not modelled: three states, buttons that the program draws, pictures.
"""

from handheld.emulator.constants import (
    VK_SPACE, WM_CTLCOLORBTN, WM_CTLCOLORSTATIC, WM_ENABLE, WM_ERASEBKGND, WM_GETDLGCODE,
    WM_KEYDOWN, WM_KEYUP, WM_KILLFOCUS, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN, WM_LBUTTONUP,
    WM_MOUSEMOVE, WM_SETFOCUS, WM_SETTEXT, WM_CAPTURECHANGED)
from handheld.emulator.controls.look import (
    BLACK, EDGE, WHITE, background, font_of, ink, point_of, size_of)
from handheld.emulator.dialogs import (
    BM_CLICK, BM_SETSTYLE, DLGC_BUTTON, DLGC_DEFPUSHBUTTON, DLGC_RADIOBUTTON, DLGC_STATIC,
    DLGC_UNDEFPUSHBUTTON, group_of)
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW, system_colour)
from handheld.emulator.menus import draw_check
from handheld.emulator.windows import Window, window_class

BS_PUSHBUTTON, BS_DEFPUSHBUTTON, BS_AUTOCHECKBOX, BS_RADIOBUTTON = 0, 1, 3, 4
BS_GROUPBOX, BS_AUTORADIOBUTTON = 7, 9
BM_GETCHECK, BM_SETCHECK, BM_GETSTATE, BM_SETSTATE = 0xF0, 0xF1, 0xF2, 0xF3
BST_PUSHED = 4
BN_CLICKED, BN_SETFOCUS, BN_KILLFOCUS, BS_NOTIFY = 0, 6, 7, 0x4000
BOX = 11  # pixels of a check box's square


@window_class("BUTTON")
class Button(Window):
    """Any of them; `checked` and `pressed` are how it stands."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.checked = self.pressed = self.held = False

    @property
    def kind(self):
        return self.style & 0xF

    @property
    def transparent(self):
        return self.kind == BS_GROUPBOX

    @property
    def is_radio(self):
        return self.kind in (BS_RADIOBUTTON, BS_AUTORADIOBUTTON)

    @property
    def is_push(self):
        return self.kind in (BS_PUSHBUTTON, BS_DEFPUSHBUTTON)

    # ---- Messages ----

    def message(self, message, wparam, lparam):
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, wparam, lparam)
        if message in (WM_ENABLE, WM_SETTEXT):
            result = Window.message(self, message, wparam, lparam)
            self.invalidate()
            return result
        return Window.message(self, message, wparam, lparam)

    def dialog_code(self, _wparam, _lparam):
        if self.kind == BS_GROUPBOX:
            return DLGC_STATIC
        if self.is_radio:
            return DLGC_BUTTON | DLGC_RADIOBUTTON
        if self.is_push:
            default = self.kind == BS_DEFPUSHBUTTON
            return DLGC_BUTTON | (DLGC_DEFPUSHBUTTON if default else DLGC_UNDEFPUSHBUTTON)
        return DLGC_BUTTON

    def get_check(self, _wparam, _lparam):
        return int(self.checked)

    def set_check(self, wparam, _lparam):
        if self.checked != bool(wparam & 3):
            self.checked = bool(wparam & 3)
            self.invalidate()
        return 0

    def get_state(self, _wparam, _lparam):
        return int(self.checked) | (BST_PUSHED if self.pressed else 0)

    def set_style(self, wparam, _lparam):
        self.style = self.style & ~0xF | wparam & 0xF
        self.invalidate()
        return 0

    def set_pressed(self, pressed):
        if pressed != self.pressed:
            self.pressed = pressed
            self.invalidate()
            self.system.windows.update(self)

    def pen_down(self, _wparam, _lparam):
        if self.kind == BS_GROUPBOX:
            return 0
        windows = self.system.windows
        self.held = True
        windows.set_capture(self)
        windows.set_focus(self)
        self.set_pressed(True)
        return 0

    def pen_moved(self, _wparam, lparam):
        if self.held:
            self.set_pressed(self.is_inside(lparam))
        return 0

    def pen_up(self, _wparam, lparam):
        if not self.held:
            return 0
        self.held = False
        inside = self.is_inside(lparam)
        self.set_pressed(False)
        self.system.windows.set_capture(None)
        if inside:
            self.click(0, 0)
        return 0

    def capture_lost(self, _wparam, _lparam):
        self.held = False
        self.set_pressed(False)
        return 0

    def is_inside(self, lparam):
        x, y = point_of(lparam)
        width, height = size_of(self)
        return 0 <= x < width and 0 <= y < height

    def key_down(self, wparam, _lparam):
        if wparam == VK_SPACE:
            self.set_pressed(True)
        return 0

    def key_up(self, wparam, _lparam):
        if wparam == VK_SPACE and self.pressed:
            self.set_pressed(False)
            self.click(0, 0)
        return 0

    def click(self, _wparam, _lparam):
        """Checks the automatic kinds and tells the parent."""
        if self.kind == BS_AUTOCHECKBOX:
            self.set_check(int(not self.checked), 0)
        elif self.kind == BS_AUTORADIOBUTTON:
            self.check_in_group()
        self.notify_command(BN_CLICKED)
        return 0

    def check_in_group(self):
        for other in group_of(self.parent, self):
            if isinstance(other, Button) and other.kind == BS_AUTORADIOBUTTON:
                other.set_check(int(other is self), 0)

    def focus_changed(self, _wparam, _lparam):
        self.invalidate()
        if self.style & BS_NOTIFY:
            self.notify_command(BN_SETFOCUS if self.system.windows.focus is self else BN_KILLFOCUS)
        return 0

    def erase(self, _wparam, _lparam):
        return 1  # paint fills all of it

    # ---- How it looks ----

    def paint(self, dc):
        if self.kind == BS_GROUPBOX:
            self.paint_group(dc)
        elif self.is_push:
            self.paint_push(dc)
        else:
            self.paint_check(dc)

    def paint_push(self, dc):
        width, height = size_of(self)
        background(self, dc, WM_CTLCOLORBTN)
        dc.fill((0, 0, width, height), WHITE if self.pressed else system_colour(COLOR_BTNFACE))
        dc.frame((0, 0, width, height), BLACK, 1)
        inner = 1
        if self.kind == BS_DEFPUSHBUTTON:
            dc.frame((1, 1, width - 1, height - 1), BLACK, 1)
            inner = 2
        if not self.pressed:
            dc.bevel((inner, inner, width - inner, height - inner),
                     system_colour(COLOR_BTNHIGHLIGHT), system_colour(COLOR_BTNSHADOW))
        dc.label((2, 1, width - 2, height - 1), self.text, font_of(self), ink(self, dc), "center")
        if self.system.windows.focus is self and height > 14:
            dc.dotted((3, 3, width - 3, height - 3), EDGE)

    def paint_check(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), background(self, dc, WM_CTLCOLORSTATIC))
        top = (height - BOX) // 2
        colour = ink(self, dc)
        if self.is_radio:
            self.paint_circle(dc, top, colour)
        else:
            dc.fill((0, top, BOX, top + BOX), WHITE)
            dc.frame((0, top, BOX, top + BOX), colour)
            if self.checked:
                draw_check(dc, 2, top + 2, colour)
        label = (BOX + 4, 0, width, height)
        dc.label(label, self.text, font_of(self), colour)
        if self.system.windows.focus is self:
            end = min(width, BOX + 6 + font_of(self).width(self.text.replace("&", "")))
            dc.dotted((BOX + 2, 0, end, height), EDGE)

    def paint_circle(self, dc, top, colour):
        """A ring of 11 pixels, with a dot when it is checked."""
        indents = (4, 2, 1, 1, 0, 0, 0, 1, 1, 2, 4)
        for row, indent in enumerate(indents):
            dc.edge((indent, top + row, BOX - indent, top + row + 1), colour)
        for row, indent in enumerate(indents[1:-1]):
            inner = max(indent + 1, indents[row] if row < 5 else indents[row + 2])
            dc.edge((inner, top + row + 1, BOX - inner, top + row + 2), WHITE)
        if self.checked:
            for row, indent in enumerate((4, 3, 3, 3, 4)):
                dc.edge((indent, top + 3 + row, BOX - indent, top + 4 + row), colour)

    def paint_group(self, dc):
        width, height = size_of(self)
        font = font_of(self)
        middle = font.height // 2
        fill = background(self, dc, WM_CTLCOLORSTATIC)
        dc.frame((0, middle, width, height), EDGE)
        if self.text:
            dc.fill((7, 0, 11 + font.width(self.text), font.height), fill)
            dc.label((9, 0, width - 2, font.height), self.text, font, ink(self, dc))


HANDLERS = {
    WM_GETDLGCODE: Button.dialog_code,
    BM_GETCHECK: Button.get_check,
    BM_SETCHECK: Button.set_check,
    BM_GETSTATE: Button.get_state,
    BM_SETSTATE: lambda button, wparam, _lparam: button.set_pressed(bool(wparam)),
    BM_SETSTYLE: Button.set_style,
    BM_CLICK: Button.click,
    WM_LBUTTONDOWN: Button.pen_down,
    WM_LBUTTONDBLCLK: Button.pen_down,
    WM_MOUSEMOVE: Button.pen_moved,
    WM_LBUTTONUP: Button.pen_up,
    WM_CAPTURECHANGED: Button.capture_lost,
    WM_KEYDOWN: Button.key_down,
    WM_KEYUP: Button.key_up,
    WM_SETFOCUS: Button.focus_changed,
    WM_KILLFOCUS: Button.focus_changed,
    WM_ERASEBKGND: Button.erase,
}
