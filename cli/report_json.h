// Reports for programs: objects of JSON, one a line.
#pragma once

#include <string>

// True when the options in force ask for one of the two reports on links.
bool is_report_on_links();

// That report: {"file", "cell", "in" or "out": [cells]} for each cell that it covers. Takes blocks
// from the arena.
void print_links_json(const std::string &file);

// Any other report: {"file", "report"} with its text.
void print_report_json(const std::string &file, const std::string &text);
