// Drives a pane of any SciLexer.dll with random messages, keys and clicks and prints, after each
// step, all that can be asked of it. Two components that print the same behave alike.
//
//     pane_trace DLL SEED STEPS
//
// The steps depend on the seed and on the pane's answers alone. What is printed while a step is
// taken is a notification.
#include <windows.h>

#include <Scintilla.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int k_width = 240;
constexpr int k_height = 200;
constexpr uint32_t k_burst = 25;       // steps between looks at everything
constexpr LRESULT k_text_most = 3000;  // bytes, about
constexpr LONG k_text_left = 3;
constexpr LRESULT k_far = 10000;  // beyond the end of any row
constexpr UINT k_pane_id = 85;
constexpr char k_changed[] = " [2008 ";  // SCN_MODIFIED, as it is told

struct Trace {
    HWND frame;
    HWND pane;
    uint64_t random;
    POINT clicked;     // last
    std::string told;  // notifications of the step
};

Trace trace;

uint32_t draw(uint32_t limit) {
    trace.random = trace.random * 6364136223846793005U + 1442695040888963407U;
    return static_cast<uint32_t>(trace.random >> 33) % limit;
}

LRESULT sci(UINT message, LRESULT wparam = 0, LPARAM lparam = 0) {
    return SendMessageW(trace.pane, message, static_cast<WPARAM>(wparam), lparam);
}

LRESULT sci_text(UINT message, LRESULT wparam, const std::string &text) {
    return sci(message, wparam, reinterpret_cast<LPARAM>(text.c_str()));
}

LRESULT length() {
    return sci(SCI_GETLENGTH);
}

uint32_t hash(const char *bytes, size_t count) {
    uint32_t h = 2166136261U;
    for (size_t i = 0; i < count; ++i) {
        h = (h ^ static_cast<uint8_t>(bytes[i])) * 16777619U;
    }
    return h;
}

std::string text() {
    const auto *bytes = reinterpret_cast<const char *>(sci(SCI_GETCHARACTERPOINTER));
    return {bytes, static_cast<size_t>(length())};
}

// ---- What the parent hears ----------------------------------------------------------------------

// As the program styles: whole words, some of them links. Not from within a character, where a word
// would be taken to begin.
void style_up_to(LRESULT end) {
    const LRESULT styled = sci(SCI_POSITIONBEFORE, sci(SCI_POSITIONAFTER, sci(SCI_GETENDSTYLED)));
    LRESULT at = sci(SCI_WORDSTARTPOSITION, styled, 1);
    sci(SCI_STARTSTYLING, at);
    const std::string bytes = text();
    while (at < end && at < static_cast<LRESULT>(bytes.size())) {
        const LRESULT word = sci(SCI_WORDENDPOSITION, at, 1);
        const LRESULT next = word > at ? word : at + 1;
        const bool link = word > at && (bytes[static_cast<size_t>(at)] & 3) == 1;
        sci(SCI_SETSTYLING, next - at, link ? 2 : 0);
        at = next;
    }
}

void tell(const SCNotification *event) {
    char line[200];
    const size_t count = event->text != nullptr ? static_cast<size_t>(event->length) : 0;
    snprintf(line, sizeof line, " [%u %lld %d %d %x %lld %lld %lld %x]", event->nmhdr.code,
             static_cast<long long>(event->position), event->ch, event->modifiers,
             static_cast<unsigned>(event->modificationType), static_cast<long long>(event->length),
             static_cast<long long>(event->linesAdded),
             static_cast<long long>(event->line < sci(SCI_GETLINECOUNT) ? event->line : -1),
             hash(event->text, count));
    trace.told += line;
}

// Those that the program takes notice of, and those about the text.
bool is_of_interest(UINT code) {
    switch (code) {
    case SCN_CHARADDED:
    case SCN_SAVEPOINTREACHED:
    case SCN_SAVEPOINTLEFT:
    case SCN_DOUBLECLICK:
    case SCN_MODIFIED:
    case SCN_ZOOM:
    case SCN_HOTSPOTCLICK:
    case SCN_HOTSPOTDOUBLECLICK:
        return true;
    default:
        return false;
    }
}

