"""Drawing: device contexts of windows and in memory, shapes, copying, clipping.

Texts are in text_out.py, objects in gdi_objects.py. Modelled: contexts of windows and of memory;
lines and shapes with solid pens and brushes; copying with the usual raster operations; rectangular
clip regions. Not modelled: mapping modes (the system has none), palettes, printing.
"""

from PIL import Image, ImageChops

from handheld.emulator.calls import export
from handheld.emulator.dc import Dc, memory_dc
from handheld.emulator.gdi_objects import (
    OBJ_BITMAP, OBJ_BRUSH, OBJ_DC, OBJ_FONT, OBJ_PEN, OBJ_REGION, SYSTEM_COLOUR_FLAG,
    ObjectTable, from_colorref, make_stock, system_colour, to_colorref)
from handheld.emulator.region import Region

SRCCOPY, SRCPAINT, SRCAND, SRCINVERT = 0xCC0020, 0xEE0086, 0x8800C6, 0x660046
PATCOPY, PATINVERT, DSTINVERT = 0xF00021, 0x5A0049, 0x550009
BLACKNESS, WHITENESS = 0x42, 0xFF0062
NULLREGION, SIMPLEREGION, COMPLEXREGION = 1, 2, 3
RGN_AND, RGN_OR, RGN_XOR, RGN_DIFF, RGN_COPY = 1, 2, 3, 4, 5
CLR_INVALID = 0xFFFFFFFF

MIX = {
    SRCPAINT: lambda target, source: ImageChops.lighter(target, source),
    SRCAND: lambda target, source: ImageChops.darker(target, source),
    SRCINVERT: lambda target, source: exclusive(target, source),
}
DEVICE_CAPS = {  # HORZRES, VERTRES, BITSPIXEL, PLANES, LOGPIXELSX, LOGPIXELSY, TECHNOLOGY, ...
    8: 240, 10: 320, 12: 16, 14: 1, 88: 96, 90: 96, 2: 1, 4: 60, 6: 80, 24: 0xFFFFFFFF,
}


def exclusive(a, b):
    """Bit by bit exclusive or of two images."""
    data = bytes(x ^ y for x, y in zip(a.tobytes(), b.tobytes()))
    return Image.frombytes("RGB", a.size, data)


class Gdi:
    """The system's drawing part: objects, and the contexts that are in use."""

    def __init__(self, system):
        self.system = system
        self.table = ObjectTable()
        make_stock(self.table)

    def window_dc(self, window, client=True, region=None):
        """A context for a window's client area, or all of it; for None the whole screen.
        `region` limits it further, in screen coordinates."""
        surface = self.system.screen.surface
        if window is None:
            return self._add(Dc(self, surface))
        visible = self.system.windows.visible_region(window, whole=not client)
        if region is not None:
            visible = visible.intersect(region)
        corner = window.client_rect()[:2] if client else (window.left, window.top)
        return self._add(Dc(self, surface, tuple(corner), visible, window))

    def _add(self, dc):
        self.table.add(dc)
        return dc

    def dc(self, handle):
        return self.table.get(handle, OBJ_DC)

    def release(self, dc):
        self.table.remove(dc.handle)

    def system_brush(self, number):
        """The handle of a system colour's brush."""
        return self.table.stock[("colour", number)]

    def brush_colour(self, handle):
        """The colour of a brush's handle, or of a COLOR_ number plus one as classes have it."""
        if handle & SYSTEM_COLOUR_FLAG and handle not in self.table.objects:
            return system_colour(handle)
        if 0 < handle <= 64:
            return system_colour(handle - 1)
        return self.table.get(handle, OBJ_BRUSH).colour if handle else None


# ---- Contexts ----

@export("COREDLL", "GetDC", "window")
def get_dc(system, window):
    return system.gdi.window_dc(window).handle


@export("COREDLL", "GetWindowDC", "window")
def get_window_dc(system, window):
    return system.gdi.window_dc(window, client=False).handle


@export("COREDLL", "ReleaseDC", "window dc")
def release_dc(system, _window, dc):
    system.gdi.release(system.gdi.dc(dc))
    return 1


@export("COREDLL", "CreateCompatibleDC", "dc")
def create_compatible_dc(system, _dc):
    return system.gdi.table.add(memory_dc(system.gdi))


@export("COREDLL", "DeleteDC", "dc")
def delete_dc(system, dc):
    system.gdi.release(system.gdi.dc(dc))
    return 1


@export("COREDLL", "SaveDC", "dc")
def save_dc(system, dc):
    return system.gdi.dc(dc).save()


