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

void print_json(const nlohmann::ordered_json &value) {
    print(value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n");
}

void print_name(std::string_view name, bool zero) {
    print(zero ? std::string(name) + '\0' : shown(name) + '\n');
}

void print_line(std::string_view line) {
    print(shown(line) + '\n');
}

bool colours_wanted() {
    const char *unwanted = getenv("NO_COLOR");
    return on_terminal() && (unwanted == nullptr || *unwanted == 0);
}

std::string coloured(std::string_view text, Colour colour) {
    if (!colours_wanted()) {
        return std::string(text);
    }
    return std::string("\x1b[3") + static_cast<char>(colour) + "m" + std::string(text) + "\x1b[m";
}