void on_notify(const SCNotification *event) {
    if (event->nmhdr.code == SCN_STYLENEEDED) {
        style_up_to(event->position);
    } else if (is_of_interest(event->nmhdr.code)) {
        tell(event);
    }
}

LRESULT CALLBACK frame_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NOTIFY) {
        on_notify(reinterpret_cast<const SCNotification *>(lparam));
        return 0;
    }
    if (message == WM_COMMAND) {
        trace.told += " <" + std::to_string(HIWORD(wparam)) + ">";
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

// Draws, has all lines broken and all text styled, so that no answer depends on when that happens.
void pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        DispatchMessageW(&message);
    }
}

void settle() {
    UpdateWindow(trace.pane);
    pump();
    if (sci(SCI_GETENDSTYLED) < length()) {
        style_up_to(length());
    }
    sci(SCI_ENSUREVISIBLE, sci(SCI_GETLINECOUNT) - 1);
    UpdateWindow(trace.pane);
}

POINT client_size() {
    RECT client = {};
    GetClientRect(trace.pane, &client);
    return {client.right, client.bottom};
}

POINT pane_size() {
    RECT window = {};
    GetWindowRect(trace.pane, &window);
    return {window.right - window.left, window.bottom - window.top};
}

// ---- What is done -------------------------------------------------------------------------------

// In front of a character, as the program has them too.
LRESULT position() {
    const LRESULT drawn = draw(static_cast<uint32_t>(length()) + 1);
    return drawn > 0 ? sci(SCI_POSITIONAFTER, drawn - 1) : 0;
}

std::string random_text(uint32_t pieces) {
    static const char *const k_pieces[] = {
        "a",
        "word",
        "plan ",
        " ",
        "   ",
        "\r\n",
        "\r\n\r\n",
        "\t",
        ". ",
        "x_1",
        "-",
        "\xC3\xA9",
        "\xE2\x82\xAC",
        "quite some words here ",
        "home",
        "1234",
        "(in)",
        "\xE2\x80\x9C",
        "anotherverylongwordthatdoesnotfitonalineatall",
        "i",
        "\xF0\x9F\x98\x80",
        "\xFF",
        "e ",
        "\n",
        "\xCC\x81",
    };
    std::string made;
    while (pieces-- > 0) {
        made += k_pieces[draw(sizeof k_pieces / sizeof k_pieces[0])];
    }
    return made;
}

void hold(uint32_t modifiers) {
    BYTE keys[256] = {};
    keys[VK_SHIFT] = static_cast<BYTE>((modifiers & SCMOD_SHIFT) != 0 ? 0x80 : 0);
    keys[VK_CONTROL] = static_cast<BYTE>((modifiers & SCMOD_CTRL) != 0 ? 0x80 : 0);
    SetKeyboardState(keys);
}

void press(WPARAM key, uint32_t modifiers) {
    trace.told += " key " + std::to_string(key) + "/" + std::to_string(modifiers);
    hold(modifiers);
    SendMessageW(trace.pane, WM_KEYDOWN, key, 0);
    SendMessageW(trace.pane, WM_KEYUP, key, 0);
    hold(0);
}

void set_text() {
    sci_text(SCI_SETTEXT, 0, random_text(draw(4) == 0 ? 200 + draw(200) : draw(60)));
    if (draw(2) == 0) {
        sci(SCI_EMPTYUNDOBUFFER);
        sci(SCI_SETSAVEPOINT);
    }
}

void insert_text() {
    sci_text(SCI_INSERTTEXT, position(), random_text(1 + draw(6)));
}

// A selection that is pushed on may leave the caret within a character or a line end, where no user
// gets: one component knows no x in a line end, and types over a byte of a character.
void add_text() {
    const std::string bytes = random_text(1 + draw(3));
    sci_text(SCI_ADDTEXT, static_cast<LRESULT>(bytes.size()), bytes);
    const LRESULT caret = sci(SCI_GETCURRENTPOS);
    const LRESULT behind = sci(SCI_POSITIONAFTER, caret);
    if (sci(SCI_POSITIONBEFORE, behind) != caret) {
        sci(SCI_GOTOPOS, behind);
    }
}

