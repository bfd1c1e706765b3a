#include "pane/styles.h"

#include "pane/characters.h"

#include <Scintilla.h>
#include <cstring>

// The name of a control character that was asked for last.
static struct CharacterName { wchar_t text[5]; } name;

namespace {

constexpr int k_points_per_inch = 72;
constexpr int k_smallest_points = 1;
constexpr int k_first_size = 8;
constexpr wchar_t k_first_face[] = L"Verdana";

// What control characters are called, in four letters each.
constexpr char k_names[] = "NUL SOH STX ETX EOT ENQ ACK BEL BS  HT  LF  VT  FF  CR  SO  SI  "
                           "DLE DC1 DC2 DC3 DC4 NAK SYN ETB CAN EM  SUB ESC FS  GS  RS  US  ";
constexpr char k_names_from_80[] =
    "PAD HOP BPH NBH IND NEL SSA ESA HTS HTJ VTS PLD PLU RI  SS2 SS3 "
    "DCS PU1 PU2 STS CCH MW  SPA EPA SOS SGCISCI CSI ST  OSC PM  APC ";

constexpr char k_hex[] = "0123456789ABCDEF";

void copy_name(const char *names, uint32_t index) {
    uint32_t n = 0;
    while (n < 4 && names[index * 4 + n] != ' ') {
        name.text[n] = static_cast<wchar_t>(names[index * 4 + n]);
        ++n;
    }
    name.text[n] = 0;
}

LOGFONTW logical_font(const Style &style, int zoom, int pixels_per_inch) {
    LOGFONTW font = {};
    const int wanted = style.size + zoom;
    const int points = wanted > k_smallest_points ? wanted : k_smallest_points;
    font.lfHeight = -((points * pixels_per_inch + k_points_per_inch / 2) / k_points_per_inch);
    font.lfWeight = style.bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = style.italic ? 1 : 0;
    font.lfCharSet = DEFAULT_CHARSET;
    memcpy(font.lfFaceName, style.face, sizeof style.face);
    return font;
}

bool same_font(const Style &a, const Style &b) {
    return a.size == b.size && a.bold == b.bold && a.italic == b.italic &&
           wcscmp(a.face, b.face) == 0;
}

// The widths of all plain characters, from how far each of them ends.
void measure_ascii(HDC context, Font *font) {
    wchar_t text[k_ascii];
    INT ends[k_ascii] = {};
    for (uint32_t i = ' '; i < k_ascii; ++i) {
        text[i - ' '] = static_cast<wchar_t>(i);
    }
    SIZE size;
    INT fits = 0;
    GetTextExtentExPointW(context, text, static_cast<int>(k_ascii - ' '), 0x7FFF, &fits, ends,
                          &size);
    for (uint32_t i = 0; i < k_ascii - ' '; ++i) {
        font->ascii[i + ' '] = static_cast<uint16_t>(ends[i] - (i > 0 ? ends[i - 1] : 0));
    }
}

uint32_t text_width(HDC context, const wchar_t *text, int length) {
    SIZE size = {};
    INT fits = 0;
    GetTextExtentExPointW(context, text, length, 0x7FFF, &fits, nullptr, &size);
    return static_cast<uint32_t>(size.cx);
}

void make_font(Styles *look, uint32_t slot, HDC context) {
    Font *font = &look->fonts[look->font_count];
    const LOGFONTW wanted =
        logical_font(look->styles[slot], look->zoom, GetDeviceCaps(context, LOGPIXELSY));
    font->handle = CreateFontIndirectW(&wanted);
    HGDIOBJ before = SelectObject(context, font->handle);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    font->ascent = static_cast<int>(metrics.tmAscent);
    font->descent = static_cast<int>(metrics.tmDescent);
    measure_ascii(context, font);
    SelectObject(context, before);
    look->font_of[slot] = static_cast<uint8_t>(look->font_count++);
}

void choose_font(Styles *look, uint32_t slot, HDC context) {
    for (uint32_t other = k_style_slots; other-- > slot + 1;) {
        if (same_font(look->styles[slot], look->styles[other])) {
            look->font_of[slot] = look->font_of[other];
            return;
        }
    }
    make_font(look, slot, context);
}

uint32_t width_of_text(const Styles *look, uint32_t slot, const wchar_t *text, int length) {
    HDC context = GetDC(nullptr);
    HGDIOBJ before = SelectObject(context, style_font(look, slot)->handle);
    const uint32_t width = text_width(context, text, length);
    SelectObject(context, before);
    ReleaseDC(nullptr, context);
    return width;
}

uint32_t width_of_name(const Styles *look, uint32_t code) {
    const wchar_t *text = character_name(code);
    return width_of_text(look, k_default_slot, text, static_cast<int>(wcslen(text))) +
           k_name_borders;
}

uint32_t measure_wide(const Styles *look, uint32_t slot, uint32_t code) {
    if (*character_name(code) != 0) {
        return width_of_name(look, code);
    }
    wchar_t text[2] = {static_cast<wchar_t>(code), 0};
    if (code < 0x10000) {
        return width_of_text(look, slot, text, 1);
    }
    text[0] = static_cast<wchar_t>(0xD7C0 + (code >> 10));
    text[1] = static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
    return width_of_text(look, slot, text, 2);
}

uint32_t other_width(void *owner, uint32_t style, uint32_t code) {
    return character_width(static_cast<Styles *>(owner), style, code);
}

void measure_names(Styles *look) {
    for (uint32_t font = 0; font < look->font_count; ++font) {
        for (uint32_t code = 0; code < ' '; ++code) {
            look->fonts[font].ascii[code] = static_cast<uint16_t>(width_of_name(look, code));
        }
        look->fonts[font].ascii[0x7F] = static_cast<uint16_t>(width_of_name(look, 0x7F));
    }
}

void set_widths(Styles *look) {
    constexpr uint32_t k_tab_spaces = 8;
    for (uint32_t slot = 0; slot < k_measured_styles; ++slot) {
        look->widths.ascii[slot] = style_font(look, slot)->ascii;
    }
    look->widths.other = other_width;
    look->widths.owner = look;
    const uint32_t tab = style_font(look, k_default_slot)->ascii[' '] * k_tab_spaces;
    look->widths.tab = tab > 0 ? tab : 1;
}

void set_height(Styles *look) {
    int descent = 1;  // pixels, of the smallest fonts too
    look->ascent = 1;
    for (uint32_t font = 0; font < look->font_count; ++font) {
        const Font &one = look->fonts[font];
        look->ascent = one.ascent > look->ascent ? one.ascent : look->ascent;
        descent = one.descent > descent ? one.descent : descent;
    }
    look->line_height = look->ascent + descent;
}

}  // namespace

