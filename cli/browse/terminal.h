// The terminal: full screen by curses, which writes only what has changed since it showed last.
#pragma once

#include <cstdint>

// True when both the keyboard and the screen are a terminal.
bool terminal_is_there();

// False when this kind of terminal is not known, or cannot show screens.
bool terminal_open();

// Gives the terminal back as it was; harmless when that has happened.
void terminal_close();

// The same for as long as another program has it.
void terminal_lend();
void terminal_take_back();

// Stops the program as Ctrl+Z does, until the shell lets it go on.
void terminal_stop_program();

// ---- Keys ---------------------------------------------------------------------------------------

// Characters are themselves, and Ctrl with a letter is 1 to 26; other keys begin behind the last
// character there can be.
enum KeyCode : uint32_t {
    k_key_enter = 13,
    k_key_escape = 27,
    k_key_up = 0x110000,
    k_key_down,
    k_key_left,
    k_key_right,
    k_key_page_up,
    k_key_page_down,
    k_key_home,
    k_key_end,
    k_key_backspace,
    k_key_delete,
    k_key_tab,
    k_key_back_tab,
    k_key_alt_left,
    k_key_alt_right,
    k_key_f1,
    k_key_f3,
    k_key_click,
    k_key_wheel_up,
    k_key_wheel_down,
    k_key_resized,
    k_key_hung_up,  // the terminal has gone, or somebody wants the program to end
    k_key_other,
};

constexpr uint32_t ctrl(char letter) {
    return static_cast<uint32_t>(letter & 31);
}

struct Key {
    uint32_t code;
    int row;  // of the mouse
    int column;
};

// Waits for a key.
Key terminal_key();

// The signal that wants the program to end, k_no_signal for a terminal that has gone without one,
// or 0.
constexpr int k_no_signal = -1;
int terminal_hung_up();

// Ends the program as this signal does by itself.
void terminal_end_by(int signal);

// ---- Screen -------------------------------------------------------------------------------------

enum Style : uint8_t {
    k_style_plain,
    k_style_link,
    k_style_selected,
    k_style_match,
    k_style_status,
    k_style_dim,
};

// The colour of links: one of curses' eight, or -1 for none.
void terminal_link_colour(int colour);

int terminal_rows();
int terminal_columns();

void terminal_erase();
void terminal_put(int row, int column, const wchar_t *text, Style style);
void terminal_fill(int row, int column, int columns, Style style);

// Shows what was put, with the cursor there; a row below 0 hides it.
void terminal_show(int cursor_row, int cursor_column);