void replace_selection() {
    sci_text(SCI_REPLACESEL, 0, random_text(draw(4)));
}

void replace_target() {
    const LRESULT a = sci(SCI_POSITIONBEFORE, position());
    const LRESULT b = sci(SCI_POSITIONAFTER, position());
    sci(SCI_SETTARGETSTART, a < b ? a : b);
    sci(SCI_SETTARGETEND, a < b ? b : a);
    const std::string bytes = random_text(draw(4));
    sci_text(SCI_REPLACETARGET, static_cast<LRESULT>(bytes.size()), bytes);
}

// As reports are written into the console.
void insert_output() {
    sci(SCI_SETUNDOCOLLECTION, 0);
    sci(SCI_SETTARGETSTART, length());
    sci(SCI_SETTARGETEND, length());
    const std::string bytes = random_text(draw(20));
    sci_text(SCI_REPLACETARGET, static_cast<LRESULT>(bytes.size()), bytes);
    sci(SCI_SETUNDOCOLLECTION, 1);
    sci(SCI_EMPTYUNDOBUFFER);
    sci(SCI_GOTOPOS, length());
}

void go_to() {
    sci(SCI_GOTOPOS, position());
}

void select_range() {
    sci(SCI_SETSEL, position(), position());
}

void send_plain() {
    static const UINT k_plain[] = {
        SCI_SELECTALL, SCI_CLEAR, SCI_UNDO,  SCI_UNDO,  SCI_UNDO,         SCI_REDO,        SCI_REDO,
        SCI_CUT,       SCI_COPY,  SCI_PASTE, SCI_PASTE, SCI_SETSAVEPOINT, SCI_SCROLLCARET,
    };
    sci(k_plain[draw(sizeof k_plain / sizeof k_plain[0])]);
}

void clear() {
    sci(draw(2) == 0 ? SCI_CLEARALL : SCI_EMPTYUNDOBUFFER);
}

void scroll() {
    sci(SCI_SETFIRSTVISIBLELINE, draw(40));
}

void set_policy() {
    static const struct {
        LRESULT policy, slop;
    } k_policies[] = {{CARET_SLOP, 1}, {CARET_STRICT | CARET_EVEN, 0}, {CARET_EVEN, 0}};
    const auto &row = k_policies[draw(3)];
    sci(SCI_SETYCARETPOLICY, row.policy, row.slop);
}

// The program takes a pane out of sight and brings it back: without a size it does not wrap.
void collapse() {
    const POINT size = pane_size();
    const LRESULT line = sci(SCI_DOCLINEFROMVISIBLE, sci(SCI_GETFIRSTVISIBLELINE));
    sci(SCI_SETWRAPMODE, SC_WRAP_NONE);
    MoveWindow(trace.pane, 0, 0, 0, 0, TRUE);
    settle();
    MoveWindow(trace.pane, 0, 0, size.x, size.y, TRUE);
    sci(SCI_SETFIRSTVISIBLELINE, sci(SCI_VISIBLEFROMDOCLINE, line));
    sci(SCI_SETWRAPMODE, SC_WRAP_WORD);
}

void zoom() {
    if (draw(3) == 0) {
        sci(SCI_SETZOOM, static_cast<LRESULT>(draw(9)) - 3);
    } else {
        press(draw(2) == 0 ? VK_ADD : VK_SUBTRACT, SCMOD_CTRL);
    }
}

// What is undone in a group may be its own, or from before it. Nothing in it moves lines: where a
// step changes several places one component forgets to break some.
void change_in_group() {
    sci(SCI_BEGINUNDOACTION);
    for (uint32_t n = draw(6); n > 0; --n) {
        if (draw(2) == 0) {
            sci_text(SCI_INSERTTEXT, 0, "group ");
        } else {
            sci(draw(3) == 0 ? SCI_REDO : SCI_UNDO);
        }
        settle();
    }
    sci(SCI_ENDUNDOACTION);
}

void hide_selection() {
    sci(SCI_HIDESELECTION, draw(2));
}

