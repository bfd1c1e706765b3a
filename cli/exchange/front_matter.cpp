#include "cli/exchange/front_matter.h"

#include "cli/link_words.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace {

constexpr std::string_view k_key_prefix = "qvx-";

struct ShortEscape {
    char byte;
    char letter;
};
constexpr ShortEscape k_short_escapes[] = {
    {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}, {'"', '"'}, {'\\', '\\'}};

void append_byte(std::string *to, char byte) {
    constexpr char k_hex[] = "0123456789abcdef";
    const auto value = static_cast<uint8_t>(byte);
    for (const ShortEscape &row : k_short_escapes) {
        if (row.byte == byte) {
            *to += {'\\', row.letter};
            return;
        }
    }
    if (value < 0x20 || value >= 0x7F) {
        *to += {'\\', 'x', k_hex[value >> 4], k_hex[value & 15]};
    } else {
        *to += byte;
    }
}

std::string in_quotes(std::string_view value) {
    std::string text = "\"";
    for (size_t at = 0; at < value.size();) {
        const size_t from = at;
        const uint32_t code = next_character(value, &at);
        if (code >= 0xA0 && code != k_no_character) {
            text += value.substr(from, at - from);
        } else {
            for (const char byte : value.substr(from, at - from)) {
                append_byte(&text, byte);
            }
        }
    }
    return text + '"';
}

// One character of a value, from `at`; none where it is not as in_quotes() writes it.
std::optional<char> unquoted_byte(std::string_view text, size_t *at) {
    if (text[*at] != '\\') {
        return text[(*at)++];
    }
    const std::string_view escape = text.substr(*at + 1);
    for (const ShortEscape &row : k_short_escapes) {
        if (escape.starts_with(row.letter)) {
            *at += 2;
            return row.byte;
        }
    }
    uint8_t byte = 0;
    if (escape.size() < 3 || escape[0] != 'x' ||
        std::from_chars(escape.data() + 1, escape.data() + 3, byte, 16).ptr != escape.data() + 3) {
        return {};
    }
    *at += 4;
    return static_cast<char>(byte);
}

std::optional<std::string> unquoted(std::string_view text) {
    if (text.size() < 2 || !text.starts_with('"') || !text.ends_with('"')) {
        return {};
    }
    std::string value;
    text = text.substr(1, text.size() - 2);
    for (size_t at = 0; at < text.size();) {
        const std::optional<char> byte = unquoted_byte(text, &at);
        if (!byte || *byte == 0) {
            return {};
        }
        value += *byte;
    }
    return value;
}

// Takes a line that is ours.
bool take_field(std::string_view line, Fields *fields) {
    const size_t colon = line.find(": ");
    if (!line.starts_with(k_key_prefix) || colon == std::string_view::npos) {
        return false;
    }
    const std::optional<std::string> value = unquoted(line.substr(colon + 2));
    if (value) {
        fields->emplace_back(line.substr(k_key_prefix.size(), colon - k_key_prefix.size()), *value);
    }
    return value.has_value();
}

// The line from `at` without its end; *at moves behind that.
std::string_view take_line(std::string_view text, size_t *at) {
    const size_t end = std::min(text.find('\n', *at), text.size());
    const std::string_view line = text.substr(*at, end - *at);
    *at = std::min(end + 1, text.size());
    return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

}  // namespace

std::string front_matter_of(const Fields &fields) {
    std::string text;
    for (const auto &[key, value] : fields) {
        text += std::string(k_key_prefix) + key + ": " + in_quotes(value) + "\n";
    }
    return text.empty() ? "" : "---\n" + text + "---\n";
}

FrontMatter read_front_matter(std::string_view markdown) {
    FrontMatter whole = {{}, "", markdown};
    size_t at = 0;
    if (take_line(markdown, &at) != "---") {
        return whole;
    }
    std::string others;
    while (at < markdown.size()) {
        const std::string_view line = take_line(markdown, &at);
        if (line == "---" || line == "...") {
            whole.body = markdown.substr(at);
            whole.rest = whole.fields.empty() || !others.empty()
                             ? "---\n" + others + std::string(line) + "\n"
                             : "";
            return whole;
        }
        if (!take_field(line, &whole.fields)) {
            others += std::string(line) + "\n";
        }
    }
    return {{}, "", markdown};
}
