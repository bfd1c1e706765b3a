// A web file's bytes as tags and the text between them, for files of which any part may be missing.
// It takes markup for what the engine takes it for; where the engine would lose bytes, it takes
// them for text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// Bytes that are not what they should be.
struct Spoilt {
    const char *kind;
    size_t at;
    std::string text;
    const char *message;
};

struct WebScanner {
    std::string_view bytes;
    // What looks like the beginning of markup and is followed by the beginning of another one is
    // text. Without it such files are read as the engine does, who takes more for markup.
    bool suspicious;
    size_t at;
    std::vector<Spoilt> spoilt;
    std::vector<size_t> line_starts;
};

struct ScannedTag {
    int tag;  // WebTag
    bool closing;
    std::string text;  // the characters since the tag before, line ends as CR LF
    size_t text_at;    // where they begin
};

WebScanner web_scanner(std::string_view bytes, bool suspicious);

// Goes on to the next tag. False at the end of the bytes; `next` then has the text up to there.
bool scan_tag(WebScanner *scanner, ScannedTag *next);

// The line of a place in the bytes, from 1.
size_t line_of(const WebScanner &scanner, size_t at);
