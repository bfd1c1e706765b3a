"""Fonts: which typeface stands for a name, how large a cell it has, and its characters as bitmaps.

The device's own typefaces are not at hand, so that free ones stand in for them; sizes, weights and
slants are those asked for. Characters are drawn in one colour, without smoothing, and have whole
pixels of advance, as on a small screen. Bold and slanted forms are files of their own.
"""

from functools import lru_cache

from PIL import Image, ImageDraw, ImageFont

from handheld.emulator.memory import Fault

FOLDER = "/usr/share/fonts/truetype/dejavu/"

# Family: (plain, bold, italic, bold italic). The first one stands for every other name.
FAMILIES = {
    "Tahoma": ("DejaVuSans", "DejaVuSans-Bold", "DejaVuSans-Oblique", "DejaVuSans-BoldOblique"),
    "Courier New": ("DejaVuSansMono", "DejaVuSansMono-Bold",
                    "DejaVuSansMono-Oblique", "DejaVuSansMono-BoldOblique"),
    "Times New Roman": ("DejaVuSerif", "DejaVuSerif-Bold", "DejaVuSerif-Italic",
                        "DejaVuSerif-BoldItalic"),
}
SYSTEM_FAMILY = "Tahoma"
SYSTEM_SIZE = 11  # pixels of the system font, which dialogs and menus have: 8 points
WIDE = 12, 11     # the stand-ins are wider: this many pixels are drawn as so many
LETTERS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
LARGEST = 400  # pixels


def family_of(face):
    """The family that stands for a face's name."""
    for family in FAMILIES:
        if family.lower() == face.lower():
            return family
    return SYSTEM_FAMILY


@lru_cache(maxsize=None)
def open_face(family, size, bold, italic):
    """One font file at one size; `size` is the height of the em square."""
    name = FAMILIES[family][(1 if bold else 0) + (2 if italic else 0)]
    drawn = max(1, (size * WIDE[1] + WIDE[0] // 2) // WIDE[0])
    try:
        return ImageFont.truetype(FOLDER + name + ".ttf", drawn,
                                  layout_engine=ImageFont.Layout.BASIC)
    except OSError as error:
        raise Fault(f"no font {FOLDER}{name}.ttf: is fonts-dejavu-extra installed?") from error


def em_of_cell(family, cell):
    """The em size whose characters are `cell` pixels high from the top of ascent to descent."""
    for size in range(min(cell, LARGEST), 1, -1):
        ascent, descent = open_face(family, size, False, False).getmetrics()
        if ascent + descent <= cell:
            return size
    return 1


class Font:
    """A typeface at a size. `height` as in LOGFONT: below zero the em square, above it the whole
    cell, 0 the system's size."""

    def __init__(self, face="", height=-SYSTEM_SIZE, bold=False, italic=False, underline=False):
        self.face = face or SYSTEM_FAMILY
        self.family = family_of(self.face)
        size = -height if height < 0 else em_of_cell(self.family, height) if height else SYSTEM_SIZE
        self.size = max(1, min(size, LARGEST))
        self.bold, self.italic, self.underline = bool(bold), bool(italic), bool(underline)
        self._face = open_face(self.family, self.size, self.bold, self.italic)
        self.ascent, self.descent = self._measure_height()
        self._advances = {}
        self._glyphs = {}

    def _measure_height(self):
        ascent, descent = self._face.getmetrics()
        return ascent, max(1, descent)

    @property
    def height(self):
        return self.ascent + self.descent

    @property
    def average_width(self):
        return (self.width(LETTERS) // 26 + 1) // 2

    def advance(self, character):
        """How far one character moves on, in pixels."""
        found = self._advances.get(character)
        if found is None:
            length = self._face.getlength(character, "1")
            found = 0 if ord(character) < 32 else max(1, round(length))
            self._advances[character] = found
        return found

    def width(self, text):
        return sum(map(self.advance, text))

    def advances(self, text):
        """Where each character ends, counted from the text's start."""
        ends, at = [], 0
        for character in text:
            at += self.advance(character)
            ends.append(at)
        return ends

    def glyph(self, character):
        """A character as (mask, pixels left of its origin); None for a blank one."""
        if character not in self._glyphs:
            self._glyphs[character] = self._draw(character)
        return self._glyphs[character]

    def _draw(self, character):
        if ord(character) <= 32:
            return None
        overhang = self.size // 2 + 1  # slanted letters stand out on both sides
        size = (self.advance(character) + 2 * overhang, self.height)
        mask = Image.new("1", size)
        pen = ImageDraw.Draw(mask)
        pen.fontmode = "1"
        pen.text((overhang, self.ascent), character, fill=1, font=self._face, anchor="ls")
        return mask, overhang


@lru_cache(maxsize=256)
def make_font(face="", height=-SYSTEM_SIZE, bold=False, italic=False, underline=False):
    """The font for these wishes, made once."""
    return Font(face, height, bold, italic, underline)


def wrap(text, font, width):
    """Text as lines no wider than `width`, broken at blanks, and inside words only where a word is
    alone too wide."""
    lines = []
    for paragraph in text.replace("\r\n", "\n").replace("\r", "\n").split("\n"):
        lines += wrap_paragraph(paragraph, font, width)
    return lines


def wrap_paragraph(paragraph, font, width):
    lines, line = [], ""
    for word in paragraph.split(" "):
        longer = word if not lines and not line else f"{line} {word}" if line else word
        if font.width(longer) <= width:
            line = longer
            continue
        if line:
            lines.append(line)
        while font.width(word) > width and len(word) > 1:
            fits = max(1, sum(1 for end in font.advances(word) if end <= width))
            lines.append(word[:fits])
            word = word[fits:]
        line = word
    return lines + [line]
