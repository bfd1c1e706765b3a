// Whole files, for every test program.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

// "(none)" when there is no such file.
inline std::string file_bytes(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "(none)";
}

inline void write_file(const std::string &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}