@export("COREDLL", "RestoreDC", "dc int")
def restore_dc(system, dc, level):
    return system.gdi.dc(dc).restore(level)


@export("COREDLL", "GetDeviceCaps", "dc index")
def get_device_caps(system, dc, index):
    system.gdi.dc(dc)
    return DEVICE_CAPS.get(index, 0)


@export("COREDLL", "SelectObject", "dc handle")
def select_object(system, dc, handle):
    context, item = system.gdi.dc(dc), system.gdi.table.get(handle)
    if item.kind == OBJ_REGION:
        return select_clip_region(system, dc, handle)
    name = {OBJ_FONT: "font", OBJ_BRUSH: "brush", OBJ_PEN: "pen", OBJ_BITMAP: "bitmap"}[item.kind]
    before = getattr(context, name)
    if item.kind == OBJ_BITMAP:
        context.select_bitmap(item)
    else:
        setattr(context, name, item)
    return before.handle if before else 0


@export("COREDLL", "GetCurrentObject", "dc kind")
def get_current_object(system, dc, kind):
    names = {OBJ_FONT: "font", OBJ_BRUSH: "brush", OBJ_PEN: "pen", OBJ_BITMAP: "bitmap"}
    item = getattr(system.gdi.dc(dc), names.get(kind, ""), None)
    return item.handle if item else 0


# ---- Attributes ----

@export("COREDLL", "SetTextColor", "dc colour")
def set_text_color(system, dc, colour):
    context = system.gdi.dc(dc)
    before, context.text_colour = context.text_colour, from_colorref(colour)
    return to_colorref(before)


@export("COREDLL", "SetBkColor", "dc colour")
def set_back_color(system, dc, colour):
    context = system.gdi.dc(dc)
    before, context.back_colour = context.back_colour, from_colorref(colour)
    return to_colorref(before)


@export("COREDLL", "SetBkMode", "dc mode")
def set_back_mode(system, dc, mode):
    context = system.gdi.dc(dc)
    before, context.back_mode = context.back_mode, mode
    return before


@export("COREDLL", "GetTextColor", "dc")
def get_text_color(system, dc):
    return to_colorref(system.gdi.dc(dc).text_colour)


@export("COREDLL", "GetBkColor", "dc")
def get_back_color(system, dc):
    return to_colorref(system.gdi.dc(dc).back_colour)


@export("COREDLL", "GetBkMode", "dc")
def get_back_mode(system, dc):
    return system.gdi.dc(dc).back_mode


# ---- Shapes ----

@export("COREDLL", "FillRect", "dc rect brush")
def fill_rect(system, dc, rect, brush):
    colour = system.gdi.brush_colour(brush)
    system.gdi.dc(dc).fill(system.memory.struct(rect, "<4i"), colour)
    return 1


@export("COREDLL", "InvertRect", "dc rect")
def invert_rect(system, dc, rect):
    system.gdi.dc(dc).invert(system.memory.struct(rect, "<4i"))
    return 1


@export("COREDLL", "DrawFocusRect", "dc rect")
def draw_focus_rect(system, dc, rect):
    context = system.gdi.dc(dc)
    context.dotted(system.memory.struct(rect, "<4i"), context.text_colour)
    return 1


@export("COREDLL", "Rectangle", "dc left top right bottom")
def rectangle(system, dc, *rect):
    context = system.gdi.dc(dc)
    context.fill(rect, context.brush.colour)
    if context.pen.colour is not None:
        context.frame(rect, context.pen.colour, context.pen.width)
    return 1


@export("COREDLL", "PatBlt", "dc x y width height operation")
def pat_blt(system, dc, x, y, width, height, operation):
    context = system.gdi.dc(dc)
    rect = (x, y, x + width, y + height)
    if operation == PATCOPY:
        context.fill(rect, context.brush.colour)
    elif operation in (DSTINVERT, PATINVERT):
        context.invert(rect)
    elif operation in (BLACKNESS, WHITENESS):
        context.fill(rect, (0, 0, 0) if operation == BLACKNESS else (255, 255, 255))
    else:
        raise NotImplementedError(f"PatBlt with operation {operation:#x}")
    return 1


@export("COREDLL", "MoveToEx", "dc x y before")
def move_to(system, dc, x, y, before):
    context = system.gdi.dc(dc)
    if before:
        system.memory.put(before, "<ii", *context.position)
    context.position = (x, y)
    return 1


