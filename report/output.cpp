#include "report/output.h"

#include "core/busy.h"
#include "core/byte_stream.h"
#include "core/check.h"
#include "core/host_files.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "core/paths.h"
#include "core/text.h"
#include "web/links.h"
#include "web/options.h"

#include <cstring>

constexpr uint32_t k_console_line = 48;  // characters sent to the console at a time
constexpr char k_default_name[] = ".\\Output";
constexpr char k_suffix[] = ".txt";
static_assert(k_oname_max + sizeof k_suffix - 1 <= k_output_name_max);
static_assert(sizeof k_default_name - 1 <= k_oname_max);

static struct Output {
    bool open;
    bool to_file;
    bool aborted;            // the abort flag
    bool stopped;            // cancelled or failed: nothing opens the stream again in this report
    bool backslash;          // the next character is literal
    char quote;              // the one that is open; 0 is none
    char last;               // the character before, for the newline mode
    const char *exact_path;  // given by output_set_path(); null for none
    FILE *file;
    ByteOutput bytes;
    uint32_t console_position;
    uint32_t console_count;
    char console_line[k_console_line];
    char name[k_output_name_max + 1];
    char text[k_scanned_text_max + 1];
} output;

namespace {

// A dot in a folder's name does not count.
bool has_suffix(const char *name) {
    const char *p = name + strlen(name);
    while (p > name && !ends_folder(p[-1])) {
        if (*--p == '.') {
            return true;
        }
    }
    return false;
}

// Where the "oname" option leads.
const char *make_file_name() {
    if (option_oname()[0] == 0) {
        set_option_oname(k_default_name);
    }
    strcpy(output.name, option_oname());
    if (!has_suffix(output.name)) {
        strcat(output.name, k_suffix);
    }
    for (char *p = output.name; *p != 0; ++p) {
        if (*p == '\\') {
            *p = k_path_separator;
        }
    }
    return output.name;
}

ErrorCode open_file() {
    const char *path = output.exact_path != nullptr ? output.exact_path : make_file_name();
    output.file = file_open(path, "wb");
    if (output.file == nullptr) {
        set_resting_status("Ready");
        return report_error(k_cannot_open_output);
    }
    byte_output_bind(&output.bytes, output.file);
    set_resting_status("Writing output file...");
    return 0;
}

void open_console() {
    output.console_count = 0;
    output.console_position = 0;
    console_clear();
}

void flush_console() {
    console_insert(output.console_position, output.console_line, output.console_count);
    output.console_position += output.console_count;
    output.console_count = 0;
}

// Remembers that this report is over for the stream.
ErrorCode stop(ErrorCode code) {
    output.stopped = true;
    return code;
}

// The status line ends on "OUTPUT ABORTED", whatever closing has to say.
ErrorCode cancel() {
    output_close();
    report_error(k_aborted);
    show_status_message("OUTPUT ABORTED");
    return stop(k_aborted);
}

// Applies the escape rules. False when the character is used up by them.
bool unescape(char *c) {
    if (output.backslash) {
        output.backslash = false;
        if (*c == 'n') {
            *c = '\n';
        }
        return true;
    }
    if (output.quote == 0 && *c == '\\') {
        output.backslash = true;
        return false;
    }
    if (*c == output.quote) {
        output.quote = 0;
    } else if (output.quote == 0 && (*c == '\'' || *c == '"')) {
        output.quote = *c;
    }
    return true;
}

// Writes a character as the newline mode wants it: "lf" has no CR, "cr" no LF, "crlf" keeps both.
// In mode "cr" a lone LF becomes CR.
ErrorCode write_to_file(char c) {
    const bool after_cr = output.last == '\r';
    output.last = c;
    switch (option_onewl()) {
    case k_newline_lf:
        if (c == '\r') {
            return 0;
        }
        break;
    case k_newline_cr:
        if (c == '\n') {
            if (after_cr) {
                return 0;
            }
            c = '\r';
        }
        break;
    default:
        break;
    }
    return byte_output_put(&output.bytes, static_cast<uint8_t>(c));
}

void append_to_console(char c) {
    if (output.console_count == k_console_line) {
        flush_console();
    }
    output.console_line[output.console_count++] = c;
}

// Hands one character on. Output may have been cancelled, or closed by recovery, while messages
// were let through.
ErrorCode put(char c) {
    if (!output.to_file) {
        append_to_console(c);
    }
    if (!output_pump()) {
        return output.stopped ? k_aborted : cancel();
    }
    if (!output.to_file) {
        return 0;
    }
    const ErrorCode code = write_to_file(c);
    return code != 0 ? stop(code) : 0;
}

void mark_closed() {
    output.open = false;
    output.aborted = false;
    output.file = nullptr;
    busy_set(false);
    output_ended();
    set_resting_status("Ready");
}

}  // namespace

void output_reset() {
    output.open = false;
    output.file = nullptr;
    output.console_count = 0;
    output.to_file = option_odest() == k_output_file;
    strcpy(output.name, option_oname());
}

ErrorCode output_open() {
    if (output.open) {
        return report_error(k_output_in_use);
    }
    set_resting_status("Working...");
    output.to_file = option_odest() == k_output_file;
    output.backslash = false;
    output.quote = 0;
    output.last = 0;
    if (output.to_file) {
        const ErrorCode code = open_file();
        if (code != 0) {
            return code;
        }
    } else {
        open_console();
    }
    output.aborted = false;
    output.open = true;
    busy_set(true);
    output_began(output.to_file);
    return 0;
}

ErrorCode output_char(char c) {
    if (output.stopped) {
        return k_aborted;
    }
    if (output.aborted) {
        return cancel();
    }
    if (c == 0) {
        return 0;
    }
    if (!output.open) {
        const ErrorCode code = output_open();
        if (code != 0) {
            return stop(code);
        }
    }
    return unescape(&c) ? put(c) : 0;
}

ErrorCode output_string(const char *s) {
    ErrorCode code = 0;
    while (code == 0 && *s != 0) {
        code = output_char(*s++);
    }
    return code;
}

ErrorCode output_text(BlockHandle text) {
    text_copy_out(output.text, text, k_scanned_text_max);
    return output_string(output.text);
}

ErrorCode output_newline() {
    return output_char('\n');
}

bool output_pump() {
    if (!output.aborted && !output.stopped) {
        pump_messages();
    }
    return !output.aborted && !output.stopped;
}

ErrorCode output_close() {
    if (!output.open) {
        return 0;
    }
    ErrorCode code = 0;
    if (output.to_file) {
        code = byte_output_flush(&output.bytes);
        if (fclose(output.file) != 0 && code == 0) {
            code = report_error(k_cannot_write_web);
        }
    } else {
        flush_console();
    }
    mark_closed();
    return code;
}

void output_clear_stop() {
    CHECK(!output.open);
    output.stopped = false;
}

void output_abort() {
    output.aborted = output.open;
}

bool output_aborted() {
    return output.aborted || output.stopped;
}

void output_set_path(const char *path) {
    output.exact_path = path;
}

void output_recover() {
    if (!output.open) {
        return;
    }
    if (output.file != nullptr) {
        fclose(output.file);
    }
    mark_closed();
    output.stopped = true;
}
