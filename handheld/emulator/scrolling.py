"""Moving pixels of a window: what is seen of it is copied, what comes to light is invalid.

Not modelled: child windows that move along (SW_SCROLLCHILDREN), and moving what is invalid with
the pixels: that is drawn where it is now.
"""

from handheld.emulator.calls import export
from handheld.emulator.region import Region

RECT = "<4i"
SW_INVALIDATE, SW_ERASE = 2, 4
NULLREGION, SIMPLEREGION = 1, 2


def scroll(dc, dx, dy, rect, clip):
    """Copies `rect` by (dx, dy) within `clip`, both in the context's coordinates; the region of the
    surface that nothing was copied to."""
    area = dc.area(rect)
    if clip is not None:
        area = area.intersect(dc.area(clip))
    if area.is_empty:
        return Region()
    left, top, right, bottom = area.bounds
    target = area.intersect(area.offset(dx, dy))
    dc.surface.copy(target, left + dx, top + dy, dc.surface, (left, top, right, bottom))
    return area.subtract(target)


def rect_at(system, address, otherwise):
    return system.memory.struct(address, RECT) if address else otherwise


@export("COREDLL", "ScrollWindowEx", "window dx dy rect clip region update flags")
def scroll_window(system, window, dx, dy, rect, clip, _region, update, flags):
    left, top, right, bottom = window.client_rect()
    whole = (0, 0, right - left, bottom - top)
    dc = system.gdi.window_dc(window)
    bare = scroll(dc, dx, dy, rect_at(system, rect, whole), rect_at(system, clip, None))
    system.gdi.release(dc)
    bare = bare.offset(-left, -top)
    if update:
        system.memory.put(update, RECT, *bare.bounds)
    if flags & SW_INVALIDATE:
        for part in bare.rects:
            system.windows.invalidate(window, part, bool(flags & SW_ERASE))
    return NULLREGION if bare.is_empty else SIMPLEREGION


@export("COREDLL", "ScrollDC", "dc dx dy rect clip region update")
def scroll_dc(system, dc, dx, dy, rect, clip, _region, update):
    context = system.gdi.dc(dc)
    x, y = context.point(0, 0)
    left, top, right, bottom = context.clip.bounds
    whole = (left - x, top - y, right - x, bottom - y)
    bare = scroll(context, dx, dy, rect_at(system, rect, whole), rect_at(system, clip, None))
    if update:
        system.memory.put(update, RECT, *bare.offset(-x, -y).bounds)
    return True
