#include "cli/merge/web_scanner.h"

#include "file/web_tags.h"
#include "file/web_tokens.h"

#include <algorithm>
#include <cstring>

namespace {

// What stands between '<' and '>', or '&' and ';'.
struct Markup {
    std::string name;  // without '/' and NULs, line ends as CR LF; no more than one too long
    bool closing;
    bool ended;
    bool zeros;     // NULs were left out
    size_t behind;  // the place behind its end
};

char byte_before(const WebScanner &scanner, size_t at) {
    return at > 0 ? scanner.bytes[at - 1] : '\0';
}

const char *line_end_at(const WebScanner &scanner, size_t at) {
    return byte_before(scanner, at) == '\r' ? "\n" : "\r\n";
}

Markup markup_at(const WebScanner &scanner, char end) {
    Markup markup = {"", false, false, false, scanner.at + 1};
    while (markup.behind < scanner.bytes.size() && markup.name.size() <= k_markup_name_max) {
        const char ch = scanner.bytes[markup.behind++];
        if (ch == end) {
            markup.ended = true;
            break;
        }
        if (ch == '/' && end == '>') {
            markup.closing = true;
        } else if (ch == '\n') {
            markup.name += line_end_at(scanner, markup.behind - 1);
        } else if (ch == '\0') {
            markup.zeros = true;
        } else {
            markup.name += ch;
        }
    }
    return markup;
}

void note_spoilt(WebScanner *scanner, const char *kind, std::string text, const char *message) {
    scanner->spoilt.push_back({kind, scanner->at, std::move(text), message});
}

void note_zeros(WebScanner *scanner) {
    note_spoilt(scanner, "nul_byte", "", "NUL bytes are left out");
}

// Goes on behind markup that is taken for what it says.
void pass(WebScanner *scanner, const Markup &markup) {
    if (markup.zeros) {
        note_zeros(scanner);
    }
    scanner->at = markup.behind;
}

uint64_t word_of(const std::string &name) {
    char padded[k_markup_name_max + 1 + 8] = {};
    name.copy(padded, sizeof padded - 8);
    return name_word_folded(padded, static_cast<uint32_t>(name.size()));
}

// True for what a tag of the format begins with.
bool begins_a_tag(const std::string &name) {
    for (const auto &tag : k_tag_names.of) {
        if (name.size() <= strlen(tag) && word_of(name) == word_of({tag, name.size()})) {
            return true;
        }
    }
    return name.empty();
}

// The first byte of what is no markup is text, and what follows is looked at anew.
void take_byte(WebScanner *scanner, std::string *text) {
    *text += scanner->bytes[scanner->at++];
}

std::string rest_of(const WebScanner &scanner, size_t behind) {
    return std::string(scanner.bytes.substr(scanner.at, behind - scanner.at));
}

// Takes what stands at '<'. True when it is a tag of the format.
bool take_tag(WebScanner *scanner, ScannedTag *next) {
    const Markup markup = markup_at(*scanner, '>');
    const bool cut_off = !markup.ended && markup.behind == scanner->bytes.size();
    if (cut_off && begins_a_tag(markup.name)) {
        note_spoilt(scanner, "unended_tag", rest_of(*scanner, markup.behind),
                    "the file ends within a tag");
        scanner->at = markup.behind;
        return false;
    }
    if (!markup.ended || markup.name.size() > k_markup_name_max) {
        note_spoilt(scanner, cut_off ? "unended_tag" : "long_tag", "<",
                    "a \"<\" that begins no tag is kept as text");
        take_byte(scanner, &next->text);
        return false;
    }
    const int tag = web_tag_find(word_of(markup.name));
    if (tag < 0 && scanner->suspicious && markup.name.find('<') != std::string::npos) {
        take_byte(scanner, &next->text);
        return false;
    }
    pass(scanner, markup);
    if (tag < 0) {
        next->text += markup.name;
        return false;
    }
    next->tag = tag;
    next->closing = markup.closing;
    return true;
}

void take_entity(WebScanner *scanner, std::string *text) {
    const Markup markup = markup_at(*scanner, ';');
    const bool is_long = markup.name.size() > k_markup_name_max;
    if (!markup.ended || is_long) {
        note_spoilt(scanner, is_long ? "long_entity" : "unended_entity", "&",
                    "a \"&\" that begins no entity is kept as text");
        take_byte(scanner, text);
        return;
    }
    if (scanner->suspicious && markup.name.find_first_of("<&\n") != std::string::npos) {
        take_byte(scanner, text);
        return;
    }
    const uint64_t word = word_of(markup.name);
    *text += word == name_word("amp") ? "&" : word == name_word("lt") ? "<" : markup.name;
    pass(scanner, markup);
}

void take_zeros(WebScanner *scanner) {
    const size_t behind =
        std::min(scanner->bytes.find_first_not_of('\0', scanner->at), scanner->bytes.size());
    note_zeros(scanner);
    scanner->at = behind;
}

void take_run(WebScanner *scanner, std::string *text) {
    constexpr std::string_view k_special("<&\n\0", 4);
    const size_t end =
        std::min(scanner->bytes.find_first_of(k_special, scanner->at), scanner->bytes.size());
    text->append(scanner->bytes, scanner->at, end - scanner->at);
    scanner->at = end;
}

}  // namespace

WebScanner web_scanner(std::string_view bytes, bool suspicious) {
    WebScanner scanner = {bytes, suspicious, 0, {}, {0}};
    for (size_t at = 0; (at = bytes.find('\n', at)) != std::string_view::npos;) {
        scanner.line_starts.push_back(++at);
    }
    return scanner;
}

bool scan_tag(WebScanner *scanner, ScannedTag *next) {
    *next = {k_tag_eof, true, "", scanner->at};
    while (scanner->at < scanner->bytes.size()) {
        switch (scanner->bytes[scanner->at]) {
        case '<':
            if (take_tag(scanner, next)) {
                return true;
            }
            break;
        case '&':
            take_entity(scanner, &next->text);
            break;
        case '\n':
            next->text += line_end_at(*scanner, scanner->at);
            ++scanner->at;
            break;
        case '\0':
            take_zeros(scanner);
            break;
        default:
            take_run(scanner, &next->text);
            break;
        }
    }
    return false;
}

size_t line_of(const WebScanner &scanner, size_t at) {
    return static_cast<size_t>(
        std::upper_bound(scanner.line_starts.begin(), scanner.line_starts.end(), at) -
        scanner.line_starts.begin());
}
