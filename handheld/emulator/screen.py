"""The screen of 240 x 320 pixels, and the shell's own windows on it.

    0 .. 26     the bar along the top: title of the window in front, OK or X at the right
    26 .. 294   for programs
    294 .. 320  the menu bar of the window in front (shell.py), with the input panel's button
    214 .. 294  the input panel, when it is up: a keyboard

The time is not shown, so that pictures stay the same. Not modelled: the start menu, and the X,
with which another program would come to the front.
"""

from PIL import ImageChops

from handheld.emulator.calls import export
from handheld.emulator.constants import (
    VK_CONTROL, WM_COMMAND, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_SETTINGCHANGE, WS_EX_NOACTIVATE,
    WS_EX_TOPMOST, WS_POPUP, WS_VISIBLE)
from handheld.emulator.fonts import make_font
from handheld.emulator.gdi_objects import (
    COLOR_ACTIVECAPTION, COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_CAPTIONTEXT, system_colour)
from handheld.emulator.surface import Surface
from handheld.emulator.windows import Window, window_class

SPI_SETSIPINFO, SPI_GETWORKAREA = 224, 48
IDOK = 1
DESKTOP = (160, 176, 190)
WHITE, BLACK = (255, 255, 255), (0, 0, 0)
SHELL_WINDOW = (WS_POPUP, WS_EX_TOPMOST | WS_EX_NOACTIVATE)


class Screen:
    """What is shown, and where the shell's bars are."""

    WIDTH, HEIGHT, BAR_HEIGHT, PANEL_HEIGHT = 240, 320, 26, 80
    CAPTION_HEIGHT = BAR_HEIGHT

    def __init__(self, system):
        self.system = system
        self.surface = Surface(self.WIDTH, self.HEIGHT, DESKTOP)
        self.panel_up = False
        self.cursor = 0
        self.caption = self.panel = self.button = None

    @property
    def rect(self):
        return (0, 0, self.WIDTH, self.HEIGHT)

    @property
    def work_area(self):
        """What full-screen windows have, the menu bar's place included."""
        return (0, self.BAR_HEIGHT, self.WIDTH, self.HEIGHT)

    @property
    def bar_rect(self):
        return (0, self.HEIGHT - self.BAR_HEIGHT, self.WIDTH, self.HEIGHT)

    @property
    def panel_rect(self):
        bottom = self.HEIGHT - self.BAR_HEIGHT
        return (0, bottom - self.PANEL_HEIGHT, self.WIDTH, bottom)

    @property
    def visible_area(self):
        """What neither the top bar nor the panel covers."""
        bottom = self.panel_rect[1] if self.panel_up else self.HEIGHT
        return (0, self.BAR_HEIGHT, self.WIDTH, bottom)

    def start(self):
        """Makes the shell's windows."""
        self.system.windows.create("Desktop", "", WS_POPUP | WS_VISIBLE, WS_EX_NOACTIVATE, 0, 0,
                                   self.WIDTH, self.HEIGHT)
        self.caption = self._make("CaptionBar", (0, 0, self.WIDTH, self.BAR_HEIGHT), True)
        self.panel = self._make("InputPanel", self.panel_rect, False)
        self.button = self._make("PanelButton", (206, self.HEIGHT - 25, self.WIDTH, self.HEIGHT),
                                 True)

    def _make(self, name, rect, visible):
        left, top, right, bottom = rect
        style, ex_style = SHELL_WINDOW
        return self.system.windows.create(name, "", style | (WS_VISIBLE if visible else 0),
                                          ex_style, left, top, right - left, bottom - top)

    def changed(self):
        """The window in front, its title or its button may be another."""
        if self.caption is not None:
            self.system.windows.invalidate(self.caption)

    def front(self):
        """The window whose title the bar shows: the one in front that fills the screen, or that the
        shell has sized."""
        for window in self.system.windows.top_levels:
            covers = window.right - window.left >= self.WIDTH and window.top <= self.BAR_HEIGHT
            if window.visible and (covers or window.sized_by_shell) \
                    and not window.ex_style & WS_EX_NOACTIVATE:
                return window
        return None

    def show_panel(self, up):
        """The input panel comes or goes, and every top-level window is told, those behind too."""
        if up == self.panel_up:
            return
        self.panel_up = up
        self.system.windows.show(self.panel, up)
        self.system.windows.invalidate(self.button)
        for window in list(self.system.windows.top_levels):
            if not window.destroyed:
                self.system.windows.send(window, WM_SETTINGCHANGE, SPI_SETSIPINFO, 0)

    def picture(self, path):
        """Writes what is shown to a file, with the caret."""
        image = self.surface.image.copy()
        caret = self.system.caret.rect()
        if caret is not None:
            image.paste(ImageChops.invert(image.crop(caret)), caret)
        image.save(path)


