#include "cli/shown.h"

#include "core/text.h"
#include "platform/program.h"
#include "web/options.h"

namespace {

// The length of the control character that stands there; 0 for none.
size_t control_size(const std::string &bytes, size_t at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    if (first < 0x20 || first == 0x7F) {
        return 1;
    }
    const auto second = static_cast<unsigned char>(at + 1 < bytes.size() ? bytes[at + 1] : 0);
    return first == 0xC2 && second >= 0x80 && second < 0xA0 ? 2 : 0;
}

// A tab, or a piece of a line end.
bool shapes_text(const std::string &bytes, size_t at) {
    return bytes[at] == '\t' || bytes[at] == '\n' || bytes.compare(at, 2, "\r\n") == 0;
}

const char *line_end(uint8_t newline) {
    switch (newline) {
    case k_newline_lf:
        return "\n";
    case k_newline_cr:
        return "\r";
    case k_newline_crlf:
        return "\r\n";
    default:
        return k_native_crlf ? "\r\n" : "\n";
    }
}

}  // namespace

std::string printable(const std::string &bytes, bool keeps_lines) {
    constexpr char k_hex[] = "0123456789abcdef";
    std::string shown;
    for (size_t i = 0; i < bytes.size();) {
        size_t hidden = keeps_lines && shapes_text(bytes, i) ? 0 : control_size(bytes, i);
        if (hidden == 0) {
            shown += bytes[i++];
        }
        for (; hidden > 0; --hidden, ++i) {
            const auto byte = static_cast<unsigned char>(bytes[i]);
            shown += {'\\', 'x', k_hex[byte >> 4], k_hex[byte & 15]};
        }
    }
    return shown;
}

std::string text_bytes(BlockHandle head) {
    std::string bytes(text_size(head), '\0');
    text_copy_out(bytes.data(), head, static_cast<uint32_t>(bytes.size()));
    return bytes;
}

std::string in_line_ends(const std::string &bytes, uint8_t newline) {
    const std::string end = line_end(newline);
    std::string shown;
    size_t begin = 0;
    for (size_t at; (at = bytes.find("\r\n", begin)) != std::string::npos; begin = at + 2) {
        shown.append(bytes, begin, at - begin).append(end);
    }
    return shown.append(bytes, begin);
}

uint8_t json_newline(uint8_t newline) {
    return newline != 0 ? newline : uint8_t{k_newline_lf};
}
