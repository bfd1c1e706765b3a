// The names of all live cells as Scintilla's keyword lists are written: each followed by a blank.
#pragma once

// The list as last built; "" before that.
const char *cellnames_list();

// Builds the list anew. True when it differs from the last one. It grows with the web; when memory
// runs short the old one stays.
bool cellnames_rebuild();