@window_class("Desktop")
class Desktop(Window):
    """What is behind all programs."""

    def paint(self, dc):
        dc.fill((0, 0, Screen.WIDTH, Screen.HEIGHT), DESKTOP)


@window_class("CaptionBar")
class CaptionBar(Window):
    """The bar along the top."""

    BUTTON = (216, 3, 237, 23)

    def shows_ok(self):
        front = self.system.screen.front()
        return front is not None and getattr(front, "has_done_button", False)

    def paint(self, dc):
        blue = system_colour(COLOR_ACTIVECAPTION)
        white = system_colour(COLOR_CAPTIONTEXT)
        dc.fill((0, 0, 240, 26), blue)
        dc.edge((0, 25, 240, 26), (33, 69, 107))
        for y in (7, 11, 15):  # the start menu's mark
            dc.edge((5, y, 16, y + 2), white)
        front = self.system.screen.front()
        title = front.text if front is not None else ""
        dc.label((22, 0, 210, 25), title.replace("&", "&&"), make_font(height=-12, bold=True),
                 white)
        self.paint_button(dc, front, blue, white)

    def paint_button(self, dc, front, blue, white):
        if front is None:
            return
        left, top, right, bottom = self.BUTTON
        dc.fill(self.BUTTON, white)
        for corner in ((left, top), (right - 1, top), (left, bottom - 1), (right - 1, bottom - 1)):
            dc.edge(corner + (corner[0] + 1, corner[1] + 1), blue)
        if self.shows_ok():
            dc.label(self.BUTTON, "ok", make_font(height=-12, bold=True), blue, "center")
            return
        for step in range(10):
            for x in (left + 5 + step, right - 7 - step):
                dc.edge((x, top + 5 + step, x + 2, top + 6 + step), blue)

    def message(self, message, wparam, lparam):
        if message == WM_LBUTTONUP and (lparam & 0xFFFF) >= self.BUTTON[0] and self.shows_ok():
            self.system.windows.post(self.system.screen.front(), WM_COMMAND, IDOK, 0)
            return 0
        return Window.message(self, message, wparam, lparam)


@window_class("PanelButton")
class PanelButton(Window):
    """The button at the right of the bottom bar that brings the input panel and takes it away."""

    def paint(self, dc):
        width, height = self.right - self.left, self.bottom - self.top
        face, shadow = system_colour(COLOR_BTNFACE), system_colour(COLOR_BTNSHADOW)
        dc.fill((0, 0, width, height), face)
        dc.edge((0, 2, 1, height - 2), shadow)
        pressed = self.system.screen.panel_up
        dc.fill((4, 4, 23, 20), WHITE if pressed else face)
        dc.frame((5, 7, 22, 18), BLACK)
        for row in range(3):
            for column in range(6 if row < 2 else 1):
                x = 7 + 2 * column + row % 2
                dc.edge((x, 9 + 3 * row, x + (1 if row < 2 else 11), 10 + 3 * row), BLACK)
        dc.triangle(25, 11, 3, BLACK, down=pressed)

    def message(self, message, wparam, lparam):
        if message == WM_LBUTTONDOWN:
            screen = self.system.screen
            screen.show_panel(not screen.panel_up)
            return 0
        return Window.message(self, message, wparam, lparam)


# ---- The input panel ----

KEY_ROWS = (
    ("1", "2", "3", "4", "5", "6", "7", "8", "9", "0", "-", "Bksp"),
    ("Tab", "q", "w", "e", "r", "t", "y", "u", "i", "o", "p", "'"),
    ("Cap", "a", "s", "d", "f", "g", "h", "j", "k", "l", ";", "Ret"),
    ("Shift", "z", "x", "c", "v", "b", "n", "m", ",", ".", "/"),
    ("Ctl", "\\", "Space", "Dn", "Up", "Lt", "Rt"),
)
WIDE = {"Bksp": 26, "Tab": 26, "Cap": 26, "Ret": 26, "Shift": 35, "Ctl": 35, "Space": 83}
VIRTUAL_KEYS = {"Bksp": 8, "Tab": 9, "Ret": 13, "Dn": 0x28, "Up": 0x26, "Lt": 0x25, "Rt": 0x27}
ROW_HEIGHT = 16


