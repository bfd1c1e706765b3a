"""Surfaces: the pixels that drawing goes to, which are the screen and bitmaps in memory.

Everything is clipped to a region. A surface also remembers which texts stand on it and where, so
that a test can read the screen: a text goes when most of it is painted over, and moves along when
its pixels are copied.
"""

from PIL import Image, ImageChops

from handheld.emulator.region import Region, intersect_rects


class Text:
    """A text as it was drawn: one line in one font, (left, top, right, bottom) on its surface.
    `seen` is what of it has not been painted over."""

    __slots__ = ("text", "rect", "font", "seen")

    def __init__(self, text, rect, font, seen=None):
        self.text, self.rect, self.font = text, rect, font
        self.seen = Region.of(*rect) if seen is None else seen

    def moved(self, x, y):
        left, top, right, bottom = self.rect
        return Text(self.text, (left + x, top + y, right + x, bottom + y), self.font,
                    self.seen.offset(x, y))

    def limited(self, region):
        return Text(self.text, self.rect, self.font, self.seen.intersect(region))

    @property
    def can_be_read(self):
        return 2 * self.seen.area >= area(self.rect)

    def part(self, start, end):
        """Where the characters from `start` to `end` stand."""
        left, top, _, bottom = self.rect
        ends = [0] + self.font.advances(self.text)
        return (left + ends[start], top, left + ends[end], bottom)


def area(rect):
    return (rect[2] - rect[0]) * (rect[3] - rect[1])


class Surface:
    """Pixels in red, green and blue."""

    def __init__(self, width, height, colour=(0, 0, 0)):
        self.image = Image.new("RGB", (max(1, width), max(1, height)), colour)
        self.width, self.height = width, height
        self.texts = []

    @property
    def region(self):
        return Region.of(0, 0, self.width, self.height)

    def fill(self, region, colour):
        for rect in region.rects:
            self.image.paste(colour, rect)
        self.forget_texts(region)

    def invert(self, region):
        for rect in region.rects:
            self.image.paste(ImageChops.invert(self.image.crop(rect)), rect)

    def draw_mask(self, region, x, y, mask, colour):
        """Colours the pixels that are set in a mask whose corner is at (x, y)."""
        whole = (x, y, x + mask.width, y + mask.height)
        for rect in region.intersect_rect(whole).rects:
            part = mask.crop((rect[0] - x, rect[1] - y, rect[2] - x, rect[3] - y))
            self.image.paste(colour, rect, part)

    def draw_text(self, region, x, y, text, font, colour, ends):
        """One line with its cell's corner at (x, y); `ends` is where each character ends."""
        start = 0
        for character, end in zip(text, ends):
            glyph = font.glyph(character)
            if glyph is not None:
                mask, overhang = glyph
                self.draw_mask(region, x + start - overhang, y, mask, colour)
            start = end
        if font.underline:
            line = (x, y + font.ascent + 1, x + start, y + font.ascent + 2)
            self.fill_quietly(region.intersect_rect(line), colour)
        self.remember_text(region, Text(text, (x, y, x + start, y + font.height), font))

    def fill_quietly(self, region, colour):
        """Lines and edges: texts under them can still be read."""
        for rect in region.rects:
            self.image.paste(colour, rect)

    def draw_image(self, region, x, y, image, mask=None):
        """Pixels of another image, opaque or where a mask is set."""
        whole = (x, y, x + image.width, y + image.height)
        for rect in region.intersect_rect(whole).rects:
            box = (rect[0] - x, rect[1] - y, rect[2] - x, rect[3] - y)
            self.image.paste(image.crop(box), rect, mask.crop(box) if mask else None)

    def copy(self, region, x, y, source, source_rect):
        """A rectangle of another surface, or of this one, to (x, y), with its texts."""
        image = source.image.crop(source_rect)
        step = (x - source_rect[0], y - source_rect[1])
        texts = [text.moved(*step) for text in source.texts
                 if intersect_rects(text.rect, source_rect)]
        target = region.intersect_rect((x, y, x + image.width, y + image.height))
        self.draw_image(target, x, y, image)
        self.forget_texts(target)
        for text in texts:
            self.remember_text(target, text)

    # ---- Texts ----

    def remember_text(self, region, text):
        """Notes a text when at least half of it is inside the region."""
        text = text.limited(region)
        if text.text.strip() and text.can_be_read:
            self.texts = [old for old in self.texts
                          if not (old.text == text.text and old.rect == text.rect)]
            self.texts.append(text)

    def forget_texts(self, region):
        """Takes away what is painted over, and the texts of which less than half is left."""
        if region.is_empty or not self.texts:
            return
        bounds, kept = region.bounds, []
        for text in self.texts:
            if intersect_rects(text.rect, bounds):
                text.seen = text.seen.subtract(region)
            if text.can_be_read:
                kept.append(text)
        self.texts = kept

    def lines(self):
        """The texts as lines, from the top down: runs that touch each other are one."""
        lines = []
        for text in sorted(self.texts, key=lambda text: (text.rect[1], text.rect[0])):
            last = lines[-1][-1] if lines else None
            touching = last and last.rect[1] == text.rect[1] and abs(
                text.rect[0] - last.rect[2]) <= 1
            if touching:
                lines[-1].append(text)
            else:
                lines.append([text])
        return lines
