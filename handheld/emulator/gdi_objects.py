"""Drawing objects and their handles: brushes, pens, fonts, bitmaps, regions, the stock objects and
the system's colours. Device contexts are in gdi.py; they have handles of the same table.

Modelled: solid and empty brushes, solid pens, fonts from LOGFONT, bitmaps compatible with the
screen, monochrome ones in black and white. Not modelled: patterns, dashes, palettes.
"""

from handheld.emulator.calls import export
from handheld.emulator.fonts import make_font
from handheld.emulator.region import Region
from handheld.emulator.surface import Surface

FIRST_HANDLE = 0x5C000010
HANDLE_STEP = 0x10

OBJ_PEN, OBJ_BRUSH, OBJ_DC, OBJ_FONT, OBJ_BITMAP, OBJ_REGION = 1, 2, 3, 6, 7, 8
FW_BOLD = 700
FW_SEMIBOLD = 600
PS_NULL = 5
LF_FACESIZE = 32
LOGFONT = "<iiiiiBBBBBBBB"  # and the name behind it
LOGFONT_SIZE = 92

BLACK, WHITE, GREY = (0, 0, 0), (255, 255, 255), (192, 192, 192)
DARK_GREY = (128, 128, 128)

# System colours by their COLOR_ numbers, as the shell of the device has them.
SYSTEM_COLOURS = {
    0: (224, 224, 224),   # COLOR_SCROLLBAR
    1: (240, 240, 240),   # COLOR_BACKGROUND
    2: (49, 101, 156),    # COLOR_ACTIVECAPTION
    3: (128, 128, 128),   # COLOR_INACTIVECAPTION
    4: (236, 233, 216),   # COLOR_MENU
    5: WHITE,             # COLOR_WINDOW
    6: BLACK,             # COLOR_WINDOWFRAME
    7: BLACK,             # COLOR_MENUTEXT
    8: BLACK,             # COLOR_WINDOWTEXT
    9: WHITE,             # COLOR_CAPTIONTEXT
    10: (192, 192, 192),  # COLOR_ACTIVEBORDER
    11: (192, 192, 192),  # COLOR_INACTIVEBORDER
    12: (128, 128, 128),  # COLOR_APPWORKSPACE
    13: (49, 101, 156),   # COLOR_HIGHLIGHT
    14: WHITE,            # COLOR_HIGHLIGHTTEXT
    15: (236, 233, 216),  # COLOR_BTNFACE
    16: (158, 155, 140),  # COLOR_BTNSHADOW
    17: (140, 138, 128),  # COLOR_GRAYTEXT
    18: BLACK,            # COLOR_BTNTEXT
    19: WHITE,            # COLOR_INACTIVECAPTIONTEXT
    20: WHITE,            # COLOR_BTNHIGHLIGHT
    21: (90, 88, 80),     # COLOR_3DDKSHADOW
    22: (241, 239, 226),  # COLOR_3DLIGHT
    23: BLACK,            # COLOR_INFOTEXT
    24: (255, 255, 225),  # COLOR_INFOBK
}
COLOR_BTNHIGHLIGHT = 20
COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT = 5, 8, 13, 14
COLOR_BTNFACE, COLOR_BTNSHADOW, COLOR_GRAYTEXT, COLOR_BTNTEXT = 15, 16, 17, 18
COLOR_ACTIVECAPTION, COLOR_CAPTIONTEXT, COLOR_MENU, COLOR_MENUTEXT = 2, 9, 4, 7
SYSTEM_COLOUR_FLAG = 0x40000000  # in a COLORREF and in handles of brushes: a COLOR_ number


class HandleFault(Exception):
    """The program uses a handle that is none, or one that is gone."""


def system_colour(index):
    return SYSTEM_COLOURS.get(index & 0xFF, BLACK)


def from_colorref(value):
    """Red, green and blue of a COLORREF."""
    if value & SYSTEM_COLOUR_FLAG:
        return system_colour(value)
    return (value & 0xFF, value >> 8 & 0xFF, value >> 16 & 0xFF)


def to_colorref(colour):
    return colour[0] | colour[1] << 8 | colour[2] << 16


class Brush:
    """What areas are filled with; colour None fills nothing."""

    kind = OBJ_BRUSH

    def __init__(self, colour):
        self.colour = colour


class Pen:
    """What lines are drawn with; colour None draws nothing."""

    kind = OBJ_PEN

    def __init__(self, colour, width=1):
        self.colour, self.width = colour, max(1, width)


class FontObject:
    """A font as the program asked for it (its LOGFONT's bytes), and the one that it got."""

    kind = OBJ_FONT

    def __init__(self, font, record=b""):
        self.font, self.record = font, record


class Bitmap:
    """Pixels in memory, in a device context or not."""

    kind = OBJ_BITMAP

    def __init__(self, width, height, bits_per_pixel=16):
        self.surface = Surface(width, height)
        self.bits_per_pixel = bits_per_pixel


class RegionObject:
    kind = OBJ_REGION

    def __init__(self, region):
        self.region = region


class ObjectTable:
    """Handles of drawing objects."""

    def __init__(self):
        self.objects = {}
        self.next = FIRST_HANDLE
        self.stock = {}

    def add(self, item):
        handle = self.next
        self.next += HANDLE_STEP
        self.objects[handle] = item
        item.handle = handle
        return handle

    def add_stock(self, index, item):
        item.stock = True
        self.stock[index] = self.add(item)

    def get(self, handle, *kinds):
        """The object behind a handle, which must be one of these kinds."""
        item = self.objects.get(handle)
        if item is None or (kinds and item.kind not in kinds):
            raise HandleFault(f"{handle:#x} is no handle of a drawing object of kind {kinds}")
        return item

    def remove(self, handle):
        """False where there is no such object. Stock objects stay."""
        item = self.objects.get(handle)
        if item is None:
            return False
        if not getattr(item, "stock", False):
            del self.objects[handle]
        return True