def key_places():
    """Every key of the panel with its rectangle."""
    for row, keys in enumerate(KEY_ROWS):
        widths = [WIDE.get(key, 19) for key in keys]
        spare = Screen.WIDTH - sum(widths)
        left = 0
        for n, (key, width) in enumerate(zip(keys, widths)):
            width += spare // len(keys) + (1 if n < spare % len(keys) else 0)
            yield key, (left, row * ROW_HEIGHT, left + width, (row + 1) * ROW_HEIGHT)
            left += width


@window_class("InputPanel")
class InputPanel(Window):
    """The keyboard. Shift and Ctl hold for one key, Cap until it is tapped again."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.shift = self.caps = self.control = False

    def paint(self, dc):
        font = make_font(height=-9)
        dc.fill((0, 0, 240, 80), WHITE)
        for key, rect in key_places():
            dc.frame((rect[0], rect[1], rect[2] + 1, rect[3] + 1), (150, 150, 150))
            held = {"Shift": self.shift, "Cap": self.caps, "Ctl": self.control}
            if held.get(key):
                dc.fill((rect[0] + 1, rect[1] + 1, rect[2], rect[3]), (200, 200, 200))
            dc.label(rect, "" if key == "Space" else self.face(key), font, BLACK, "center")

    def face(self, key):
        """What a key shows and types."""
        return key.upper() if len(key) == 1 and (self.shift or self.caps) else key

    def message(self, message, wparam, lparam):
        if message == WM_LBUTTONDOWN:
            x, y = lparam & 0xFFFF, lparam >> 16 & 0xFFFF
            for key, rect in key_places():
                if rect[0] <= x < rect[2] and rect[1] <= y < rect[3]:
                    self.press(key)
            return 0
        return Window.message(self, message, wparam, lparam)

    def press(self, key):
        if key in ("Shift", "Cap"):
            self.shift = key == "Shift" and not self.shift
            self.caps = key == "Cap" and not self.caps
        elif key == "Ctl":
            self.control = not self.control
        else:
            self.type(key)
            self.shift = self.control = False
        self.system.windows.invalidate(self)

    def type(self, key):
        keys = self.system.input
        if self.control:
            keys.key(VK_CONTROL, True)
        if key in VIRTUAL_KEYS:
            keys.key(VIRTUAL_KEYS[key])
        else:
            keys.character(" " if key == "Space" else self.face(key))
        if self.control:
            keys.key(VK_CONTROL, False)


# ---- What the program asks ----

METRICS = {
    0: 240, 1: 320,     # SM_CXSCREEN, SM_CYSCREEN
    2: 13, 3: 13,       # SM_CXVSCROLL, SM_CYHSCROLL
    4: 26,              # SM_CYCAPTION
    5: 1, 6: 1,         # SM_CXBORDER, SM_CYBORDER
    7: 1, 8: 1,         # SM_CXDLGFRAME, SM_CYDLGFRAME
    11: 32, 12: 32,     # SM_CXICON, SM_CYICON
    15: 26,             # SM_CYMENU
    20: 13, 21: 13,     # SM_CYVSCROLL, SM_CXHSCROLL
    36: 10, 37: 10,     # SM_CXDOUBLECLK, SM_CYDOUBLECLK
    45: 1, 46: 1,       # SM_CXEDGE, SM_CYEDGE
    49: 16, 50: 16,     # SM_CXSMICON, SM_CYSMICON
}


@export("COREDLL", "GetSystemMetrics", "index")
def get_system_metrics(_system, index):
    return METRICS.get(index, 0)


@export("COREDLL", "SystemParametersInfoW", "action parameter buffer flags")
def system_parameters_info(system, action, _parameter, buffer, _flags):
    """Only the work area."""
    if action != SPI_GETWORKAREA:
        return 0
    system.memory.put(buffer, "<4i", *system.screen.visible_area)
    return 1
