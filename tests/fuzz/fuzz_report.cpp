// Any web, format and selection reports what the model says, to the console and to a file, also
// when it is cancelled on the way; nothing is left behind.
//
// The input: a byte each for report type, coverage, newline mode and cancelling; format and
// selection, each ended by a zero; the web file.
#include "tests/fuzz/fuzz_target.h"

#include "tests/engine/engine_test.h"
#include "tests/engine/report_model.h"

#include <sys/mman.h>

namespace {

// A file in memory: a disk would take most of the time.
std::string file_report() {
    static const int file = memfd_create("report", 0);
    const std::string path = "/proc/self/fd/" + std::to_string(file);
    write_file(path, "");
    output_set_path(path.c_str());
    set_option_odest(k_output_file);
    report_run();
    set_option_odest(k_output_console);
    output_set_path(nullptr);
    return file_bytes(path);
}

std::string console_report() {
    host().console.clear();
    report_run();
    return host().console;
}

}  // namespace

const size_t k_longest_input = 8000;  // keeps the model quick

void run_target(FuzzInput input) {
    const uint8_t type = next_byte(&input);
    const uint8_t all = next_byte(&input);
    const uint8_t newline = next_byte(&input);
    const uint32_t cancelled_at = next_byte(&input);
    const std::string format = next_string(&input);
    host().selected_text = next_string(&input);
    read_web(std::string(input));
    next_cell();
    go_to_name("home");
    set_option_odest(k_output_console);
    set_option_rtype(static_cast<uint8_t>(1 + type % k_rtype_max));
    set_option_rall(all % 2);
    set_option_onewl(static_cast<uint8_t>(1 + newline % 3));
    set_option_rfmt(format.c_str());

    const std::string expected = model_report();
    require(console_report() == expected, "the console is different");
    require(file_report() == model_newlines(expected, option_onewl()), "the file is different");
    at_pump(cancelled_at, output_abort);
    const std::string cut = console_report();
    require(cut == (cancelled_at == 0 ? expected : expected.substr(0, cancelled_at)),
            "a cancelled report is not cut where it was cancelled");
    at_pump(cancelled_at, output_abort);
    file_report();
    host().on_pump = nullptr;
    require(console_report() == expected, "the report after a cancelled one differs");
}
