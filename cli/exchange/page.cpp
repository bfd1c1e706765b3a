#include "cli/exchange/page.h"

#include "cli/exchange/page_sources.h"
#include "cli/link_words.h"
#include "core/names.h"

#include <algorithm>
#include <unordered_map>

namespace {

// What of a web is worked out before its page is written.
struct Page {
    std::vector<std::string> ids;                   // by number of the note
    std::unordered_map<std::string, size_t> known;  // numbers by folded names
    std::vector<std::string> texts;                 // with their links
    std::vector<std::vector<size_t>> linked_from;
};

constexpr std::string_view k_head_before_title =
    "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; base-uri 'none'; "
    "form-action 'none'; style-src '";
constexpr std::string_view k_head =
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
    "<meta name=\"referrer\" content=\"no-referrer\">\n<title>";
// The parts' own ids begin with a sign, as no note's does.
constexpr std::string_view k_list_head =
    "<a class=\"menu\" href=\"#-list\">All notes</a></header>\n"
    "<nav id=\"-list\" aria-label=\"All notes\">\n"
    "<div class=\"filter\" hidden><input type=\"search\" id=\"-filter\" "
    "placeholder=\"Filter (press /)\" aria-label=\"Filter the notes\" autocomplete=\"off\" "
    "spellcheck=\"false\"></div>\n<ul>\n";
constexpr std::string_view k_list_end =
    "</ul>\n<p id=\"-nothing\" hidden>Nothing found.</p>\n"
    "<p class=\"whole\"><a href=\"#-all\">All on one page</a></p>\n</nav>\n</div>\n"
    "<main id=\"-all\">\n";

// A code point of 0x80 and above, or k_no_character.
void append_character(std::string *to, std::string_view bytes, uint32_t code) {
    const bool no_text = code == k_no_character || (code >= 0x80 && code < 0xA0);
    *to += no_text ? "\xEF\xBF\xBD" : bytes;
}

// True for what stands in a page as it is.
bool is_plain(char ch) {
    return (ch >= ' ' && ch < 0x7F && ch != '<' && ch != '>' && ch != '&' && ch != '"') ||
           ch == '\n' || ch == '\t';
}

void append_sign(std::string *to, char ch) {
    switch (ch) {
    case '<':
        *to += "&lt;";
        return;
    case '>':
        *to += "&gt;";
        return;
    case '&':
        *to += "&amp;";
        return;
    case '"':
        *to += "&quot;";
        return;
    default:
        // U+2400 and on are pictures of the control characters, U+2421 that of DEL.
        *to += "\xE2\x90";
        *to += static_cast<char>(0x80 + (ch == 0x7F ? 0x21 : ch));
    }
}

// A line end is LF, whatever it was.
size_t append_line_end(std::string *to, std::string_view text, size_t at) {
    *to += '\n';
    return at + (text.substr(at, 2) == "\r\n" ? 2 : 1);
}

size_t end_of_plain(std::string_view text, size_t at) {
    while (at < text.size() && is_plain(text[at])) {
        ++at;
    }
    return at;
}

// Text as it stands in an element or between quotes.
void append_escaped(std::string *to, std::string_view text) {
    for (size_t at = 0; at < text.size();) {
        const size_t from = at;
        at = end_of_plain(text, at);
        *to += text.substr(from, at - from);
        if (at == text.size()) {
            break;
        }
        if (text[at] == '\r') {
            at = append_line_end(to, text, at);
        } else if (static_cast<signed char>(text[at]) >= 0) {
            append_sign(to, text[at++]);
        } else {
            const size_t begin = at;
            const uint32_t code = next_character(text, &at);
            append_character(to, text.substr(begin, at - begin), code);
        }
    }
}

void append_link(std::string *to, const std::string &id, std::string_view word) {
    *to += "<a href=\"#";
    *to += id;
    *to += "\">";
    append_escaped(to, word);
    *to += "</a>";
}

void note_link(Page *page, size_t from, size_t target) {
    std::vector<size_t> &sources = page->linked_from[target];
    if (from != target && (sources.empty() || sources.back() != from)) {
        sources.push_back(from);
    }
}

void write_text(Page *page, size_t number, std::string_view text) {
    std::string *to = &page->texts[number];
    to->reserve(text.size() * 5 / 4);
    size_t done = 0;
    std::string folded;
    for (size_t at = 0; at < text.size();) {
        const std::string_view word = next_link_word(text, &at);
        if (word.empty() || !is_letter(word[0])) {
            continue;
        }
        folded = folded_name(word);
        const auto target = page->known.find(folded);
        if (target != page->known.end()) {
            append_escaped(to, text.substr(done, at - word.size() - done));
            append_link(to, page->ids[target->second], word);
            done = at;
            note_link(page, number, target->second);
        }
    }
    append_escaped(to, text.substr(done));
}

Page worked_out(const Notes &notes) {
    Page page;
    page.texts.resize(notes.size());
    page.linked_from.resize(notes.size());
    for (const Note &note : notes) {
        page.known.emplace(folded_name(note.name), page.ids.size());
        page.ids.push_back(page_id(note.name));
    }
    for (size_t i = 0; i < notes.size(); ++i) {
        write_text(&page, i, notes[i].text);
    }
    return page;
}

void append_head(std::string *to, std::string_view title) {
    *to += k_head_before_title;
    *to += k_page_style_digest;
    *to += "'; script-src '";
    *to += k_page_script_digest;
    *to += "'\">\n";
    *to += k_head;
    append_escaped(to, title);
    *to += "</title>\n<style>";
    *to += k_page_style;
    *to += "</style>\n</head>\n<body>\n<div class=\"side\">\n<header><a class=\"site\" "
           "href=\"#home\">";
    append_escaped(to, title);
    *to += "</a>";
}

void append_item(std::string *to, const std::string &id, std::string_view name) {
    *to += "<li>";
    append_link(to, id, name);
    *to += "</li>\n";
}

void append_list(std::string *to, const Page &page, const Notes &notes) {
    *to += k_list_head;
    for (size_t i = 0; i < notes.size(); ++i) {
        append_item(to, page.ids[i], notes[i].name);
    }
    *to += k_list_end;
}

void append_article(std::string *to, const Page &page, const Notes &notes, size_t number) {
    *to += "<article id=\"" + page.ids[number] + "\">\n<h2>";
    append_link(to, page.ids[number], notes[number].name);
    *to += "</h2>\n<div class=\"text\">";
    *to += page.texts[number];
    *to += "</div>\n";
    if (!page.linked_from[number].empty()) {
        *to += "<footer>\n<h3>Linked from</h3>\n<ul>\n";
        for (const size_t source : page.linked_from[number]) {
            append_item(to, page.ids[source], notes[source].name);
        }
        *to += "</ul>\n</footer>\n";
    }
    *to += "</article>\n";
}

size_t number_of_home(const Notes &notes) {
    const Note *home = find_note(notes, "home");
    return home != nullptr ? static_cast<size_t>(home - notes.data()) : notes.size();
}

}  // namespace

std::string page_id(std::string_view name) {
    constexpr char k_hex[] = "0123456789abcdef";
    std::string id;
    for (const char ch : folded_name(name)) {
        if (is_letter(ch)) {
            id += static_cast<char>(ch | 0x20);
        } else if (is_digit(ch)) {
            id += ch;
        } else if (ch == ' ') {
            id += '_';
        } else {
            const auto byte = static_cast<uint8_t>(ch);
            id += {'~', k_hex[byte >> 4], k_hex[byte & 15]};
        }
    }
    return id;
}

std::string page_of(const Notes &notes, std::string_view title) {
    const Page page = worked_out(notes);
    const size_t home = number_of_home(notes);
    std::string whole;
    append_head(&whole, title);
    append_list(&whole, page, notes);
    if (home < notes.size()) {
        append_article(&whole, page, notes, home);
    }
    for (size_t i = 0; i < notes.size(); ++i) {
        if (i != home) {
            append_article(&whole, page, notes, i);
        }
    }
    whole += "</main>\n<script>";
    whole += k_page_script;
    whole += "</script>\n</body>\n</html>\n";
    return whole;
}
