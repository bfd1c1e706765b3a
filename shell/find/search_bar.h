// The search bar: a strip in the band that the layout keeps free above the panes. While it is open
// it takes part in the message loop and keeps the focus (search_bar() of shell/base/focus.h).
#pragma once

// The top band of the window, which the search bar stands under; in pixels.
constexpr int k_top_band_height = 25;

// True from the moment that the Replace dialog opens until the search bar is closed: the panes then
// leave room for the bar.
bool search_in_progress();

// Says so, and has the window laid out again.
void set_search_in_progress(bool in_progress);

void open_search_bar();

// The open bar's box shows the option again.
void search_bar_show_case();
