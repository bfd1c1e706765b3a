// The webs that are measured: made by this program from a fixed seed, the same on every machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct GeneratedCell {
    std::string name;
    std::string text;  // lines end in CR LF, as the window stores them
};

using GeneratedWeb = std::vector<GeneratedCell>;

// 2,400 cells of 64 to 71 characters: as many cells as the arena holds.
GeneratedWeb make_many_cells();

// 256 cells of 1,050 characters that hold 4,400 links altogether: as many cells as have a number,
// and room in the arena for every cell's list of links.
GeneratedWeb make_long_texts();
