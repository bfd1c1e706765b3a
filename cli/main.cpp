// qvx: webs read, changed, reported and written from the command line.
#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "core/block_arena.h"
#include "core/recovery.h"
#include "platform/program.h"
#include "program/recovery.h"
#include "web/options.h"
#include "web/words.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

using CommandFunction = int (*)(const CommandLine &line);

// The command that was asked for and its exit status, outside of every frame that the arena's
// recovery may leave.
static struct Run {
    CommandLine line;
    std::string type;  // the words for line.type and line.newline
    std::string newline;
    CommandFunction function = nullptr;
    int status = k_exit_done;
} run;

namespace {

constexpr const char *k_version = "qvx " QUORVANE_VERSION;

using Words = std::map<std::string, uint8_t>;

Words words_of(OptionId id) {
    Words words;
    for (const OptionWord *word = option_info(id)->words; word->text[0] != 0; ++word) {
        words[word->text] = word->value;
    }
    return words;
}

const Words k_type_words = words_of(k_option_rtype);
const Words k_newline_words = words_of(k_option_onewl);

// 0 for no word.
uint8_t value_of(const Words &words, const std::string &word) {
    const auto found = words.find(word);
    return found == words.end() ? uint8_t{0} : found->second;
}

CLI::App *add_command(CLI::App *app, const char *name, const char *description,
                      CommandFunction function) {
    CLI::App *command = app->add_subcommand(name, description);
    command->set_version_flag("--version", k_version, "Print the version and exit");
    command->callback([function] { run.function = function; });
    return command;
}

// A command that works on one web.
CLI::App *add_web_command(CLI::App *app, const char *name, const char *description,
                          CommandFunction function) {
    CLI::App *command = add_command(app, name, description, function);
    command->add_option("file", run.line.file, "The web file, or - for a standard stream")
        ->type_name("FILE")
        ->required();
    return command;
}

CLI::App *add_cell_command(CLI::App *app, const char *name, const char *description,
                           CommandFunction function) {
    CLI::App *command = add_web_command(app, name, description, function);
    command->add_option("cell", run.line.cell, "The cell's name")->type_name("CELL")->required();
    return command;
}

void add_force(CLI::App *command) {
    command->add_flag("--force", run.line.force,
                      "Go on with a web that cannot be read whole; its file is kept as FILE.bad");
}

void add_newline(CLI::App *command, const char *description) {
    command->add_option("--newline", run.newline, description)
        ->check(CLI::IsMember(&k_newline_words));
}

void add_list(CLI::App *app) {
    add_web_command(app, "list", "Print the cells' names, in the web's order", command_list)
        ->add_flag("-0,--null", run.line.zero, "End names with NUL instead of a line end");
}

void add_show(CLI::App *app) {
    CLI::App *show = add_cell_command(app, "show", "Print a cell's text", command_show);
    add_newline(show,
                !k_native_crlf ? "Line ends (without it: lf)" : "Line ends (without it: crlf)");
    show->callback([] {
        run.function = command_show;
        run.line.newline = value_of(k_newline_words, run.newline);
    });
}

void add_set(CLI::App *app) {
    CLI::App *set = add_cell_command(
        app, "set", "Create a cell or replace its text (without --text and --file: create only)",
        command_set);
    CLI::Option *text = set->add_option("--text", run.line.text, "The new text");
    set->add_option("--file", run.line.text_file, "A file with the new text, or -")
        ->type_name("PATH")
        ->excludes(text);
    add_force(set);
    set->callback([set] {
        run.function = command_set;
        run.line.has_text = set->count("--text") != 0;
        run.line.has_text_file = set->count("--file") != 0;
    });
}

void add_report_cells(CLI::App *report) {
    CLI::Option *all = report->add_flag("--all", run.line.all, "Report on all cells");
    CLI::Option *select =
        report->add_option("--select", run.line.selection, "Report on the cells that a text names");
    CLI::Option *cell =
        report->add_option("--cell", run.line.cell, "Report on one cell")->type_name("NAME");
    all->excludes(select)->excludes(cell);
    select->excludes(cell);
}

void add_report(CLI::App *app) {
    CLI::App *report = add_web_command(
        app, "report", "Write a report, of the kind that the web's options say", command_report);
    report->add_option("--type", run.type, "The kind of report")
        ->check(CLI::IsMember(&k_type_words));
    report->add_option("--format", run.line.format, "Format of a fmt report: \\N name, \\T text");
    add_report_cells(report);
    report
        ->add_option("--output", run.line.output,
                     "The file to write (without it, or for -: standard output)")
        ->type_name("PATH");
    add_newline(report, "Line ends (without it: in a file as the web says, else as they come)");
    report->callback([report] {
        run.function = command_report;
        run.line.has_cell = report->count("--cell") != 0;
        run.line.has_output = report->count("--output") != 0;
        run.line.has_format = report->count("--format") != 0;
        run.line.has_selection = report->count("--select") != 0;
        run.line.type = value_of(k_type_words, run.type);
        run.line.newline = value_of(k_newline_words, run.newline);
    });
}

// ---- Names in brackets --------------------------------------------------------------------------
// Where several values may come, the parser takes "[a,b]" for two. A guard in front of it makes it
// one; it is taken away again behind the parser.

constexpr char k_guard = '\1';

void guard_brackets(std::vector<std::string> *arguments) {
    if (arguments->empty() || arguments->front() != "check") {
        return;
    }
    for (std::string &argument : *arguments) {
        if (argument.starts_with('[') || argument.starts_with(k_guard)) {
            argument.insert(argument.begin(), k_guard);
        }
    }
}

void take_guards_away(std::vector<std::string> *names) {
    for (std::string &name : *names) {
        if (name.starts_with(k_guard)) {
            name.erase(0, 1);
        }
    }
}

void add_check(CLI::App *app) {
    CLI::App *check = add_command(
        app, "check", "Say what opening a file would lose, change or not reach", command_check);
    check->add_option("files", run.line.files, "The web files, or -")
        ->type_name("FILE")
        ->required();
    check->add_flag("--json", run.line.json, "Print the findings as JSON");
    check->callback([] {
        run.function = command_check;
        take_guards_away(&run.line.files);
    });
}

void add_commands(CLI::App *app) {
    add_web_command(app, "new", "Make a web with an empty home cell", command_new)
        ->add_flag("--force", run.line.force, "Overwrite an existing file");
    add_list(app);
    add_show(app);
    add_set(app);
    add_force(add_cell_command(app, "rm", "Delete a cell", command_rm));
    CLI::App *convert =
        add_command(app, "convert", "Read a web and write it again", command_convert);
    convert->add_option("in", run.line.file, "The web file to read, or -")
        ->type_name("FILE")
        ->required();
    convert->add_option("out", run.line.out_file, "The web file to write, or -")
        ->type_name("FILE")
        ->required();
    add_force(convert);
    add_report(app);
    add_check(app);
}

// What the program does before it opens its first web.
void start_engine() {
    block_arena_allow_recovery(false);
    block_arena_init();
    option_defaults();
    char_classes_init();
    block_arena_allow_recovery(true);
}

void run_body(void *) {
    run.status = run.function(run.line);
}

int run_command() {
    start_engine();
    if (recovery_run(run_body, nullptr) < 0) {
        host_name_file(run.line.file.c_str());
        program_recover();
        run.status = k_exit_memory;
    }
    return host_finish_output() ? run.status : std::max(run.status, k_exit_failed);
}

// Prints help, version or what is wrong with the arguments.
int explain(const CLI::App &app, const CLI::ParseError &error) {
    return app.exit(error) == 0 ? k_exit_done : k_exit_failed;
}

int parse_and_run(std::vector<std::string> arguments) {
    CLI::App app("Reads, changes, reports and writes webs of cells.", "qvx");
    app.allow_windows_style_options(false);
    app.require_subcommand(0, 1);
    app.set_version_flag("--version", k_version, "Print the version and exit");
    app.failure_message([](const CLI::App *failed, const CLI::Error &error) {
        return "qvx: " + CLI::FailureMessage::simple(failed, error);
    });
    app.footer(
        "- is standard input or output. Exit status: 0 done, 1 nothing found, findings or "
        "refused,\n2 wrong usage or a file that cannot be read or written, 3 out of memory,\n"
        "4 a fault of qvx itself.");
    add_commands(&app);
    guard_brackets(&arguments);
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError &error) {
        return explain(app, error);
    }
    if (run.function == nullptr) {
        host_message("which command? Run with --help for more information.");
        return k_exit_failed;
    }
    return run_command();
}

}  // namespace

int main(int argc, char **argv) {
    try {
        standard_streams_binary();
        return parse_and_run(program_arguments(argc, argv));
    } catch (const std::bad_alloc &) {
        host_message("OUT OF MEMORY");
        return k_exit_memory;
    } catch (const std::exception &error) {
        host_message(error.what());
        return k_exit_failed;
    }
}
