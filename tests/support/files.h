// Whole files, and the bytes of web files, for every test program.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace fs = std::filesystem;

// "(none)" when there is no such file.
inline std::string file_bytes(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "(none)";
}

inline void write_file(const fs::path &path, const std::string &bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// A text, so many times.
inline std::string times(size_t count, const std::string &text) {
    std::string all;
    while (count-- > 0) {
        all += text;
    }
    return all;
}

// What a web file says of a cell; the bytes of one with these cells, after home.
inline std::string cell_of(const std::string &name, const std::string &text = "") {
    return "<cname>" + name + "</cname><text>" + text + "</text>";
}

inline std::string web_of(const std::string &home_text, const std::string &more_cells = "") {
    return cell_of("home", home_text) + more_cells + "</eof>";
}
