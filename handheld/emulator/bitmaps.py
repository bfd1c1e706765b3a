"""Bitmaps and icons from a program's resources, as pictures to draw.

Modelled: device-independent bitmaps of any depth without compression, strips of equal images with
one colour as transparent, icons and their masks.
"""

import io
import struct

from PIL import Image
from PIL.BmpImagePlugin import DibImageFile

from handheld.emulator.calls import export

RT_BITMAP, RT_ICON, RT_GROUP_ICON = 2, 3, 14
ICON_SIZE = 32


def load_bitmap(system, instance, name):
    """The bitmap resource as a picture, or None."""
    data = resource_bytes(system, instance, RT_BITMAP, name)
    return DibImageFile(io.BytesIO(data)).convert("RGB") if data else None


def resource_bytes(system, instance, kind, name):
    found = system.modules.resource(instance, kind, name)
    return system.memory.bytes(*found) if found else None


def load_strip(system, instance, name, width):
    """The images of a strip, each `width` wide, as (picture, mask) pairs. The colour of the first
    pixel is transparent."""
    strip = load_bitmap(system, instance, name)
    if strip is None:
        return []
    images = []
    for left in range(0, strip.width - width + 1, width):
        image = strip.crop((left, 0, left + width, strip.height))
        images.append((image, mask_of(image, strip.getpixel((0, 0)))))
    return images


def mask_of(image, transparent):
    """What of a picture is not of one colour."""
    return Image.frombytes("L", image.size,
                           bytes(0 if pixel == transparent else 255 for pixel in image.getdata()))


def load_icon(system, instance, name, size=ICON_SIZE):
    """The icon's picture that is nearest in size, as (picture, mask); None without one."""
    group = resource_bytes(system, instance, RT_GROUP_ICON, name)
    if not group:
        return None
    count = struct.unpack_from("<HHH", group)[2]
    entries = [struct.unpack_from("<BBBBHHIH", group, 6 + 14 * n) for n in range(count)]
    best = min(entries, key=lambda entry: (abs((entry[0] or 256) - size), -entry[5]))
    data = resource_bytes(system, instance, RT_ICON, best[7])
    return icon_picture(best, data)


def icon_picture(entry, data):
    """An icon file of one picture, made around it and read."""
    head = struct.pack("<HHH", 0, 1, 1) + struct.pack("<BBBBHHII", *entry[:6], len(data), 22)
    picture = Image.open(io.BytesIO(head + data)).convert("RGBA")
    return picture.convert("RGB"), picture.getchannel("A")


class Icon:
    """What LoadIconW gives."""

    kind = "icon"

    def __init__(self, picture, mask):
        self.picture, self.mask = picture, mask


@export("COREDLL", "LoadIconW", "instance resource")
def load_icon_call(system, instance, name):
    found = load_icon(system, instance, name)
    return system.gdi.table.add(Icon(*found)) if found else 0


@export("COREDLL", "LoadCursorW", "instance name")
def load_cursor(_system, _instance, name):
    """The device has a pen and shows no cursor: a handle that stands for it is all."""
    return 0x0C000000 | name & 0xFFFF


@export("COREDLL", "SetCursor", "cursor")
def set_cursor(system, cursor):
    before = system.screen.cursor
    system.screen.cursor = cursor
    return before
