"""Drawing and measuring text.

Modelled: ExtTextOutW with its rectangle, its own advances and alignment; DrawTextW with lines,
centring and word breaks; extents; metrics; the list of fonts. Not modelled: escapement, character
spacing, right-to-left scripts.
"""

from handheld.emulator.calls import export
from handheld.emulator.dc import (
    OPAQUE, TA_BASELINE, TA_BOTTOM, TA_CENTER, TA_RIGHT, TA_UPDATECP, without_mnemonic)
from handheld.emulator.fonts import FAMILIES, make_font, wrap
from handheld.emulator.gdi_objects import FontObject, font_record

ETO_OPAQUE, ETO_CLIPPED = 2, 4
DT_CENTER, DT_RIGHT, DT_VCENTER, DT_BOTTOM = 1, 2, 4, 8
DT_WORDBREAK, DT_SINGLELINE, DT_EXPANDTABS = 0x10, 0x20, 0x40
DT_NOCLIP, DT_CALCRECT, DT_NOPREFIX = 0x100, 0x400, 0x800
TRUETYPE_FONTTYPE = 4
VARIABLE_PITCH_BIT = 1
ANSI_CHARSET = 0
WHOLE_TEXT = -1


@export("COREDLL", "ExtTextOutW", "dc x y options rect string count advances")
def ext_text_out(system, dc, x, y, options, rect, string, count, advances):
    context = system.gdi.dc(dc)
    box = system.memory.struct(rect, "<4i") if rect else None
    if box and options & ETO_OPAQUE:
        context.fill(box, context.back_colour)
    text = system.memory.text(string, count) if string and count else ""
    if text:
        ends = own_ends(system, advances, text) if advances else context.font.font.advances(text)
        put_line(context, x, y, text, ends, box if options & ETO_CLIPPED else None,
                 covered=bool(box and options & ETO_OPAQUE))
    return 1


def own_ends(system, advances, string):
    """Where each character ends by the advances that the program gives."""
    ends, at = [], 0
    for advance in system.memory.struct(advances, f"<{len(string)}i"):
        at += advance
        ends.append(at)
    return ends


def put_line(context, x, y, string, ends, box, covered):
    """One line by the context's alignment."""
    font = context.font.font
    width = ends[-1]
    if context.align & TA_UPDATECP:
        x, y = context.position
        context.position = (x + width, y)
    if context.align & TA_CENTER == TA_CENTER:
        x -= width // 2
    elif context.align & TA_RIGHT:
        x -= width
    if context.align & TA_BASELINE == TA_BASELINE:
        y -= font.ascent
    elif context.align & TA_BOTTOM:
        y -= font.height
    if context.back_mode == OPAQUE and not covered:
        cell = (x, y, x + width, y + font.height)
        context.surface.fill(clip_of(context, box).intersect_rect(context.rect(cell)),
                             context.back_colour)
    context.surface.draw_text(clip_of(context, box), *context.point(x, y), string, font,
                              context.text_colour, ends)


def clip_of(context, box):
    return context.clip if box is None else context.area(box)


@export("COREDLL", "DrawTextW", "dc string count rect flags")
def draw_text(system, dc, string, count, rect, flags):
    context = system.gdi.dc(dc)
    box = system.memory.struct(rect, "<4i")
    text = system.memory.text(string, None if count == WHOLE_TEXT else count)
    lines = text_lines(text, context.font.font, box[2] - box[0], flags)
    if flags & DT_CALCRECT:
        width = max(map(context.font.font.width, lines), default=0)
        height = len(lines) * context.font.font.height
        system.memory.put(rect, "<4i", box[0], box[1], box[0] + width, box[1] + height)
        return height
    return draw_lines(context, lines, box, flags, context.text_colour)


