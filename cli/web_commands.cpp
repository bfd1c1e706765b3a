#include "cli/web_commands.h"

#include "cli/cells/cell_commands.h"
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
constexpr ArgumentRow k_web_and_cells[] = {
    k_web_argument, {"CELL", "The cells' names", &CommandLine::cells, Takes::cell}};
constexpr ArgumentRow k_in_and_out[] = {
    {"FILE", "The web file to read, or - for standard input", &CommandLine::file, Takes::web},
    {"OUT", "The web file to write, or - for standard output", &CommandLine::out_file, Takes::web}};
constexpr ArgumentRow k_append_arguments[] = {k_web_argument,
                                              k_cell_argument,
                                              {"TEXT", "The text to add, or - for standard input",
                                               &CommandLine::more_text, Takes::text, false}};
constexpr ArgumentRow k_value_arguments[] = {
    k_web_argument,
    k_cell_argument,
    {"VALUE", "The new value", &CommandLine::value, Takes::text, false}};
constexpr ArgumentRow k_option_arguments[] = {
    k_web_argument,
    {"NAME", "The option's name", &CommandLine::name, Takes::text, false},
    {"VALUE", "The new value", &CommandLine::value, Takes::text, false}};

const OptionRow k_newline_option = {"--newline",
                                    k_native_crlf ? "Line ends (without it: crlf)"
                                                  : "Line ends (without it: lf)",
                                    &CommandLine::newline,
                                    "NEWLINE",
                                    Takes::text,
                                    newline_words};
constexpr OptionRow k_text_option = {
    "--text", "The text itself", &CommandLine::text, "TEXT", Takes::text, nullptr, 't'};
constexpr OptionRow k_file_option = {"--file",
                                     "A file that holds the text, or - for standard input",
                                     &CommandLine::text_file,
                                     "PATH",
                                     Takes::path,
                                     nullptr,
                                     't'};

constexpr OptionRow k_new_options[] = {
    {"--force", "Overwrite an existing file", &CommandLine::force}, k_dry_run_option};
constexpr OptionRow k_list_options[] = {k_null_option, k_json_option};
const OptionRow k_show_options[] = {k_newline_option, k_json_option};
const OptionRow k_cat_options[] = {k_newline_option};
constexpr OptionRow k_text_options[] = {k_text_option, k_file_option, k_dry_run_option,
                                        k_force_option};
const OptionRow k_script_options[] = {k_text_option, k_file_option,    k_newline_option,
                                      k_json_option, k_dry_run_option, k_force_option};
constexpr OptionRow k_field_options[] = {k_json_option, k_dry_run_option, k_force_option};
constexpr OptionRow k_changing_options[] = {k_dry_run_option, k_force_option};
const OptionRow k_report_options[] = {
    {"--type", "The kind of report", &CommandLine::type, "TYPE", Takes::text, type_words},
    {"--format", "Format of a fmt report: \\N name, \\T text", &CommandLine::format, "TEXT"},
    {"--all", "Report on all cells", &CommandLine::all, nullptr, Takes::text, nullptr, 'c'},
    {"--select", "Report on the cells that a text names", &CommandLine::selection, "TEXT",
     Takes::text, nullptr, 'c'},
    {"--cell", "Report on one cell", &CommandLine::report_cell, "CELL", Takes::cell, nullptr, 'c'},
    {"--output", "The file to write (without it, or for -: standard output)", &CommandLine::output,
     "PATH", Takes::path, nullptr, 'o'},
    {"--newline", "Line ends (without it: in a file as the web says, else as they come)",
     &CommandLine::newline, "NEWLINE", Takes::text, newline_words},
    {"--json", "Print JSON", &CommandLine::json, nullptr, Takes::text, nullptr, 'o'}};
constexpr OptionRow k_check_options[] = {{"--json", "Print JSON", &CommandLine::json}};

