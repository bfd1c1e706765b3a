#include "cli/webs.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/saved_options.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "core/errors.h"
#include "core/recovery.h"
#include "core/text.h"
#include "file/web_reader.h"
#include "program/recovery.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/value.h"

#include <algorithm>

// The notes that the web is to hold. The body that takes blocks has no locals to lose.
static struct Taking {
    const Notes *notes;
    const Note *note;
    CellHandle cell;
} taking;

namespace {

// A web must leave this many blocks free to be read again.
constexpr uint32_t k_reading_reserve = 4;

void drop_changed_fields(CellHandle cell, const Note &note) {
    const BlockHandle value = cell_value(cell);
    if (text_bytes(cell_text(cell)) != note.text) {
        chain_free(cell_text(cell));
        cell_set_text(cell, 0);
    }
    if (text_bytes(cell_script(cell)) != note.script) {
        chain_free(cell_script(cell));
        cell_set_script(cell, 0);
    }
    if (value != 0 && text_bytes(val_text(value)) != note.value) {
        val_free(value);
        cell_set_value(cell, 0);
    }
}

// Everything that goes makes room before anything new takes some.
void drop_changed(const Notes &notes) {
    CellHandle cell = first_live_cell();
    while (cell != 0) {
        const CellHandle next = next_live_cell(cell);
        const Note *note = find_note(notes, text_bytes(cell_name(cell)));
        if (note != nullptr) {
            drop_changed_fields(cell, *note);
        } else {
            cell_delete(cell);
        }
        cell = next;
    }
}

// ---- Taking blocks: no local of these may need a destructor -------------------------------------

BlockHandle text_made(const std::string &bytes) {
    return bytes.empty() ? BlockHandle{0}
                         : text_from_bytes(bytes.data(), static_cast<uint32_t>(bytes.size()));
}

// A name that differs in letters or blanks alone is the same cell's.
void take_name() {
    taking.cell = cell_lookup(taking.note->name.c_str());
    if (taking.cell == 0) {
        taking.cell = cell_create(index_root_address(), taking.note->name.c_str());
    }
    if (!text_equals_cstring(cell_name(taking.cell), taking.note->name.c_str())) {
        const BlockHandle before = cell_name(taking.cell);
        cell_set_name(taking.cell, text_made(taking.note->name));
        chain_free(before);
    }
}

// What the cell still has is what it is to keep.
void take_text() {
    if (cell_text(taking.cell) == 0) {
        cell_set_text(taking.cell, text_made(taking.note->text));
    }
}

void take_script() {
    if (cell_script(taking.cell) == 0) {
        cell_set_script(taking.cell, text_made(taking.note->script));
    }
}

void take_value() {
    if (cell_value(taking.cell) == 0 && !taking.note->value.empty()) {
        cell_set_value(taking.cell, val_from_text(text_made(taking.note->value)));
    }
}

void take_body(void *) {
    for (taking.note = taking.notes->data();
         taking.note != taking.notes->data() + taking.notes->size(); ++taking.note) {
        take_name();
        take_text();
        take_script();
        take_value();
    }
}

// -------------------------------------------------------------------------------------------------

void give_line_ends(Notes *notes) {
    for (Note &note : *notes) {
        note.text = with_crlf(note.text);
        note.script = with_crlf(note.script);
    }
}

// Of notes that have their line ends.
int take_whole_notes(const Notes &notes) {
    taking.notes = &notes;
    drop_changed(notes);
    const bool fits = recovery_run(take_body, nullptr) == 0 && blocks_free() >= k_reading_reserve;
    taking.notes = nullptr;
    if (!fits) {
        report_error(k_out_of_memory);
        return k_exit_memory;
    }
    return k_exit_done;
}

int read_loaded(const std::string &name, const ReadingBody &body) {
    const int status = load_to_read(name);
    return status == k_exit_done ? body(name, notes_of_web()) : status;
}

int worse(int status, int other) {
    const bool tells = std::max(status, other) > k_exit_refused;
    return tells ? std::max(status, other) : std::min(status, other);
}

}  // namespace

int load_to_read(const std::string &name) {
    const int status = web_load(name.c_str());
    if (status != k_exit_done || web_read_was_whole()) {
        return status;
    }
    if (web_read_failed()) {
        return k_exit_failed;
    }
    host_message(("cannot be read whole: see qvx check " + name).c_str());
    return k_exit_done;
}

int load_whole(const std::string &name, bool force) {
    const int status = web_load(name.c_str());
    if (status != k_exit_done || web_read_was_whole() || force) {
        return status;
    }
    host_message(("cannot be read whole, and writing would lose the rest: see qvx check " + name +
                  ", or use --force")
                     .c_str());
    return k_exit_refused;
}

int load_to_write(const CommandLine &line, const std::string &target) {
    const int status = web_lock(target.c_str(), target == line.file);
    return status == k_exit_done ? load_whole(line.file, line.force) : status;
}

int read_webs(const CommandLine &line, const ReadingBody &body) {
    int status = k_exit_refused;
    for (const std::string &file : line.files) {
        status = worse(status, read_loaded(file, body));
    }
    return status;
}

int read_web(const CommandLine &line, const ReadingBody &body) {
    return read_loaded(line.file, body);
}

int take_notes(Notes notes) {
    give_line_ends(&notes);
    return take_whole_notes(notes);
}

int change_web(const CommandLine &line, const ChangingBody &body, const ShowingBody &show) {
    int status = load_to_write(line, line.file);
    if (status != k_exit_done) {
        return status;
    }
    const SavedOptions options = saved_options();
    const Notes before = notes_of_web();
    Notes after = before;
    status = body(&after);
    if (status == k_exit_done) {
        give_line_ends(&after);
        status = take_whole_notes(after);
    }
    if (status != k_exit_done) {
        return status;
    }
    if (line.dry_run) {
        show(before, notes_of_web());
        print_option_differences(options, saved_options());
        return k_exit_done;
    }
    if (before == after && options == saved_options() && !is_standard_stream(line.file.c_str())) {
        return k_exit_done;
    }
    return web_save(line.file.c_str());
}

int refuse_cell(const std::string &cell, const char *message) {
    host_message((printable(cell) + ": " + message).c_str());
    return k_exit_refused;
}

int no_such_cell(const std::string &cell) {
    return refuse_cell(cell, "no such cell");
}
