#include "cli/new_text.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "core/block_arena.h"
#include "core/errors.h"
#include "core/host_files.h"
#include "core/text.h"

#include <cstring>

constexpr uint32_t k_arena_chars = k_block_count * k_text_block_chars;

static struct NewText { std::string bytes; } text;

namespace {

int refuse_with(const char *message, int status) {
    host_message(message);
    return status;
}

int fail_with(const char *message) {
    host_file_message(message);
    return k_exit_failed;
}

// Reads on while there is a chance that the arena takes what came so far: a file may be endless.
int read_from(FILE *file) {
    char bytes[1024];
    size_t n = 0;
    while ((n = fread(bytes, 1, sizeof bytes, file)) > 0) {
        if (memchr(bytes, 0, n) != nullptr) {
            return refuse_with("a text cannot hold NUL characters", k_exit_refused);
        }
        text.bytes.append(bytes, n);
        if (text.bytes.size() > k_arena_chars) {
            return refuse_with(error_message(k_out_of_memory), k_exit_memory);
        }
    }
    return ferror(file) == 0 ? k_exit_done : fail_with("cannot be read");
}

}  // namespace

int new_text_take(const CommandLine &line) {
    if (!line.text_file) {
        text.bytes = line.text.value_or("");
        return k_exit_done;
    }
    const char *name = line.text_file->c_str();
    host_name_file(name);
    if (is_standard_stream(name)) {
        if (is_standard_stream(line.file.c_str())) {
            return refuse_with("the web and the text cannot both be read here", k_exit_failed);
        }
        return read_from(stdin);
    }
    FILE *file = file_open(name, "rb");
    if (file == nullptr) {
        return fail_with("cannot be opened");
    }
    const int status = read_from(file);
    fclose(file);
    return status;
}

const char *new_text_bytes() {
    return text.bytes.data();
}

uint32_t new_text_size() {
    return static_cast<uint32_t>(text.bytes.size());
}

bool new_text_equals(BlockHandle head) {
    const std::string there = text_bytes(head);
    size_t at = 0;
    char before = 0;
    for (const char ch : text.bytes) {
        if (ch == '\n' && before != '\r') {
            at += at < there.size() && there[at] == '\r' ? 1u : 0u;
        }
        if (at >= there.size() || there[at] != ch) {
            return false;
        }
        ++at;
        before = ch;
    }
    return at == there.size();
}

uint32_t new_text_bare_line_feeds() {
    uint32_t count = 0;
    char before = 0;
    for (const char ch : text.bytes) {
        count += ch == '\n' && before != '\r' ? 1u : 0u;
        before = ch;
    }
    return count;
}
