// How zsh completes a command line of qvx: each command's row as specifications of _arguments.
#include "cli/pages/pages.h"
#include "cli/pages/rows.h"

namespace {

constexpr const char *k_functions = R"SH(
# The cells of the web that is named on the line, as the argument whose place comes last; before it
# stands how they are to be shown. Capitals equal small letters, and _ a blank.
_qvx_cells() {
    local web=${(Q)line[$argv[-1]]}
    local -a cells
    web=${web/#\~\//$HOME/}
    [[ -f $web ]] || return 1
    cells=("${(@0)$("$_qvx_program" list -0 -- "$web" </dev/null 2>/dev/null; print -n .)}")
    cells=("${(@)cells[1,-2]}")
    compadd "${(@)argv[1,-2]}" -M 'm:{a-zA-Z_\ }={A-Za-z\ _}' -a cells
}

_qvx() {
    local curcontext=$curcontext state line expl _qvx_program=$words[1]
    typeset -A opt_args
    _arguments -C '(- *)'{-h,--help}'[Print help and exit]' \
        '(- *)--version[Print the version and exit]' '1: :_qvx_commands' '*:: :->command' && return
    [[ $state == command ]] || return 1
    curcontext=${curcontext%:*:*}:qvx-$words[1]:
    _qvx_arguments $words[1]
}

_qvx "$@"
)SH";

// Inside the brackets and between the colons of what zsh is told of an option.
std::string escaped(std::string_view text) {
    std::string result = replaced(text, "\\", "\\\\");
    result = replaced(result, ":", "\\:");
    result = replaced(result, "[", "\\[");
    return replaced(result, "]", "\\]");
}

std::string action(const CommandRow &row, Takes takes) {
    switch (takes) {
    case Takes::web:
        return "_files -g \"*.qvx\"";
    case Takes::cell:
        return "_qvx_cells " + std::to_string(web_place(row));
    case Takes::path:
        return "_files";
    case Takes::folder:
        return "_files -/";
    case Takes::text:
        break;
    }
    return " ";
}

std::string value_action(const CommandRow &row, const OptionRow &option) {
    const std::string words = joined(words_of(option));
    return words.empty() ? action(row, option.takes) : "(" + words + ")";
}

bool may_repeat(const OptionRow &row) {
    return std::holds_alternative<std::vector<std::string> CommandLine::*>(row.target);
}

// The names of the options that may not stand beside this one: itself, and those of its letter.
std::string excluded(const CommandRow &row, const OptionRow &option) {
    std::vector<std::string> names;
    for (const OptionRow &other : row.options) {
        if ((&other == &option && !may_repeat(option)) ||
            (&other != &option && option.one_of != 0 && option.one_of == other.one_of)) {
            for (const std::string &name : names_of(other)) {
                names.push_back(name);
            }
        }
    }
    return "(" + joined(names) + ")";
}

std::string option_lines(const CommandRow &row, const OptionRow &option) {
    std::string lines;
    for (const std::string &name : names_of(option)) {
        std::string text = excluded(row, option) + name;
        text += takes_value(option) && name.starts_with("--") ? "=" : "";
        text += "[" + escaped(option.help) + "]";
        if (takes_value(option)) {
            text += ":" + escaped(option.placeholder) + ":" + value_action(row, option);
        }
        lines += " \\\n            " + quoted(text);
    }
    return lines;
}

std::string argument_line(const CommandRow &row, const ArgumentRow &argument, int place) {
    std::string where = std::to_string(place);
    if (is_list(argument)) {
        where = "*";
    }
    const char *colon = is_list(argument) || argument.required ? ":" : "::";
    return " \\\n            " + quoted(where + colon + escaped(argument.placeholder) + ":" +
                                        action(row, argument.takes));
}

std::string command_lines(const CommandRow &row) {
    std::string text = "    " + std::string(row.name) + ")\n        _arguments -s -S" +
                       " \\\n            '(- *)'{-h,--help}'[Print help and exit]'" +
                       " \\\n            '(- *)--version[Print the version and exit]'";
    for (const OptionRow &option : row.options) {
        text += option_lines(row, option);
    }
    int place = 0;
    for (const ArgumentRow &argument : row.arguments) {
        text += argument_line(row, argument, ++place);
    }
    return text + "\n        ;;\n";
}

std::string descriptions() {
    std::string text = "_qvx_commands() {\n    local -a commands=(\n";
    for (const CommandRow *row : all_commands()) {
        text += "        " + quoted(std::string(row->name) + ":" + escaped(row->summary)) + "\n";
    }
    return text + "    )\n    _describe -t commands command commands\n}\n";
}

}  // namespace

std::string zsh_completion() {
    std::string text = "#compdef qvx\n# Completion of qvx for zsh.\n\n" + descriptions() +
                       "\n_qvx_arguments() {\n    case $1 in\n";
    for (const CommandRow *row : all_commands()) {
        text += command_lines(*row);
    }
    return text + "    esac\n}\n" + k_functions;
}
