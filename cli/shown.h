// Bytes of a web on their way to standard output.
#pragma once

#include "core/block_arena.h"

#include <cstdint>
#include <string>

// The bytes, fit for a terminal and for one line: control characters as \xNN, also those above 0x7F
// in UTF-8. With `keeps_lines` line ends and tabs stay.
std::string printable(const std::string &bytes, bool keeps_lines = false);

// Every byte of a text; the engine's text reader would end at 0xFF and 0xFE.
std::string text_bytes(BlockHandle head);

// The bytes with their line ends, which the engine has as CR LF, as this Newline (web/options.h); 0
// is the system's own. A carriage return that ends no line stays.
std::string in_line_ends(const std::string &bytes, uint8_t newline);

// The line ends of texts in JSON, which are the same on every system unless asked for.
uint8_t json_newline(uint8_t newline);
