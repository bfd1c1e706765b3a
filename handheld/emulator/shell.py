"""The device's shell (AYGSHELL): the menu bar along the bottom, the size of dialogs, the
input panel, and what a window asks it on activation.

The menu bar is a window of its own, which belongs to the program's window. Its buttons come from a
resource under the tool bar's number (16-bit words: menu, count, then seven for each button).

Not modelled: menu bars from a menu alone, and the rest of the shell.
"""

import struct

from handheld.emulator import frame
from handheld.emulator.bitmaps import load_strip
from handheld.emulator.calls import export
from handheld.emulator.constants import (
    WA_INACTIVE, WM_COMMAND, WM_LBUTTONDOWN, WM_LBUTTONUP, WS_CHILD, WS_EX_NOACTIVATE, WS_POPUP)
from handheld.emulator.fonts import make_font
from handheld.emulator.gdi_objects import (
    COLOR_BTNFACE, COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW, system_colour)
from handheld.emulator.menus import TPM_BOTTOMALIGN
from handheld.emulator.screen import SPI_SETSIPINFO
from handheld.emulator.windows import Window, window_class

RT_RCDATA = 10
MENU_BAR_INFO = 36
SIP_INFO = 48
ACTIVATE_INFO = 12
NO_POPUP = 0xFFFF
TBSTATE_ENABLED = 4
IMAGE_WIDTH = 16
SHIDIM_FLAGS = 1
SHIDIF_DONEBUTTON, SHIDIF_SIZEDLG, SHIDIF_SIZEDLGFULLSCREEN, SHIDIF_SIPDOWN = 1, 2, 4, 8
SPI_GETSIPINFO = 225
SIPF_OFF, SIPF_ON, SIPF_DOCKED = 0, 1, 2
BLACK = (0, 0, 0)


class BarButton:
    """One button: a text that opens a pop-up, or an image that is a command."""

    def __init__(self, words, text, popup, image):
        self.command, self.enabled = words[1], bool(words[2] & TBSTATE_ENABLED)
        self.text, self.popup, self.image = text, popup, image
        self.left = self.right = 0


@window_class("MenuBar")
class MenuBar(Window):
    """The bar along the bottom."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.buttons, self.pressed = [], None

    def fill(self, instance, number, images):
        """Reads the buttons; False without the resource."""
        found = self.system.modules.resource(instance, RT_RCDATA, number)
        if found is None:
            return False
        words = struct.unpack(f"<{found[1] // 2}H", self.system.memory.bytes(*found))
        menu = self.system.menus.load(instance, words[0])
        for start in range(2, 2 + 7 * words[1], 7):
            self.buttons.append(self._button(instance, words[start:start + 7], menu, images))
        self._place()
        return True

    def _button(self, instance, words, menu, images):
        popup = menu.items[words[6]].popup if words[6] != NO_POPUP else None
        image = images[words[0]] if words[0] < len(images) else None
        text = self.system.modules.string(instance, words[4]) if words[4] else None
        return BarButton(words, text or "", popup, image)

    def _place(self):
        left = 2
        for button in self.buttons:
            width = make_font(bold=True).width(button.text) + 12 if button.text else 24
            button.left, button.right = left, left + width
            left += width

    def paint(self, dc):
        width, height = self.right - self.left, self.bottom - self.top
        dc.fill((0, 0, width, height), system_colour(COLOR_BTNFACE))
        dc.edge((0, 0, width, 1), BLACK)
        for button in self.buttons:
            self.paint_button(dc, button, height)

    def paint_button(self, dc, button, height):
        place = (button.left, 2, button.right, height - 2)
        if button is self.pressed:
            dc.bevel(place, system_colour(COLOR_BTNSHADOW), system_colour(COLOR_BTNHIGHLIGHT))
        if button.text:
            dc.label(place, button.text, make_font(bold=True), BLACK, "center")
        elif button.image:
            picture, mask = button.image
            dc.image(button.left + 4, (height - picture.height) // 2, picture, mask)

    def button_at(self, x):
        for button in self.buttons:
            if button.left <= x < button.right:
                return button
        return None

    def message(self, message, wparam, lparam):
        if message == WM_LBUTTONDOWN:
            self.press(self.button_at(lparam & 0xFFFF))
            return 0
        if message == WM_LBUTTONUP:
            self.release(lparam)
            return 0
        return Window.message(self, message, wparam, lparam)

    def press(self, button):
        if button is None or not self.owner.enabled:
            return
        self.show_pressed(button)
        if button.popup:
            self.system.menus.track(button.popup, self.left + button.left, self.top, self.owner,
                                    TPM_BOTTOMALIGN)
            self.show_pressed(None)
        else:
            self.system.windows.set_capture(self)

    def release(self, lparam):
        """The pen leaves an image's button; the command runs when it is still on it."""
        button, self.pressed = self.pressed, None
        if button is None:
            return
        self.system.windows.set_capture(None)
        self.system.windows.invalidate(self)
        x, y = struct.unpack("<hh", struct.pack("<I", lparam & 0xFFFFFFFF))
        if self.button_at(x) is button and 0 <= y < self.bottom - self.top and button.enabled:
            self.system.windows.post(self.owner, WM_COMMAND, button.command, self.handle)

    def show_pressed(self, button):
        self.pressed = button
        self.system.windows.invalidate(self)
        self.system.windows.update(self)


