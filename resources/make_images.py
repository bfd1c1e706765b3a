#!/usr/bin/env python3
"""Makes the program's bitmap and icon out of their readable sources.

    make_images.py bitmap SOURCE.txt OUTPUT.bmp
    make_images.py icon OUTPUT.ico PNG...
    make_images.py plain_icon OUTPUT.ico PNG...

The bitmap has 16 colours, because only such a one follows the system's colours on a bar. The icon
keeps its images as PNG, which takes a fraction of plain bitmaps; a plain one, for systems that know
nothing else, has bitmaps of 16 colours, transparent where the picture is less than half there.
"""

import collections
import itertools
import struct
import sys
import zlib

IMAGE_WIDTH = 16
IMAGE_HEIGHT = 15


def read_images(path):
    """Returns ({letter: (red, green, blue)}, [rows of one image, ...])."""
    colours, images = {}, []
    with open(path, encoding="ascii") as source:
        for number, line in enumerate(source, 1):
            words = line.split()
            if line.startswith("image "):
                images.append([])
            elif line.startswith("colour "):
                colours[words[1]] = bytes.fromhex(words[2])
            elif images and words:
                row = line.rstrip("\n")
                if len(row) != IMAGE_WIDTH or not set(row) <= set(colours):
                    sys.exit(f"{path}:{number}: not a row of {IMAGE_WIDTH} known colours")
                images[-1].append(row)
    if len(colours) > 16 or any(len(rows) != IMAGE_HEIGHT for rows in images):
        sys.exit(f"{path}: an image has not {IMAGE_HEIGHT} rows, or there are over 16 colours")
    return colours, images


def make_bitmap(source, output):
    colours, images = read_images(source)
    index = {letter: number for number, letter in enumerate(colours)}
    width = IMAGE_WIDTH * len(images)
    rows = []
    for y in reversed(range(IMAGE_HEIGHT)):
        pixels = [index[letter] for rows_of_one in images for letter in rows_of_one[y]]
        row = bytes(high << 4 | low for high, low in zip(pixels[::2], pixels[1::2]))
        rows.append(row + bytes(-len(row) % 4))
    palette = b"".join(bytes((*reversed(rgb), 0)) for rgb in colours.values()).ljust(64, b"\0")
    data = b"".join(rows)
    offset = 14 + 40 + len(palette)
    with open(output, "wb") as file:
        file.write(struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset))
        file.write(struct.pack("<IiiHHIIiiII", 40, width, IMAGE_HEIGHT, 1, 4, 0, len(data),
                               0, 0, 16, 0))
        file.write(palette + data)


def read_png(data):
    """Returns (size, rows of RGBA bytes, top first) of a square PNG with 8 bits a channel."""
    position, packed = 8, b""
    while position < len(data):
        length, kind = struct.unpack_from(">I4s", data, position)
        body = data[position + 8:position + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", body)
            if (width, depth, colour, interlace) != (height, 8, 6, 0):
                sys.exit("an icon image is a square PNG with red, green, blue and alpha")
        elif kind == b"IDAT":
            packed += body
        position += 12 + length
    raw, stride = zlib.decompress(packed), width * 4
    rows, above = [], bytes(stride)
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:][:stride])
        for x in range(stride):
            left = line[x - 4] if x >= 4 else 0
            corner = above[x - 4] if x >= 4 else 0
            line[x] = (line[x] + predict(kind, left, above[x], corner)) & 0xFF
        rows.append(bytes(line))
        above = line
    return width, rows


def predict(kind, left, up, corner):
    """The five row filters of PNG."""
    if kind == 4:
        guess = left + up - corner
        return min((left, up, corner), key=lambda value: abs(guess - value))
    return (0, left, up, (left + up) // 2)[kind]


def png_chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def few_colours(rows):
    """The same picture in its 16 most frequent colours. Only the soft edges have any others."""
    pixels = [[row[x:x + 4] for x in range(0, len(row), 4)] for row in rows]
    counts = collections.Counter(itertools.chain(*pixels))
    kept = [colour for colour, _ in counts.most_common(16)]
    nearest = {colour: min(kept, key=lambda other: sum((a - b) ** 2 for a, b in zip(colour, other)))
               for colour in counts}
    return [b"".join(map(nearest.get, row)) for row in pixels]


def deflate(raw):
    """By the strategy that takes the fewest bytes."""
    packed = []
    for strategy in (zlib.Z_DEFAULT_STRATEGY, zlib.Z_FILTERED, zlib.Z_RLE, zlib.Z_FIXED):
        packer = zlib.compressobj(9, zlib.DEFLATED, zlib.MAX_WBITS, 9, strategy)
        packed.append(packer.compress(raw) + packer.flush())
    return min(packed, key=len)


def small_png(size, rows):
    raw = b"".join(b"\0" + row for row in rows)
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + png_chunk(b"IHDR", header) +
            png_chunk(b"IDAT", deflate(raw)) + png_chunk(b"IEND", b""))


def bits_of(rows):
    """Rows of true and false as a bitmap's mask, bottom first, each row padded to whole words."""
    data = b""
    for row in reversed(rows):
        bits = "".join("1" if one else "0" for one in row).ljust((len(row) + 31) // 32 * 32, "0")
        data += int(bits, 2).to_bytes(len(bits) // 8, "big")
    return data


def plain_bitmap(size, rows):
    """The picture as a bitmap of 16 colours, the first of which is black, and the mask of what is not
    there, where it is black."""
    pixels = [[row[x:x + 4] for x in range(0, len(row), 4)] for row in rows]
    clear = [[pixel[3] < 128 for pixel in row] for row in pixels]
    colours = sorted({pixel[:3] for row in pixels for pixel in row if pixel[3] >= 128})
    index = {colour: number for number, colour in enumerate(colours, 1)}
    if len(colours) > 15:
        sys.exit("an icon image has at most 15 colours")
    palette = bytes(4) + b"".join(bytes((*reversed(colour), 0)) for colour in colours)
    body = b""
    for row, holes in zip(reversed(pixels), reversed(clear)):
        places = [0 if gone else index[pixel[:3]] for pixel, gone in zip(row, holes)]
        line = bytes(high << 4 | low for high, low in zip(places[::2], places[1::2]))
        body += line + bytes(-len(line) % 4)
    mask = bits_of(clear)
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 4, 0, len(body) + len(mask), 0, 0,
                         16, 0)
    return header + palette.ljust(64, b"\0") + body + mask


# (what makes an image, the bits a pixel that the directory states)
IMAGE_KINDS = {"icon": (small_png, 32), "plain_icon": (plain_bitmap, 4)}


def make_icon(kind, output, sources):
    make_image, depth = IMAGE_KINDS[kind]
    images = []
    for source in sources:
        with open(source, "rb") as file:
            size, rows = read_png(file.read())
        images.append((size, make_image(size, few_colours(rows))))
    offset = 6 + 16 * len(images)
    with open(output, "wb") as file:
        file.write(struct.pack("<HHH", 0, 1, len(images)))
        for size, data in images:
            file.write(struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, depth, len(data),
                                   offset))
            offset += len(data)
        for _, data in images:
            file.write(data)


def main(arguments):
    if len(arguments) == 3 and arguments[0] == "bitmap":
        make_bitmap(arguments[1], arguments[2])
    elif len(arguments) > 2 and arguments[0] in IMAGE_KINDS:
        make_icon(*arguments[:2], arguments[2:])
    else:
        sys.exit(__doc__)


main(sys.argv[1:])
