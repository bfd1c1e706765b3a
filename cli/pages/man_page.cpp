// qvx.1, in the macros of man(7).
#include "cli/command_table.h"
#include "cli/pages/pages.h"
#include "cli/pages/rows.h"

namespace {

constexpr const char *k_head =
    R"(.TH QVX 1 )" QUORVANE_RELEASED R"( "Quorvane )" QUORVANE_VERSION R"(" "User Commands"
.SH NAME
qvx \- read, change, report and write webs of notes
.SH SYNOPSIS
.B qvx
.I COMMAND
.RI [ OPTION ...]
.RI [ ARGUMENT ...]
.br
.B qvx
.RB [ COMMAND ]
.B \-\-help
.br
.B qvx \-\-version
.SH DESCRIPTION
A web of notes is a set of cells in one file of plain text, by custom named
.IR NAME .qvx;
.BR quorvane.qvx (5)
has its format.
Each cell has a name and a text.
Wherever the name of a cell stands as a word in a text, it is a link to that cell.
.PP
In a name, capitals equal small letters and the underscore equals a blank:
.B garden_plan
and
.B Garden plan
are one cell.
.PP
In place of a file,
.B \-
is standard input or output.
Given it, a command that changes a web reads the one and writes the other.
Where several web files may be named, the command runs on one after the other.
.PP
A command that changes a web holds a lock on its file meanwhile and puts the new version in the
place of the old one in one step.
A command that fails has changed nothing.
A web that could not be read whole is not written again, unless
.B \-\-force
is given.
.PP
On a terminal, control characters in names and texts are shown as \exNN.
.PP
Options may stand anywhere behind the command.
Behind
.B \-\-
everything is an argument.
)";

constexpr const char *k_tail = R"(.SH "EXIT STATUS"
.TP
.B 0
Done.
.TP
.B 1
Nothing was found, a check has findings, two webs differ, a merge has conflicts, or the command
was refused.
.TP
.B 2
Wrong usage, or a file that cannot be read or written.
.TP
.B 3
Out of memory: the web does not fit into its 400,000 bytes.
.TP
.B 4
A fault of
.B qvx
itself.
.SH ENVIRONMENT
.TP
.B NO_COLOR
When this is set and not empty, nothing is printed in colours.
Without it there are colours on a terminal only.
.TP
.BR VISUAL ", " EDITOR
The editor for a cell's text, where a command opens one: the first of the two that is set.
.SH FILES
.TP
.IB FILE .bad
The old version of a web that could not be read whole and was written with
.BR \-\-force .
.TP
.IB FILE \-new.PROCESS\fR, \fIFILE \-old.PROCESS
Beside a file that is just being saved.
What a killed program left is swept by the next save.
.SH EXAMPLES
Make a web, write two cells and follow their links:
.PP
.EX
qvx new notes.qvx
qvx set notes.qvx home \-\-text "Groceries are in shopping."
qvx set notes.qvx shopping \-\-text "Bread, and apples."
qvx report notes.qvx \-\-type outptr
.EE
.PP
Rename a cell and all links to it, after a look at what would change:
.PP
.EX
qvx rename \-\-links \-n notes.qvx shopping groceries_list
qvx rename \-\-links notes.qvx shopping groceries_list
.EE
.PP
Draw what links where, and publish all of it:
.PP
.EX
qvx graph notes.qvx | dot \-Tsvg >notes.svg
qvx export notes.qvx \-\-html notes.html
.EE
.PP
Take a cell's text from another program:
.PP
.EX
date | qvx set notes.qvx today \-\-file \-
.EE
.PP
Print the size of each cell's text, whatever bytes the names are made of:
.PP
.EX
qvx list \-0 notes.qvx | while IFS= read \-r \-d '' cell; do
    printf '%s: ' "$cell"; qvx show notes.qvx "$cell" | wc \-c
done
.EE
.SH "SEE ALSO"
.BR quorvane (1),
.BR quorvane.qvx (5)
)";