void find() {
    static const char *const k_targets[] = {"word",     "PLAN",         "\xFF", "e ",
                                            "\xC3\x89", "\xE2\x82\xAC", "some", ""};
    Sci_TextToFind range = {};
    range.chrg.cpMin = static_cast<Sci_PositionCR>(position());
    range.chrg.cpMax = static_cast<Sci_PositionCR>(length());
    range.lpstrText = k_targets[draw(8)];
    const LRESULT at = sci(SCI_FINDTEXT, draw(2) == 0 ? SCFIND_MATCHCASE : SCFIND_NONE,
                           reinterpret_cast<LPARAM>(&range));
    trace.told += " found " + std::to_string(at);
    if (at >= 0) {
        sci(SCI_SETSEL, range.chrgText.cpMin, range.chrgText.cpMax);
    }
}

void colourise() {
    sci(SCI_COLOURISE, 0, draw(2) == 0 ? 0 : -1);
}

void set_style() {
    sci(SCI_STYLESETSIZE, STYLE_DEFAULT, 7 + draw(5));
    sci(SCI_STYLECLEARALL);
    sci(SCI_STYLESETHOTSPOT, 2, 1);
}

void type_characters() {
    static const uint16_t k_units[] = {'a', 'b', ' ', 'x', '.', '_', '7', 0xE9, 0x20AC, 0x65E5};
    for (uint32_t n = 1 + draw(5); n > 0; --n) {
        const uint16_t unit = k_units[draw(10)];
        // A key goes down first, so that the pane knows that it stands for no command.
        press(unit < 0x80 ? VK_F12 : VK_F11, 0);
        SendMessageW(trace.pane, WM_CHAR, unit, 0);
    }
}

void type_pair() {
    press(VK_F12, 0);
    SendMessageW(trace.pane, WM_CHAR, 0xD83D, 0);
    SendMessageW(trace.pane, WM_CHAR, 0xDE00, 0);
}

// Where a component may go down a row when the key goes up, if the row is broken and the caret has
// been further to the right.
bool on_first_row() {
    const LRESULT caret = sci(SCI_GETCURRENTPOS);
    return sci(SCI_POINTYFROMPOSITION, 0, caret) == sci(SCI_POINTYFROMPOSITION, 0, 0);
}

// Where a component may go down two rows: the next one is broken, and ends in front of the caret.
bool may_skip_row() {
    const LRESULT caret = sci(SCI_GETCURRENTPOS);
    const LRESULT x = sci(SCI_POINTXFROMPOSITION, 0, caret);
    const LRESULT below = sci(SCI_POINTYFROMPOSITION, 0, caret) + sci(SCI_TEXTHEIGHT);
    const auto row_at = [&](LRESULT at) {
        return sci(SCI_POINTYFROMPOSITION, 0, sci(SCI_POSITIONFROMPOINT, at, below));
    };
    if (row_at(k_far) > below) {
        sci(SCI_CHOOSECARETX);
    }
    return row_at(x) > below;
}

void press_key() {
    static const struct {
        WPARAM key;
        bool with_modifiers;
    } k_keys[] = {
        {VK_LEFT, true},   {VK_RIGHT, true}, {VK_UP, true},      {VK_DOWN, true},
        {VK_HOME, true},   {VK_END, true},   {VK_PRIOR, false},  {VK_NEXT, false},
        {VK_DELETE, true}, {VK_BACK, true},  {VK_RETURN, false}, {VK_ESCAPE, false},
        {VK_INSERT, true},
    };
    const auto &row = k_keys[draw(13)];
    static const uint32_t k_modifiers[] = {0,           0,          0,
                                           SCMOD_SHIFT, SCMOD_CTRL, SCMOD_SHIFT | SCMOD_CTRL};
    const uint32_t modifiers = row.with_modifiers ? k_modifiers[draw(6)] : 0;
    const uint32_t upright = modifiers & SCMOD_CTRL;
    // Shift with the page keys extends; paragraphs are nobody's keys here.
    if ((row.key == VK_UP && on_first_row()) || (row.key == VK_DOWN && may_skip_row())) {
        return;
    }
    const bool vertical = row.key == VK_UP || row.key == VK_DOWN;
    press(row.key, vertical && upright != 0 ? SCMOD_CTRL : modifiers);
}

