#include "cli/new_text.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/web_file.h"
#include "core/block_arena.h"
#include "core/errors.h"
#include "core/host_files.h"
#include "core/text.h"

#include <cstring>

constexpr uint32_t k_arena_chars = k_block_count * k_text_block_chars;

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
int read_from(FILE *file, std::string *text) {
    char bytes[1024];
    size_t n = 0;
    while ((n = fread(bytes, 1, sizeof bytes, file)) > 0) {
        if (memchr(bytes, 0, n) != nullptr) {
            return refuse_with("a text cannot hold NUL characters", k_exit_refused);
        }
        text->append(bytes, n);
        if (text->size() > k_arena_chars) {
            return refuse_with(error_message(k_out_of_memory), k_exit_memory);
        }
    }
    return ferror(file) == 0 ? k_exit_done : fail_with("cannot be read");
}

// An argument "-" stands for standard input, the value of --text for itself.
const std::string *text_file_of(const CommandLine &line) {
    if (line.more_text == "-") {
        return &*line.more_text;
    }
    return line.text_file ? &*line.text_file : nullptr;
}

}  // namespace

bool has_new_text(const CommandLine &line) {
    return line.text || line.text_file || line.more_text;
}

int take_new_text(const CommandLine &line, std::string *text) {
    const std::string *name = text_file_of(line);
    if (name == nullptr) {
        *text = line.text ? *line.text : line.more_text.value_or("");
        return k_exit_done;
    }
    if (is_standard_stream(name->c_str()) && is_standard_stream(line.file.c_str())) {
        host_name_file(name->c_str());
        return refuse_with("the web and the text cannot both be read here", k_exit_failed);
    }
    return read_text_file(*name, text);
}

int read_text_file(const std::string &name, std::string *text) {
    host_name_file(name.c_str());
    text->clear();
    if (is_standard_stream(name.c_str())) {
        return read_from(stdin, text);
    }
    FILE *file = file_open(name.c_str(), "rb");
    if (file == nullptr) {
        return fail_with("cannot be opened");
    }
    const int status = read_from(file, text);
    fclose(file);
    return status;
}