@export("AYGSHELL", "SHCreateMenuBar", "info")
def create_menu_bar(system, info):
    size, parent, _, number, instance, bitmap, _ = system.memory.struct(info, "<IIIIIII")
    owner = system.windows.find(parent)
    if size != MENU_BAR_INFO or owner is None:
        return False
    left, top, right, bottom = system.screen.bar_rect
    bar = system.windows.create("MenuBar", "", WS_POPUP, WS_EX_NOACTIVATE, left, top, right - left,
                                bottom - top, owner, 0, instance, 0)
    images = load_strip(system, instance, bitmap, IMAGE_WIDTH) if bitmap else []
    if not bar.fill(instance, number, images):
        system.windows.destroy(bar)
        return False
    system.windows.show(bar, True)
    system.memory.set_u32(info + 28, bar.handle)
    return True


# ---- Dialogs and the input panel ----

@export("AYGSHELL", "SHInitDialog", "info")
def init_dialog(system, info):
    mask, dialog, flags = system.memory.struct(info, "<III")
    window = system.windows.find(dialog)
    if window is None or not mask & SHIDIM_FLAGS:
        return False
    if flags & SHIDIF_SIPDOWN:
        system.screen.show_panel(False)
    if window.style & WS_CHILD:
        return True
    window.has_done_button = bool(flags & SHIDIF_DONEBUTTON)
    area = system.screen.visible_area
    if flags & SHIDIF_SIZEDLGFULLSCREEN:
        size_window(system, window, area)
    elif flags & SHIDIF_SIZEDLG:
        window.sized_by_shell = True
        size_window(system, window, content_area(window, area))
    system.screen.changed()
    return True


def size_window(system, window, rect):
    left, top, right, bottom = rect
    system.windows.move(window, left, top, right - left, bottom - top)


def content_area(window, area):
    """What a dialog's controls need, with the margin left and above them on the other sides too, at
    the corner of the `area`. How exactly a device measures the content is not known."""
    left, top = window.corner
    shown = [child.rect for child in window.children if child.visible]
    if not shown:
        return area
    before, _, after, _ = frame.insets(window)
    width = max(rect[2] for rect in shown) - left + min(rect[0] for rect in shown) - left
    height = max(rect[3] for rect in shown) - top + min(rect[1] for rect in shown) - top
    return (area[0], area[1], min(area[2], area[0] + width + before + after),
            min(area[3], area[1] + height + before + after))


@export("AYGSHELL", "SHSipInfo", "action parameter info flags")
def sip_info(system, action, _parameter, info, _flags):
    """The input panel: what it covers, or whether it is to be up."""
    screen = system.screen
    if system.memory.u32(info) != SIP_INFO:
        return False
    if action == SPI_SETSIPINFO:
        screen.show_panel(bool(system.memory.u32(info + 4) & SIPF_ON))
        return True
    if action != SPI_GETSIPINFO:
        return False
    flags = SIPF_DOCKED | (SIPF_ON if screen.panel_up else SIPF_OFF)
    system.memory.put(info + 4, "<I4i4i", flags, *screen.visible_area, *screen.panel_rect)
    return True


@export("AYGSHELL", 83, "window wparam lparam record")
def handle_setting_change(system, window, wparam, _lparam, record):
    """The panel came or went: the window gets what is left of the screen."""
    if wparam != SPI_SETSIPINFO or system.memory.u32(record) != ACTIVATE_INFO:
        return False
    left, top, right, bottom = system.screen.visible_area
    if not system.screen.panel_up:
        bottom = system.screen.bar_rect[1]
    size_window(system, window, (left, top, right, bottom))
    return True


@export("AYGSHELL", 84, "window wparam lparam record flags")
def handle_activate(system, window, wparam, _lparam, record, _flags):
    """Keeps the focus and the panel's state of a window that goes to the background, and brings
    them back. The record: its size, the window with the focus, bits: panel up, -, active."""
    memory, screen, windows = system.memory, system.screen, system.windows
    size, focus, bits = memory.struct(record, "<III")
    if size != ACTIVATE_INFO:
        return False
    if wparam & 0xFFFF == WA_INACTIVE:
        held = windows.focus
        inside = held is not None and held.top_level() is window
        bits = bits & ~7 | (1 if screen.panel_up else 0)
        memory.put(record + 4, "<II", held.handle if inside else 0, bits)
        return True
    memory.put(record + 8, "<I", bits | 4)
    screen.show_panel(bool(bits & 1))
    if windows.find(focus) is not None:
        windows.set_focus(windows.find(focus))
    return True