void styles_init(Styles *look) {
    for (Style &style : look->styles) {
        memcpy(style.face, k_first_face, sizeof k_first_face);
        style.size = k_first_size;
    }
}

void styles_free(Styles *look) {
    styles_changed(look);
}

uint32_t style_slot(uint32_t style) {
    return style == STYLE_DEFAULT ? k_default_slot : style < k_measured_styles ? style : 0;
}

void styles_clear_all(Styles *look) {
    for (uint32_t slot = 0; slot < k_measured_styles; ++slot) {
        look->styles[slot] = look->styles[k_default_slot];
    }
    styles_changed(look);
}

void styles_changed(Styles *look) {
    for (uint32_t font = 0; font < look->font_count; ++font) {
        DeleteObject(look->fonts[font].handle);
    }
    look->font_count = 0;
    memset(look->wide, 0, sizeof look->wide);
}

void styles_prepare(Styles *look) {
    if (look->font_count != 0) {
        return;
    }
    HDC context = GetDC(nullptr);
    for (uint32_t slot = k_style_slots; slot-- > 0;) {
        choose_font(look, slot, context);
    }
    ReleaseDC(nullptr, context);
    measure_names(look);
    set_widths(look);
    set_height(look);
}

const Font *style_font(const Styles *look, uint32_t slot) {
    return &look->fonts[look->font_of[slot]];
}

uint32_t character_width(Styles *look, uint32_t slot, uint32_t code) {
    const uint32_t key = (code ^ static_cast<uint32_t>(look->font_of[slot]) << 24) + 1;
    WideWidth *kept = &look->wide[(code ^ code >> 6) % k_wide_widths];
    if (kept->key != key) {
        *kept = {key, measure_wide(look, slot, code)};
    }
    return kept->width;
}

const wchar_t *character_name(uint32_t code) {
    if (code < ' ' || code == 0x7F) {
        copy_name(code == 0x7F ? "DEL " : k_names, code == 0x7F ? 0 : code);
    } else if (code >= 0x80 && code < 0xA0) {
        copy_name(k_names_from_80, code - 0x80);
    } else if (code == 0x2028 || code == 0x2029) {
        copy_name("LS  PS  ", code - 0x2028);
    } else if (code >= k_bad_byte) {
        name = {{L'x', static_cast<wchar_t>(k_hex[code >> 4 & 15]),
                 static_cast<wchar_t>(k_hex[code & 15]), 0, 0}};
    } else {
        name.text[0] = 0;
    }
    return name.text;
}
