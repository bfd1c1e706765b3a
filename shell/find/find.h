// Find and replace in the text pane, going on through the cells of the web. What is searched for,
// its replacement and whether case matters are options. Positions are bytes of the pane.
#pragma once

// Selects the next match behind the selection: in the current cell, else in the first cell after it
// that has one, which becomes the current cell. Without any the search ends in the cell where it
// began, at its start. Does nothing unless the text pane is shown.
void find_next();

// Replaces the match that find_next() selected, if the selection is still that match, and finds the
// next one. Does nothing before something has been found.
void replace_and_find();
