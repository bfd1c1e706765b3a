"""Which window is active, has the focus, has captured the pen, and which are enabled.

One top-level window is active; the focus lies in it or nowhere. WM_ACTIVATE goes to the one that
loses and then to the one that becomes it, WM_KILLFOCUS and WM_SETFOCUS likewise.
"""

from handheld.emulator import constants as c
from handheld.emulator.calls import export


class Focus:
    """Handles of three windows, or None."""

    def __init__(self, system):
        self.system = system
        self.windows = system.windows
        self.active = self.focus = self.capture = None

    # ---- Activation ----

    def activate(self, window, how=c.WA_ACTIVE):
        """Makes a top-level window the active one, in front of the others."""
        if window is not None and window.ex_style & c.WS_EX_NOACTIVATE:
            return
        before = self.active
        if window is before:
            if window is not None:
                self.windows.raise_window(window)
            return
        if before is not None:
            self.windows.send(before, c.WM_ACTIVATE, c.WA_INACTIVE, handle_of(window))
        if window is None or window.destroyed:
            self.active = None
            self._give(None)
            return
        self.active = window
        self._to_front(window)
        self.windows.send(window, c.WM_ACTIVATE, how, handle_of(before))
        if self.active is window and (self.focus is None or not self.focus.is_within(window)):
            self.set_focus(window)
        self.system.screen.changed()

    def _to_front(self, window):
        before = self.windows.visible_region(window, whole=True)
        self.windows.raise_window(window)
        now = self.windows.visible_region(window, whole=True)
        self.system.painting.uncover(now.subtract(before))

    def window_hidden(self, window):
        """Focus, activation and capture go elsewhere when their window can no more be seen."""
        if self.capture is not None and self.capture.is_within(window):
            self.set_capture(None)
        if window is self.active:
            self.activate(self._next_after(window))
        if self.focus is not None and self.focus.is_within(window):
            self.set_focus(window.parent)

    def _next_after(self, window):
        """Who is active when `window` goes: its owner, or the next in front."""
        if usable(window.owner):
            return window.owner
        for other in self.windows.top_levels:
            if other is not window and usable(other) and not other.ex_style & c.WS_EX_NOACTIVATE:
                return other
        return None

    def window_gone(self, window):
        if self.capture is window:
            self.capture = None
        if self.focus is window:
            self.focus = None
        if self.active is window:
            self.active = None

    # ---- Focus ----

    def set_focus(self, window):
        """Moves the focus; returns who had it."""
        before = self.focus
        if window is before:
            return before
        if window is not None:
            top = window.top_level()
            if not self._may_have(window):
                return before
            if top is not self.active and not top.ex_style & c.WS_EX_NOACTIVATE:
                self.activate(top)
        if self.focus is not window:
            self._give(window)
        return before

    @staticmethod
    def _may_have(window):
        at = window
        while at is not None:
            if not at.enabled or at.destroyed:
                return False
            at = at.parent
        return True

    def _give(self, window):
        before, self.focus = self.focus, window
        if before is not None:
            self.windows.send(before, c.WM_KILLFOCUS, handle_of(window), 0)
        if window is not None and self.focus is window:
            self.windows.send(window, c.WM_SETFOCUS, handle_of(before), 0)

    # ---- Capture and enabling ----

    def set_capture(self, window):
        before, self.capture = self.capture, window
        if before is not None and before is not window:
            self.windows.send(before, c.WM_CAPTURECHANGED, 0, handle_of(window))
        return before

    def enable(self, window, enabled):
        """Returns whether it was disabled before."""
        before = not window.enabled
        if before == (not enabled):
            return before
        window.style = window.style & ~c.WS_DISABLED if enabled else window.style | c.WS_DISABLED
        if not enabled and self.focus is window:
            self.set_focus(None)
        self.windows.send(window, c.WM_ENABLE, int(enabled), 0)
        if window.is_child:
            window.invalidate()
        return before


def usable(window):
    return window is not None and window.visible and window.enabled and not window.destroyed


def handle_of(window):
    return 0 if window is None else window.handle


# ---- The program's calls ----

@export("COREDLL", "SetFocus", "window")
def set_focus(system, window):
    return system.focus.set_focus(window)


@export("COREDLL", "GetFocus")
def get_focus(system):
    return system.focus.focus


@export("COREDLL", "GetActiveWindow")
def get_active_window(system):
    return system.focus.active


@export("COREDLL", "GetForegroundWindow")
def get_foreground_window(system):
    return system.focus.active


@export("COREDLL", "SetActiveWindow", "window")
def set_active_window(system, window):
    before = system.focus.active
    system.focus.activate(window)
    return before


@export("COREDLL", "SetForegroundWindow", "window")
def set_foreground_window(system, window):
    """With the lowest bit of the handle set the window's last active owned one comes too."""
    if window is None:
        return False
    system.focus.activate(window.top_level())
    return True


@export("COREDLL", "SetCapture", "window")
def set_capture(system, window):
    return system.focus.set_capture(window)


@export("COREDLL", "GetCapture")
def get_capture(system):
    return system.focus.capture


@export("COREDLL", "ReleaseCapture")
def release_capture(system):
    system.focus.set_capture(None)
    return True


@export("COREDLL", "EnableWindow", "window enabled")
def enable_window(system, window, enabled):
    return window is not None and system.focus.enable(window, bool(enabled))


@export("COREDLL", "IsWindowEnabled", "window")
def is_window_enabled(_system, window):
    return window is not None and window.enabled