@export("COREDLL", "LineTo", "dc x y")
def line_to(system, dc, x, y):
    context = system.gdi.dc(dc)
    context.line(*context.position, x, y, context.pen.colour, context.pen.width)
    context.position = (x, y)
    return 1


@export("COREDLL", "Polyline", "dc points count")
def polyline(system, dc, points, count):
    context = system.gdi.dc(dc)
    flat = system.memory.struct(points, f"<{2 * count}i")
    ends = list(zip(flat[0::2], flat[1::2]))
    for start, end in zip(ends, ends[1:]):
        context.line(*start, *end, context.pen.colour, context.pen.width)
    return 1


@export("COREDLL", "SetPixel", "dc x y colour")
def set_pixel(system, dc, x, y, colour):
    system.gdi.dc(dc).edge((x, y, x + 1, y + 1), from_colorref(colour))
    return colour


@export("COREDLL", "GetPixel", "dc x y")
def get_pixel(system, dc, x, y):
    context = system.gdi.dc(dc)
    at = context.point(x, y)
    if not context.clip.contains(*at):
        return CLR_INVALID
    return to_colorref(context.surface.image.getpixel(at))


# ---- Copying ----

@export("COREDLL", "BitBlt", "dc x y width height source int int operation")
def bit_blt(system, dc, x, y, width, height, source, source_x, source_y, operation):
    if operation not in MIX and operation != SRCCOPY:
        return pat_blt(system, dc, x, y, width, height, operation)
    target, origin = system.gdi.dc(dc), system.gdi.dc(source)
    at, start = target.point(x, y), origin.point(source_x, source_y)
    box = start + (start[0] + width, start[1] + height)
    if operation == SRCCOPY:
        target.surface.copy(target.clip, *at, origin.surface, box)
        return 1
    whole = target.surface.image.crop(at + (at[0] + width, at[1] + height))
    mixed = MIX[operation](whole, origin.surface.image.crop(box))
    target.surface.draw_image(target.clip, *at, mixed)
    return 1


@export("COREDLL", "StretchBlt",
        "dc x y width height source int int int int operation")
def stretch_blt(system, dc, x, y, width, height, source, source_x, source_y, source_width,
                source_height, _operation):
    target, origin = system.gdi.dc(dc), system.gdi.dc(source)
    start = origin.point(source_x, source_y)
    box = start + (start[0] + source_width, start[1] + source_height)
    image = origin.surface.image.crop(box).resize((width, height), Image.NEAREST)
    target.image(x, y, image)
    return 1


# ---- Clipping ----

def complexity(region):
    return NULLREGION if region.is_empty else SIMPLEREGION if len(region.rects) == 1 \
        else COMPLEXREGION


@export("COREDLL", "IntersectClipRect", "dc left top right bottom")
def intersect_clip_rect(system, dc, *edges):
    context = system.gdi.dc(dc)
    context.own_clip = context.clip.intersect_rect(context.rect(edges))
    return complexity(context.own_clip)


@export("COREDLL", "ExcludeClipRect", "dc left top right bottom")
def exclude_clip_rect(system, dc, *edges):
    context = system.gdi.dc(dc)
    rect = Region.of(*context.rect(edges))
    context.own_clip = context.clip.subtract(rect)
    return complexity(context.own_clip)


@export("COREDLL", "SelectClipRgn", "dc region")
def select_clip_region(system, dc, region):
    context = system.gdi.dc(dc)
    if region == 0:
        context.own_clip = None
    else:
        item = system.gdi.table.get(region, OBJ_REGION)
        context.own_clip = item.region.offset(*context.origin)
    return complexity(context.clip)


@export("COREDLL", "GetClipBox", "dc rect")
def get_clip_box(system, dc, rect):
    context = system.gdi.dc(dc)
    left, top, right, bottom = context.clip.bounds
    x, y = context.point(0, 0)
    system.memory.put(rect, "<4i", left - x, top - y, right - x, bottom - y)
    return complexity(context.clip)


@export("COREDLL", "CombineRgn", "target first second mode")
def combine_regions(system, target, first, second, mode):
    a = system.gdi.table.get(first, OBJ_REGION).region
    b = system.gdi.table.get(second, OBJ_REGION).region if mode != RGN_COPY else a
    ways = {RGN_AND: a.intersect, RGN_OR: a.union, RGN_DIFF: a.subtract, RGN_COPY: a.union,
            RGN_XOR: lambda other: a.subtract(other).union(other.subtract(a))}
    result = ways[mode](b)
    system.gdi.table.get(target, OBJ_REGION).region = result
    return complexity(result)
