#include "cli/exchange/markdown_read.h"

#include "cli/link_words.h"
#include "cli/note.h"
#include "core/names.h"
#include "pane/characters.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::string_view k_punctuation = "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";

struct NamedCharacter {
    std::string_view name;
    uint32_t code;
};
constexpr NamedCharacter k_named[] = {{"amp", '&'},  {"lt", '<'},    {"gt", '>'},
                                      {"quot", '"'}, {"apos", '\''}, {"nbsp", 0xA0}};

// A line, as far as it is read.
struct Reading {
    const CellOfTarget *cell_of_target;
    std::string out;
};

// A piece of a line from `begin` to `end`, and where what belongs to it ends.
struct Span {
    size_t begin;
    size_t end;
    size_t after;  // 0: there is none
};

std::string decoded(const CellOfTarget &cell_of_target, std::string_view line);

// ---- Escapes and references ---------------------------------------------------------------------

// Of what stands between '&' and ';'; 0 for an unknown one.
uint32_t code_of_reference(std::string_view name) {
    for (const NamedCharacter &row : k_named) {
        if (row.name == name) {
            return row.code;
        }
    }
    if (!name.starts_with('#')) {
        return 0;
    }
    const bool hexadecimal = name.starts_with("#x") || name.starts_with("#X");
    name.remove_prefix(hexadecimal ? 2 : 1);
    uint32_t code = 0;
    const char *begin = name.data();
    const char *end = begin + name.size();
    const auto result = std::from_chars(begin, end, code, hexadecimal ? 16 : 10);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return result.ec == std::errc() && result.ptr == end && code <= 0x10FFFF && !surrogate ? code
                                                                                           : 0;
}

size_t take_reference(Reading *reading, std::string_view line, size_t at) {
    const size_t end = line.substr(0, at + 12).find(';', at);
    const uint32_t code =
        end == std::string_view::npos ? 0 : code_of_reference(line.substr(at + 1, end - at - 1));
    if (code == 0) {
        reading->out += '&';
        return at + 1;
    }
    char bytes[4];
    reading->out.append(bytes, encode_character(bytes, code));
    return end + 1;
}

size_t take_escape(Reading *reading, std::string_view line, size_t at) {
    const bool escapes =
        at + 1 < line.size() && k_punctuation.find(line[at + 1]) != std::string_view::npos;
    reading->out += line[escapes ? at + 1 : at];
    return at + (escapes ? 2U : 1U);
}

// Code between two equal rows of backticks stays as it is.
size_t take_code(Reading *reading, std::string_view line, size_t at) {
    const size_t open = std::min(line.find_first_not_of('`', at), line.size());
    size_t end = open;
    for (size_t begin; (begin = line.find('`', end)) != std::string_view::npos;) {
        end = std::min(line.find_first_not_of('`', begin), line.size());
        if (end - begin == open - at) {
            reading->out += line.substr(at, end - at);
            return end;
        }
    }
    reading->out += line.substr(at, open - at);
    return open;
}

// ---- Links --------------------------------------------------------------------------------------

// The character in front of `ch` that is not escaped.
size_t find_unescaped(std::string_view line, char ch, size_t at) {
    while (at < line.size() && line[at] != ch) {
        at += line[at] == '\\' ? 2U : 1U;
    }
    return at < line.size() ? at : std::string_view::npos;
}

// "[text](target)"; the span is the target's, and the text ends two characters in front of it.
Span link_at(std::string_view line, size_t at) {
    const size_t close = find_unescaped(line, ']', at + 1);
    const size_t inner = find_unescaped(line, '[', at + 1);
    if (close == std::string_view::npos || inner < close || line.substr(close + 1, 1) != "(") {
        return {};
    }
    const bool angled = line.substr(close + 2, 1) == "<";
    const size_t angle = angled ? find_unescaped(line, '>', close + 3) : close + 2;
    const size_t end = angle == std::string_view::npos ? angle : find_unescaped(line, ')', angle);
    return end == std::string_view::npos ? Span{} : Span{close + 2, end, end + 1};
}

Span wiki_link_at(std::string_view line, size_t at) {
    const size_t end = line.find("]]", at + 2);
    const bool whole = end != std::string_view::npos && end > at + 2 &&
                       line.substr(at + 2, end - at - 2).find('[') == std::string_view::npos;
    return whole ? Span{at + 2, end, end + 2} : Span{};
}

// Without angles, a title, and what stands behind '#'; %20 and the like are taken back.
std::string path_of_target(std::string_view target) {
    if (target.starts_with('<')) {
        target = target.substr(1, target.find('>') - 1);
    } else {
        target = target.substr(0, target.find_first_of(" \t"));
    }
    target = target.substr(0, target.find('#'));
    std::string path;
    for (size_t i = 0; i < target.size(); ++i) {
        uint8_t byte = 0;
        const char *digits = target.data() + i + 1;
        if (target[i] == '%' && i + 2 < target.size() &&
            std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            path += static_cast<char>(byte);
            i += 2;
        } else {
            path += target[i];
        }
    }
    return path;
}

bool has_word(std::string_view text, std::string_view name) {
    for (size_t at = 0; at < text.size();) {
        const std::string_view word = next_link_word(text, &at);
        if (!word.empty() && compare_names(word, name) == 0) {
            return true;
        }
    }
    return false;
}

// A link as a note has it: a word that names the cell.
std::string words_of_link(const std::string &shown, const std::string &name) {
    if (shown.empty()) {
        return link_word_of(name);
    }
    if (compare_names(shown, name) == 0) {
        return link_word_of(shown);
    }
    return has_word(shown, name) ? shown : shown + " (" + link_word_of(name) + ")";
}

