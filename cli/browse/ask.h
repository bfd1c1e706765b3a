// Questions in the bottom line. A terminal that has gone answers like Escape.
#pragma once

#include <cstdint>
#include <string>

// Waits for one of the letters and returns it; Enter and Escape stand for letters of their own.
struct Answers {
    const char *letters;
    char enter;
    char escape;
};
char ask_letter(const std::string &question, const Answers &answers);

// Lets the user type a line behind the label, from what is there. False when Escape ended it.
bool ask_line(const std::string &label, std::string *typed);

// Changes a line as keys do that type and take back. False for any other key.
bool type_key(std::string *typed, uint32_t code);
