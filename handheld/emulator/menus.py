"""Menus: their items, resources, and pop-ups on the screen.

A pop-up is a modal loop: it takes the pen and the keys until an item is chosen or it is left. The
choice is posted to the window as WM_COMMAND, or is the result where the program asked for that.
Modelled: texts, keys of items, separators, greyed and checked items, pop-ups within pop-ups. Not
modelled: pictures, items that the program draws, scrolling of long menus.
"""

import struct

from handheld.emulator.calls import export
from handheld.emulator.constants import (
    VK_DOWN, VK_ESCAPE, VK_LEFT, VK_RETURN, VK_RIGHT, VK_UP, WM_CHAR, WM_COMMAND,
    WM_INITMENUPOPUP, WM_KEYDOWN, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_MOUSEMOVE, WS_EX_NOACTIVATE,
    WS_EX_TOPMOST, WS_POPUP)
from handheld.emulator.dc import without_mnemonic
from handheld.emulator.fonts import make_font
from handheld.emulator.gdi_objects import (
    COLOR_BTNSHADOW, COLOR_GRAYTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, system_colour)
from handheld.emulator.windows import Window, window_class

RT_MENU = 4
MF_GRAYED, MF_DISABLED, MF_CHECKED, MF_POPUP = 1, 2, 8, 0x10
MF_END, MF_BYPOSITION, MF_SEPARATOR = 0x80, 0x400, 0x800
DEAD = MF_GRAYED | MF_DISABLED
TPM_RIGHTALIGN, TPM_BOTTOMALIGN = 8, 0x20
TPM_NONOTIFY, TPM_RETURNCMD = 0x80, 0x100
FIRST_HANDLE = 0x3A000010
SEPARATOR_HEIGHT, ITEM_SPARE = 7, 4
TEXT_LEFT, TEXT_RIGHT = 18, 16
BLACK, WHITE = (0, 0, 0), (255, 255, 255)


class Item:
    """One line of a menu; `popup` is the menu that it opens, or None."""

    def __init__(self, flags, number, text, popup=None):
        self.flags = flags if popup else flags & ~MF_POPUP
        self.number, self.text, self.popup = number, text, popup

    @property
    def is_separator(self):
        return bool(self.flags & MF_SEPARATOR)

    @property
    def can_be_chosen(self):
        return not self.flags & (DEAD | MF_SEPARATOR)

    @property
    def key(self):
        """The letter behind the '&', in lower case; "" without one."""
        shown = self.text.replace("&&", "")
        return shown[shown.index("&") + 1].lower() if "&" in shown[:-1] else ""

    @property
    def label(self):
        return without_mnemonic(self.text)


class Menu:
    """A list of items."""

    def __init__(self, handle):
        self.handle, self.items = handle, []

    def find(self, number, by_position):
        """(menu, index) of an item, in here or in its pop-ups; None without one."""
        if by_position:
            return (self, number) if 0 <= number < len(self.items) else None
        for index, item in enumerate(self.items):
            if item.popup is None and not item.is_separator and item.number == number:
                return self, index
        for item in self.items:
            found = item.popup.find(number, False) if item.popup else None
            if found:
                return found
        return None


