// What is on the screen and where: the cell list at the left or, on a narrow screen, in the text's
// place; the text; the console below it; and the bottom line, which has the state of things, a
// message or a question.
#pragma once

#include "cli/browse/pane.h"
#include "cli/browse/terminal.h"

#include <string>

enum class Part : uint8_t { text, console, list, none };

Pane *screen_text();
Pane *screen_console();

// The part that keys go to: never `none`. The console is open while it has something to show.
Part screen_focus();
void screen_set_focus(Part part);
bool screen_console_open();
void screen_open_console();
void screen_close_console();

// The pane whose text and links keys go to.
Pane *screen_pane();

// A message stays until it is replaced; "" takes it away.
void screen_message(std::string text);

// A question with the cursor behind it, before all else in the bottom line; "" takes it away.
void screen_question(std::string text);

void screen_draw();

// Scrolls the text to a byte, on the screen as it is now; to the middle when it has to scroll.
void screen_reveal(size_t at);

// What stands at a place of the screen: a byte of a pane's text, or an item of the list. Behind the
// end of a text or list it is its size.
struct Place {
    Part part;
    size_t at;
};
Place screen_place(int row, int column);
