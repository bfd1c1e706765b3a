#include "cli/print.h"

#include "cli/host_qvx.h"
#include "cli/shown.h"
#include "platform/program.h"

#include <nlohmann/json.hpp>

#include <cstdlib>

// Asked of the system once: 0 until then.
static struct Print {
    enum class Asked : uint8_t { not_yet, no, yes };
    Asked terminal;
} print_state;

namespace {

constexpr char k_hex[] = "0123456789abcdef";

bool on_terminal() {
    if (print_state.terminal == Print::Asked::not_yet) {
        print_state.terminal = output_is_terminal() ? Print::Asked::yes : Print::Asked::no;
    }
    return print_state.terminal == Print::Asked::yes;
}

}  // namespace

std::string shown(std::string_view text) {
    return on_terminal() ? printable(std::string(text)) : std::string(text);
}

void print(std::string_view text) {
    host_print(text.data(), static_cast<uint32_t>(text.size()));
}

std::string json_text(const nlohmann::ordered_json &value, int indent) {
    std::string text = value.dump(indent, ' ', false, nlohmann::json::error_handler_t::replace);
    if (text.find_first_of("\x7f\xc2") == std::string::npos) {
        return text;
    }
    std::string escaped;
    for (size_t i = 0; i < text.size(); ++i) {
        const auto next = static_cast<unsigned char>(i + 1 < text.size() ? text[i + 1] : 0);
        if (text[i] == '\x7f') {
            escaped += "\\u007f";
        } else if (text[i] == '\xc2' && next >= 0x80 && next < 0xa0) {
            escaped += {'\\', 'u', '0', '0', next < 0x90 ? '8' : '9', k_hex[next & 15]};
            ++i;
        } else {
            escaped += text[i];
        }
    }
    return escaped;
}

void print_json(const nlohmann::ordered_json &value) {
    print(json_text(value, -1) + "\n");
}

void print_text(const std::string &text) {
    print(output_is_terminal() ? printable(text, true) : text);
}

void print_name(std::string_view name, bool zero) {
    print(zero ? std::string(name) + '\0' : shown(name) + '\n');
}

void print_line(std::string_view line) {
    print(shown(line) + '\n');
}

bool colours_wanted() {
    if (!on_terminal()) {
        return false;
    }
    const char *unwanted = getenv("NO_COLOR");
    return unwanted == nullptr || *unwanted == 0;
}

std::string coloured(std::string_view text, Colour colour) {
    if (!colours_wanted()) {
        return std::string(text);
    }
    return std::string("\x1b[3") + static_cast<char>(colour) + "m" + std::string(text) + "\x1b[m";
}
