// A pane: the window of class "Scintilla", what it shows and how.
#pragma once

#include <windows.h>

#include "pane/document.h"
#include "pane/wrap.h"

constexpr uint32_t k_no_line = 0xFFFFFFFF;

// ---- Styles and fonts ---------------------------------------------------------------------------

constexpr uint32_t k_style_slots = k_measured_styles + 1;
constexpr uint32_t k_default_slot = k_measured_styles;  // of STYLE_DEFAULT

struct Style {
    wchar_t face[LF_FACESIZE];
    int size;  // points
    COLORREF fore;
    bool bold;
    bool italic;
    bool hot_spot;
};

constexpr uint32_t k_ascii = 128;

// A font as it is on the screen, shared by the styles that look for the same one.
struct Font {
    HFONT handle;
    uint16_t ascii[k_ascii];  // widths; control characters are drawn as their names
    int ascent;
    int descent;
};

// Widths of characters beyond ASCII that were asked for lately.
struct WideWidth {
    uint32_t key;  // code point, and style slot in the highest bits
    uint32_t width;
};

constexpr uint32_t k_wide_widths = 64;

struct Styles {
    Style styles[k_style_slots];
    Font fonts[k_style_slots];
    uint8_t font_of[k_style_slots];
    uint32_t font_count;  // 0: they have to be made
    int zoom;             // points more
    int ascent;           // the largest
    int line_height;
    Widths widths;
    WideWidth wide[k_wide_widths];
};

// ---- Lines as they are broken -------------------------------------------------------------------

struct BrokenLine {
    uint32_t line;  // k_no_line: none
    Breaks breaks;
};

struct Layout {
    bool wrap;
    uint32_t dirty_from;  // lines that have to be broken anew
    uint32_t dirty_to;
    BrokenLine kept[2];  // the line asked for last, and the last one that is long
};

// ---- The whole ----------------------------------------------------------------------------------

struct CaretPolicy {
    int policy;  // CARET_...
    int slop;
};

constexpr uint32_t k_margins = 5;

struct View {
    uint32_t top;        // line of the screen at the top
    uint32_t top_start;  // where its line of the text begins
    int x_offset;        // pixels out of sight at the left
    int width;           // of the client area
    int height;
    int margins[k_margins];
    CaretPolicy policy;
    bool end_at_last_line;
    bool bar_hidden;  // the vertical one
    int wheel;        // turned, and not scrolled yet
};

enum class SelectBy : uint8_t { character, word, line };

struct Mouse {
    bool pressed;      // and the mouse captured
    bool on_selected;  // pressed on the selection, which may be dragged
    bool dragging;
    bool on_link;  // pressed on a hot spot
    bool clicked;  // there was a press, which the next one may make a double click of
    SelectBy by;
    POINT at;       // where the button was used last
    DWORD used_at;  // the tick then
    POINT now;
    uint32_t pressed_on;
    uint32_t from;  // the word there, or the line
    uint32_t to;
};

struct Pane {
    HWND window;
    Document document;
    uint32_t anchor;
    uint32_t caret;
    int wanted_x;  // where going up and down keeps to
    uint32_t target_start;
    uint32_t target_end;
    bool selection_hidden;
    bool over_type;
    bool focused;
    bool key_consumed;  // the last key that went down stands for no character
    bool caret_made;
    uint32_t notify_mask;
    COLORREF inactive_back;
    wchar_t high_surrogate;
    Styles look;
    Layout layout;
    View view;
    Mouse mouse;
    uint32_t cleared_keys[2];  // rows of the table of keys that do nothing, a bit each
};

inline const Gap *pane_text(const Pane *pane) {
    return &pane->document.text;
}

inline uint32_t pane_length(const Pane *pane) {
    return document_length(&pane->document);
}

inline uint32_t selection_start(const Pane *pane) {
    return pane->anchor < pane->caret ? pane->anchor : pane->caret;
}

inline uint32_t selection_end(const Pane *pane) {
    return pane->anchor < pane->caret ? pane->caret : pane->anchor;
}

inline bool selection_empty(const Pane *pane) {
    return pane->anchor == pane->caret;
}
