"""From pen and keys to messages.

The driver puts what the user does here as it happens: the pen at a place, a key going down or up.
It becomes a message when the program takes it: only then is known which window it is for, which
window becomes active by it, and whether two taps are a double tap.

Modelled: a pen, which is the left mouse button; a keyboard as sold in the United States; capture;
the frame's scroll bars (frame.py); accelerators. Not modelled: repeating keys, hovering.
"""

import collections
from dataclasses import dataclass

from handheld.emulator import constants as c
from handheld.emulator import frame
from handheld.emulator.calls import export
from handheld.emulator.messages import Msg, from_memory

DOUBLE_CLICK_TIME = 500      # milliseconds
DOUBLE_CLICK_DISTANCE = 4    # pixels
CS_DBLCLKS = 8
FVIRTKEY, FSHIFT, FCONTROL, FALT, LAST = 1, 4, 8, 16, 0x80
PEN_MESSAGES = {"down": c.WM_LBUTTONDOWN, "move": c.WM_MOUSEMOVE, "up": c.WM_LBUTTONUP}

SHIFTED_DIGITS = ")!@#$%^&*("
OEM_KEYS = {0xBA: ";:", 0xBB: "=+", 0xBC: ",<", 0xBD: "-_", 0xBE: ".>", 0xBF: "/?", 0xC0: "`~",
            0xDB: "[{", 0xDC: "\\|", 0xDD: "]}", 0xDE: "'\""}
PLAIN_KEYS = {c.VK_BACK: "\b", c.VK_TAB: "\t", c.VK_RETURN: "\r", c.VK_ESCAPE: "\x1b",
              c.VK_SPACE: " "}


def key_character(key, shift, control):
    """What a key types, or None."""
    if key in PLAIN_KEYS:
        return "\n" if key == c.VK_RETURN and control else PLAIN_KEYS[key]
    if 0x41 <= key <= 0x5A:
        return chr(key - 0x40) if control else chr(key if shift else key + 0x20)
    if control:
        return None
    if 0x30 <= key <= 0x39:
        return SHIFTED_DIGITS[key - 0x30] if shift else chr(key)
    return OEM_KEYS[key][int(shift)] if key in OEM_KEYS else None


KEY_OF_CHARACTER = {key_character(key, shift, False): (key, shift)
                    for key in [*PLAIN_KEYS, *range(0x30, 0x3A), *range(0x41, 0x5B), *OEM_KEYS]
                    for shift in (True, False)}


@dataclass
class Event:
    """What the user did: the pen ("down", "move", "up"), a key ("key") or a "character"."""

    kind: str
    x: int = 0
    y: int = 0
    key: int = 0
    is_down: bool = True


