#include "cli/cells/edited_text.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/new_text.h"
#include "cli/note.h"
#include "core/host_files.h"
#include "platform/editor.h"
#include "platform/program.h"

#include <filesystem>

namespace fs = std::filesystem;

static struct EditedText {
    std::string path;     // of the file that an editor works on, "" for none
    std::string subject;  // of messages
} edited;

namespace {

std::string where_kept() {
    return "the edited text is kept in " + edited.path;
}

// A view shows one message at a time, so that this one says everything.
Editing fail(const std::string &message) {
    std::error_code ignored;
    const bool kept = fs::exists(reinterpret_cast<const char8_t *>(edited.path.c_str()), ignored);
    host_message((message + (kept ? ": " + where_kept() : "")).c_str());
    return Editing::failed;
}

// And no file is left.
Editing fail_with_reason(const char *message) {
    host_file_message(message);
    drop_edited_file();
    return Editing::failed;
}

std::string as_file(const std::string &text) {
    const bool open_line = !text.empty() && text.back() != '\n';
    const std::string whole = open_line ? text + "\r\n" : text;
    return k_native_crlf ? whole : with_lf(whole);
}

// `before` is the text that the editor was given.
std::string as_text(const std::string &bytes, const std::string &before) {
    std::string text = with_crlf(bytes);
    if ((before.empty() || before.back() != '\n') && text.ends_with("\r\n")) {
        text.resize(text.size() - 2);
    }
    return text;
}

bool write_bytes(const std::string &bytes) {
    FILE *file = file_open(edited.path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return fclose(file) == 0 && written;
}

bool make_file(const std::string &bytes) {
    edited.path = private_text_file();
    return !edited.path.empty() && write_bytes(bytes);
}

Editing after_editor(int status, const std::string &given, const std::string &bytes,
                     std::string *text) {
    if (status != 0) {
        if (bytes == given) {
            drop_edited_file();
        }
        return fail("the editor failed (status " + std::to_string(status) +
                    "), nothing was written");
    }
    const std::string result = as_text(bytes, *text);
    if (bytes == given || result == *text) {
        drop_edited_file();
        return Editing::unchanged;
    }
    *text = result;
    return Editing::done;
}

}  // namespace

Editing edit_text(const std::string &subject, std::string *text, bool (*must_end)()) {
    edited.path.clear();
    edited.subject = subject;
    host_name_file(edited.subject.c_str());
    const std::string command = editor_command();
    if (command.empty()) {
        return fail("no editor: set VISUAL or EDITOR");
    }
    const std::string given = as_file(*text);
    if (!make_file(given)) {
        return fail_with_reason("no temporary file can be written");
    }
    const int status = run_on_file(command, edited.path, must_end);
    if (status < 0) {
        return fail_with_reason("the editor cannot be started");
    }
    std::string bytes;
    const int reading = read_text_file(edited.path, &bytes);
    host_name_file(edited.subject.c_str());
    if (reading != k_exit_done) {
        fail("the editor left no text to store, nothing was written");
        return reading == k_exit_memory ? Editing::no_room : Editing::failed;
    }
    return after_editor(status, given, bytes, text);
}

void name_edited_file() {
    if (!edited.path.empty()) {
        host_name_file(edited.subject.c_str());
        host_message(where_kept().c_str());
    }
}

void drop_edited_file() {
    if (!edited.path.empty()) {
        std::error_code ignored;
        fs::remove(reinterpret_cast<const char8_t *>(edited.path.c_str()), ignored);
    }
    edited.path.clear();
}
