"""ToolbarWindow32: a row of buttons with images, which are commands of the parent.

Modelled: buttons from CreateToolbarEx with their images and states, the indent and pressing by pen.
Not modelled: texts, tips, drop-downs.
"""

from handheld.emulator.bitmaps import load_strip
from handheld.emulator.calls import export
from handheld.emulator.constants import (
    WM_CAPTURECHANGED, WM_COMMAND, WM_ERASEBKGND, WM_LBUTTONDBLCLK, WM_LBUTTONDOWN, WM_LBUTTONUP,
    WM_MOUSEMOVE)
from handheld.emulator.controls.look import point_of, size_of
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW, system_colour)
from handheld.emulator.windows import Window, window_class

CLASS_NAME = "ToolbarWindow32"
TB_ENABLEBUTTON, TB_BUTTONCOUNT, TB_SETBITMAPSIZE = 0x401, 0x418, 0x420
TB_GETITEMRECT, TB_SETINDENT = 0x41D, 0x42F
TBSTATE_ENABLED, TBSTYLE_SEP = 4, 1
BUTTON_SIZE = 20  # at the least


class ToolButton:
    """One button, from its TBBUTTON."""

    def __init__(self, image, command, state, style):
        self.image, self.command = image, command
        self.enabled, self.separator = bool(state & TBSTATE_ENABLED), bool(style & TBSTYLE_SEP)


@window_class(CLASS_NAME)
class ToolBar(Window):
    """The bar."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.buttons, self.images, self.indent = [], [], 0
        self.image_size = (16, 15)
        self.held, self.inside = None, False

    def message(self, message, wparam, lparam):
        handler = HANDLERS.get(message)
        if handler is not None:
            return handler(self, wparam, lparam)
        return Window.message(self, message, wparam, lparam)

    def set_indent(self, wparam, _lparam):
        self.indent = wparam
        self.invalidate()
        return 1

    def set_image_size(self, _wparam, lparam):
        self.image_size = (lparam & 0xFFFF, lparam >> 16 & 0xFFFF)
        self.invalidate()
        return 1

    def enable_button(self, wparam, lparam):
        for button in self.buttons:
            if button.command == wparam:
                button.enabled = bool(lparam & 0xFFFF)
                self.invalidate()
                return 1
        return 0

    # ---- Places ----

    def places(self):
        width = max(BUTTON_SIZE, self.image_size[0] + 6)
        height = max(BUTTON_SIZE, self.image_size[1] + 6)
        left, found = self.indent, []
        for button in self.buttons:
            step = 8 if button.separator else width
            found.append((left, 2, left + step, 2 + height))
            left += step
        return found

    def button_at(self, x, y):
        for button, (left, top, right, bottom) in zip(self.buttons, self.places()):
            if left <= x < right and top <= y < bottom and not button.separator:
                return button
        return None

    def item_rect(self, wparam, lparam):
        if wparam >= len(self.buttons):
            return 0
        self.system.memory.put(lparam, "<4i", *self.places()[wparam])
        return 1

    # ---- The pen ----

    def pen_down(self, _wparam, lparam):
        button = self.button_at(*point_of(lparam))
        if button is not None and button.enabled:
            self.held, self.inside = button, True
            self.system.windows.set_capture(self)
            self.invalidate()
        return 0

    def pen_moved(self, _wparam, lparam):
        if self.held is not None:
            inside = self.button_at(*point_of(lparam)) is self.held
            if inside != self.inside:
                self.inside = inside
                self.invalidate()
        return 0

    def pen_up(self, _wparam, lparam):
        button, self.held = self.held, None
        if button is not None:
            self.system.windows.set_capture(None)
            self.invalidate()
            if self.button_at(*point_of(lparam)) is button:
                self.system.windows.send(self.parent, WM_COMMAND, button.command, self.handle)
        return 0

    def capture_lost(self, _wparam, _lparam):
        self.held = None
        self.invalidate()
        return 0

    # ---- How it looks ----

    def paint(self, dc):
        width, height = size_of(self)
        dc.fill((0, 0, width, height), system_colour(COLOR_BTNFACE))
        for button, place in zip(self.buttons, self.places()):
            pressed = button is self.held and self.inside
            if pressed:
                dc.bevel(place, system_colour(COLOR_BTNSHADOW), system_colour(COLOR_BTNHIGHLIGHT))
            if 0 <= button.image < len(self.images):
                picture, mask = self.images[button.image]
                x = (place[0] + place[2] - picture.width) // 2 + int(pressed)
                y = (place[1] + place[3] - picture.height) // 2 + int(pressed)
                dc.image(x, y, picture, mask)


HANDLERS = {
    TB_SETINDENT: ToolBar.set_indent,
    TB_SETBITMAPSIZE: ToolBar.set_image_size,
    TB_ENABLEBUTTON: ToolBar.enable_button,
    TB_BUTTONCOUNT: lambda bar, wparam, lparam: len(bar.buttons),
    TB_GETITEMRECT: ToolBar.item_rect,
    WM_LBUTTONDOWN: ToolBar.pen_down,
    WM_LBUTTONDBLCLK: ToolBar.pen_down,
    WM_MOUSEMOVE: ToolBar.pen_moved,
    WM_LBUTTONUP: ToolBar.pen_up,
    WM_CAPTURECHANGED: ToolBar.capture_lost,
    WM_ERASEBKGND: lambda bar, wparam, lparam: 1,
}


@export("COMMCTRL", "CreateToolbarEx", "window style number images instance bitmap buttons count "
        "button_width button_height image_width image_height size")
def create_tool_bar(system, parent, style, number, _images, instance, bitmap, buttons, count,
                    _button_width, _button_height, image_width, image_height, size):
    bar = system.windows.create(CLASS_NAME, "", style, 0, 0, 0, parent.right - parent.left, 26,
                                parent, number, instance)
    bar.image_size = (image_width, image_height)
    bar.images = load_strip(system, instance, bitmap, image_width)
    for index in range(count):
        record = system.memory.struct(buttons + index * size, "<iiBB")
        bar.buttons.append(ToolButton(*record))
    return bar
