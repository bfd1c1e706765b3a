"""A device context: where drawing goes, what it is clipped to, and the attributes it is done with.

The methods are what the system's own controls draw with; the functions that the program calls are
in gdi.py and text_out.py. Coordinates count from the context's origin, which is the corner of the
window's client area; the surface is the screen, or a bitmap in memory.
"""

from handheld.emulator.gdi_objects import OBJ_DC

OPAQUE = 2
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
TA_UPDATECP, TA_RIGHT, TA_CENTER, TA_BOTTOM, TA_BASELINE = 1, 2, 6, 8, 24
ATTRIBUTES = ("font", "brush", "pen", "bitmap", "text_colour", "back_colour", "back_mode", "align",
              "position", "own_clip", "viewport")


class Dc:
    """One device context."""

    kind = OBJ_DC

    def __init__(self, gdi, surface, origin=(0, 0), visible=None, window=None):
        self.surface, self.origin, self.window = surface, origin, window
        self.visible = surface.region if visible is None else visible
        self.own_clip = None  # set by the program, in surface coordinates
        stock = gdi.table.stock
        self.font = gdi.table.get(stock[13])
        self.brush = gdi.table.get(stock[0])
        self.pen = gdi.table.get(stock[7])
        self.bitmap = None
        self.text_colour, self.back_colour, self.back_mode = BLACK, WHITE, OPAQUE
        self.align, self.position, self.viewport = 0, (0, 0), (0, 0)
        self.saved = []

    @property
    def clip(self):
        """The region that drawing is limited to, in surface coordinates."""
        return self.visible if self.own_clip is None else self.visible.intersect(self.own_clip)

    def save(self):
        self.saved.append({name: getattr(self, name) for name in ATTRIBUTES})
        return len(self.saved)

    def restore(self, level):
        """Back to a level of `save`, or by so many levels when below zero."""
        index = level - 1 if level > 0 else len(self.saved) + level
        if not 0 <= index < len(self.saved):
            return False
        for name, value in self.saved[index].items():
            setattr(self, name, value)
        del self.saved[index:]
        return True

    def select_bitmap(self, bitmap):
        """Only a context in memory has a bitmap."""
        self.bitmap, self.surface = bitmap, bitmap.surface
        self.visible = bitmap.surface.region

    # ---- Coordinates ----

    def point(self, x, y):
        return (x + self.origin[0] + self.viewport[0], y + self.origin[1] + self.viewport[1])

    def rect(self, rect):
        return self.point(rect[0], rect[1]) + self.point(rect[2], rect[3])

    def area(self, rect):
        """What of a rectangle can be drawn, in surface coordinates."""
        return self.clip.intersect_rect(self.rect(rect))

    # ---- Shapes ----

    def fill(self, rect, colour):
        if colour is not None:
            self.surface.fill(self.area(rect), colour)

    def invert(self, rect):
        self.surface.invert(self.area(rect))

    def frame(self, rect, colour, width=1):
        """The edges of a rectangle, inside it."""
        left, top, right, bottom = rect
        self.edge((left, top, right, top + width), colour)
        self.edge((left, bottom - width, right, bottom), colour)
        self.edge((left, top, left + width, bottom), colour)
        self.edge((right - width, top, right, bottom), colour)

    def edge(self, rect, colour):
        """A thin area, under which texts stay what they are."""
        self.surface.fill_quietly(self.area(rect), colour)

    def bevel(self, rect, light, dark):
        """Edges that look raised, or pressed in with the colours exchanged."""
        left, top, right, bottom = rect
        self.edge((left, top, right, top + 1), light)
        self.edge((left, top, left + 1, bottom), light)
        self.edge((left, bottom - 1, right, bottom), dark)
        self.edge((right - 1, top, right, bottom), dark)

    def dotted(self, rect, colour):
        """A frame of dots, for the focus."""
        left, top, right, bottom = rect
        spots = [(x, y) for x in range(left, right) for y in (top, bottom - 1)]
        spots += [(x, y) for y in range(top, bottom) for x in (left, right - 1)]
        for x, y in spots:
            if (x + y) % 2 == 0:
                self.edge((x, y, x + 1, y + 1), colour)

    def line(self, x, y, to_x, to_y, colour, width=1):
        """A line without its last pixel."""
        if colour is None:
            return
        steps = max(abs(to_x - x), abs(to_y - y))
        if y == to_y or x == to_x:
            self.edge(straight(x, y, to_x, to_y, width), colour)
            return
        for step in range(steps):
            at_x = x + (2 * (to_x - x) * step + steps) // (2 * steps)
            at_y = y + (2 * (to_y - y) * step + steps) // (2 * steps)
            self.edge((at_x, at_y, at_x + width, at_y + width), colour)

    def triangle(self, x, y, size, colour, down=True):
        """An arrow's head, `size` rows high, with its corner of the longest row at (x, y)."""
        for row in range(size):
            line = y + row if down else y + size - 1 - row
            self.edge((x + row, line, x + 2 * size - 1 - row, line + 1), colour)

    def image(self, x, y, image, mask=None):
        self.surface.draw_image(self.clip, *self.point(x, y), image, mask)

    def mask(self, x, y, mask, colour):
        self.surface.draw_mask(self.clip, *self.point(x, y), mask, colour)

    # ---- Text ----

    def text(self, x, y, text, font=None, colour=BLACK, limit=None):
        """One line with its cell's corner at (x, y), cut off at a rectangle."""
        font = font or self.font.font
        clip = self.clip if limit is None else self.area(limit)
        self.surface.draw_text(clip, *self.point(x, y), text, font, colour, font.advances(text))

    def label(self, rect, text, font=None, colour=BLACK, align="left"):
        """One line in the middle of a rectangle's height; '&' underlines and is not shown."""
        font = font or self.font.font
        shown = without_mnemonic(text)
        width = font.width(shown)
        x = {"left": rect[0], "center": (rect[0] + rect[2] - width) // 2,
             "right": rect[2] - width}[align]
        y = (rect[1] + rect[3] - font.height) // 2
        self.text(x, y, shown, font, colour, rect)

    def text_width(self, text, font=None):
        return (font or self.font.font).width(text)


def straight(x, y, to_x, to_y, width):
    """The pixels of a level or upright line, as a rectangle."""
    if y == to_y:
        left, right = (x, to_x) if x < to_x else (to_x + 1, x + 1)
        return (left, y, right, y + width)
    top, bottom = (y, to_y) if y < to_y else (to_y + 1, y + 1)
    return (x, top, x + width, bottom)


def without_mnemonic(text):
    """A label without the '&' that marks its key; '&&' is one '&'."""
    return text.replace("&&", "\0").replace("&", "").replace("\0", "&")


def memory_dc(gdi):
    """A context in memory: one black pixel, until a bitmap is selected."""
    bitmap = gdi.table.get(gdi.table.stock["bitmap"])
    dc = Dc(gdi, bitmap.surface)
    dc.select_bitmap(bitmap)
    return dc
