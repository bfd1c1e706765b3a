// The host of qvx: standard error for messages, standard output as the console, or the view that is
// shown (cli/host_view_qvx.h). What only a view has a use for is in cli/no_view.cpp.
#include "cli/host_qvx.h"

#include "cli/exit_status.h"
#include "cli/host_view_qvx.h"
#include "core/errors.h"
#include "core/host_files.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "web/options.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

constexpr ErrorCode k_cannot_write_output = -9;

// The messages that are about a file function that failed.
constexpr ErrorCode k_file_errors[] = {k_cannot_open_web, k_cannot_write_web, k_cannot_read_web,
                                       k_cannot_open_output, k_cannot_write_output};

static struct Host {
    const char *file;       // named in messages
    const char *selection;  // of the active pane
    uint8_t newline;        // of the console; 0: bytes as they come
    char last;              // byte that came to the console last
    bool warned_low;        // of running short on blocks
    int output_error;       // errno of the first byte that standard output lost; 0 is none
    bool holds_messages;
    const char *held_message;
    const char *held_reason;
    std::string *kept_console;  // null: goes to standard output
    const HostView *view;       // null: none
} host = {"", "", 0, 0, false, 0, false, "", "", nullptr, nullptr};

namespace {

bool is_file_error(const char *text) {
    return std::any_of(std::begin(k_file_errors), std::end(k_file_errors),
                       [text](ErrorCode code) { return text == error_message(code); });
}

void print_message(const char *text, const char *reason) {
    if (host.view != nullptr) {
        const std::string behind = *reason == 0 ? "" : std::string(": ") + reason;
        host.view->message((text + behind).c_str());
        return;
    }
    fflush(stdout);
    fprintf(stderr, "qvx: %s%s%s%s%s\n", host.file, *host.file == 0 ? "" : ": ", text,
            *reason == 0 ? "" : ": ", reason);
}

const char *reason_of(int error) {
    return error == 0 ? "" : strerror(error);
}

void note_lost_output(bool lost) {
    if (lost && host.output_error == 0) {
        host.output_error = errno != 0 ? errno : EIO;
    }
}

void print_on_console(const char *bytes, uint32_t count) {
    if (host.kept_console != nullptr) {
        host.kept_console->append(bytes, count);
    } else {
        host_print(bytes, count);
    }
}

// Keeps a byte of console output back as the newline mode says.
bool console_drops(char ch, char before) {
    switch (host.newline) {
    case k_newline_lf:
        return ch == '\r';
    case k_newline_cr:
        return ch == '\n' && before == '\r';
    default:
        return false;
    }
}

// Before the program ends at once.
void leave_view() {
    if (host.view != nullptr) {
        host.view->leave();
    }
    fflush(stdout);
}

}  // namespace

void host_show_view(const HostView *view) {
    host.view = view;
}

const HostView *host_view() {
    return host.view;
}

void host_name_file(const char *name) {
    host.file = name;
    errno = 0;
}

void host_message(const char *text) {
    print_message(text, "");
}

void host_file_message(const char *text) {
    print_message(text, reason_of(errno));
}

void host_hold_messages(bool hold) {
    host.holds_messages = hold;
    if (hold) {
        host.held_message = "";
        host.held_reason = "";
    }
}

void host_print_held() {
    print_message(host.held_message, host.held_reason);
}

const char *host_held_message() {
    return host.held_message;
}

const char *host_held_reason() {
    return host.held_reason;
}

void host_select(const char *text) {
    host.selection = text;
}

void host_console_newline(uint8_t mode) {
    host.newline = mode;
}

void host_keep_console(std::string *into) {
    host.kept_console = into;
}

void host_print(const char *bytes, uint32_t count) {
    note_lost_output(fwrite(bytes, 1, count, stdout) != count);
}

bool host_finish_output() {
    note_lost_output(fflush(stdout) != 0);
    if (host.output_error != 0) {
        host_name_file("standard output");
        print_message(error_message(k_cannot_write_output), reason_of(host.output_error));
    }
    return host.output_error == 0;
}

// ---- Messages and questions ---------------------------------------------------------------------

// A reason is a static string of the C library.
void show_status_message(const char *text) {
    const char *reason = is_file_error(text) ? reason_of(errno) : "";
    if (host.holds_messages) {
        host.held_message = text;
        host.held_reason = reason;
    } else {
        print_message(text, reason);
    }
}

void show_warning(const char *text, const char *) {
    host_message(text);
}

// The arena's offer to save and exit is the only such question while there is no user: it is
// declined, and passed on once as a warning.
bool ask_ok_cancel(const char *text, const char *) {
    if (host.view != nullptr) {
        return host.view->ask_ok(text);
    }
    if (low_on_blocks() && !host.warned_low) {
        host.warned_low = true;
        host_message("short on memory: fewer than 100 blocks are left");
    }
    return false;
}

void end_program(int status) {
    leave_view();
    _Exit(status < 0 ? k_exit_memory : status);
}

void check_failed(const char *what) {
    leave_view();
    fprintf(stderr, "qvx: %s: %s\n", error_message(k_internal_error), what);
    _Exit(k_exit_fault);
}

// ---- The view: what stands for a selection, and the console -------------------------------------

const char *selected_text() {
    return host.selection;
}

void console_clear() {
    if (host.view != nullptr) {
        host.view->console_clear();
        return;
    }
    host.last = 0;
}

// The engine inserts where the last insertion ended, so without a view the position is always that
// of the output.
void console_insert(uint32_t position, const char *bytes, uint32_t count) {
    if (host.view != nullptr) {
        host.view->console_insert(position, bytes, count);
        return;
    }
    if (host.newline == 0) {
        print_on_console(bytes, count);
        return;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const char before = host.last;
        host.last = bytes[i];
        if (!console_drops(bytes[i], before)) {
            const bool turned = host.newline == k_newline_cr && bytes[i] == '\n';
            print_on_console(turned ? "\r" : &bytes[i], 1);
        }
    }
}

// ---- Files --------------------------------------------------------------------------------------

const char *file_read_mode() {
    return "rb";
}