// True when a word goes from one piece into the other.
bool joined(std::string_view before, std::string_view after) {
    size_t from = before.size();
    while (from > 0 && before.size() - from < 4 &&
           (from == before.size() || (before[from] & 0xC0) == 0x80)) {
        --from;
    }
    const std::string both = std::string(before.substr(from)) + std::string(after.substr(0, 8));
    const size_t seam = before.size() - from;
    for (size_t at = 0; at < seam;) {
        const std::string_view word = next_link_word(both, &at);
        if (!word.empty() && at > seam && at - word.size() < seam) {
            return true;
        }
    }
    return false;
}

void put_link(Reading *reading, const std::string &words, std::string_view rest) {
    reading->out += joined(reading->out, words) ? " " : "";
    reading->out += words;
    reading->out += joined(reading->out, rest) ? " " : "";
}

bool take_link(Reading *reading, std::string_view line, size_t at, const Span &span) {
    const std::string path = path_of_target(line.substr(span.begin, span.end - span.begin));
    const auto name = (*reading->cell_of_target)(path, false);
    if (!name) {
        return false;
    }
    const std::string shown =
        decoded(*reading->cell_of_target, line.substr(at + 1, span.begin - at - 3));
    put_link(reading, words_of_link(shown, *name), line.substr(span.after));
    return true;
}

// Alone between the brackets, a name that is spelled otherwise stays so.
std::string words_of_wiki_link(std::string_view target, const std::string &name) {
    const std::string_view last = target.substr(target.rfind('/') + 1);
    return link_word_of(compare_names(last, name) == 0 ? last : std::string_view(name));
}

bool take_wiki_link(Reading *reading, std::string_view line, const Span &span) {
    const std::string_view inner = line.substr(span.begin, span.end - span.begin);
    const size_t bar = inner.find('|');
    const std::string_view before_bar = inner.substr(0, bar);
    const std::string_view target = before_bar.substr(0, before_bar.find('#'));
    const auto name = (*reading->cell_of_target)(target, true);
    if (!name) {
        return false;
    }
    const std::string words = bar == std::string_view::npos
                                  ? words_of_wiki_link(target, *name)
                                  : words_of_link(std::string(inner.substr(bar + 1)), *name);
    put_link(reading, words, line.substr(span.after));
    return true;
}

size_t take_bracket(Reading *reading, std::string_view line, size_t at) {
    const bool picture = at > 0 && line[at - 1] == '!' && reading->out.ends_with('!') &&
                         (at < 2 || line[at - 2] != '\\');
    const bool wiki = line.substr(at, 2) == "[[";
    const Span span = wiki ? wiki_link_at(line, at) : link_at(line, at);
    if (span.after != 0 && picture) {
        reading->out += line.substr(at, span.after - at);
        return span.after;
    }
    if (span.after != 0 &&
        (wiki ? take_wiki_link(reading, line, span) : take_link(reading, line, at, span))) {
        return span.after;
    }
    reading->out += '[';
    return at + 1;
}

// ---- Lines --------------------------------------------------------------------------------------

std::string decoded(const CellOfTarget &cell_of_target, std::string_view line) {
    Reading reading = {&cell_of_target, ""};
    for (size_t at = 0; at < line.size();) {
        switch (line[at]) {
        case '\\':
            at = take_escape(&reading, line, at);
            break;
        case '`':
            at = take_code(&reading, line, at);
            break;
        case '&':
            at = take_reference(&reading, line, at);
            break;
        case '[':
            at = take_bracket(&reading, line, at);
            break;
        default:
            reading.out += line[at++];
        }
    }
    return reading.out;
}

// The row of backticks or tildes that begins or ends a block of code; "" where the line does not.
std::string fence_of(std::string_view line) {
    const size_t begin = line.find_first_not_of(' ');
    if (begin > 3 ||  // npos is more, too
        (line[begin] != '`' && line[begin] != '~')) {
        return "";
    }
    const size_t end = std::min(line.find_first_not_of(line[begin], begin), line.size());
    const bool code_in_line = line[begin] == '`' && line.find('`', end) != std::string_view::npos;
    return end - begin < 3 || code_in_line ? "" : std::string(line.substr(begin, end - begin));
}

// True for a line of code, or one that begins or ends it. `open` is the fence of the code that the
// line is in, "" outside of code.
bool is_code(std::string *open, std::string_view line) {
    const std::string fence = fence_of(line);
    if (open->empty()) {
        *open = fence;
        return !fence.empty();
    }
    if (fence.starts_with(*open) &&
        line.find_first_not_of(" \t" + fence.substr(0, 1)) == std::string_view::npos) {
        open->clear();
    }
    return true;
}

// A hard break: a '\' that nothing escapes, in front of a line end.
bool ends_with_break(std::string_view line) {
    const size_t last = line.find_last_not_of('\\');
    const size_t count = line.size() - (last == std::string_view::npos ? 0 : last + 1);
    return count % 2 != 0;
}

}  // namespace

std::string text_of_markdown(std::string_view markdown, const CellOfTarget &cell_of_target) {
    std::string text;
    std::string fence;
    const auto lines = lines_of(markdown);
    for (size_t i = 0; i < lines.size(); ++i) {
        std::string_view line = lines[i];
        text += i == 0 ? "" : "\r\n";
        if (is_code(&fence, line)) {
            text += line;
            continue;
        }
        if (i + 1 < lines.size() && ends_with_break(line)) {
            line.remove_suffix(1);
        }
        text += decoded(cell_of_target, line);
    }
    return text;
}
