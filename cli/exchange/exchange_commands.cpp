#include "cli/exchange/exchange_commands.h"

#include "cli/exchange/export.h"
#include "cli/exchange/import.h"

namespace {

constexpr ArgumentRow k_export_arguments[] = {k_web_argument};
constexpr ArgumentRow k_import_arguments[] = {
    {"PATH", "What to read, and last OUT, the web file to make, or - for standard output",
     &CommandLine::files, Takes::path}};

constexpr OptionRow k_export_options[] = {
    {"--html", "Write one page of HTML, to a file or, for -, to standard output",
     &CommandLine::html, "OUT", Takes::path, nullptr, 'f'},
    {"--markdown", "Write a folder of Markdown files", &CommandLine::markdown_folder, "DIR",
     Takes::folder, nullptr, 'f'},
    {"--force", "Overwrite a file that is no page, or write into a folder that holds something",
     &CommandLine::force},
    k_dry_run_option,
    k_json_option};
constexpr OptionRow k_import_options[] = {
    {"--markdown", "Read a folder of Markdown files", &CommandLine::from_markdown, nullptr,
     Takes::text, nullptr, 'f'},
    {"--text", "Read text files, a cell each", &CommandLine::from_text, nullptr, Takes::text,
     nullptr, 'f'},
    {"--tsv", "Read lines of a term, a TAB and its definition", &CommandLine::from_tsv, nullptr,
     Takes::text, nullptr, 'f'},
    {"--force", "Overwrite an existing file", &CommandLine::force},
    k_dry_run_option,
    k_json_option};

const CommandRow k_commands[] = {
    {"export", "Write a web as a page of HTML, or as a folder of Markdown files",
     "With --html every cell becomes an article of one page, with its links and the cells that "
     "link "
     "to it. The page needs no other file and no network, and can be read without scripts; with "
     "them its list can be filtered. Texts and names are shown, scripts and values are not. OUT is "
     "replaced when it is a page already.\n\n"
     "With --markdown every cell becomes a file in DIR, named after the cell as far as every "
     "system "
     "takes the name, and words that name cells become links. What Markdown would take for markup "
     "is escaped. What has no place in a text stands in front of it between two lines of ---: "
     "qvx-name for a cell that its file cannot be named after, qvx-value, qvx-script, and in "
     "home's "
     "file qvx-option-NAME for each option that is not the default. `qvx import --markdown` makes "
     "the same web of it. DIR is made, or has to be empty unless --force is given; then files of "
     "the same names are replaced and all others stay. Prints CELL -> FILE for each cell whose "
     "file "
     "has another name.\n\n"
     "With --dry-run it prints what would be written and how many bytes. With --json, a line for "
     "each file: {\"file\", \"bytes\", \"cell\" (of a Markdown file)}.",
     k_export_arguments, k_export_options, command_export},
    {"import", "Make a web of Markdown files, text files or a list of terms",
     "Makes OUT, the last of the PATHs; it must not exist unless --force is given.\n\n"
     "With --markdown PATH is a folder, whose .md and .markdown files become cells, those in its "
     "folders too; what begins with a point is passed over. A file's name without suffix is the "
     "cell's. Links to other files, [text](name.md), [[name]] and [[name|text]], become the words "
     "that name the cells, with the text before them where it says something else; escapes become "
     "the characters they stand for, but not in code between backticks or fences, and all other "
     "markup stays in the text, as does what stands "
     "in "
     "front of it between two lines of ---. Where no file is called home, index.md or README.md "
     "becomes home.\n\n"
     "With --text every PATH becomes a cell, named after the file. With --tsv every line that is "
     "not empty becomes one: a term, a TAB, and the definition. PATH may be -.\n\n"
     "A name that cannot be a cellname is changed: it begins with a letter, has at most 48 "
     "characters, and, with --markdown, holds only what a link can hold. A number makes it "
     "different from other names. Prints PATH -> CELL for each cell that is not called what its "
     "file or term is; on standard error when OUT is -.\n\n"
     "With --dry-run it prints all of them and how many bytes their texts have. With --json, a "
     "line "
     "for each cell: {\"path\", \"cell\", \"bytes\"}.",
     k_import_arguments, k_import_options, command_import},
};

}  // namespace

const std::span<const CommandRow> k_exchange_commands = k_commands;