void press_letter() {
    static const char k_letters[] = "ZYZYACXV";
    press(static_cast<WPARAM>(k_letters[draw(8)]), SCMOD_CTRL);
}

LPARAM at(POINT point) {
    return MAKELPARAM(point.x, point.y);
}

LONG random_x() {
    return static_cast<LONG>(draw(static_cast<uint32_t>(client_size().x) - 20));
}

LONG random_y() {
    return static_cast<LONG>(draw(static_cast<uint32_t>(client_size().y)));
}

// A point that is far from the last press, so that it does not depend on the clock whether the two
// make a double click.
POINT new_point() {
    POINT point;
    do {
        point = {random_x(), random_y()};
    } while (labs(point.x - trace.clicked.x) < 20);
    trace.clicked = point;
    return point;
}

bool on_selection(POINT point) {
    const LRESULT on = sci(SCI_POSITIONFROMPOINT, point.x, point.y);
    return sci(SCI_GETSELECTIONSTART) <= on && on <= sci(SCI_GETSELECTIONEND) &&
           sci(SCI_GETSELECTIONSTART) != sci(SCI_GETSELECTIONEND);
}

// The program leaves a pane where it is while the mouse is used: a second press would meet other
// words.
void send_button(UINT message, WPARAM keys, POINT point) {
    const LRESULT top = sci(SCI_GETFIRSTVISIBLELINE);
    SendMessageW(trace.pane, message, keys, at(point));
    sci(SCI_SETFIRSTVISIBLELINE, top);
}

void button_down(POINT point, bool shift) {
    trace.told += " press " + std::to_string(point.x) + "," + std::to_string(point.y);
    send_button(WM_LBUTTONDOWN, MK_LBUTTON | (shift ? WPARAM{MK_SHIFT} : 0), point);
}

void button_up(POINT point, bool shift) {
    send_button(WM_LBUTTONUP, shift ? MK_SHIFT : 0, point);
}

void click() {
    const bool shift = draw(4) == 0;
    const POINT point = new_point();
    hold(shift ? SCMOD_SHIFT : 0);
    button_down(point, shift);
    button_up(point, shift);
    hold(0);
}

void click_more() {
    const POINT point = new_point();
    for (uint32_t n = 2 + draw(2); n > 0; --n) {
        button_down(point, false);
        button_up(point, false);
    }
}

// A press on the selection would begin to drag it, which one component leaves to the system; one in
// the margin takes lines.
void sweep() {
    POINT point = new_point();
    if (on_selection(point) || point.x < k_text_left) {
        return;
    }
    button_down(point, false);
    for (uint32_t n = 1 + draw(4); n > 0; --n) {
        point = {random_x(), random_y()};
        trace.told += " move " + std::to_string(point.x) + "," + std::to_string(point.y);
        SendMessageW(trace.pane, WM_MOUSEMOVE, MK_LBUTTON, at(point));
    }
    button_up(point, false);
    trace.clicked = point;
}

void turn_wheel() {
    const WORD way = static_cast<WORD>(draw(2) == 0 ? WHEEL_DELTA : -WHEEL_DELTA);
    SendMessageW(trace.pane, WM_MOUSEWHEEL, MAKEWPARAM(0, way), 0);
}

void scroll_bar() {
    static const WORD k_codes[] = {SB_LINEUP, SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN};
    SendMessageW(trace.pane, WM_VSCROLL, k_codes[draw(4)], 0);
}

void resize() {
    MoveWindow(trace.pane, 0, 0, k_width - static_cast<int>(draw(3)) * 30,
               k_height - static_cast<int>(draw(3)) * 40, TRUE);
}

constexpr struct {
    const char *name;
    void (*take)();
    uint32_t weight;
} k_steps[] = {
    {"set text", set_text, 3},
    {"insert text", insert_text, 4},
    {"add text", add_text, 3},
    {"replace selection", replace_selection, 3},
    {"replace target", replace_target, 3},
    {"insert output", insert_output, 1},
    {"change in a group", change_in_group, 3},
    {"go to", go_to, 6},
    {"select", select_range, 5},
    {"send plain", send_plain, 16},
    {"clear", clear, 1},
    {"scroll", scroll, 3},
    {"caret policy", set_policy, 1},
    {"collapse", collapse, 1},
    {"zoom", zoom, 1},
    {"hide selection", hide_selection, 1},
    {"find", find, 3},
    {"colourise", colourise, 1},
    {"style", set_style, 1},
    {"type", type_characters, 14},
    {"type a pair", type_pair, 1},
    {"key", press_key, 40},
    {"letter", press_letter, 5},
    {"click", click, 10},
    {"click twice or more", click_more, 4},
    {"sweep", sweep, 5},
    {"wheel", turn_wheel, 2},
    {"scroll bar", scroll_bar, 2},
    {"resize", resize, 1},
};

