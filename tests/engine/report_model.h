// What a report must say, worked out naively from the names and texts of the cells; tests compare.
#pragma once

#include <cstdint>
#include <string>

bool model_letter(char c);

// A name in the spelling under which it is compared.
std::string model_fold(const std::string &name);

// A number as this machine's C library writes it, in exponent form and with fewer digits where it
// is longer than a number's text may be.
std::string model_number_text(double value, uint8_t kind, int digits);

// What leaves the stream for these characters: the escape rules applied.
std::string model_stream(const std::string &characters);

// What a file gets of that in a newline mode.
std::string model_newlines(const std::string &stream, uint8_t mode);

// The whole console of report_run() with the options, the selection, the trail and the cells as
// they are.
std::string model_report();