def make_stock(table):
    """The objects that GetStockObject knows."""
    greys = {0: WHITE, 1: GREY, 2: DARK_GREY, 3: (64, 64, 64), 4: BLACK, 5: None}
    for index, colour in greys.items():
        table.add_stock(index, Brush(colour))
    for index, colour in {6: WHITE, 7: BLACK, 8: None}.items():
        table.add_stock(index, Pen(colour))
    table.add_stock(13, FontObject(make_font()))   # SYSTEM_FONT
    table.add_stock(17, FontObject(make_font()))   # DEFAULT_GUI_FONT
    table.add_stock("bitmap", Bitmap(1, 1, 1))     # that contexts in memory begin with
    for index, colour in SYSTEM_COLOURS.items():
        table.add_stock(("colour", index), Brush(colour))


# ---- Making and dropping ----

@export("COREDLL", "CreateSolidBrush", "colour")
def create_solid_brush(system, colour):
    return system.gdi.table.add(Brush(from_colorref(colour)))


@export("COREDLL", "CreatePen", "style width colour")
def create_pen(system, style, width, colour):
    return system.gdi.table.add(Pen(None if style == PS_NULL else from_colorref(colour), width))


@export("COREDLL", "CreatePenIndirect", "pen")
def create_pen_indirect(system, pen):
    style, width, _, colour = system.memory.struct(pen, "<IiiI")
    return create_pen(system, style, width, colour)


def font_of_record(record):
    """The font for the bytes of a LOGFONT."""
    height = int.from_bytes(record[0:4], "little", signed=True)
    weight = int.from_bytes(record[16:20], "little")
    face = record[28:LOGFONT_SIZE].decode("utf-16-le").split("\0")[0]
    return make_font(face, height, weight >= FW_SEMIBOLD, record[20] != 0, record[21] != 0)


@export("COREDLL", "CreateFontIndirectW", "record")
def create_font_indirect(system, record):
    data = system.memory.bytes(record, LOGFONT_SIZE)
    return system.gdi.table.add(FontObject(font_of_record(data), bytes(data)))


@export("COREDLL", "CreateCompatibleBitmap", "dc width height")
def create_compatible_bitmap(system, dc, width, height):
    system.gdi.dc(dc)
    return system.gdi.table.add(Bitmap(width, height))


@export("COREDLL", "CreateBitmap", "width height planes bits_per_pixel bits")
def create_bitmap(system, width, height, _planes, bits_per_pixel, bits):
    bitmap = Bitmap(width, height, bits_per_pixel)
    if bits and bits_per_pixel == 1:
        row = (width + 15) // 16 * 2
        pixels = system.memory.bytes(bits, row * height)
        for y in range(height):
            for x in range(width):
                if pixels[y * row + x // 8] & 0x80 >> x % 8:
                    bitmap.surface.image.putpixel((x, y), WHITE)
    return system.gdi.table.add(bitmap)


@export("COREDLL", "CreateRectRgn", "left top right bottom")
def create_rect_region(system, *edges):
    return system.gdi.table.add(RegionObject(Region.of(*edges)))


@export("COREDLL", "CreateRectRgnIndirect", "rect")
def create_rect_region_indirect(system, rect):
    return system.gdi.table.add(RegionObject(Region.of(*system.memory.struct(rect, "<4i"))))


@export("COREDLL", "DeleteObject", "handle")
def delete_object(system, handle):
    return system.gdi.table.remove(handle)


@export("COREDLL", "GetStockObject", "index")
def get_stock_object(system, index):
    return system.gdi.table.stock.get(index, 0)


@export("COREDLL", "GetObjectType", "handle")
def get_object_type(system, handle):
    item = system.gdi.table.objects.get(handle)
    return item.kind if item else 0


@export("COREDLL", "GetObjectW", "handle size buffer")
def get_object(system, handle, size, buffer):
    """Only what it takes to make the same again: LOGFONT, BITMAP, LOGBRUSH."""
    item = system.gdi.table.get(handle)
    memory = system.memory
    if item.kind == OBJ_FONT:
        memory.put_bytes(buffer, font_record(item)[:size])
        return min(size, LOGFONT_SIZE)
    if item.kind == OBJ_BITMAP:
        surface = item.surface
        row = (surface.width * item.bits_per_pixel + 15) // 16 * 2
        memory.put(buffer, "<iiiiHHI", 0, surface.width, surface.height, row, 1,
                   item.bits_per_pixel, 0)
        return 24
    if item.kind == OBJ_BRUSH:
        memory.put(buffer, "<III", 0 if item.colour else 1, to_colorref(item.colour or BLACK), 0)
        return 12
    return 0


def font_record(item):
    """A LOGFONT's bytes for a font."""
    if item.record:
        return item.record
    font = item.font
    head = (-font.size).to_bytes(4, "little", signed=True) + bytes(12)
    head += (FW_BOLD if font.bold else 400).to_bytes(4, "little")
    head += bytes([font.italic, font.underline, 0, 1, 0, 0, 0, 0])
    name = font.face[:LF_FACESIZE - 1].encode("utf-16-le")
    return head + name + bytes(2 * LF_FACESIZE - len(name))


@export("COREDLL", "GetSysColor", "index")
def get_sys_color(_system, index):
    return to_colorref(system_colour(index))


@export("COREDLL", "GetSysColorBrush", "index")
def get_sys_color_brush(system, index):
    return system.gdi.table.stock[("colour", index & 0xFF)]
