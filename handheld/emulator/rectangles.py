"""Arithmetic on RECT structures."""

from handheld.emulator.calls import export
from handheld.emulator.region import intersect_rects

RECT = "<4i"
EMPTY = (0, 0, 0, 0)


def read(system, address):
    return system.memory.struct(address, RECT)


def write(system, address, rect):
    """Also says whether anything is in it."""
    system.memory.put(address, RECT, *rect)
    return rect[0] < rect[2] and rect[1] < rect[3]


def is_empty(rect):
    return rect[0] >= rect[2] or rect[1] >= rect[3]


@export("COREDLL", "SetRect", "rect left top right bottom")
def set_rect(system, rect, *edges):
    write(system, rect, edges)
    return True


@export("COREDLL", "SetRectEmpty", "rect")
def set_rect_empty(system, rect):
    write(system, rect, EMPTY)
    return True


@export("COREDLL", "CopyRect", "target source")
def copy_rect(system, target, source):
    write(system, target, read(system, source))
    return True


@export("COREDLL", "InflateRect", "rect dx dy")
def inflate_rect(system, rect, dx, dy):
    left, top, right, bottom = read(system, rect)
    write(system, rect, (left - dx, top - dy, right + dx, bottom + dy))
    return True


@export("COREDLL", "OffsetRect", "rect dx dy")
def offset_rect(system, rect, dx, dy):
    left, top, right, bottom = read(system, rect)
    write(system, rect, (left + dx, top + dy, right + dx, bottom + dy))
    return True


@export("COREDLL", "IntersectRect", "target first second")
def intersect_rect(system, target, first, second):
    common = intersect_rects(read(system, first), read(system, second))
    return write(system, target, common or EMPTY)


@export("COREDLL", "UnionRect", "target first second")
def union_rect(system, target, first, second):
    rects = [rect for rect in (read(system, first), read(system, second)) if not is_empty(rect)]
    if not rects:
        return write(system, target, EMPTY)
    lefts, tops, rights, bottoms = zip(*rects)
    return write(system, target, (min(lefts), min(tops), max(rights), max(bottoms)))


@export("COREDLL", "IsRectEmpty", "rect")
def is_rect_empty(system, rect):
    return is_empty(read(system, rect))


@export("COREDLL", "EqualRect", "first second")
def equal_rect(system, first, second):
    return read(system, first) == read(system, second)


@export("COREDLL", "PtInRect", "rect x y")
def point_in_rect(system, rect, x, y):
    left, top, right, bottom = read(system, rect)
    return left <= x < right and top <= y < bottom
