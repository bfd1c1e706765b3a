// Texts set and added to, and cells deleted.
#include "cli/cells/cell_commands.h"
#include "cli/cells/named_cells.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/new_text.h"
#include "cli/webs.h"

#include <algorithm>

namespace {

int set_text(const CommandLine &line, const std::string &text, Notes *notes) {
    Note *note = note_to_write(notes, line.cell);
    if (note == nullptr) {
        return k_exit_refused;
    }
    if (has_new_text(line)) {
        note->text = text;
    }
    return k_exit_done;
}

int append_text(const CommandLine &line, const std::string &text, Notes *notes) {
    Note *note = note_to_write(notes, line.cell);
    if (note == nullptr) {
        return k_exit_refused;
    }
    if (!note->text.empty() && note->text.back() != '\n' && !text.empty()) {
        note->text += "\r\n";
    }
    note->text += text;
    return k_exit_done;
}

int change_text(const CommandLine &line,
                int (*change)(const CommandLine &, const std::string &, Notes *)) {
    std::string text;
    const int status = take_new_text(line, &text);
    if (status != k_exit_done) {
        return status;
    }
    return change_web(line, [&](Notes *notes) { return change(line, with_crlf(text), notes); });
}

bool may_be_deleted(const Notes &notes, const std::string &name) {
    if (compare_names(name, "home") == 0) {
        refuse_cell("home", "Can't Delete Home");
        return false;
    }
    return named_note(notes, name) != nullptr;
}

int delete_cells(const CommandLine &line, Notes *notes) {
    for (const std::string &name : line.cells) {
        if (!may_be_deleted(*notes, name)) {
            return k_exit_refused;
        }
    }
    std::erase_if(*notes, [&line](const Note &note) {
        return std::any_of(line.cells.begin(), line.cells.end(), [&note](const std::string &name) {
            return compare_names(note.name, name) == 0;
        });
    });
    return k_exit_done;
}

}  // namespace

int command_set(const CommandLine &line) {
    return change_text(line, set_text);
}

int command_append(const CommandLine &line) {
    if (!has_new_text(line)) {
        host_message("append what? TEXT, - for standard input, or --file PATH");
        return k_exit_failed;
    }
    return change_text(line, append_text);
}

int command_rm(const CommandLine &line) {
    return change_web(line, [&line](Notes *notes) { return delete_cells(line, notes); });
}