// Plain text as the formatter takes it: a hyphen is to be copied as one, and no line is a request.
std::string plain(std::string_view text) {
    std::string result = replaced(text, "\\", "\\e");
    result = replaced(result, "-", "\\-");
    result = replaced(result, "^", "\\(ha");
    result = replaced(result, "~", "\\(ti");
    result = replaced(result, "`", "\\(ga");
    return result;
}

std::string safe_line(std::string_view line) {
    const std::string text = plain(line);
    return (text.starts_with('.') || text.starts_with('\'') ? "\\&" : "") + text + "\n";
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> lines(1);
    for (const char ch : text) {
        if (ch == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += ch;
        }
    }
    return lines;
}

// Paragraphs with an empty line between two; lines that begin with blanks are shown as they are.
std::string paragraphs(std::string_view text) {
    std::string result;
    bool example = false;
    bool gap = true;
    for (const std::string &line : lines_of(text)) {
        const bool shown = line.starts_with("  ");
        if (shown != example) {
            result += shown ? ".PP\n.EX\n" : ".EE\n";
        }
        if (!shown && (gap || example) && !line.empty()) {
            result += ".PP\n";
        }
        gap = line.empty();
        example = shown;
        result += gap ? "" : safe_line(line);
    }
    return result + (example ? ".EE\n" : "");
}

std::string bold(std::string_view text) {
    return "\\fB" + plain(text) + "\\fR";
}

std::string italic(std::string_view text) {
    return "\\fI" + plain(text) + "\\fR";
}

// "FILE", "[FILE...]".
std::string shown_argument(const ArgumentRow &row) {
    const std::string name = italic(row.placeholder) + (is_list(row) ? "..." : "");
    return row.required ? name : "[" + name + "]";
}

std::string synopsis(const CommandRow &row) {
    std::string line = bold(std::string("qvx ") + row.name);
    for (const ArgumentRow &argument : row.arguments) {
        line += " " + shown_argument(argument);
    }
    return line + (row.options.empty() ? "" : " [" + italic("OPTION") + "...]") + "\n";
}

std::string value_of(const OptionRow &row) {
    const std::vector<std::string> words = words_of(row);
    std::string shown;
    for (const std::string &word : words) {
        shown += (shown.empty() ? "" : "|") + bold(word);
    }
    return words.empty() ? italic(row.placeholder) : shown;
}

std::string shown_option(const OptionRow &row) {
    std::string line;
    for (const std::string &name : names_of(row)) {
        line += (line.empty() ? "" : ", ") + bold(name);
    }
    return line + (takes_value(row) ? " " + value_of(row) : "") + "\n";
}

std::string sentence(std::string_view text) {
    return safe_line(std::string(text) + (text.ends_with('.') ? "" : "."));
}

std::string command_part(const CommandRow &row) {
    std::string text = ".SS " + std::string(row.name) + "\n" + synopsis(row) + ".PP\n";
    text += sentence(row.summary);
    text += row.description[0] == 0 ? "" : paragraphs(row.description);
    for (const ArgumentRow &argument : row.arguments) {
        text += ".TP\n" + shown_argument(argument) + "\n" + sentence(argument.help);
    }
    for (const OptionRow &option : row.options) {
        text += ".TP\n" + shown_option(option) + sentence(option.help);
    }
    return text;
}

std::string titled(std::string_view title) {
    return ".SH \"" + replaced(title, "\"", "\\(dq") + "\"\n";
}

std::string capitals(std::string text) {
    for (char &ch : text) {
        ch = ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 32) : ch;
    }
    return text;
}

}  // namespace

std::string man_page() {
    std::string page = k_head;
    for (const CommandGroup &group : command_groups()) {
        page += titled(capitals(group.title));
        for (const CommandRow &row : group.commands) {
            page += command_part(row);
        }
    }
    return page + k_tail;
}
