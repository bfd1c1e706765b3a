// What can be read of a damaged web file, and what is wrong with it.
#pragma once

#include "cli/note.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct Damage {
    const char *kind;  // a word for machines
    size_t line;       // in the file, from 1
    std::string cell;  // that it belongs to; "" for none
    std::string text;  // all that was found there
    std::string message;
};

struct SalvagedWeb {
    Notes notes;
    std::vector<std::pair<int, std::string>> options;  // WebTag and text, in the file's order
    std::vector<Damage> damages;                       // in the file's order; none in a whole file
};

// Reads bytes that may lack any part. Of a file that the engine reads whole, and that has nothing
// behind its end, it makes what the engine makes of it, but for the spelling of a name that comes
// twice. Else more is kept: elements without their
// closing tag, what stands behind NULs and behind an end mark, cells with a name that is none or
// that another one has (they get a free name). What belongs to no cell comes into a cell of its
// own, "lost_and_found", with the line where it stood.
SalvagedWeb salvage(std::string_view bytes);