// ---- What is seen -------------------------------------------------------------------------------

void print_step(uint32_t step, const char *name) {
    const std::string bytes = text();
    const LRESULT caret = sci(SCI_GETCURRENTPOS);
    const POINT client = client_size();
    printf("%u %s: len %lld %08x caret %lld anchor %lld top %lld modified %lld undo %lld redo %lld "
           "x %lld y %lld lines %lld style %lld window %ldx%ld%s\n",
           step, name, static_cast<long long>(bytes.size()), hash(bytes.data(), bytes.size()),
           static_cast<long long>(caret), static_cast<long long>(sci(SCI_GETANCHOR)),
           static_cast<long long>(sci(SCI_GETFIRSTVISIBLELINE)),
           static_cast<long long>(sci(SCI_GETMODIFY)), static_cast<long long>(sci(SCI_CANUNDO)),
           static_cast<long long>(sci(SCI_CANREDO)),
           static_cast<long long>(sci(SCI_POINTXFROMPOSITION, 0, caret)),
           static_cast<long long>(sci(SCI_POINTYFROMPOSITION, 0, caret)),
           static_cast<long long>(sci(SCI_VISIBLEFROMDOCLINE, sci(SCI_GETLINECOUNT))),
           static_cast<long long>(sci(SCI_GETSTYLEAT, caret)), client.x, client.y,
           trace.told.c_str());
    trace.told.clear();
}

// Everything that can be undone is, and redone: how often, and what came out on the way.
void print_undo() {
    uint32_t depth = 0;
    uint32_t redone = 0;
    uint32_t seen = 0;
    while (sci(SCI_CANREDO) != 0) {
        sci(SCI_REDO);
        settle();
        ++redone;
    }
    while (sci(SCI_CANUNDO) != 0 && depth < 200) {
        sci(SCI_UNDO);
        settle();
        const std::string bytes = text();
        seen = seen * 31 + hash(bytes.data(), bytes.size());
        seen = seen * 31 + static_cast<uint32_t>(sci(SCI_GETCURRENTPOS));
        ++depth;
    }
    for (uint32_t i = redone; i < depth; ++i) {
        sci(SCI_REDO);
        settle();
    }
    sci(SCI_CHOOSECARETX);
    sci(SCI_SETFIRSTVISIBLELINE, 0);
    sci(SCI_SCROLLCARET);
    settle();
    const LRESULT caret = sci(SCI_GETCURRENTPOS);
    printf("  undo %u redo %u %08x caret %lld y %lld\n", depth, redone, seen,
           static_cast<long long>(caret),
           static_cast<long long>(sci(SCI_POINTYFROMPOSITION, 0, caret)));
    trace.told.clear();
}

void print_styles() {
    std::string styles;
    for (LRESULT i = 0; i < length(); ++i) {
        styles += static_cast<char>(sci(SCI_GETSTYLEAT, i));
    }
    printf("  styles %08x\n", hash(styles.data(), styles.size()));
}

// Where every position stands, with links in bold. (While steps are taken they are not: a key that
// goes up or down keeps to where the caret was before the text was styled, or behind.) In a font of
// one pixel a blank has no width, and one component has no stops for its tabs.
void print_places() {
    if (sci(SCI_TEXTHEIGHT) <= 2) {
        return;
    }
    sci(SCI_STYLESETBOLD, 2, 1);
    settle();
    uint32_t places = 0;
    for (LRESULT i = 0; i <= length(); i = i < length() ? sci(SCI_POSITIONAFTER, i) : i + 1) {
        places = places * 31 + static_cast<uint32_t>(sci(SCI_POINTXFROMPOSITION, 0, i));
        places = places * 31 + static_cast<uint32_t>(sci(SCI_POINTYFROMPOSITION, 0, i));
    }
    sci(SCI_STYLESETBOLD, 2, 0);
    settle();
    printf("  places %08x\n", places);
}

