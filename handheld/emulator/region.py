"""Regions: sets of pixels as disjoint rectangles (left, top, right, bottom), right and bottom
excluded. Clipping, update regions and what is visible of a window are regions. They never change:
every operation makes a new one.
"""


def intersect_rects(a, b):
    """The common part of two rectangles, or None."""
    left, top = max(a[0], b[0]), max(a[1], b[1])
    right, bottom = min(a[2], b[2]), min(a[3], b[3])
    return (left, top, right, bottom) if left < right and top < bottom else None


def rect_minus(a, b):
    """The up to four rectangles of `a` that lie outside `b`."""
    common = intersect_rects(a, b)
    if common is None:
        return [a]
    parts = [
        (a[0], a[1], a[2], common[1]),
        (a[0], common[3], a[2], a[3]),
        (a[0], common[1], common[0], common[3]),
        (common[2], common[1], a[2], common[3]),
    ]
    return [part for part in parts if part[0] < part[2] and part[1] < part[3]]


class Region:
    """A set of pixels."""

    __slots__ = ("rects",)

    def __init__(self, rects=()):
        self.rects = tuple(rects)

    @staticmethod
    def of(left, top, right, bottom):
        """The region of one rectangle."""
        return Region([(left, top, right, bottom)]) if left < right and top < bottom else Region()

    @property
    def is_empty(self):
        return not self.rects

    @property
    def bounds(self):
        """The smallest rectangle around all of it; all zero when there is nothing."""
        if not self.rects:
            return (0, 0, 0, 0)
        return (min(r[0] for r in self.rects), min(r[1] for r in self.rects),
                max(r[2] for r in self.rects), max(r[3] for r in self.rects))

    @property
    def area(self):
        return sum((r[2] - r[0]) * (r[3] - r[1]) for r in self.rects)

    def contains(self, x, y):
        return any(r[0] <= x < r[2] and r[1] <= y < r[3] for r in self.rects)

    def intersect(self, other):
        """What is in both."""
        found = (intersect_rects(a, b) for a in self.rects for b in other.rects)
        return Region([rect for rect in found if rect is not None])

    def intersect_rect(self, rect):
        found = (intersect_rects(a, rect) for a in self.rects)
        return Region([common for common in found if common is not None])

    def subtract(self, other):
        """What is in this one alone."""
        rects = list(self.rects)
        for taken in other.rects:
            rects = [part for rect in rects for part in rect_minus(rect, taken)]
        return Region(rects)

    def union(self, other):
        """What is in either."""
        return Region(self.rects + other.subtract(self).rects) if self.rects else other

    def offset(self, x, y):
        return Region([(r[0] + x, r[1] + y, r[2] + x, r[3] + y) for r in self.rects])
