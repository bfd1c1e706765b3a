#include "cli/web_commands.h"

#include "cli/commands.h"
#include "platform/program.h"

namespace {

const OptionWord *newline_words() {
    return option_info(k_option_onewl)->words;
}

const OptionWord *type_words() {
    return option_info(k_option_rtype)->words;
}

constexpr ArgumentRow k_web[] = {k_web_argument};
constexpr ArgumentRow k_webs[] = {k_webs_argument};
constexpr ArgumentRow k_web_and_cell[] = {k_web_argument, k_cell_argument};
constexpr ArgumentRow k_in_and_out[] = {
    {"FILE", "The web file to read, or -", &CommandLine::file, Takes::web},
    {"OUT", "The web file to write, or -", &CommandLine::out_file, Takes::web}};

constexpr OptionRow k_new_options[] = {
    {"--force", "Overwrite an existing file", &CommandLine::force}};
constexpr OptionRow k_list_options[] = {k_null_option};
const OptionRow k_show_options[] = {
    {"--newline", k_native_crlf ? "Line ends (without it: crlf)" : "Line ends (without it: lf)",
     &CommandLine::newline, "NEWLINE", Takes::text, newline_words}};
constexpr OptionRow k_set_options[] = {
    {"--text", "The new text", &CommandLine::text, "TEXT", Takes::text, nullptr, 't'},
    {"--file", "A file with the new text, or -", &CommandLine::text_file, "PATH", Takes::path,
     nullptr, 't'},
    k_force_option};
constexpr OptionRow k_force[] = {k_force_option};
const OptionRow k_report_options[] = {
    {"--type", "The kind of report", &CommandLine::type, "TYPE", Takes::text, type_words},
    {"--format", "Format of a fmt report: \\N name, \\T text", &CommandLine::format, "TEXT"},
    {"--all", "Report on all cells", &CommandLine::all, nullptr, Takes::text, nullptr, 'c'},
    {"--select", "Report on the cells that a text names", &CommandLine::selection, "TEXT",
     Takes::text, nullptr, 'c'},
    {"--cell", "Report on one cell", &CommandLine::report_cell, "NAME", Takes::cell, nullptr, 'c'},
    {"--output", "The file to write (without it, or for -: standard output)", &CommandLine::output,
     "PATH", Takes::path},
    {"--newline", "Line ends (without it: in a file as the web says, else as they come)",
     &CommandLine::newline, "NEWLINE", Takes::text, newline_words}};
constexpr OptionRow k_check_options[] = {
    {"--json", "Print the findings as JSON", &CommandLine::json}};

const CommandRow k_commands[] = {
    {"new", "Make a web with an empty home cell",
     "Makes FILE. A file that exists is left alone unless --force is given.", k_web, k_new_options,
     command_new},
    {"list", "Print the cells' names, in the web's order",
     "On a terminal, control characters in names are shown as \\xNN.", k_web, k_list_options,
     command_list},
    {"show", "Print a cell's text", "", k_web_and_cell, k_show_options, command_show},
    {"set", "Create a cell or replace its text (without --text and --file: create only)", "",
     k_web_and_cell, k_set_options, command_set},
    {"rm", "Delete a cell", "The home cell cannot be deleted.", k_web_and_cell, k_force,
     command_rm},
    {"convert", "Read a web and write it again", "", k_in_and_out, k_force, command_convert},
    {"report", "Write a report, of the kind that the web's options say", "", k_web,
     k_report_options, command_report},
    {"check", "Say what opening a file would lose, change or not reach", "", k_webs,
     k_check_options, command_check},
};

}  // namespace

const std::span<const CommandRow> k_web_commands = k_commands;
