// Bytes of a web on their way to standard output.
#pragma once

#include "core/block_arena.h"

#include <cstdint>
#include <string>

// The bytes, fit for a terminal and for one line: control characters as \xNN, also those above 0x7F
// in UTF-8.
std::string printable(const std::string &bytes);

// Every byte of a text; the engine's text reader would end at 0xFF and 0xFE.
std::string text_bytes(BlockHandle head);
void print_bytes(BlockHandle head);

// Prints a text with its line ends, which the engine has as CR LF, as this Newline (web/options.h).
// A carriage return that ends no line stays.
void print_lines(BlockHandle head, uint8_t newline);
