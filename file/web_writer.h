// Writes web files: options first, then the cells in index order, "</eof>" last.
#pragma once

#include <cstdint>
#include <cstdio>

// Writes the whole web to a file that is open and empty and stays the caller's. Returns 0, or -4 at
// the first failed write, which has been shown.
int web_write(FILE *file);

int web_write_open_tag(int tag);
int web_write_close_tag(int tag);
int web_write_escaped(char c);
int web_out_byte(uint8_t byte);
int web_out_flush();
