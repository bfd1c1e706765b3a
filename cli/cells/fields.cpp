// What a cell has beside its text, and what a web has beside its cells: scripts, values, options.
#include "cli/cells/cell_commands.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/new_text.h"
#include "cli/print.h"
#include "cli/saved_options.h"
#include "cli/shown.h"
#include "cli/webs.h"

#include <nlohmann/json.hpp>

#include <algorithm>

using Field = std::string Note::*;

namespace {

// Runs `print` on the field of the cell that is asked for. Refused when it is empty.
int read_field(const CommandLine &line, Field field,
               const std::function<void(const Note &)> &print) {
    return read_web(line, [&](const std::string &, const Notes &notes) {
        const Note *note = find_note(notes, line.cell);
        if (note == nullptr) {
            return no_such_cell(line.cell);
        }
        if (!(note->*field).empty()) {
            print(*note);
        }
        return (note->*field).empty() ? k_exit_refused : k_exit_done;
    });
}

int change_field(const CommandLine &line, Field field, const std::string &bytes) {
    return change_web(line, [&](Notes *notes) {
        Note *note = find_note(notes, line.cell);
        if (note == nullptr) {
            return no_such_cell(line.cell);
        }
        note->*field = bytes;
        return k_exit_done;
    });
}

void print_script(const CommandLine &line, const Note &note) {
    if (line.json) {
        const std::string script = in_line_ends(note.script, json_newline(line.newline));
        print_json({{"file", line.file}, {"cell", note.name}, {"script", script}});
    } else {
        print_text(in_line_ends(note.script, line.newline));
    }
}

void print_value(const CommandLine &line, const Note &note) {
    if (line.json) {
        print_json({{"file", line.file}, {"cell", note.name}, {"value", note.value}});
    } else {
        print_line(note.value);
    }
}

// ---- Options ------------------------------------------------------------------------------------

int refuse_option(const std::string &name) {
    std::string known;
    for (const SavedOption &option : saved_options()) {
        known += (known.empty() ? "" : ", ") + option.name;
    }
    return refuse_cell(name, ("no such option; there are " + known).c_str());
}

void print_option(const CommandLine &line, const SavedOption &option) {
    if (line.json) {
        print_json({{"file", line.file}, {"option", option.name}, {"value", option.value}});
    } else {
        print_line(line.name ? option.value : option.name + " " + option.value);
    }
}

int read_options(const CommandLine &line) {
    const int status = load_to_read(line.file);
    if (status != k_exit_done) {
        return status;
    }
    const std::string wanted = line.name ? option_name(*line.name) : "";
    if (line.name && wanted.empty()) {
        return refuse_option(*line.name);
    }
    for (const SavedOption &option : saved_options()) {
        if (!line.name || option.name == wanted) {
            print_option(line, option);
        }
    }
    return k_exit_done;
}

int change_option(const std::string &name, const std::string &value) {
    if (option_name(name).empty()) {
        return refuse_option(name);
    }
    std::string fault;
    if (!put_option(name, value, &fault)) {
        return refuse_cell(option_name(name), fault.c_str());
    }
    return k_exit_done;
}

}  // namespace

int command_script(const CommandLine &line) {
    if (!has_new_text(line)) {
        return read_field(line, &Note::script,
                          [&line](const Note &note) { print_script(line, note); });
    }
    std::string script;
    const int status = take_new_text(line, &script);
    return status == k_exit_done ? change_field(line, &Note::script, script) : status;
}

int command_value(const CommandLine &line) {
    if (!line.value) {
        return read_field(line, &Note::value,
                          [&line](const Note &note) { print_value(line, note); });
    }
    if (line.value->find_first_of("\r\n") != std::string::npos) {
        host_name_file(line.file.c_str());
        return refuse_cell(line.cell, "a value is one line");
    }
    return change_field(line, &Note::value, *line.value);
}

int command_option(const CommandLine &line) {
    if (!line.name || !line.value) {
        return read_options(line);
    }
    return change_web(line, [&name = *line.name, &value = *line.value](Notes *) {
        return change_option(name, value);
    });
}
