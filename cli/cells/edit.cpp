// A cell's text in the user's editor. The web is not locked meanwhile: what the editor was given is
// compared with what is there when it ends.
#include "cli/cells/cell_commands.h"
#include "cli/cells/edited_text.h"
#include "cli/cells/named_cells.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "cli/webs.h"

namespace {

// What the editor was given: a cell's text, or, for none, the empty one.
struct Given {
    bool is_new;
    std::string text;

    bool operator==(const Given &) const = default;
};

Given given_by(const Notes &notes, const std::string &name) {
    const Note *note = find_note(notes, name);
    return note != nullptr ? Given{false, note->text} : Given{true, ""};
}

int look_at(const CommandLine &line, Given *given) {
    if (is_standard_stream(line.file.c_str())) {
        host_message("a web on a standard stream cannot be edited");
        return k_exit_failed;
    }
    const int status = load_whole(line.file, line.force);
    if (status != k_exit_done) {
        return status;
    }
    Notes notes = notes_of_web();
    *given = given_by(notes, line.cell);
    return note_to_write(&notes, line.cell) != nullptr ? k_exit_done : k_exit_refused;
}

int store(const CommandLine &line, const Given &given, const std::string &text) {
    const int status = change_web(line, [&](Notes *notes) {
        if (given_by(*notes, line.cell) != given) {
            return refuse_cell(line.cell, "changed meanwhile, nothing was written");
        }
        note_to_write(notes, line.cell)->text = text;
        return k_exit_done;
    });
    if (status != k_exit_done || line.dry_run) {
        name_edited_file();
    } else {
        drop_edited_file();
    }
    return status;
}

}  // namespace

int command_edit(const CommandLine &line) {
    Given given = {};
    const int status = look_at(line, &given);
    if (status != k_exit_done) {
        return status;
    }
    std::string text = given.text;
    switch (edit_text(line.file + ": " + printable(line.cell), &text)) {
    case Editing::done:
        return store(line, given, text);
    case Editing::unchanged:
        host_message("nothing changed");
        return k_exit_done;
    case Editing::no_room:
        return k_exit_memory;
    default:
        return k_exit_refused;
    }
}
