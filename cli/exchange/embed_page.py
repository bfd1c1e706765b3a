#!/usr/bin/env python3
"""Writes the style and the script of an exported page as a source, with the digests by which the
page's policy knows them: embed_page.py STYLE SCRIPT OUT"""

import base64
import hashlib
import pathlib
import sys

STEP = 1000  # characters of a literal; a compiler may take no more than 65,535


def literal(text):
    """The text as string literals, one behind the other."""
    pieces = [text[at:at + STEP] for at in range(0, len(text), STEP)]
    return "\n    ".join(f'R"~~({piece})~~"' for piece in pieces)


def embedded(name, path):
    text = pathlib.Path(path).read_text(encoding="ascii")
    digest = base64.b64encode(hashlib.sha256(text.encode("ascii")).digest()).decode("ascii")
    return (f'extern const std::string_view k_page_{name} =\n    {literal(text)};\n'
            f'extern const std::string_view k_page_{name}_digest = "sha256-{digest}";\n')


def main(style, script, out):
    source = '#include "cli/exchange/page_sources.h"\n\n'
    source += embedded("style", style) + "\n" + embedded("script", script)
    pathlib.Path(out).write_text(source, encoding="ascii", newline="\n")


main(*sys.argv[1:])
