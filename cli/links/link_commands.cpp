#include "cli/links/link_commands.h"

#include "cli/links/commands.h"
#include "cli/links/graph.h"

namespace {

constexpr ArgumentRow k_web[] = {k_web_argument};
constexpr ArgumentRow k_webs[] = {k_webs_argument};
constexpr ArgumentRow k_web_and_cell[] = {k_web_argument, k_cell_argument};
constexpr ArgumentRow k_rename_arguments[] = {
    k_web_argument,
    {"OLD", "The cell's name", &CommandLine::cell, Takes::cell},
    {"NEW", "Its new name", &CommandLine::replacement}};
constexpr ArgumentRow k_find_arguments[] = {{"TEXT", "What to look for", &CommandLine::wanted},
                                            k_webs_argument};
constexpr ArgumentRow k_replace_arguments[] = {
    k_web_argument,
    {"OLD", "What to look for", &CommandLine::wanted},
    {"NEW", "What comes in its place", &CommandLine::replacement}};
constexpr ArgumentRow k_links_arguments[] = {
    k_web_argument,
    {"CELL", "The cell that the links stand in", &CommandLine::some_cell, Takes::cell, false}};
constexpr ArgumentRow k_path_arguments[] = {
    k_web_argument,
    {"A", "The cell to begin at", &CommandLine::cell, Takes::cell},
    {"B", "The cell to come to", &CommandLine::other_cell, Takes::cell}};

constexpr OptionRow k_word_option = {"--word", "Match whole words only", &CommandLine::whole_words};
constexpr OptionRow k_case_option = {"--case", "Tell capitals from small letters",
                                     &CommandLine::match_case};

constexpr OptionRow k_rename_options[] = {
    {"--links", "Change the words that name the cell in all texts, too", &CommandLine::with_links},
    k_dry_run_option,
    {"--json", "Print a dry run as JSON", &CommandLine::json},
    k_force_option};
constexpr OptionRow k_find_options[] = {
    k_word_option,
    k_case_option,
    {"-E,--expression", "TEXT is a regular expression", &CommandLine::expression},
    {"--names", "Look in the cells' names, not in their texts", &CommandLine::in_names, nullptr,
     Takes::text, nullptr, 'p'},
    {"-l,--cells", "Print the names of the cells alone", &CommandLine::only_cells, nullptr,
     Takes::text, nullptr, 'p'},
    {"-c,--count", "Print how many lines match in each cell", &CommandLine::only_counts, nullptr,
     Takes::text, nullptr, 'p'},
    k_null_option,
    k_json_option};
constexpr OptionRow k_replace_options[] = {
    k_word_option,
    k_case_option,
    k_dry_run_option,
    {"--json", "Print a dry run as JSON", &CommandLine::json},
    k_force_option};
constexpr OptionRow k_links_options[] = {
    {"-l,--cells", "Print the names of the cells alone", &CommandLine::only_cells},
    k_null_option,
    k_json_option};
constexpr OptionRow k_list_options[] = {k_null_option, k_json_option};
constexpr OptionRow k_json_options[] = {k_json_option};
const OptionRow k_graph_options[] = {
    {"--format", "How the graph is written (without it: dot)", &CommandLine::graph_format, "FORMAT",
     Takes::text, graph_format_words},
    {"--cell", "Only this cell and what is near it", &CommandLine::some_cell, "CELL", Takes::cell},
    {"--depth", "How many links away that is (without it: 1)", &CommandLine::depth, "N"},
    {"--json", "The same as --format json", &CommandLine::json}};

constexpr const char *k_rename_description =
    "The cell keeps its text, script and value. With --links every word in every text that names "
    "it becomes NEW, blanks as '_'; without it those words lead nowhere afterwards.\n\n"
    "With --dry-run it prints \"OLD -> NEW\" and, below the name of its cell, each line that would "
    "change, before and after, as \"-LINE: TEXT\" and \"+LINE: TEXT\". With --json {\"cell\", "
    "\"renamed\"}, then "
    "{\"cell\", \"line\", \"before\", \"after\"} for each line.\n\n"
    "Refused are the home cell, a name that another cell has, what is no cell name (at most 48 "
    "characters, a letter first) and, with --links, a name with characters that words do not have. "
    "A name may change in capitals, blanks and '_' alone.";

constexpr const char *k_find_description =
    "Prints each line of a cell's text that holds TEXT, as CELL:LINE:TEXT, with FILE: in front "
    "when there are several files. Capitals and small letters are the same unless --case is given, "
    "also those of other scripts. With --names '_' and blank are the same, too, as in all "
    "names.\n\n"
    "With -E TEXT is a regular expression in the syntax of PCRE2, matched within a line: it knows "
    "UTF-8 and takes bytes that are no UTF-8 as they are. A line that would take "
    "more than a million steps is not searched to its end, and the command ends with 2.\n\n"
    "--names, -l and -0 print [FILE:]CELL, -c prints [FILE:]CELL:COUNT for the cells that match. "
    "With --json, one object a line: {\"file\", \"cell\", \"line\", \"text\", \"matches\"}, with "
    "-l and "
    "--names {\"file\", \"cell\"}, with -c {\"file\", \"cell\", \"count\"}.\n\n"
    "The exit status is 1 when nothing is found.";

constexpr const char *k_replace_description =
    "Replaces OLD by NEW in all texts, within lines. Names stay as they are: see rename. Capitals "
    "and small letters of OLD are the same unless --case is given.\n\n"
    "With --dry-run it prints, below the name of its cell, each line that would change, before and "
    "after, as \"-LINE: TEXT\" and \"+LINE: TEXT\". With --json {\"cell\", \"line\", \"before\", "
    "\"after\"}.\n\n"
    "The exit status is 1 when nothing is found.";

constexpr const char *k_links_description =
    "Prints each line of CELL's text that names another cell, or of all texts without CELL, as "
    "CELL:LINE:TEXT. A word names a cell whatever its capitals, with '_' for blanks. A cell's own "
    "name in its text is no link, here and in the commands below.\n\n"
    "-l prints the names of the cells that the links lead to, each once, and so does -0. With "
    "--json, one "
    "object a line: {\"file\", \"cell\", \"line\", \"text\", \"links\"}; links has the names that "
    "the line leads to.\n\n"
    "The exit status is 1 when there is none.";

constexpr const char *k_backlinks_description =
    "Prints each line of the other cells' texts that names CELL, as CELL:LINE:TEXT: the cell where "
    "it stands, and where. -l prints the names of those cells, each once. With --json as for "
    "links.\n\n"
    "The exit status is 1 when there is none.";

constexpr const char *k_orphans_description =
    "Prints the names of the cells that no other cell links to, a line each. Home, where every web "
    "begins, is never one. With --json, a line for each: {\"file\", \"cell\"}.\n\n"
    "The exit status is 1 when there is none.";

constexpr const char *k_deadends_description =
    "Prints the names of the cells whose texts link to no other cell, a line each. With --json, a "
    "line for "
    "each: {\"file\", \"cell\"}.\n\n"
    "The exit status is 1 when there is none.";

constexpr const char *k_wanted_description =
    "Prints words that name no cell and look as if they should, as WORD:COUNT, the most frequent "
    "first: words that could be names, with '_' inside or with a capital behind a small letter. "
    "Words that differ in capitals alone count as one. With -0 it prints the words alone. "
    "With --json, a line for each: {\"file\", \"word\", \"count\", \"cells\"}; cells has the names "
    "of those that have the "
    "word.\n\n"
    "The exit status is 1 when there is none.";

constexpr const char *k_path_description =
    "Prints the cells on a shortest way from A to B, both included, a line each; each links to the "
    "next. With --json, a line for each: {\"file\", \"cell\"}.\n\n"
    "The exit status is 1 when no links lead there.";

constexpr const char *k_stats_description =
    "Prints a line each, \"KEY: VALUE\": cells, lines, words and bytes of all texts, links, "
    "orphans, deadends, wanted words, the name of the longest cell, the name of the cell that most "
    "others link to if there are links, and how many blocks of memory the web takes and leaves. "
    "With several FILEs each line begins with FILE:. With --json, one object with these keys and "
    "\"file\" for each FILE.";

constexpr const char *k_graph_description =
    "Prints which cells link to which. dot is for Graphviz, as in: qvx graph notes.qvx | dot "
    "-Tsvg. "
    "mermaid is a flowchart for documents in Markdown. json has one object a line: "
    "{\"cell\", \"links\"}, links being names.\n\n"
    "With --cell only that cell is there and those that are at most N links away, whichever way "
    "the links go.";

const CommandRow k_commands[] = {
    {"rename", "Rename a cell, with --links in all texts too", k_rename_description,
     k_rename_arguments, k_rename_options, command_rename},
    {"find", "Search the texts, as grep does", k_find_description, k_find_arguments, k_find_options,
     command_find},
    {"replace", "Replace a text in all texts", k_replace_description, k_replace_arguments,
     k_replace_options, command_replace},
    {"links", "Print the lines that link to other cells", k_links_description, k_links_arguments,
     k_links_options, command_links},
    {"backlinks", "Print the lines that link to a cell", k_backlinks_description, k_web_and_cell,
     k_links_options, command_backlinks},
    {"orphans", "Print the cells that nothing links to", k_orphans_description, k_webs,
     k_list_options, command_orphans},
    {"deadends", "Print the cells that link to nothing", k_deadends_description, k_webs,
     k_list_options, command_deadends},
    {"wanted", "Print the words that want a cell of their name", k_wanted_description, k_webs,
     k_list_options, command_wanted},
    {"path", "Print a shortest way from cell to cell by links", k_path_description,
     k_path_arguments, k_list_options, command_path},
    {"stats", "Print a web in numbers", k_stats_description, k_webs, k_json_options, command_stats},
    {"graph", "Print the links as a graph, to be drawn", k_graph_description, k_web,
     k_graph_options, command_graph},
};

}  // namespace

const std::span<const CommandRow> k_link_commands = k_commands;
