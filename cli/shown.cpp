#include "cli/shown.h"

#include "cli/host_qvx.h"
#include "core/text.h"
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

const char *line_end(uint8_t newline) {
    switch (newline) {
    case k_newline_lf:
        return "\n";
    case k_newline_cr:
        return "\r";
    default:
        return "\r\n";
    }
}

}  // namespace

std::string printable(const std::string &bytes) {
    constexpr char k_hex[] = "0123456789abcdef";
    std::string shown;
    for (size_t i = 0; i < bytes.size();) {
        size_t hidden = control_size(bytes, i);
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

void print_bytes(BlockHandle head) {
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        host_print(text_block_chars(h), block_used(h));
    }
}

void print_lines(BlockHandle head, uint8_t newline) {
    const std::string bytes = text_bytes(head);
    const std::string end = line_end(newline);
    std::string shown;
    size_t begin = 0;
    for (size_t at; (at = bytes.find("\r\n", begin)) != std::string::npos; begin = at + 2) {
        shown.append(bytes, begin, at - begin).append(end);
    }
    shown.append(bytes, begin);
    host_print(shown.data(), static_cast<uint32_t>(shown.size()));
}
