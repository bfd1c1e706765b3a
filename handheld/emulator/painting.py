"""The paint cycle: which pixels of which window are to be drawn, and when it is told so.

What becomes visible, and what a window calls invalid, is added to the window's update region. When
the queue has nothing else, the window gets WM_PAINT; BeginPaint empties the region, sends
WM_ERASEBKGND, and gives a context that is clipped to it. Frames are drawn at once.
"""

from handheld.emulator import constants as c
from handheld.emulator import frame
from handheld.emulator.calls import export
from handheld.emulator.region import Region

PAINTSTRUCT = "<IIiiiiII32x"
RECT = "<iiii"
NO_RECT = (0, 0, 0, 0)


class Painting:
    """The update regions of all windows."""

    def __init__(self, system):
        self.system = system
        self.windows = system.windows

    # ---- What is to be drawn ----

    def invalidate(self, window, rect=None, erase=True):
        """`rect` in client coordinates; None: all of it, and of nobody else."""
        left, top, right, bottom = client = window.client_rect()
        if rect is not None:
            client = (left + rect[0], top + rect[1], left + rect[2], top + rect[3])
        self._add(window, Region.of(*client), erase)

    def _add(self, window, region, erase):
        region = region.intersect(self.windows.visible_region(window))
        if not region.is_empty:
            window.update = window.update.union(region)
            window.must_erase = window.must_erase or erase

    def validate(self, window, rect=None):
        if rect is None:
            window.update, window.must_erase = Region(), False
            return
        left, top = window.client_rect()[:2]
        window.update = window.update.subtract(
            Region.of(left + rect[0], top + rect[1], left + rect[2], top + rect[3]))

    def uncover(self, region):
        """These pixels of the screen now show something else."""
        if not region.is_empty:
            self._uncover(self.windows.top_levels, region)

    def _uncover(self, windows, region):
        for window in windows:
            if window.visible and not region.intersect_rect(window.rect).is_empty:
                self._uncover_one(window, region)
                self._uncover(window.children, region)

    def _uncover_one(self, window, region):
        shown = region.intersect(self.windows.visible_region(window, whole=True))
        if not shown.intersect_rect(window.client_rect()).area == shown.area:
            frame.draw(self.system, window)
        self._add(window, region, True)

    def redraw(self, window):
        """All of the window and of what lies in it."""
        self.uncover(self.windows.visible_region(window, whole=True))

    def text_changed(self, window):
        """A control shows its text, a top-level window's stands in the bar."""
        if window.is_child:
            window.invalidate()
        else:
            self.windows.redraw_frame(window)
            self.system.screen.changed()

    # ---- Drawing ----

    def waiting(self):
        """The next window that is to be drawn, or None."""
        for window in self.windows.all():
            if not window.update.is_empty:
                window.update = window.update.intersect(self.windows.visible_region(window))
            if not window.update.is_empty:
                return window
        return None

    def update(self, window):
        """Draws what is invalid now."""
        if not window.update.is_empty:
            self.windows.send(window, c.WM_PAINT, 0, 0)

    def begin(self, window):
        """The context of a WM_PAINT, its background erased."""
        region, window.update = window.update, Region()
        erase, window.must_erase = window.must_erase, False
        dc = self.system.gdi.window_dc(window, True, region)
        if erase:
            window.must_erase = not self.windows.send(window, c.WM_ERASEBKGND, dc.handle, 0)
        dc.update_bounds = self._bounds(window, region)
        return dc

    @staticmethod
    def _bounds(window, region):
        left, top = window.client_rect()[:2]
        return region.offset(-left, -top).bounds

    def end(self, window, dc):
        window.must_erase = False
        self.system.gdi.release(dc)


# ---- The program's calls ----

def rect_at(system, address):
    """A RECT of the program, or None for none."""
    return system.memory.struct(address, RECT) if address else None


@export("COREDLL", "BeginPaint", "window paint")
def begin_paint(system, window, paint):
    dc = system.painting.begin(window)
    system.memory.put(paint, PAINTSTRUCT, dc.handle, int(window.must_erase), *dc.update_bounds,
                      0, 0)
    return dc


@export("COREDLL", "EndPaint", "window paint")
def end_paint(system, window, paint):
    system.painting.end(window, system.gdi.dc(system.memory.u32(paint)))
    return True


@export("COREDLL", "InvalidateRect", "window rect erase")
def invalidate_rect(system, window, rect, erase):
    if window is None:
        return False
    system.painting.invalidate(window, rect_at(system, rect), bool(erase))
    return True


@export("COREDLL", "ValidateRect", "window rect")
def validate_rect(system, window, rect):
    system.painting.validate(window, rect_at(system, rect))
    return True


@export("COREDLL", "UpdateWindow", "window")
def update_window(system, window):
    if window is not None:
        system.painting.update(window)
    return window is not None


@export("COREDLL", "GetUpdateRect", "window rect erase")
def get_update_rect(system, window, rect, _erase):
    if rect:
        left, top = window.client_rect()[:2]
        system.memory.put(rect, RECT, *window.update.offset(-left, -top).bounds)
    return not window.update.is_empty


@export("COREDLL", "RedrawWindow", "window rect region flags")
def redraw_window(system, window, rect, _region, flags):
    """RDW_INVALIDATE 1, RDW_ERASE 4, RDW_VALIDATE 8, RDW_ALLCHILDREN 0x80, RDW_UPDATENOW 0x100."""
    if flags & 1:
        system.painting.invalidate(window, rect_at(system, rect), bool(flags & 4))
    if flags & 0x80:
        system.painting.redraw(window)
    if flags & 8:
        system.painting.validate(window, rect_at(system, rect))
    if flags & 0x100:
        system.painting.update(window)
    return True