class Menus:
    """All menus, and the pop-ups that are open, the outermost first."""

    def __init__(self, system):
        self.system = system
        self.menus = {}
        self.open = []
        self.owner = None
        self.chosen = None
        self.tracking = False

    def make(self):
        menu = Menu(FIRST_HANDLE + 0x10 * len(self.menus))
        self.menus[menu.handle] = menu
        return menu

    def get(self, handle):
        return self.menus.get(handle)

    # ---- Resources ----

    def load(self, instance, name):
        """The menu of a resource; None without one."""
        found = self.system.modules.resource(instance, RT_MENU, name)
        if found is None:
            return None
        data = self.system.memory.bytes(*found)
        skip = struct.unpack_from("<HH", data)[1]
        menu = self.make()
        self._read(menu, data, 4 + skip)
        return menu

    def _read(self, menu, data, at):
        """Reads the items of one menu; where it ends."""
        while True:
            flags = struct.unpack_from("<H", data, at)[0]
            at += 2
            number, popup = 0, None
            if not flags & MF_POPUP:
                number = struct.unpack_from("<H", data, at)[0]
                at += 2
            end = at
            while data[end:end + 2] != b"\0\0":
                end += 2
            text = data[at:end].decode("utf-16-le")
            at = end + 2
            if flags & MF_POPUP:
                popup = self.make()
                at = self._read(popup, data, at)
            elif not text and number == 0:
                flags |= MF_SEPARATOR
            menu.items.append(Item(flags & ~MF_END, number, text, popup))
            if flags & MF_END:
                return at

    # ---- On the screen ----

    def track(self, menu, x, y, owner, flags=0):
        """Shows a pop-up at a place of the screen until something is chosen; its number, or 0."""
        if self.tracking or not menu.items:
            return 0
        self.tracking, self.owner, self.chosen = True, owner, None
        self.show(menu, x, y, flags)
        self.system.windows.loop(lambda: not self.open, keys=self.take_key)
        self.tracking = False
        number = self.chosen or 0
        if number and not flags & TPM_RETURNCMD:
            self.system.windows.post(owner, WM_COMMAND, number, 0)
        return number

    def show(self, menu, x, y, flags=0):
        """Opens one more pop-up, moved so that it is on the screen."""
        if not flags & TPM_NONOTIFY:
            self.system.windows.send(self.owner, WM_INITMENUPOPUP, menu.handle, 0)
        width, height = popup_size(menu)
        if flags & TPM_RIGHTALIGN:
            x -= width
        if flags & TPM_BOTTOMALIGN:
            y -= height
        screen = self.system.screen
        x = max(0, min(x, screen.WIDTH - width))
        y = max(0, min(y, screen.HEIGHT - height))
        windows = self.system.windows
        window = windows.create("PopupMenu", "", WS_POPUP, WS_EX_TOPMOST | WS_EX_NOACTIVATE,
                                x, y, width, height)
        window.menu = menu
        self.open.append(window)
        windows.show(window, True)
        windows.set_capture(window)

    def close(self, keep=0):
        """Closes all pop-ups but the outermost `keep`."""
        while len(self.open) > keep:
            self.system.windows.destroy(self.open.pop())
        self.system.windows.set_capture(self.open[-1] if self.open else None)

    def choose(self, window, item):
        """The user took an item."""
        if item is None or not item.can_be_chosen:
            return
        if item.popup:
            place = popup_places(window.menu)[window.menu.items.index(item)]
            self.close(self.open.index(window) + 1)
            _, height = popup_size(item.popup)
            self.show(item.popup, window.left + 30,
                      min(window.top + place[1] + 8, window.bottom - height - 4))
            return
        self.chosen = item.number
        self.close()

    def take_key(self, message):
        """A key while pop-ups are open; they take all of them."""
        window = self.open[-1]
        if message.message == WM_KEYDOWN:
            self._take_key_down(window, message.wparam)
        elif message.message == WM_CHAR:
            letter = chr(message.wparam).lower()
            for item in window.menu.items:
                if item.key == letter:
                    self.choose(window, item)
                    break
        return True

    def _take_key_down(self, window, key):
        if key == VK_ESCAPE or (key == VK_LEFT and len(self.open) > 1):
            self.close(len(self.open) - 1)
        elif key in (VK_UP, VK_DOWN):
            window.step(-1 if key == VK_UP else 1)
        elif key in (VK_RETURN, VK_RIGHT) and window.hot is not None:
            item = window.menu.items[window.hot]
            if key == VK_RETURN or item.popup:
                self.choose(window, item)


def popup_size(menu):
    font = make_font()
    texts = [font.width(item.label) for item in menu.items]
    width = max(texts) + TEXT_LEFT + TEXT_RIGHT
    return width, popup_places(menu)[-1][3] + 2


def popup_places(menu):
    """The rectangle of each item within its pop-up; the right edge is open."""
    y, places = 2, []
    for item in menu.items:
        height = SEPARATOR_HEIGHT if item.is_separator else make_font().height + ITEM_SPARE
        places.append((1, y, 10000, y + height))
        y += height
    return places


