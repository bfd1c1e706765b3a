// How bash completes a command line of qvx: a table of what each command takes, and functions that
// look where on the line the cursor is.
#include "cli/pages/pages.h"
#include "cli/pages/rows.h"

namespace {

constexpr const char *k_functions = R"SH(
# The words up to the cursor. Bash has split them at : and = as well, which may stand in names.
# _qvx_begun: how much of the last word bash leaves alone when it puts a reply in.
_qvx_split() {
    local line=${COMP_LINE:0:COMP_POINT} i part
    words=() _qvx_begun=
    for ((i = 0; i <= COMP_CWORD; i++)); do
        part=${COMP_WORDS[i]}
        ((i < COMP_CWORD)) || part=${line#"${line%%[![:blank:]]*}"}
        if ((i > 0)) && [[ $line != [[:blank:]]* ]]; then
            _qvx_begun=${words[-1]}
            words[-1]+=$part
        else
            _qvx_begun=
            words+=("$part")
        fi
        line=${line#"${line%%[![:blank:]]*}"}
        line=${line#"$part"}
    done
    [[ $part != [:=] ]] || _qvx_begun=${words[-1]}
}

# A word as the program would get it: the quotes and backslashes taken away.
_qvx_plain() {
    case $1 in
    \"*) plain=${1#\"} plain=${plain%\"} plain=${plain//\\\"/\"} plain=${plain//\\\$/\$}
        plain=${plain//\\\`/\`} plain=${plain//\\\\/\\} ;;
    \'*) plain=${1#\'} plain=${plain%\'} plain=${plain//\'\\\'\'/\'} ;;
    *) plain=
        IFS= read -d '' plain < <(printf '%s' "$1") ;;
    esac
    case $1 in
    \~/*) plain=$HOME/${plain#\~/} ;;
    esac
}

# What stands on the line for these bytes, inside of the quotes that the user has opened.
_qvx_written() {
    case $current in
    \"*) written=${1//\\/\\\\} written=${written//\"/\\\"} written=${written//\$/\\\$}
        written=${written//\`/\\\`}
        # A quote at the end is taken for the closing one, which is put in otherwise.
        [[ $written != *\" ]] || written+=\" ;;
    \'*) written=${1//\'/\'\\\'\'} ;;
    *) printf -v written %q "$1" ;;
    esac
}

# Capitals equal small letters in a cell's name, and _ equals a blank.
_qvx_fold() {
    folded=${1,,}
    folded=${folded//_/ }
}

_qvx_cells() {
    local name folded beginning written plain
    [[ -f $web ]] || return
    _qvx_plain "$current"
    _qvx_fold "$plain"
    beginning=$folded
    while IFS= read -r -d '' name; do
        _qvx_fold "$name"
        [[ $folded == "$beginning"* ]] || continue
        _qvx_written "$name"
        COMPREPLY+=("${written#"$_qvx_begun"}")
    done < <("$program" list -0 -- "$web" </dev/null 2>/dev/null)
}

# Files of this ending and folders, or, where there are none, what bash finds by itself.
_qvx_files() {
    local plain file options
    _qvx_plain "$current"
    compopt -o filenames -o bashdefault -o default 2>/dev/null
    [[ $current != \~* && -z $_qvx_begun ]] || return
    options=$(shopt -p nullglob)
    shopt -s nullglob
    for file in "$plain"*"$1" "$plain"*/; do
        [[ -d $file && $file != */ ]] || COMPREPLY+=("${file%/}")
    done
    $options
}

_qvx_words() {
    local word
    for word in "$@"; do
        [[ $word != "$current"* ]] || COMPREPLY+=("$word")
    done
}

_qvx_complete() {
    case $1 in
    web) _qvx_files .qvx ;;
    cell) _qvx_cells ;;
    path) compopt -o filenames -o bashdefault -o default 2>/dev/null ;;
    folder) compopt -o dirnames 2>/dev/null ;;
    words:*) _qvx_words ${1#words:} ;;
    esac
}

# What the option takes, or nothing where it takes no value.
_qvx_value() {
    local option
    value=
    for option in "${options[@]}"; do
        [[ ${option%%=*} != "$1" || $option != *=* ]] || value=${option#*=}
    done
}

# Walks over the words behind the command. kind: what the last one is; web: the web before it.
_qvx_walk() {
    local i place=0 only_arguments= value plain
    web= kind=
    for ((i = 2; i < ${#words[@]}; i++)); do
        if [[ -z $only_arguments && ${words[i]} == -?* ]]; then
            kind=option
            [[ ${words[i]} != -- ]] || only_arguments=yes
            _qvx_value "${words[i]%%=*}"
            if [[ ${words[i]} == --*=* && -n $value ]]; then
                kind=$value
                value=
                current=${current#"${words[i]%%=*}="}
            elif [[ -n $value ]] && ((i + 1 < ${#words[@]})); then
                ((++i))
                kind=$value
            fi
        else
            kind=${arguments[place]-}
            if [[ ${kind%...} == web && -z $web ]] && ((i + 1 < ${#words[@]})); then
                _qvx_plain "${words[i]}"
                web=$plain
            fi
            [[ $kind == *... ]] || ((++place))
            kind=${kind%...}
        fi
    done
}

_qvx() {
    local words current web kind arguments options _qvx_begun program=$1
    COMPREPLY=()
    _qvx_split
    current=${words[-1]}
    if ((${#words[@]} == 2)); then
        _qvx_words $_qvx_commands --help --version
        return
    fi
    _qvx_table "${words[1]}" || return
    options+=(-h --help --version)
    _qvx_walk
    if [[ $kind == option ]]; then
        _qvx_words "${options[@]%%=*}"
    else
        _qvx_complete "$kind"
    fi
}

complete -F _qvx qvx
)SH";

std::string value_kind(const OptionRow &row) {
    const std::string words = joined(words_of(row));
    return words.empty() ? kind_name(row.takes) : "words:" + words;
}

std::string arguments_of(const CommandRow &row) {
    std::string list;
    for (const ArgumentRow &argument : row.arguments) {
        list += (list.empty() ? "" : " ") + std::string(kind_name(argument.takes));
        list += is_list(argument) ? "..." : "";
    }
    return list;
}

std::string options_of(const CommandRow &row) {
    std::string list;
    for (const OptionRow &option : row.options) {
        for (const std::string &name : names_of(option)) {
            list += list.empty() ? "" : " ";
            list += quoted(takes_value(option) ? name + "=" + value_kind(option) : name);
        }
    }
    return list;
}

std::string table() {
    std::string text = "_qvx_table() {\n    case $1 in\n";
    for (const CommandRow *row : all_commands()) {
        text += "    " + std::string(row->name) + ") arguments=(" + arguments_of(*row) +
                ") options=(" + options_of(*row) + ") ;;\n";
    }
    return text + "    *) return 1 ;;\n    esac\n}\n";
}

}  // namespace

std::string bash_completion() {
    std::vector<std::string> names;
    for (const CommandRow *row : all_commands()) {
        names.emplace_back(row->name);
    }
    return "# Completion of qvx for bash.\n\n_qvx_commands='" + joined(names) + "'\n\n" +
           "# What a command's arguments are, and its options with what their values are.\n" +
           table() + k_functions;
}