def text_lines(string, font, width, flags):
    """The lines that DrawTextW makes of a string."""
    if not flags & DT_NOPREFIX:
        string = without_mnemonic(string)
    if flags & DT_EXPANDTABS:
        string = string.replace("\t", " " * 8)
    if flags & DT_SINGLELINE:
        return [string.replace("\r", " ").replace("\n", " ")]
    if flags & DT_WORDBREAK:
        return wrap(string, font, max(1, width))
    return string.replace("\r\n", "\n").split("\n")


def draw_lines(context, lines, box, flags, colour, font=None):
    """Lines into a rectangle; their height altogether."""
    font = font or context.font.font
    height = len(lines) * font.height
    y = box[1]
    if flags & DT_SINGLELINE and flags & DT_VCENTER:
        y = (box[1] + box[3] - height) // 2
    elif flags & DT_SINGLELINE and flags & DT_BOTTOM:
        y = box[3] - height
    for line in lines:
        width = font.width(line)
        x = box[0]
        if flags & DT_CENTER:
            x = (box[0] + box[2] - width) // 2
        elif flags & DT_RIGHT:
            x = box[2] - width
        context.text(x, y, line, font, colour, None if flags & DT_NOCLIP else box)
        y += font.height
    return height


# ---- Measuring ----

@export("COREDLL", "GetTextExtentExPointW", "dc string count int fit advances size")
def get_text_extent(system, dc, string, count, most, fit, advances, size):
    """`most` counts as limit only where `fit` asks how many characters keep it."""
    font = system.gdi.dc(dc).font.font
    ends = font.advances(system.memory.text(string, count)) if count else []
    if fit:
        inside = [end for end in ends if end <= most]
        system.memory.set_u32(fit, len(inside))
    else:
        inside = ends
    if advances and inside:
        system.memory.put(advances, f"<{len(inside)}i", *inside)
    system.memory.put(size, "<ii", ends[-1] if ends else 0, font.height)
    return 1


@export("COREDLL", "GetTextMetricsW", "dc metrics")
def get_text_metrics(system, dc, metrics):
    system.memory.put_bytes(metrics, text_metrics(system.gdi.dc(dc).font.font))
    return 1


def text_metrics(font):
    """The bytes of a TEXTMETRICW."""
    widest = font.advance("W")
    numbers = (font.height, font.ascent, font.descent, font.height - font.size, 0,
               font.average_width, widest, 700 if font.bold else 400, 0, 96, 96)
    record = b"".join(number.to_bytes(4, "little", signed=True) for number in numbers)
    for character in " \uffff\ufffd ":  # first, last, default, break
        record += ord(character).to_bytes(2, "little")
    fixed = font.family == "Courier New"
    return record + bytes([font.italic, font.underline, 0,
                           0 if fixed else VARIABLE_PITCH_BIT, ANSI_CHARSET, 0, 0, 0])


@export("COREDLL", "GetTextFaceW", "dc size buffer")
def get_text_face(system, dc, size, buffer):
    face = system.gdi.dc(dc).font.font.face
    if buffer and size:
        system.memory.put_text(buffer, face, size)
    return len(face) + 1


@export("COREDLL", "SetTextAlign", "dc align")
def set_text_align(system, dc, align):
    context = system.gdi.dc(dc)
    before, context.align = context.align, align
    return before


@export("COREDLL", "GetTextAlign", "dc")
def get_text_align(system, dc):
    return system.gdi.dc(dc).align


# ---- The list of fonts ----

@export("COREDLL", "EnumFontFamiliesW", "dc text procedure parameter")
def enum_font_families(system, _dc, family, procedure, parameter):
    """Calls the program for each family, or for the one asked for, until it answers 0."""
    names = [name for name in FAMILIES if family is None or name.lower() == family.lower()]
    record = system.memory.alloc(512)
    result = 1
    for name in names:
        font = make_font(name, -12)
        logical = font_record(FontObject(font))
        system.memory.put_bytes(record, logical + bytes(256 - len(logical)))
        system.memory.put_bytes(record + 256, text_metrics(font))
        result = system.machine.call(procedure, record, record + 256, TRUETYPE_FONTTYPE, parameter)
        if result == 0:
            break
    system.memory.free(record)
    return result