@window_class("PopupMenu")
class PopupWindow(Window):
    """One open pop-up; `hot` is the item under the pen, or that the keys have come to."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.menu, self.hot = None, None

    def item_at(self, x, y):
        """The index of the item at a point of the pop-up, or None."""
        if not 0 <= x < self.right - self.left:
            return None
        for index, place in enumerate(popup_places(self.menu)):
            if place[1] <= y < place[3]:
                return index
        return None

    def step(self, way):
        """To the next item that is not a line."""
        count = len(self.menu.items)
        at = self.hot if self.hot is not None else (-1 if way > 0 else count)
        for _ in range(count):
            at = (at + way) % count
            if not self.menu.items[at].is_separator:
                break
        self.set_hot(at)

    def set_hot(self, index):
        if index != self.hot:
            self.hot = index
            self.system.windows.invalidate(self)

    def paint(self, dc):
        width, height = self.right - self.left, self.bottom - self.top
        dc.fill((0, 0, width, height), WHITE)
        dc.frame((0, 0, width, height), BLACK)
        for index, (item, place) in enumerate(zip(self.menu.items, popup_places(self.menu))):
            self.paint_item(dc, item, (1, place[1], width - 1, place[3]), index == self.hot)

    def paint_item(self, dc, item, place, hot):
        left, top, right, bottom = place
        if item.is_separator:
            middle = (top + bottom) // 2
            dc.edge((left + 4, middle, right - 4, middle + 1), system_colour(COLOR_BTNSHADOW))
            return
        ink = BLACK if item.can_be_chosen else system_colour(COLOR_GRAYTEXT)
        if hot and item.can_be_chosen:
            dc.fill(place, system_colour(COLOR_HIGHLIGHT))
            ink = system_colour(COLOR_HIGHLIGHTTEXT)
        dc.label((left + TEXT_LEFT - 1, top, right, bottom), item.text, make_font(), ink)
        if item.flags & MF_CHECKED:
            draw_check(dc, left + 5, (top + bottom) // 2 - 4, ink)
        if item.popup:
            for column in range(4):
                middle = (top + bottom) // 2
                dc.edge((right - 9 + column, middle - 3 + column, right - 8 + column,
                         middle + 4 - column), ink)

    def message(self, message, wparam, lparam):
        if message in (WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP):
            self.pen(message, *signed_point(lparam))
            return 0
        return Window.message(self, message, wparam, lparam)

    def pen(self, message, x, y):
        """The pen, which the innermost pop-up gets wherever it is."""
        menus = self.system.menus
        for window in reversed(menus.open):
            at_x, at_y = x + self.left - window.left, y + self.top - window.top
            index = window.item_at(at_x, at_y)
            if index is not None:
                window.set_hot(index)
                if message == WM_LBUTTONUP:
                    menus.choose(window, window.menu.items[index])
                return
        if message == WM_LBUTTONDOWN:
            menus.close()


def signed_point(lparam):
    """The two signed halves of a word."""
    return struct.unpack("<hh", struct.pack("<I", lparam & 0xFFFFFFFF))


def draw_check(dc, x, y, ink):
    """A check mark of 8 x 7 pixels."""
    for step in range(3):
        dc.edge((x + step, y + 2 + step, x + step + 1, y + 5 + step), ink)
    for step in range(5):
        dc.edge((x + 3 + step, y + 4 - step, x + 4 + step, y + 7 - step), ink)


# ---- What the program calls ----

@export("COREDLL", "LoadMenuW", "instance resource")
def load_menu(system, instance, name):
    return system.menus.load(instance, name)


@export("COREDLL", "CreatePopupMenu")
def create_popup_menu(system):
    return system.menus.make()


@export("COREDLL", "DestroyMenu", "menu")
def destroy_menu(system, menu):
    return system.menus.menus.pop(menu, None) is not None


@export("COREDLL", "AppendMenuW", "menu flags number string")
def append_menu(system, menu, flags, number, string):
    popup = system.menus.get(number) if flags & MF_POPUP else None
    text = system.memory.text(string) if string and not flags & MF_SEPARATOR else ""
    system.menus.get(menu).items.append(Item(flags, number, text, popup))
    return 1


@export("COREDLL", "GetSubMenu", "menu index")
def get_sub_menu(system, menu, index):
    items = system.menus.get(menu).items
    return items[index].popup if 0 <= index < len(items) else 0


@export("COREDLL", "EnableMenuItem", "menu number flags")
def enable_menu_item(system, menu, number, flags):
    return change_flags(system, menu, number, flags, DEAD)


@export("COREDLL", "CheckMenuItem", "menu number flags")
def check_menu_item(system, menu, number, flags):
    return change_flags(system, menu, number, flags, MF_CHECKED)


def change_flags(system, handle, number, flags, mask):
    """Sets some flags of an item; what they were, or -1 without such an item."""
    menu = system.menus.get(handle)
    found = menu.find(number, bool(flags & MF_BYPOSITION)) if menu else None
    if found is None:
        return -1
    item = found[0].items[found[1]]
    before = item.flags & mask
    item.flags = item.flags & ~mask | flags & mask
    return before


@export("COREDLL", "TrackPopupMenuEx", "menu flags x y window parameters")
def track_popup_menu(system, menu, flags, x, y, window, _parameters):
    chosen = system.menus.track(system.menus.get(menu), x, y, window, flags)
    return chosen if flags & TPM_RETURNCMD else 1
