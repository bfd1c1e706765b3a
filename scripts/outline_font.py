#!/usr/bin/env python3
"""outline_font.py FONT COPY: copies a TrueType font without its embedded bitmaps.

Wine draws the bitmaps of its Tahoma with other advances than it measures, so that carets and
selections stand beside the letters. Without them it draws the outlines that it measures.
"""
import struct
import sys

DROPPED = {b"EBDT", b"EBLC", b"EBSC", b"gasp"}  # gasp would switch the outlines' hinting off
HEADER, RECORD = 12, 16


def main():
    source, target = sys.argv[1:]
    with open(source, "rb") as file:
        font = file.read()
    count = struct.unpack_from(">H", font, 4)[0]
    tables = [struct.unpack_from(">4sLLL", font, HEADER + RECORD * i) for i in range(count)]
    tables = [table for table in tables if table[0] not in DROPPED]

    power = len(tables).bit_length() - 1
    search_range = RECORD << power
    directory = font[:4] + struct.pack(
        ">HHHH", len(tables), search_range, power, RECORD * len(tables) - search_range)
    offset = HEADER + RECORD * len(tables)
    body = b""
    for tag, checksum, start, length in tables:
        directory += struct.pack(">4sLLL", tag, checksum, offset + len(body), length)
        body += font[start:start + length] + bytes(-length % 4)
    with open(target, "wb") as file:
        file.write(directory + body)


main()
