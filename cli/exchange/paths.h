// Files and folders of the system by paths in UTF-8, which is all that commands know.
#pragma once

#include <filesystem>
#include <string>

std::filesystem::path path_of(const std::string &utf8);
std::string utf8_of(const std::filesystem::path &path);

// The last part without its suffix.
std::string stem_of_path(const std::string &utf8);

// The bytes of a file, or of standard input for "-"; an exit status, after saying what went wrong.
// Refused when it holds a NUL character, or can never be a part of a web for its size.
int read_file(const std::string &utf8, std::string *bytes);

// Says on standard error "qvx: PATH: MESSAGE", and with the system's reason of `error`.
void say_of(const std::string &utf8, const std::string &message);
void say_of(const std::string &utf8, const std::string &message, const std::error_code &error);
