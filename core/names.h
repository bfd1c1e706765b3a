// What may be a cellname.
#pragma once

#include <cstdint>

constexpr uint32_t k_cellname_max = 48;  // characters; buffers hold one more

// A to Z and a to z, whatever the platform's locale says.
bool is_letter(char ch);
bool is_digit(char ch);

// Where the first letter of a string stands; its end when there is none.
const char *cellname_start(const char *s);

// Makes a typed word into a cellname, in place: characters before the first letter go, and what is
// longer than 48 characters is cut. Nothing is ever removed from the end.
void cellname_normalise(char *buffer);

// A string is a cellname when it begins with a letter.
bool cellname_valid(const char *s);
