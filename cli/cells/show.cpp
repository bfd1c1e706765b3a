// What a reader asks for: the names of the cells, and their texts.
#include "cli/cells/cell_commands.h"
#include "cli/cells/named_cells.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/print.h"
#include "cli/shown.h"
#include "cli/webs.h"
#include "platform/program.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

void print_listed(const CommandLine &line, const std::string &file, const Note &note) {
    if (line.json) {
        nlohmann::ordered_json entry{{"file", file},
                                     {"cell", note.name},
                                     {"bytes", with_lf(note.text).size()},
                                     {"lines", lines_of(note.text).size()}};
        if (!note.value.empty()) {
            entry["value"] = note.value;
        }
        print_json(entry);
    } else {
        print_name(line.files.size() > 1 ? file + ":" + note.name : note.name, line.zero);
    }
}

void print_note_json(const CommandLine &line, const Note &note) {
    print_json({{"file", line.file},
                {"cell", note.name},
                {"text", in_line_ends(note.text, json_newline(line.newline))},
                {"script", in_line_ends(note.script, json_newline(line.newline))},
                {"value", note.value}});
}

bool ends_line(const std::string &text) {
    return text.empty() || text.back() == '\n';
}

// Prints those of the cells that are there; the others are named in messages.
using PrintCells = void(const CommandLine &line, const std::vector<const Note *> &notes);

int print_cells(const CommandLine &line, PrintCells *print_them) {
    return read_web(line, [&](const std::string &, const Notes &notes) {
        std::vector<const Note *> found;
        for (const std::string &name : line.cells) {
            const Note *note = named_note(notes, name);
            if (note != nullptr) {
                found.push_back(note);
            }
        }
        print_them(line, found);
        return found.size() == line.cells.size() ? k_exit_done : k_exit_refused;
    });
}

void print_end(const CommandLine &line) {
    print_text(in_line_ends("\r\n", line.newline));
}

// A text that does not end with a line end gets one only where another follows.
void print_text_of(const CommandLine &line, const Note &note, bool is_last) {
    print_text(in_line_ends(note.text, line.newline));
    if (!is_last && !ends_line(note.text)) {
        print_end(line);
    }
}

void print_texts(const CommandLine &line, const std::vector<const Note *> &notes) {
    for (size_t i = 0; i < notes.size(); ++i) {
        print_text_of(line, *notes[i], i + 1 == notes.size());
    }
}

std::string heading_of(const std::string &name) {
    return "==> " + (output_is_terminal() ? printable(name) : name) + " <==";
}

void print_with_headings(const CommandLine &line, const std::vector<const Note *> &notes) {
    for (size_t i = 0; i < notes.size(); ++i) {
        print(coloured(heading_of(notes[i]->name), Colour::cyan));
        print_end(line);
        print_text_of(line, *notes[i], false);
        if (i + 1 < notes.size()) {
            print_end(line);
        }
    }
}

void print_shown(const CommandLine &line, const std::vector<const Note *> &notes) {
    if (line.json) {
        std::for_each(notes.begin(), notes.end(),
                      [&line](const Note *note) { print_note_json(line, *note); });
    } else if (line.cells.size() > 1) {
        print_with_headings(line, notes);
    } else {
        print_texts(line, notes);
    }
}

}  // namespace

int command_list(const CommandLine &line) {
    return read_webs(line, [&line](const std::string &file, const Notes &notes) {
        std::for_each(notes.begin(), notes.end(),
                      [&](const Note &note) { print_listed(line, file, note); });
        return k_exit_done;
    });
}

int command_show(const CommandLine &line) {
    return print_cells(line, print_shown);
}

int command_cat(const CommandLine &line) {
    return print_cells(line, print_texts);
}
