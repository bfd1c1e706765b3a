#include "shell/panes/styles.h"

#include "core/host_view.h"
#include "core/names.h"
#include "shell/panes/cellnames.h"
#include "shell/panes/input.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/wrapping.h"
#include "web/cells.h"
#include "web/options.h"

#include <cstring>

namespace {

constexpr COLORREF k_text_colour = RGB(0, 0, 0);
constexpr COLORREF k_link_colours[] = {RGB(197, 18, 27), RGB(43, 155, 34), RGB(24, 35, 105)};

// Of a match while the search bar has the focus: light enough for black text.
constexpr LPARAM k_inactive_selection = static_cast<LPARAM>(0xFFC8C8C8);  // with its opacity

constexpr LRESULT k_lexer_container = 0;
constexpr LRESULT k_style_bits = 7;
constexpr LRESULT k_margin = 1;
constexpr LRESULT k_margin_width = 2;
constexpr LRESULT k_smallest_size = 12;  // points, for a size that rounds to nothing

bool is_shown(HWND pane) {
    RECT client = {};
    GetClientRect(pane, &client);
    return client.right > 0;
}

void configure(HWND pane, LRESULT caret_policy, LRESULT caret_slop) {
    sci(pane, SCI_SETCODEPAGE, SC_CP_UTF8);
    // Only changes of the text are of interest.
    sci(pane, SCI_SETMODEVENTMASK, SC_MOD_INSERTTEXT | SC_MOD_DELETETEXT);
    sci(pane, SCI_SETWRAPMODE, SC_WRAP_WORD);
    if (!is_shown(pane)) {
        pane_collapsing(pane);
    }
    sci(pane, k_sci_set_lexer, k_lexer_container);
    sci(pane, k_sci_set_style_bits, k_style_bits);
    sci(pane, SCI_SETYCARETPOLICY, caret_policy, caret_slop);
    sci(pane, SCI_SETELEMENTCOLOUR, SC_ELEMENT_SELECTION_INACTIVE_BACK, k_inactive_selection);
}

void set_style(HWND pane, LRESULT style, COLORREF colour, bool bold) {
    const LRESULT size = (option_font_size() + 5) / 10;
    sci(pane, SCI_STYLESETFORE, style, static_cast<LPARAM>(colour));
    sci(pane, SCI_STYLESETSIZE, style, size != 0 ? size : k_smallest_size);
    if (option_font_name()[0] != 0) {
        sci_text(pane, SCI_STYLESETFONT, style, option_font_name());
    }
    sci(pane, SCI_STYLESETBOLD, style, static_cast<LPARAM>(bold));
    sci(pane, SCI_STYLESETITALIC, style,
        static_cast<LPARAM>((option_font_style() & k_font_italic) != 0));
}

bool is_ascii_word_byte(char c) {
    return is_letter(c) || is_digit(c) || c == '_';
}

// Where the word that begins at `at` ends. Scintilla decides where other than ASCII is concerned.
LRESULT word_end(HWND pane, const char *text, LRESULT at, LRESULT length) {
    LRESULT end = at;
    while (end < length && is_ascii_word_byte(text[end])) {
        ++end;
    }
    if (end < length && static_cast<uint8_t>(text[end]) >= 0x80) {
        end = sci(pane, SCI_WORDENDPOSITION, at, 1);
    }
    return end;
}

bool names_cell(const char *word, uint32_t length) {
    if (length > k_cellname_max || !is_letter(*word)) {
        return false;
    }
    char name[k_cellname_max + 1];
    memcpy(name, word, length);
    name[length] = 0;
    return cell_lookup(name) != 0;
}

// Styling begins with a whole word: what was typed may have made one of two, or two of one.
LRESULT styling_start(HWND pane) {
    const LRESULT styled = sci(pane, SCI_GETENDSTYLED);
    return sci(pane, SCI_WORDSTARTPOSITION, styled, 1);
}

}  // namespace

void configure_text_pane() {
    configure(text_pane(), CARET_SLOP, 1);
    sci(text_pane(), SCI_SETMARGINWIDTHN, k_margin, k_margin_width);
    sci_text(text_pane(), SCI_SETKEYWORDS, k_cellname_keywords, cellnames_list());
    apply_pane_styles(text_pane());
}

void configure_console_pane() {
    configure(console_pane(), CARET_STRICT | CARET_EVEN, 0);
    sci(console_pane(), SCI_SETENDATLASTLINE, 0);
    sci(console_pane(), SCI_SETMARGINWIDTHN, k_margin, k_margin_width);
    sci_text(console_pane(), SCI_SETKEYWORDS, k_cellname_keywords, cellnames_list());
    apply_pane_styles(console_pane());
}

void configure_panes() {
    configure_text_pane();
    configure_console_pane();
}

COLORREF link_colour(int option) {
    return option >= 0 && option < 3 ? k_link_colours[option] : k_text_colour;
}

void apply_pane_styles(HWND pane) {
    const bool bold = (option_font_style() & k_font_bold) != 0;
    set_style(pane, STYLE_DEFAULT, k_text_colour, bold);
    sci(pane, SCI_STYLECLEARALL);
    set_style(pane, k_style_text, k_text_colour, bold);
    set_style(pane, k_style_unassigned, k_text_colour, bold);
    set_style(pane, k_style_link, link_colour(option_link_colour()), true);
    sci(pane, SCI_STYLESETHOTSPOT, k_style_link, 1);
}

void style_pane(HWND pane, LRESULT end) {
    const char *text = reinterpret_cast<const char *>(sci(pane, SCI_GETCHARACTERPOINTER));
    const LRESULT length = sci(pane, SCI_GETTEXTLENGTH);
    LRESULT at = styling_start(pane);
    LRESULT plain_from = at;
    sci(pane, SCI_STARTSTYLING, at);
    while (at < length && at < end) {
        const bool word = is_ascii_word_byte(text[at]) || static_cast<uint8_t>(text[at]) >= 0x80;
        const LRESULT next = word ? word_end(pane, text, at, length) : at + 1;
        if (word && next > at && names_cell(text + at, static_cast<uint32_t>(next - at))) {
            sci(pane, SCI_SETSTYLING, at - plain_from, k_style_text);
            sci(pane, SCI_SETSTYLING, next - at, k_style_link);
            plain_from = next;
        }
        at = next > at ? next : at + 1;
    }
    sci(pane, SCI_SETSTYLING, at - plain_from, k_style_text);
}

void refresh_cellname_list() {
    const bool changed = cellnames_rebuild();
    HWND panes[] = {text_pane(), console_pane()};
    for (HWND pane : panes) {
        sci_text(pane, SCI_SETKEYWORDS, k_cellname_keywords, cellnames_list());
        if (changed) {
            // All styles are void, and are made again as far down as the pane is drawn: a long text
            // would hold the tick up.
            sci(pane, SCI_COLOURISE, 0, 0);
        }
    }
}

// Text that has changed since is styled as it is drawn.
void restyle_panes() {
    refresh_cellname_list();
    show_hidden_selection();
}