const CommandRow k_commands[] = {
    {"new", "Make a web with an empty home cell",
     "Makes FILE, or for - writes the web to standard output. A file that exists is left alone "
     "unless --force is given.",
     k_web, k_new_options, command_new},
    {"list", "Print the cells' names, in the web's order",
     "With several FILEs each name is printed as FILE:NAME.\n\n"
     "With --json, a line for each cell: {\"file\", \"cell\", \"bytes\" and \"lines\" of its text, "
     "\"value\" where it has one}.",
     k_webs, k_list_options, command_list},
    {"show", "Print cells' texts",
     "The text of one CELL is printed as it is. With several, each has a line \"==> NAME <==\" "
     "above it and an empty line below. A CELL that is not there is passed over with a message, "
     "and the exit status is then 1.\n\n"
     "With --json, a line for each cell: {\"file\", \"cell\", \"text\", \"script\", \"value\"}; "
     "line "
     "ends are LF unless --newline is given.",
     k_web_and_cells, k_show_options, command_show},
    {"cat", "Print cells' texts one behind the other",
     "Nothing is printed between two texts, but for a line end where the first one does not end "
     "with one. A CELL that is not there is passed over with a message, and the exit status is "
     "then 1.",
     k_web_and_cells, k_cat_options, command_cat},
    {"edit", "Edit a cell's text in your editor",
     "The editor is the command in $VISUAL, else in $EDITOR, else vi, nano or notepad. A cell that "
     "does not exist is made when its text is not left empty. When nothing was changed, nothing is "
     "written.\n\n"
     "The web is not locked while the editor runs. When the cell has changed meanwhile, or the "
     "text cannot be stored, the web stays as it is and the text is kept in a file, which is "
     "named. So it is when the editor fails, and with --dry-run. FILE cannot be -.",
     k_web_and_cell, k_changing_options, command_edit},
    {"set", "Create a cell or replace its text",
     "Without --text and --file a cell that exists stays as it is, and one that does not is made "
     "without a text.",
     k_web_and_cell, k_text_options, command_set},
    {"append", "Add to the end of a cell's text, or create the cell with it",
     "A cell's text that does not end with a line end gets one first. TEXT, --text and --file say "
     "the "
     "same; one of them is needed.",
     k_append_arguments, k_text_options, command_append},
    {"rm", "Delete cells",
     "All of the CELLs or, when one is not there, none. The home cell cannot be deleted.",
     k_web_and_cells, k_changing_options, command_rm},
    {"script", "Print a cell's script, or with --text or --file set it",
     "The exit status is 1 when the cell has none. An empty text takes the script away.\n\n"
     "With --json, one object: {\"file\", \"cell\", \"script\"}; line ends are LF unless --newline "
     "is given.",
     k_web_and_cell, k_script_options, command_script},
    {"value", "Print a cell's value, or set it",
     "The exit status is 1 when the cell has none. An empty VALUE takes it away.\n\n"
     "With --json, one object: {\"file\", \"cell\", \"value\"}.",
     k_value_arguments, k_field_options, command_value},
    {"option", "Print the options that the web keeps, or set one",
     "Without NAME all of them are printed, a line each: the name, a blank and the value. With "
     "NAME "
     "the value alone is printed, and with VALUE it is set. A value that the option does not know, "
     "or that would come back from the file as another one, is refused.\n\n"
     "With --json, a line for each option: {\"file\", \"option\", \"value\"}.",
     k_option_arguments, k_field_options, command_option},
    {"convert", "Read a web and write it again",
     "Both may be the same file. With --dry-run it prints how the cells and options of OUT would "
     "change.",
     k_in_and_out, k_changing_options, command_convert},
    {"report", "Write a report, of the kind that the web's options say",
     "Reports on several FILEs are printed one behind the other.\n\n"
     "With --json, a line for each cell of a report on links: {\"file\", \"cell\", \"in\" or "
     "\"out\": "
     "[names]}; of any other report one line: {\"file\", \"report\"}, with LF as line ends unless "
     "--newline is given.",
     k_webs, k_report_options, command_report},
    {"check", "Say what opening a file would lose, change or not reach",
     "A line for each finding, FILE:LINE: MESSAGE, and one for each FILE with its size. The exit "
     "status is 1 when there is a finding.\n\n"
     "With --json, an array of an object for each FILE: {\"file\", \"status\", \"whole\", "
     "\"findings\", \"notes\"}, where both are lists of {\"kind\", \"line\", \"text\", "
     "\"message\"}; "
     "of one that was read also \"cells\", \"blocks_used\", \"blocks_left\", of others \"error\" "
     "and \"reason\".",
     k_webs, k_check_options, command_check},
};

}  // namespace

const std::span<const CommandRow> k_web_commands = k_commands;