void print_text() {
    std::string bytes = text();
    for (char &c : bytes) {
        c = c == '\n' ? '$' : c == '\r' ? '^' : c;
    }
    printf("  text %s\n", bytes.c_str());
}

// Where text has changed it is scrolled anew: one component looks for the caret before it has
// broken the lines that came, and may leave it out of sight.
void take_step(uint32_t step) {
    uint32_t all = 0;
    for (const auto &row : k_steps) {
        all += row.weight;
    }
    uint32_t drawn = draw(all);
    const auto *row = k_steps;
    while (drawn >= row->weight) {
        drawn -= row++->weight;
    }
    row->take();
    settle();
    if (trace.told.find(k_changed) != std::string::npos) {
        sci(SCI_SETFIRSTVISIBLELINE, 0);
        sci(SCI_SCROLLCARET);
        settle();
    }
    print_step(step, row->name);
    if (length() > k_text_most) {
        sci_text(SCI_SETTEXT, 0, "");
        settle();
        trace.told.clear();
    }
}

// ---- Beginning ----------------------------------------------------------------------------------

// Where a text just fits without a scroll bar and not beside it, it depends on what was there
// before whether there is one. So there is none.
void configure(bool console) {
    sci(SCI_SETCODEPAGE, SC_CP_UTF8);
    sci(SCI_SETMODEVENTMASK, SC_MOD_INSERTTEXT | SC_MOD_DELETETEXT);
    sci(SCI_SETWRAPMODE, SC_WRAP_WORD);
    sci(SCI_SETMARGINWIDTHN, 1, 2);
    sci(SCI_SETYCARETPOLICY, CARET_SLOP, 1);
    sci(SCI_SETENDATLASTLINE, console ? 0 : 1);
    sci(SCI_SETVSCROLLBAR, 0);
    sci_text(SCI_STYLESETFONT, STYLE_DEFAULT, "Tahoma");
    sci(SCI_STYLESETSIZE, STYLE_DEFAULT, 9);
    sci(SCI_STYLECLEARALL);
    sci(SCI_STYLESETHOTSPOT, 2, 1);
}

bool open_window() {
    WNDCLASSW description = {};
    description.lpfnWndProc = frame_proc;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"PaneTrace";
    RegisterClassW(&description);
    trace.frame = CreateWindowExW(0, L"PaneTrace", L"", WS_POPUP | WS_VISIBLE, 10, 10, k_width + 60,
                                  k_height + 60, nullptr, nullptr, description.hInstance, nullptr);
    trace.pane = CreateWindowExW(0, L"Scintilla", L"", WS_CHILD | WS_VISIBLE | WS_VSCROLL, 0, 0,
                                 k_width, k_height, trace.frame,
                                 reinterpret_cast<HMENU>(static_cast<UINT_PTR>(k_pane_id)),
                                 description.hInstance, nullptr);
    return trace.pane != nullptr;
}

}  // namespace

int main(int argc, char **argv) {
    if (argc != 4 || LoadLibraryA(argv[1]) == nullptr || !open_window()) {
        fprintf(stderr, "usage: pane_trace DLL SEED STEPS\n");
        return 2;
    }
    trace.random = strtoull(argv[2], nullptr, 10) * 2 + 1;
    const uint32_t steps = static_cast<uint32_t>(strtoul(argv[3], nullptr, 10));
    configure((trace.random & 2) != 0);
    sci_text(SCI_COPYTEXT, 4, "clip");
    SetFocus(trace.pane);
    settle();
    trace.told.clear();
    for (uint32_t step = 1; step <= steps; ++step) {
        take_step(step);
        if (getenv("PANE_TRACE_TEXT") != nullptr) {
            print_text();
        }
        if (step % k_burst == 0) {
            print_styles();
            print_places();
            print_undo();
            settle();
            print_text();
        }
    }
    print_places();
    puts("end");
    return 0;
}
