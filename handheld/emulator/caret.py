"""The caret: one for the whole system, at a place in a window, shown and hidden by count.

It is no part of what is drawn: the picture of the screen has it on top, so that it neither blinks
nor spoils anything.
"""

from handheld.emulator.calls import export


class Caret:
    """The caret's window (None: there is none), place and size, in client coordinates."""

    def __init__(self, system):
        self.system = system
        self.window = None
        self.x = self.y = self.width = self.height = 0
        self.hidden = 1

    def make(self, window, width, height):
        self.window, self.width, self.height, self.hidden = window, max(1, width), height, 1
        self.x = self.y = 0

    def destroy(self):
        self.window = None

    def count(self, window, step):
        """Shows (-1) or hides (1), by its own window or by whoever does not say which."""
        if self.window is None or window not in (None, self.window):
            return False
        self.hidden = max(0, self.hidden + step)
        return True

    def rect(self):
        """Where it stands on the screen, or None when it is not to be seen."""
        if self.window is None or self.window.destroyed or self.hidden:
            return None
        left, top = self.window.client_rect()[:2]
        return (left + self.x, top + self.y, left + self.x + self.width, top + self.y + self.height)


@export("COREDLL", "CreateCaret", "window bitmap width height")
def create_caret(system, window, _bitmap, width, height):
    system.caret.make(window, width, height)
    return True


@export("COREDLL", "DestroyCaret")
def destroy_caret(system):
    system.caret.destroy()
    return True


@export("COREDLL", "ShowCaret", "window")
def show_caret(system, window):
    return system.caret.count(window, -1)


@export("COREDLL", "HideCaret", "window")
def hide_caret(system, window):
    return system.caret.count(window, 1)


@export("COREDLL", "SetCaretPos", "x y")
def set_caret_pos(system, x, y):
    system.caret.x, system.caret.y = x, y
    return True


@export("COREDLL", "GetCaretPos", "point")
def get_caret_pos(system, point):
    system.memory.put(point, "<ii", system.caret.x, system.caret.y)
    return True


@export("COREDLL", "GetCaretBlinkTime")
def get_caret_blink_time(_system):
    return 500


@export("COREDLL", "SetCaretBlinkTime", "milliseconds")
def set_caret_blink_time(_system, _milliseconds):
    return True
