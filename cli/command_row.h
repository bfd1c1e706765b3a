// What the table of commands (cli/command_table.h) is made of.
#pragma once

#include "cli/command_line.h"
#include "web/options.h"

#include <span>
#include <variant>

// What an argument or an option's value is, for completion.
enum class Takes : uint8_t { text, web, cell, path, folder };

// Where it goes. A byte takes the value of one of the row's words.
using Target = std::variant<bool CommandLine::*, uint8_t CommandLine::*, int32_t CommandLine::*,
                            std::string CommandLine::*, std::optional<std::string> CommandLine::*,
                            std::vector<std::string> CommandLine::*>;

// The words that an option knows, "" behind the last one.
using WordsFunction = const OptionWord *(*)();

// Arguments come in their order; a list takes all that is left.
struct ArgumentRow {
    const char *placeholder;  // "FILE"
    const char *help;
    Target target;
    Takes takes = Takes::text;
    bool required = true;
};

struct OptionRow {
    const char *names;  // "-n,--dry-run"
    const char *help;
    Target target;                      // of a flag: a bool
    const char *placeholder = nullptr;  // of the value; null for a flag
    Takes takes = Takes::text;
    WordsFunction words = nullptr;
    char one_of = 0;  // of the options with the same letter only one may be given
};

struct CommandRow {
    const char *name;
    const char *summary;
    // For the man page: paragraphs, an empty line between two.
    const char *description;
    std::span<const ArgumentRow> arguments;
    std::span<const OptionRow> options;
    // Does the work, says what went wrong on standard error; the exit status (cli/exit_status.h).
    int (*function)(const CommandLine &line);
};

// The commands of one topic, in the order in which help has them.
struct CommandGroup {
    const char *title;
    std::span<const CommandRow> commands;
};

// ---- What several commands have -----------------------------------------------------------------

constexpr ArgumentRow k_web_argument = {"FILE", "The web file, or - for standard input",
                                        &CommandLine::file, Takes::web};
constexpr ArgumentRow k_webs_argument = {"FILE", "The web files, or - for standard input",
                                         &CommandLine::files, Takes::web};
constexpr ArgumentRow k_cell_argument = {"CELL", "The cell's name", &CommandLine::cell,
                                         Takes::cell};

constexpr OptionRow k_force_option = {
    "--force", "Go on with a web that cannot be read whole; its file is kept as FILE.bad",
    &CommandLine::force};
constexpr OptionRow k_dry_run_option = {
    "-n,--dry-run", "Print what would change, and change nothing", &CommandLine::dry_run};
constexpr OptionRow k_null_option = {"-0,--null", "End names with NUL instead of a line end",
                                     &CommandLine::zero};
constexpr OptionRow k_json_option = {"--json", "Print JSON", &CommandLine::json};
