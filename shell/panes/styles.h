// How the text panes look: their set-up, their styles, and which words are drawn as links.
//
// Scintilla asks for styling bit by bit; the answer is the same for both panes: style 2 for each
// word that names a live cell, style 0 for everything else.
#pragma once

#include "shell/platform.h"

constexpr int k_style_text = 0;
constexpr int k_style_text_too = 1;
constexpr int k_style_link = 2;

// For SCI_SETKEYWORDS, whose first set is the cellnames.
constexpr int k_cellname_keywords = 0;

// Set-up, once each pane exists and again when the first web is about to be opened.
void configure_text_pane();
void configure_console_pane();

// Styles from the options in force.
void apply_pane_styles(HWND pane);

// The colour of a link colour option (LinkColour).
COLORREF link_colour(int option);

// SCN_STYLENEEDED: styles a pane up to a position.
void style_pane(HWND pane, LRESULT end);

// Once a second: new names become links, and a selection that was hidden is shown again.
void restyle_panes();
