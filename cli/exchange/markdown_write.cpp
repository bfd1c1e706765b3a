#include "cli/exchange/markdown_write.h"

#include "cli/link_words.h"
#include "core/names.h"

namespace {

constexpr std::string_view k_byte_order_mark = "\xEF\xBB\xBF";

// Markup wherever they stand, and only in front of a line.
constexpr std::string_view k_signs = "\\`*<[|~$";
constexpr std::string_view k_line_signs = "#>+-=";

struct Writing {
    std::string_view text;
    size_t at;
    size_t line;  // where the line begins
    std::string out;
};

bool in_word(std::string_view text, size_t at) {
    return at < text.size() &&
           (is_letter(text[at]) || is_digit(text[at]) || static_cast<signed char>(text[at]) < 0);
}

bool is_line_end(std::string_view text, size_t at) {
    return text.substr(at, 2) == "\r\n" || text.substr(at, 1) == "\n";
}

// "12." and "12)" begin a list.
bool ends_list_number(const Writing &writing) {
    for (size_t i = writing.line; i < writing.at; ++i) {
        if (!is_digit(writing.text[i])) {
            return false;
        }
    }
    return writing.at > writing.line;
}

bool is_markup(const Writing &writing) {
    const std::string_view text = writing.text;
    const size_t at = writing.at;
    switch (const char ch = text[at]) {
    case '_':
        return at == 0 || !in_word(text, at - 1) || !in_word(text, at + 1);
    case '&':
        return text.substr(at + 1, 1) == "#" || in_word(text, at + 1);
    case '.':
    case ')':
        return ends_list_number(writing);
    default:
        return k_signs.find(ch) != std::string_view::npos ||
               (at == writing.line && k_line_signs.find(ch) != std::string_view::npos);
    }
}

void write_reference(Writing *writing, const char *reference, size_t size) {
    writing->out += reference;
    writing->at += size;
}

void write_line_end(Writing *writing) {
    const bool empty = writing->at == writing->line;
    writing->at += writing->text[writing->at] == '\r' ? 2U : 1U;
    writing->line = writing->at;
    const bool last =
        writing->at == writing->text.size() || is_line_end(writing->text, writing->at);
    writing->out += empty || last ? "\n" : "\\\n";
}

void write_character(Writing *writing) {
    const char ch = writing->text[writing->at];
    const bool first = writing->at == writing->line;
    if (is_line_end(writing->text, writing->at)) {
        write_line_end(writing);
    } else if (ch == '\r') {
        write_reference(writing, "&#13;", 1);
    } else if (first && ch == ' ') {
        write_reference(writing, "&#32;", 1);
    } else if (first && ch == '\t') {
        write_reference(writing, "&#9;", 1);
    } else if (writing->at == 0 && writing->text.starts_with(k_byte_order_mark)) {
        write_reference(writing, "&#65279;", k_byte_order_mark.size());
    } else {
        writing->out += is_markup(*writing) ? "\\" : "";
        writing->out += ch;
        ++writing->at;
    }
}

void write_up_to(Writing *writing, size_t end) {
    while (writing->at < end) {
        write_character(writing);
    }
}

// Blanks are all that a file's name can have of what ends a target.
std::string target_of(const std::string &file) {
    std::string target;
    for (const char ch : file) {
        target += ch == ' ' ? std::string("%20") : std::string(1, ch);
    }
    return target;
}

void write_link(Writing *writing, size_t end, const std::string &file) {
    if (writing->out.ends_with('!')) {
        writing->out.insert(writing->out.size() - 1, 1, '\\');  // it would be a picture
    }
    writing->out += '[';
    write_up_to(writing, end);
    writing->out += "](" + target_of(file) + ")";
}

}  // namespace

std::string markdown_of(std::string_view text, const FileOfWord &file_of_word) {
    Writing writing = {text, 0, 0, ""};
    for (size_t at = 0; at < text.size();) {
        const std::string_view word = next_link_word(text, &at);
        const std::string file = word.empty() ? "" : file_of_word(word);
        if (!file.empty()) {
            write_up_to(&writing, at - word.size());
            write_link(&writing, at, file);
        }
    }
    write_up_to(&writing, text.size());
    return text.empty() ? "" : writing.out + "\n";
}
