#include "cli/cells/named_cells.h"

#include "cli/host_qvx.h"
#include "cli/webs.h"

const Note *named_note(const CommandLine &line, const Notes &notes, const std::string &name) {
    const Note *note = find_note(notes, name);
    if (note == nullptr && line.cells.size() > 1) {
        no_such_cell(name);
    } else if (note == nullptr) {
        host_message("no such cell");
    }
    return note;
}

Note *note_to_write(Notes *notes, const std::string &name) {
    Note *note = find_note(notes, name);
    if (note != nullptr) {
        return note;
    }
    if (!is_good_name(name)) {
        host_message("Bad cell name supplied");
        return nullptr;
    }
    return add_note(notes, name);
}
