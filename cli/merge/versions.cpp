// `qvx diff` and `qvx text`: two webs, or one, for a reader.
#include "cli/differences.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/line_diff.h"
#include "cli/merge/merge_commands.h"
#include "cli/print.h"
#include "cli/saved_options.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "web/options.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

// ---- diff ---------------------------------------------------------------------------------------

Json as_json(const LineDifference &line) {
    return {{"field", line.field},
            {"side", line.added ? "+" : "-"},
            {"line", line.line},
            {"text", line.text}};
}

Json as_json(const CellDifference &cell) {
    const bool both = cell.before != nullptr && cell.after != nullptr;
    Json object{{"cell", cell.before != nullptr ? cell.before->name : cell.after->name},
                {"change", both                     ? "changed"
                           : cell.before != nullptr ? "removed"
                                                    : "added"}};
    if (both && cell.before->name != cell.after->name) {
        object["spelled"] = cell.after->name;
    }
    object["lines"] = Json::array();
    for (const LineDifference &line : cell.lines) {
        object["lines"].push_back(as_json(line));
    }
    return object;
}

void print_option_differences_as_json(const SavedOptions &before, const SavedOptions &after) {
    for (size_t i = 0; i < before.size(); ++i) {
        if (before[i] != after[i]) {
            print_json({{"option", before[i].name},
                        {"before", before[i].value},
                        {"after", after[i].value}});
        }
    }
}

void print_differences_as_json(const Notes &before, const Notes &after) {
    for (const CellDifference &cell : differences_between(before, after)) {
        print_json(as_json(cell));
    }
}

// ---- text ---------------------------------------------------------------------------------------

void print_text_lines(const std::string &text) {
    for (const std::string_view line : lines_of(text)) {
        print_line(line);
    }
}

void print_section(const char *heading, const std::string &text) {
    if (!text.empty()) {
        print_line(heading);
        print_text_lines(text);
    }
}

void print_note(const Note &note) {
    print(coloured(shown("=== " + note.name), Colour::cyan) + "\n");
    print_text_lines(note.text);
    print_section("--- value", note.value);
    print_section("--- script", note.script);
    print("\n");
}

// The options in force are the web's, and afterwards those of a new one.
void print_options() {
    const SavedOptions options = saved_options();
    option_defaults();
    const SavedOptions defaults = saved_options();
    if (options == defaults) {
        return;
    }
    print_line("=== (options)");
    for (size_t i = 0; i < options.size(); ++i) {
        if (options[i] != defaults[i]) {
            print_line(options[i].name + ": " + options[i].value);
        }
    }
    print("\n");
}

void print_notes_as_json(const std::string &file, const Notes &notes) {
    for (const Note &note : notes) {
        print_json({{"file", file},
                    {"cell", note.name},
                    {"text", with_lf(note.text)},
                    {"script", with_lf(note.script)},
                    {"value", note.value}});
    }
}

}  // namespace

int command_diff(const CommandLine &line) {
    if (is_standard_stream(line.file.c_str()) && is_standard_stream(line.other_file.c_str())) {
        host_message("standard input can be only one of the two webs");
        return k_exit_failed;
    }
    int status = load_to_read(line.file);
    if (status != k_exit_done) {
        return status;
    }
    const Notes before = notes_of_web();
    const SavedOptions options = saved_options();
    status = load_to_read(line.other_file);
    if (status != k_exit_done) {
        return status;
    }
    const Notes after = notes_of_web();
    const SavedOptions new_options = saved_options();
    (line.json ? print_differences_as_json : print_differences)(before, after);
    (line.json ? print_option_differences_as_json : print_option_differences)(options, new_options);
    return before == after && options == new_options ? k_exit_done : k_exit_refused;
}

int command_text(const CommandLine &line) {
    return read_webs(line, [&line](const std::string &file, const Notes &notes) {
        if (line.json) {
            print_notes_as_json(file, notes);
            return k_exit_done;
        }
        if (line.files.size() > 1) {
            print_line("==> " + file);
        }
        for (const Note &note : notes) {
            print_note(note);
        }
        print_options();
        return k_exit_done;
    });
}
