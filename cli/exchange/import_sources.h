// What a web is made of: pieces of text, each with the name that it has where it comes from.
#pragma once

#include "cli/exchange/front_matter.h"

#include <string>
#include <vector>

struct Source {
    std::string path;    // for messages; of a Markdown file from the folder on, with '/'
    std::string wanted;  // name
    bool named = false;  // by its front matter, so that the name is a cell's
    std::string bytes;   // the text, or its Markdown
    std::string front;   // lines of front matter that belong to the text
    Fields fields;
    std::string name;  // the cell's (import_names.h)
};

using Sources = std::vector<Source>;

// These add to the sources; an exit status, after saying what went wrong.
int add_markdown_folder(const std::string &folder, Sources *sources);
int add_text_file(const std::string &path, Sources *sources);
int add_terms(const std::string &path, Sources *sources);
