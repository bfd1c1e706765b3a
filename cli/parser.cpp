#include "cli/parser.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/note.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

static struct Parser {
    CommandLine *line;
    const CommandRow *command;  // that was asked for
} parser;

namespace {

constexpr const char *k_footer =
    "- is standard input or output. Exit status: 0 done, 1 nothing found, findings or "
    "refused,\n2 wrong usage or a file that cannot be read or written, 3 out of memory,\n"
    "4 a fault of qvx itself.";

constexpr size_t k_help_width = 80;  // columns

constexpr const char *k_version = "qvx " QUORVANE_VERSION;

// Where several values may come, the library takes "[a,b]" for two and "{}" for none. A guard in
// front of it makes it one; it is taken away again behind the library.
constexpr char k_guard = '\1';

std::map<std::string, uint8_t> words_of(WordsFunction words) {
    std::map<std::string, uint8_t> map;
    for (const OptionWord *word = words(); word->text[0] != 0; ++word) {
        map[word->text] = word->value;
    }
    return map;
}

// The library hands a value over as it finds the type of its place.
struct AddTo {
    CLI::App *app;
    std::string names;
    std::string help;

    CLI::Option *operator()(bool CommandLine::*field) const {
        return app->add_flag(names, parser.line->*field, help);
    }
    template <typename T> CLI::Option *operator()(T CommandLine::*field) const {
        return app->add_option(names, parser.line->*field, help);
    }
};

CLI::Option *add_words(CLI::App *app, const OptionRow &row) {
    const std::map<std::string, uint8_t> words = words_of(row.words);
    uint8_t *place = &(parser.line->*std::get<uint8_t CommandLine::*>(row.target));
    return app
        ->add_option_function<std::string>(
            row.names, [words, place](const std::string &word) { *place = words.at(word); },
            row.help)
        ->check(CLI::IsMember(words));
}

CLI::Option *add_option(CLI::App *app, const OptionRow &row) {
    CLI::Option *option = row.words != nullptr
                              ? add_words(app, row)
                              : std::visit(AddTo{app, row.names, row.help}, row.target);
    if (row.placeholder != nullptr && row.words == nullptr) {
        option->type_name(row.placeholder);
    }
    return option;
}

void add_options(CLI::App *app, std::span<const OptionRow> rows) {
    std::vector<CLI::Option *> added;
    for (size_t i = 0; i < rows.size(); ++i) {
        added.push_back(add_option(app, rows[i]));
        for (size_t other = 0; other < i; ++other) {
            if (rows[i].one_of != 0 && rows[i].one_of == rows[other].one_of) {
                added[i]->excludes(added[other]);
            }
        }
    }
}

// A positional argument has a name of its own in the library, which messages do not show.
void add_argument(CLI::App *app, const ArgumentRow &row) {
    std::string name = row.placeholder;
    std::transform(name.begin(), name.end(), name.begin(), [](char ch) {
        return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch + 32) : ch;
    });
    CLI::Option *argument = std::visit(AddTo{app, name, row.help}, row.target);
    argument->type_name(row.placeholder)->required(row.required);
}

// A line of a description in lines that a terminal holds; one that is indented stays as it is.
std::string wrapped(std::string_view line) {
    std::string lines;
    while (line.size() > k_help_width && line[0] != ' ') {
        const size_t blank = line.rfind(' ', k_help_width);
        if (blank == std::string_view::npos) {
            break;
        }
        lines.append(line.substr(0, blank)).append("\n");
        line.remove_prefix(blank + 1);
    }
    return lines.append(line).append("\n");
}

// The description below the options, and what every command's help ends with.
std::string footer_of(const CommandRow &row) {
    std::string footer;
    for (const std::string_view line : lines_of(row.description)) {
        footer += wrapped(line);
    }
    return footer.empty() ? k_footer : footer + "\n" + k_footer;
}

void add_command(CLI::App *app, const CommandGroup &group, const CommandRow &row) {
    CLI::App *command = app->add_subcommand(row.name, row.summary);
    command->group(group.title);
    command->footer(footer_of(row));
    command->set_version_flag("--version", k_version, "Print the version and exit");
    for (const ArgumentRow &argument : row.arguments) {
        add_argument(command, argument);
    }
    add_options(command, row.options);
    command->callback([&row] { parser.command = &row; });
}

void guard_brackets(std::vector<std::string> *arguments) {
    for (std::string &argument : *arguments) {
        if (argument.starts_with('[') || argument.starts_with('{') ||
            argument.starts_with(k_guard)) {
            argument.insert(argument.begin(), k_guard);
        }
    }
}

struct TakeGuardAway {
    static void from(std::string *value) {
        if (value->starts_with(k_guard)) {
            value->erase(0, 1);
        }
    }
    void operator()(std::string CommandLine::*field) const { from(&(parser.line->*field)); }
    void operator()(std::optional<std::string> CommandLine::*field) const {
        std::optional<std::string> &value = parser.line->*field;
        if (value.has_value()) {
            from(&*value);
        }
    }
    void operator()(std::vector<std::string> CommandLine::*field) const {
        std::for_each((parser.line->*field).begin(), (parser.line->*field).end(),
                      [](std::string &value) { from(&value); });
    }
    template <typename T> void operator()(T) const {}
};

void take_guards_away() {
    for (const ArgumentRow &row : parser.command->arguments) {
        std::visit(TakeGuardAway{}, row.target);
    }
    for (const OptionRow &row : parser.command->options) {
        std::visit(TakeGuardAway{}, row.target);
    }
}

void describe(CLI::App *app) {
    app->allow_windows_style_options(false);
    app->require_subcommand(0, 1);
    app->set_version_flag("--version", k_version, "Print the version and exit");
    app->failure_message([](const CLI::App *failed, const CLI::Error &error) {
        return "qvx: " + CLI::FailureMessage::simple(failed, error);
    });
    app->footer(k_footer);
    for (const CommandGroup &group : command_groups()) {
        for (const CommandRow &row : group.commands) {
            add_command(app, group, row);
        }
    }
}

}  // namespace

const CommandRow *parse_command_line(std::vector<std::string> arguments, CommandLine *line,
                                     int *status) {
    CLI::App app("Reads, changes, reports and writes webs of cells.", "qvx");
    parser.line = line;
    parser.command = nullptr;
    *status = k_exit_failed;
    describe(&app);
    guard_brackets(&arguments);
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError &error) {
        *status = app.exit(error) == 0 ? k_exit_done : k_exit_failed;
        return nullptr;
    }
    if (parser.command == nullptr) {
        host_message("which command? Run with --help for more information.");
        return nullptr;
    }
    take_guards_away();
    return parser.command;
}
