#include "cli/merge/merge_commands.h"

namespace {

constexpr ArgumentRow k_two_webs[] = {
    {"A", "The web before, or - for standard input", &CommandLine::file, Takes::web},
    {"B", "The web after, or - for standard input", &CommandLine::other_file, Takes::web}};
constexpr ArgumentRow k_three_webs[] = {
    {"BASE", "The web that both sides come from, or an empty file where there is none",
     &CommandLine::base_file, Takes::web},
    {"OURS", "The web of one side", &CommandLine::file, Takes::web},
    {"THEIRS", "The web of the other side", &CommandLine::other_file, Takes::web}};
constexpr ArgumentRow k_web[] = {k_web_argument};
constexpr ArgumentRow k_webs[] = {k_webs_argument};

constexpr OptionRow k_json[] = {k_json_option};
constexpr OptionRow k_merge_options[] = {
    {"-o,--output",
     "The web file to write, which may be one of the three (without it, or for -: "
     "standard output)",
     &CommandLine::output, "OUT", Takes::web},
    {"--ours", "How marks call OURS (without it: the file)", &CommandLine::our_label, "LABEL"},
    {"--theirs", "How marks call THEIRS (without it: the file)", &CommandLine::their_label,
     "LABEL"},
    {"--name", "How messages call the web (without it: OUT)", &CommandLine::shown_name, "NAME"},
    k_dry_run_option,
    k_force_option};
constexpr OptionRow k_repair_options[] = {
    {"-o,--output", "The web file to write (without it, or for -: standard output)",
     &CommandLine::output, "OUT", Takes::web},
    {"--force", "Overwrite an existing file; where that is FILE, the old one is kept as FILE.bad",
     &CommandLine::force},
    {"-n,--dry-run", "Print the list, and write nothing", &CommandLine::dry_run},
    k_json_option};

const CommandRow k_commands[] = {
    {"diff", "Say what differs between two webs, cell by cell",
     "Prints each cell that differs: its name, behind - when B lacks it and + when A does, as "
     "OLD -> NEW when it is spelled otherwise; then the lines that differ, with their numbers, "
     "behind - those of A and behind + those of B. Lines of a script or a value say so before the "
     "number. An option that differs is printed as \"option NAME: A -> B\".\n\n"
     "The exit status is 1 when anything differs.\n\n"
     "With --json, one object a line: {\"cell\", \"change\": \"added\", \"removed\" or "
     "\"changed\", \"spelled\" (the name in B, where it differs), \"lines\": [{\"field\": "
     "\"text\", \"script\" or \"value\", \"side\": \"-\" or \"+\", \"line\", \"text\"}]}, and "
     "{\"option\", \"before\", \"after\"} for options.",
     k_two_webs, k_json, command_diff},
    {"merge", "Bring two versions of a web together that come from a third",
     "Merges by cell, and texts and scripts by line; values and options as a whole. What one side "
     "changed is taken from it. Where both changed a line, or both put lines in at one place, OUT "
     "has both versions between marks:\n\n"
     "    <<<<<<< OURS\n    =======\n    >>>>>>> THEIRS\n\n"
     "Values that both changed are marked in the same way at the end of the cell's text, and ours "
     "stays the value. A cell that one side deleted and the other changed stays, and so does our "
     "value of an option that both changed. A cell with another name is another cell.\n\n"
     "Each conflict is said on standard error, and the exit status is then 1, but OUT has been "
     "written. When a web cannot be read whole, nothing is written and the exit status is 1, too; "
     "with --force the merge takes what can be read of it. One of the three may be -, standard "
     "input. With -n it prints how OURS would change, and the conflicts. There is no JSON, because "
     "what is written is a web; `qvx diff --json` of OURS and OUT has the changes. docs/git.md "
     "shows "
     "this command as the "
     "merge driver of git.",
     k_three_webs, k_merge_options, command_merge},
    {"text", "Print webs as texts to read and compare",
     "Prints each cell as a line \"=== NAME\" and its text, then, where it has them, its value "
     "behind a line \"--- value\" and its script behind a line \"--- script\"; at the end, the "
     "options that are not as in a new web. Several files begin with a line \"==> FILE\". "
     "docs/git.md shows this command as git's filter for diffs.\n\n"
     "With --json, one object a line for each cell: {\"file\", \"cell\", \"text\", \"script\", "
     "\"value\"}.",
     k_webs, k_json, command_text},
    {"repair", "Make a whole web of what can be read of a damaged one",
     "Writes to OUT what FILE still has, though it is cut off, has NULs or other bytes in it, "
     "lacks "
     "tags or has names that are none or come twice: every cell that is whole, and of the others "
     "what is left. Nothing that can be read is dropped: what belongs to no cell comes into a new "
     "cell, lost_and_found, and a cell whose name is taken gets a number behind it. An existing "
     "OUT is left alone unless --force is given.\n\n"
     "Prints a list of all that was damaged, as FILE:LINE: CELL: MESSAGE, on standard output, or "
     "on standard error when the web goes to standard output. The exit status is 1 when anything "
     "was.\n\n"
     "With --json, one object a line: {\"file\", \"line\", \"cell\", \"kind\", \"message\", "
     "\"text\" (all that was found there)}.",
     k_web, k_repair_options, command_repair},
};

}  // namespace

const std::span<const CommandRow> k_merge_commands = k_commands;
