// What a Markdown file says in front of its text, between two lines of "---": as far as it is ours,
// a row of fields `qvx-KEY: "VALUE"`. Everything else there belongs to the text.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Keys without "qvx-".
using Fields = std::vector<std::pair<std::string, std::string>>;

// Lines with LF; "" for no fields. A value holds any bytes: what is no text stands as \xNN.
std::string front_matter_of(const Fields &fields);

struct FrontMatter {
    Fields fields;
    std::string rest;       // the lines that are not ours, with the lines around them; "" for none
    std::string_view body;  // behind it
};

FrontMatter read_front_matter(std::string_view markdown);