class Input:
    """What the user has done and nobody has taken."""

    def __init__(self, system):
        self.system = system
        self.waiting = collections.deque()
        self._down = set()
        self._last_press = None  # (window, time, x, y)

    # ---- From the driver ----

    def pen(self, kind, x, y):
        self.waiting.append(Event(kind, x, y))

    def key(self, key, is_down=None):
        """A key goes down or up; without saying which, both."""
        for down in (True, False) if is_down is None else (is_down,):
            self.waiting.append(Event("key", key=key, is_down=down))

    def character(self, text):
        """Whatever types this character; one that no key has arrives by itself."""
        if text not in KEY_OF_CHARACTER:
            self.waiting.append(Event("character", key=ord(text)))
            return
        key, shift = KEY_OF_CHARACTER[text]
        for down in (True, False):
            if shift and down:
                self.key(c.VK_SHIFT, True)
            self.key(key, down)
        if shift:
            self.key(c.VK_SHIFT, False)

    def is_down(self, key):
        """As the message that was taken last has it."""
        return key in self._down

    # ---- To the program ----

    def take(self, wanted):
        """The next message made of input, or None."""
        while self.waiting:
            event = self.waiting[0]
            if not wanted(None, PEN_MESSAGES.get(event.kind, c.WM_KEYDOWN)):
                return None
            self.waiting.popleft()
            found = HANDLERS.get(event.kind, Input._of_pen)(self, event)
            if found is not None:
                return found
        return None

    def _of_key(self, event):
        """Keys go to the focus."""
        if event.is_down:
            self._down.add(event.key)
        else:
            self._down.discard(event.key)
        target = self.system.focus.focus or self.system.focus.active
        if target is None:
            return None
        alt = self.is_down(c.VK_MENU) and not self.is_down(c.VK_CONTROL)
        first = c.WM_SYSKEYDOWN if alt else c.WM_KEYDOWN
        flags = 1 | (0 if event.is_down else 0xC0000000) | (0x20000000 if alt else 0)
        return Msg(target, first + (not event.is_down), event.key, flags, self.system.clock.now,
                   *self.system.messages.pen)

    def _of_character(self, event):
        """Characters beyond the basic plane come as two, as UTF-16 has them."""
        target = self.system.focus.focus or self.system.focus.active
        units = chr(event.key).encode("utf-16-le")
        for at in range(0, len(units) if target is not None else 0, 2):
            code = int.from_bytes(units[at:at + 2], "little")
            self.system.messages.post(target, c.WM_CHAR, code, 1)
        return self.system.messages.take(remove=True) if target is not None else None

    def _of_pen(self, event):
        self.system.messages.pen = (event.x, event.y)
        self._pen_button(event.kind)
        tracker = self.system.windows.tracker
        if tracker is not None:
            handler = {"move": tracker.moved, "up": tracker.released}.get(event.kind)
            return handler(event.x, event.y) if handler is not None else None
        target = self.system.focus.capture or self._target(event)
        if target is None or target.destroyed:
            return None
        return self._pen_message(event, target)

    def _pen_button(self, kind):
        if kind == "down":
            self._down.add(c.MK_LBUTTON)
        elif kind == "up":
            self._down.discard(c.MK_LBUTTON)

    def _target(self, event):
        """The enabled window under the pen; a press makes its top-level window active."""
        window = self.system.windows.at(event.x, event.y)
        while window is not None and not window.enabled:
            window = window.parent
        if window is None or not window.top_level().enabled:
            return None
        if event.kind == "down":
            top = window.top_level()
            if top is not self.system.focus.active:
                self.system.focus.activate(top, c.WA_CLICKACTIVE)
            if not inside(window.client_rect(), event.x, event.y):
                frame.press(self.system, window, event.x, event.y)
                return None
        return window

    def _pen_message(self, event, target):
        message = PEN_MESSAGES[event.kind]
        if event.kind == "down" and self._is_double(event, target):
            message = c.WM_LBUTTONDBLCLK
        left, top = target.client_rect()[:2]
        place = (event.y - top & 0xFFFF) << 16 | event.x - left & 0xFFFF
        keys = (c.MK_LBUTTON if self.is_down(c.MK_LBUTTON) else 0) \
            | (4 if self.is_down(c.VK_SHIFT) else 0) | (8 if self.is_down(c.VK_CONTROL) else 0)
        return Msg(target, message, keys, place, self.system.clock.now, event.x, event.y)

    def _is_double(self, event, target):
        """The second press in time; a third one is a first again."""
        now, last = self.system.clock.now, self._last_press
        double = last is not None and last[0] is target and now - last[1] <= DOUBLE_CLICK_TIME \
            and abs(event.x - last[2]) <= DOUBLE_CLICK_DISTANCE \
            and abs(event.y - last[3]) <= DOUBLE_CLICK_DISTANCE
        self._last_press = None if double else (target, now, event.x, event.y)
        return double and bool(target.class_style & CS_DBLCLKS)

    # ---- Characters ----

    def translate(self, found):
        """Posts the character that a key's message types."""
        if found.message not in (c.WM_KEYDOWN, c.WM_SYSKEYDOWN):
            return False
        text = key_character(found.wparam, self.is_down(c.VK_SHIFT), self.is_down(c.VK_CONTROL))
        if text is None:
            return False
        kind = c.WM_CHAR if found.message == c.WM_KEYDOWN else c.WM_SYSCHAR
        waiting = self.system.messages
        waiting.post(found.window, kind, ord(text), found.lparam)
        waiting.posted.rotate(1)  # before whatever else is posted
        return True

    def modifiers(self):
        """What is held besides a key, as accelerators have it."""
        return (FSHIFT if self.is_down(c.VK_SHIFT) else 0) \
            | (FCONTROL if self.is_down(c.VK_CONTROL) else 0) \
            | (FALT if self.is_down(c.VK_MENU) else 0)


HANDLERS = {"key": Input._of_key, "character": Input._of_character}


def inside(rect, x, y):
    return rect[0] <= x < rect[2] and rect[1] <= y < rect[3]


# ---- Accelerators: a resource of eight bytes each (flags, key, command, nothing) ----

def find_accelerator(system, table, found):
    """The command of a message, or None."""
    if found.message in (c.WM_KEYDOWN, c.WM_SYSKEYDOWN):
        kind = FVIRTKEY | system.input.modifiers()
    elif found.message in (c.WM_CHAR, c.WM_SYSCHAR):
        kind = 0 if found.message == c.WM_CHAR else FALT
    else:
        return None
    at, flags = table, 0
    while not flags & LAST:
        flags, key, command = system.memory.struct(at, "<HHH")
        if key == found.wparam and flags & (FVIRTKEY | FSHIFT | FCONTROL | FALT) == kind:
            return command
        at += 8
    return None


@export("COREDLL", "LoadAcceleratorsW", "instance resource")
def load_accelerators(system, instance, name):
    """The handle is the table's address."""
    found = system.modules.resource(instance, 9, name)
    return found[0] if found else 0


@export("COREDLL", "TranslateAcceleratorW", "window table message", cost=400)
def translate_accelerator(system, window, table, address):
    command = find_accelerator(system, table, from_memory(system, address)) if table else None
    if command is None or window is None:
        return False
    system.windows.send(window, c.WM_COMMAND, 1 << 16 | command, 0)
    return True


# ---- The program's questions ----

@export("COREDLL", "GetKeyState", "key", cost=20)
def get_key_state(system, key):
    return -32768 if system.input.is_down(key) else 0


@export("COREDLL", "GetAsyncKeyState", "key", cost=20)
def get_async_key_state(system, key):
    return -32768 if system.input.is_down(key) else 0


@export("COREDLL", "GetDoubleClickTime")
def get_double_click_time(_system):
    return DOUBLE_CLICK_TIME


@export("COREDLL", "GetCursorPos", "point")
def get_cursor_pos(system, point):
    system.memory.put(point, "<ii", *system.messages.pen)
    return True
