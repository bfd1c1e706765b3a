// What commands write to standard output.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

void print(std::string_view text);

// JSON on one line, or with `indent` not negative on several. Bytes that are no UTF-8 come out as
// the replacement character, and control characters as \uNNNN, so that a terminal may have it.
std::string json_text(const nlohmann::ordered_json &value, int indent);

// One line of JSON.
void print_json(const nlohmann::ordered_json &value);

// The text as standard output takes it: on a terminal its control characters are spelled out.
std::string shown(std::string_view text);
// A text of several lines. On a terminal its control characters are spelled out, line ends and tabs
// apart.
void print_text(const std::string &text);

// A name, and NUL (`zero`) or a line end. On a terminal, which must not take a name for orders, its
// control characters are spelled out, unless NUL ends it.
void print_name(std::string_view name, bool zero);

// A line of a text or a message, its control characters spelled out on a terminal.
void print_line(std::string_view line);

// True where colours are wanted: on a terminal, and NO_COLOR is not set or empty.
bool colours_wanted();

// The text between the codes for a colour and for none, where colours are wanted.
enum class Colour : char { red = '1', green = '2', magenta = '5', cyan = '6' };
std::string coloured(std::string_view text, Colour colour);
