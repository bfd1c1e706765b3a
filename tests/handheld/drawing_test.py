"""Regions, surfaces and texts of the emulator, without a program."""

import random
import unittest

from handheld.emulator.controls.edit_text import EditText, broken
from handheld.emulator.fonts import make_font, wrap
from handheld.emulator.region import Region
from handheld.emulator.surface import Surface

SIDE = 12
BLACK, WHITE = (0, 0, 0), (255, 255, 255)


def pixels(region):
    """The set of pixels; the rectangles must not overlap."""
    found = [(x, y) for left, top, right, bottom in region.rects
             for x in range(left, right) for y in range(top, bottom)]
    assert len(found) == len(set(found)), region.rects
    return set(found)


def random_region(source):
    region = Region()
    for _ in range(source.randrange(4)):
        left, top = source.randrange(SIDE), source.randrange(SIDE)
        region = region.union(Region.of(left, top, left + source.randrange(6),
                                        top + source.randrange(6)))
    return region


class Regions(unittest.TestCase):
    def test_operations_are_those_of_sets(self):
        source = random.Random(1)
        for _ in range(300):
            a, b = random_region(source), random_region(source)
            self.assertEqual(pixels(a.union(b)), pixels(a) | pixels(b))
            self.assertEqual(pixels(a.intersect(b)), pixels(a) & pixels(b))
            self.assertEqual(pixels(a.subtract(b)), pixels(a) - pixels(b))
            self.assertEqual(a.area, len(pixels(a)))
            self.assertEqual(a.contains(5, 5), (5, 5) in pixels(a))


class Texts(unittest.TestCase):
    """What a surface remembers of the texts on it."""

    def setUp(self):
        self.surface, self.font = Surface(100, 60, WHITE), make_font()
        self.draw("follow", 10, 10)

    def draw(self, text, x, y, region=None):
        self.surface.draw_text(region or self.surface.region, x, y, text, self.font, BLACK,
                               self.font.advances(text))

    def shown(self):
        return ["".join(run.text for run in line) for line in self.surface.lines()]

    def test_they_go_when_more_than_half_is_painted_over(self):
        left, top, right, bottom = self.surface.texts[0].rect
        middle = (left + right) // 2
        self.surface.fill(Region.of(left, top, middle - 2, bottom), WHITE)
        self.assertEqual(self.shown(), ["follow"])
        self.surface.fill(Region.of(middle - 2, top, middle + 4, bottom), WHITE)
        self.assertEqual(self.shown(), [])

    def test_they_move_with_their_pixels(self):
        left, top, right, bottom = self.surface.texts[0].rect
        self.surface.copy(self.surface.region, 0, 40, self.surface, (0, 0, 100, 20))
        self.surface.fill(Region.of(0, 0, 100, 40), WHITE)
        self.assertEqual([text.rect for text in self.surface.texts],
                         [(left, top + 40, right, bottom + 40)])
        ink = self.surface.image.crop((left, top + 40, right, bottom + 40)).getcolors()
        self.assertEqual({colour for _, colour in ink}, {BLACK, WHITE})

    def test_runs_that_touch_are_one_line(self):
        self.draw(" a link", self.surface.texts[0].rect[2], 10)
        self.draw("below", 10, 30)
        self.assertEqual(self.shown(), ["follow a link", "below"])

    def test_clipping(self):
        self.draw("hidden", 10, 30, Region.of(0, 30, 15, 60))
        self.assertEqual(self.shown(), ["follow"])
        outside = self.surface.image.crop((15, 30, 100, 60)).getcolors()
        self.assertEqual([colour for _, colour in outside], [WHITE])


class Lines(unittest.TestCase):
    def test_broken_lines_fit_and_lose_nothing(self):
        font, source = make_font(), random.Random(2)
        for _ in range(100):
            text = "".join(source.choice("ab  mW.") for _ in range(source.randrange(60)))
            width = source.randrange(20, 120)
            for line in wrap(text, font, width):
                self.assertTrue(font.width(line) <= width or len(line) == 1, (line, width))
            self.assertEqual("".join(wrap(text, font, width)).replace(" ", ""),
                             text.replace(" ", ""))
            lines = broken(text, 0, len(text), font, width)
            self.assertEqual("".join(text[start:end] for start, end in lines), text)

    def test_edit_text_against_a_model(self):
        source = random.Random(3)
        text = EditText(multiline=True)
        text.limit = 20
        for _ in range(2000):
            before, (start, end) = text.text, text.selection
            way = source.randrange(5)
            if way == 0:
                put = source.choice(["a", "bc", "\r\n", "long words"])
                expected = before[:start] + put[:20 - len(before) + end - start] + before[end:]
                text.replace(put)
                self.assertEqual(text.text, expected)
            elif way == 1:
                text.select(source.randrange(-1, 22), source.randrange(-1, 22))
                self.assertLessEqual(text.selection[1], len(before))
            elif way == 2 and text.undo():
                self.assertTrue(text.undo())
                self.assertEqual(text.text, before)
            elif way == 3:
                position = text.step(text.caret, source.choice([-1, 1]))
                self.assertTrue(0 <= position <= len(before))
            elif way == 4 and start == end and text.erase_back():
                taken = 2 if before[max(0, start - 2):start] == "\r\n" else 1
                self.assertEqual(text.text, before[:start - taken] + before[start:])


if __name__ == "__main__":
    unittest.main()
