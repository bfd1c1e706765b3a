#include "cli/cells/named_cells.h"

#include "cli/webs.h"

const Note *named_note(const Notes &notes, const std::string &name) {
    const Note *note = find_note(notes, name);
    if (note == nullptr) {
        no_such_cell(name);
    }
    return note;
}

Note *note_to_write(Notes *notes, const std::string &name) {
    Note *note = find_note(notes, name);
    if (note != nullptr) {
        return note;
    }
    if (!is_good_name(name)) {
        refuse_cell(name, "Bad cell name supplied");
        return nullptr;
    }
    return add_note(notes, name);
}
