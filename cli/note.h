// The web's cells as strings, for commands that read a web or make another one of it. Nothing here
// takes blocks from the arena, so whoever works on notes may keep strings as he likes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Line ends of texts and scripts are CR LF, as the engine has them.
struct Note {
    std::string name;
    std::string text;
    std::string script;
    std::string value;  // as the web file has it

    bool operator==(const Note &) const = default;
};

// In the web's order (compare_names), which has no two equal names.
using Notes = std::vector<Note>;

// The web at hand. Home is among them.
Notes notes_of_web();

// The order of names: letters regardless of case, '_' as a blank (core/text.h).
int compare_names(std::string_view a, std::string_view b);

// The name as the order sees it: equal for equal names.
std::string folded_name(std::string_view name);

// The note of that name, or null.
const Note *find_note(const Notes &notes, std::string_view name);
Note *find_note(Notes *notes, std::string_view name);

// Adds an empty note where it belongs; null when the name is taken.
Note *add_note(Notes *notes, std::string name);

// A name that comes back from a web file as it is: a cellname of at most 48 characters on one line.
bool is_good_name(const std::string &name);

// The bytes with every line end as CR LF, as reading a web file leaves them: an LF alone gets its
// CR, a CR alone stays.
std::string with_crlf(std::string_view bytes);
// And with LF in place of each CR LF.
std::string with_lf(std::string_view bytes);

// The lines of a text without their ends. A text that ends with a line end has no empty line
// behind it; an empty text has no line.
std::vector<std::string_view> lines_of(std::string_view text);
