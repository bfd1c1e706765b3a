"""The life of a window: made, shown, moved, destroyed, with the messages that tell it so.

Modelled as on the device: WM_NCCREATE and WM_CREATE while it is made, then WM_MOVE and WM_SIZE;
WM_WINDOWPOSCHANGED when its place or size changes, which DefWindowProcW turns into those two;
WM_SHOWWINDOW; WM_DESTROY from the top down and WM_NCDESTROY from the bottom up. Pixels are never
moved with a window: it is drawn anew.
"""

from handheld.emulator import constants as c
from handheld.emulator.region import Region

USE_DEFAULT = 0x80000000
CREATESTRUCT = "<IIIIiiiiIIII"
WINDOWPOS = "<IIiiiiI"
FAILED = 0xFFFFFFFF


class WindowLife:
    """Makes, changes and ends windows."""

    def __init__(self, system):
        self.system = system
        self.windows = system.windows

    # ---- Made ----

    def create(self, class_name, text, style, ex_style, x, y, width, height, parent=None,
               id=0, instance=0, param=0):
        """The window, or None when there is no such class or the window does not want to be."""
        is_child = style & c.WS_CHILD and parent is not None
        window = self.windows.new_window(class_name, parent if is_child else None)
        if window is None:
            return None
        window.owner = None if is_child or parent is None else parent.top_level()
        window.id, window.instance, window.ex_style = id, instance, ex_style
        window.style = style & ~c.WS_VISIBLE
        window.text = text or ""
        self._place_first(window, x, y, width, height)
        window.corner = window.client_rect()[:2]
        self.windows.add(window)
        if not self._tell_created(window, param):
            return None
        self._tell_place(window)
        if style & c.WS_VISIBLE:
            self.show(window, True)
        return None if window.destroyed else window

    def _place_first(self, window, x, y, width, height):
        if x & 0xFFFFFFFF == USE_DEFAULT or width & 0xFFFFFFFF == USE_DEFAULT:
            screen = self.system.screen
            window.left, window.top = 0, screen.CAPTION_HEIGHT
            window.right, window.bottom = screen.WIDTH, screen.HEIGHT
            return
        left, top = self._origin(window)
        window.left, window.top = left + x, top + y
        window.right, window.bottom = window.left + max(0, width), window.top + max(0, height)

    @staticmethod
    def _origin(window):
        return (0, 0) if window.parent is None else window.parent.client_rect()[:2]

    def _tell_created(self, window, param):
        memory, left_top = self.system.memory, self._origin(window)
        with memory.scratch_text(window.class_name) as name, \
                memory.scratch_text(window.text) as text, memory.scratch(48) as record:
            memory.put(record, CREATESTRUCT, param, window.instance, window.id & 0xFFFFFFFF,
                       (window.parent or window.owner or NOBODY).handle,
                       window.bottom - window.top, window.right - window.left,
                       window.top - left_top[1], window.left - left_top[0],
                       window.style, text, name, window.ex_style)
            wanted = self.windows.send(window, c.WM_NCCREATE, 0, record) \
                and self.windows.send(window, c.WM_CREATE, 0, record) != FAILED
        if not wanted:
            self.destroy(window)
        return wanted and not window.destroyed

    def _tell_place(self, window):
        left, top, right, bottom = window.client_rect()
        origin = self._origin(window)
        size = (bottom - top & 0xFFFF) << 16 | right - left & 0xFFFF
        place = (top - origin[1] & 0xFFFF) << 16 | left - origin[0] & 0xFFFF
        self.windows.send(window, c.WM_SIZE, 0, size)
        self.windows.send(window, c.WM_MOVE, 0, place)

    # ---- Shown ----

    def show(self, window, shown, activate=None):
        """Shows or hides it; a top-level window that is shown becomes active."""
        if shown == window.visible:
            return
        self.windows.send(window, c.WM_SHOWWINDOW, int(shown), 0)
        if window.destroyed:
            return
        self._set_visible(window, shown)
        if not shown:
            self.system.focus.window_hidden(window)
        elif activate is not False and not window.is_child:
            self.system.focus.activate(window)

    def _set_visible(self, window, shown):
        if shown:
            window.style |= c.WS_VISIBLE
            self.windows.changed()
            self.system.painting.uncover(self.windows.visible_region(window, whole=True))
        else:
            region = self._uncovering(window)
            window.style &= ~c.WS_VISIBLE
            self.windows.changed()
            self.system.painting.uncover(region)

    def _uncovering(self, window):
        """The pixels that others get when the window goes."""
        whole = Region.of(*window.rect)
        seen = self.windows.visible_region(window, whole=True)
        return seen if not window.transparent else whole

    # ---- Moved ----

    def move(self, window, x, y, width, height):
        """To a place in the parent's client area, or on the screen."""
        left, top = self._origin(window)
        self.set_rect(window, left + x, top + y, left + x + max(0, width),
                      top + y + max(0, height))

    def set_rect(self, window, left, top, right, bottom, flags=0):
        """To a place on the screen, with all that lies in it."""
        if (left, top, right, bottom) == window.rect:
            return
        uncovered = self._uncovering(window)
        resized = (right - left, bottom - top) != (window.right - window.left,
                                                   window.bottom - window.top)
        window.left, window.top, window.right, window.bottom = left, top, right, bottom
        self._placed(window, uncovered, flags | (0 if resized else c.SWP_NOSIZE))

    def _take_along(self, window):
        """What lies in the window moves as the corner of its client area has."""
        corner = window.client_rect()[:2]
        dx, dy = corner[0] - window.corner[0], corner[1] - window.corner[1]
        window.corner = corner
        if dx or dy:
            for child in window.children:
                child.left, child.right = child.left + dx, child.right + dx
                child.top, child.bottom = child.top + dy, child.bottom + dy
                self._take_along(child)

    def _placed(self, window, uncovered, flags):
        self._take_along(window)
        self.windows.changed()
        now = self.windows.visible_region(window, whole=True)
        self.system.painting.uncover(uncovered.subtract(now))
        self.system.painting.redraw(window)
        memory, origin = self.system.memory, self._origin(window)
        with memory.scratch(28) as record:
            memory.put(record, WINDOWPOS, window.handle, 0, window.left - origin[0],
                       window.top - origin[1], window.right - window.left,
                       window.bottom - window.top, flags)
            self.windows.send(window, c.WM_WINDOWPOSCHANGED, 0, record)

    def frame_changed(self, window):
        """What surrounds the client area has become wider or narrower."""
        self._placed(window, Region(), c.SWP_FRAMECHANGED | c.SWP_NOMOVE)

    # ---- Destroyed ----

    def destroy(self, window):
        """Ends the window, what lies in it and what it owns."""
        if window.destroyed or getattr(window, "ending", False):
            return
        window.ending = True
        for owned in [other for other in self.windows.top_levels if other.owner is window]:
            self.destroy(owned)
        if window.visible:
            self._set_visible(window, False)
            self.system.focus.window_hidden(window)
        self._tell_destroyed(window)
        self._forget(window)

    def _tell_destroyed(self, window):
        self.windows.send(window, c.WM_DESTROY, 0, 0)
        for child in list(window.children):
            self._tell_destroyed(child)

    def _forget(self, window):
        for child in list(window.children):
            self._forget(child)
        self.windows.send(window, c.WM_NCDESTROY, 0, 0)
        self.system.focus.window_gone(window)
        self.system.messages.window_gone(window)
        self.windows.forget(window)


class NOBODY:
    """Where no window stands for a handle."""

    handle = 0
