// How fish completes a command line of qvx: a rule for each command, argument and option.
#include "cli/pages/pages.h"
#include "cli/pages/rows.h"

namespace {

constexpr const char *k_functions = R"SH(
# The arguments before the cursor, the command first: the words that are no options and no values of
# options.
function __qvx_arguments
    set -l words (commandline -opc)
    set -l valued (__qvx_valued $words[2])
    set -l only_arguments no
    set -l skip no
    for word in $words[2..]
        if test $skip = yes
            set skip no
        else if test $only_arguments = yes; or not string match -q -- '-?*' $word
            printf '%s\n' $word
        else if test $word = --
            set only_arguments yes
        else if contains -- $word $valued
            set skip yes
        end
    end
end

# True where no command stands on the line yet.
function __qvx_no_command
    test (count (__qvx_arguments)) = 0
end

# __qvx_in COMMAND [FROM TO]: true behind the command, where an argument of these places would come.
function __qvx_in
    set -l arguments (__qvx_arguments)
    test "$arguments[1]" = $argv[1]; or return 1
    test (count $argv) = 1; and return 0
    set -l place (count $arguments)
    test $place -ge $argv[2]; and test $place -le $argv[3]
end

# The cells of the web that is the argument of this place.
function __qvx_cells
    set -l place (math $argv[1] + 1)
    set -l arguments (__qvx_arguments)
    set -q arguments[$place]; or return
    set -l program (commandline -opc)[1]
    set -l web (string replace -r '^~/' $HOME/ -- $arguments[$place])
    test -f "$web"; or return
    $program list -0 -- $web </dev/null 2>/dev/null | string split0
end

# Web files and folders, or, where there are none, any files.
function __qvx_webs
    set -l files (__fish_complete_suffix .qvx)
    string match -r -- '^.*(?:\.qvx|/)$' $files; or printf '%s\n' $files
end

complete -c qvx -f
complete -c qvx -n __qvx_no_command -s h -l help -d 'Print help and exit'
complete -c qvx -n __qvx_no_command -l version -d 'Print the version and exit'
)SH";

constexpr int k_any_more = 99999;

// What is offered, as more words of `complete`.
std::string offered(const CommandRow &row, Takes takes) {
    switch (takes) {
    case Takes::web:
        return " -a '(__qvx_webs)'";
    case Takes::cell:
        return " -k -a '(__qvx_cells " + std::to_string(web_place(row)) + ")'";
    case Takes::path:
        return " -F";
    case Takes::folder:
        return " -a '(__fish_complete_directories)'";
    case Takes::text:
        break;
    }
    return "";
}

std::string value_of(const CommandRow &row, const OptionRow &option) {
    const std::string words = joined(words_of(option));
    const char *how = option.takes == Takes::path ? " -r" : " -x";
    return how + (words.empty() ? offered(row, option.takes) : " -a " + fish_quoted(words));
}

std::string option_line(const CommandRow &row, const OptionRow &option) {
    std::string text = "complete -c qvx -n '__qvx_in " + std::string(row.name) + "'";
    for (const std::string &name : names_of(option)) {
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return text + (takes_value(option) ? value_of(row, option) : "") + " -d " +
           fish_quoted(option.help) + "\n";
}

std::string argument_line(const CommandRow &row, const ArgumentRow &argument, int place) {
    const std::string what = offered(row, argument.takes);
    if (what.empty()) {
        return "";
    }
    return "complete -c qvx -n '__qvx_in " + std::string(row.name) + " " + std::to_string(place) +
           " " + std::to_string(is_list(argument) ? k_any_more : place) + "'" + what + "\n";
}

std::string command_lines(const CommandRow &row) {
    std::string text = "\ncomplete -c qvx -n __qvx_no_command -a " + std::string(row.name) +
                       " -d " + fish_quoted(row.summary) + "\n";
    int place = 0;
    for (const ArgumentRow &argument : row.arguments) {
        text += argument_line(row, argument, ++place);
    }
    for (const OptionRow &option : row.options) {
        text += option_line(row, option);
    }
    return text + "complete -c qvx -n '__qvx_in " + row.name +
           "' -s h -l help -d 'Print help and exit'\n";
}

// Of each command, the options behind which a value comes.
std::string valued() {
    std::string text = "function __qvx_valued\n    switch \"$argv[1]\"\n";
    for (const CommandRow *row : all_commands()) {
        std::string names;
        for (const OptionRow &option : row->options) {
            for (const std::string &name : names_of(option)) {
                names += takes_value(option) ? " " + name : "";
            }
        }
        if (!names.empty()) {
            text += "        case " + std::string(row->name) + "\n            printf '%s\\n'" +
                    names + "\n";
        }
    }
    return text + "    end\nend\n";
}

}  // namespace

std::string fish_completion() {
    std::string text = "# Completion of qvx for fish.\n\n" + valued() + k_functions;
    for (const CommandRow *row : all_commands()) {
        text += command_lines(*row);
    }
    return text;
}
