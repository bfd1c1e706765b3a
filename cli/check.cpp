#include "cli/check.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "core/names.h"
#include "core/text.h"
#include "file/read_watch.h"
#include "file/web_reader.h"
#include "file/web_tags.h"
#include "file/web_tokens.h"
#include "file/written_names.h"
#include "web/cell_numbers.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/links.h"
#include "web/option_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <map>

struct FindingKind {
    ReadFinding finding;
    const char *word;
    const char *before;  // the message is before + text + behind
    const char *behind;
};

constexpr FindingKind k_read_findings[] = {
    {ReadFinding::unknown_tag, "unknown_tag", "unknown tag <", "> becomes text"},
    {ReadFinding::unended_tag, "unended_tag", "tag <", " does not end and is dropped"},
    {ReadFinding::long_tag, "long_tag", "unknown tag <",
     "> becomes text, no more than 31 characters of it"},
    {ReadFinding::unknown_entity, "unknown_entity", "unknown entity &", "; becomes text"},
    {ReadFinding::long_entity, "long_entity", "unknown entity &",
     "; becomes text, no more than 31 characters of it"},
    {ReadFinding::bad_name, "bad_name", "\"", "\" is no cellname, so the file is refused"},
    {ReadFinding::long_name, "long_name", "a name is cut to 48 characters when saved: \"", "\""},
    {ReadFinding::line_end_in_name, "line_end_in_name", "a name has a line end: \"", "\""},
    {ReadFinding::duplicate_name, "duplicate_name", "cell \"",
     "\" appears again, and only one of them is kept"},
    {ReadFinding::unclosed_element, "unclosed_element", "<", "> is not closed"},
    {ReadFinding::element_before_name, "element_before_name", "<",
     "> stands before the first name and is dropped"},
    {ReadFinding::field_given_again, "field_given_again", "the cell has another <",
     ">, and only the last is kept"},
    {ReadFinding::option_given_again, "option_given_again", "<",
     "> is given again, and only the last is kept"},
    {ReadFinding::text_outside, "text_outside", "text outside of the elements is dropped: \"",
     "\""},
    {ReadFinding::no_end_mark, "no_end_mark", "the end of the file is missing: no </eof>", ""},
    {ReadFinding::nul_byte, "nul_byte", "a NUL byte ends the web, what follows is not read", ""},
    {ReadFinding::bytes_after_end, "bytes_after_end", "bytes after the end are not read", ""},
};
// An option's text is no finding and comes last. The numbers are spelled out above and below.
static_assert(std::size(k_read_findings) == static_cast<size_t>(ReadFinding::option));
static_assert(k_markup_name_max == 31 && k_cellname_max == 48);

struct GivenOption {
    uint32_t line;
    std::string text;
};

// Where the observer, which the reader calls, puts what it is told.
static struct Check {
    CheckedFile *file;
    std::map<int, GivenOption> options;  // the last of each tag
} check;

namespace {

// So much of a text as a line of a message may show.
std::string excerpt(const std::string &text) {
    constexpr size_t k_shown = 60;
    return text.size() <= k_shown ? text : std::string(text, 0, k_shown).append("...");
}

void take_note(const ReadNote *note) {
    if (note->finding == ReadFinding::option) {
        check.options[note->tag] = {note->line, note->text};
        return;
    }
    check.file->refused |= note->finding == ReadFinding::bad_name;
    for (const FindingKind &kind : k_read_findings) {
        if (kind.finding == note->finding) {
            check.file->findings.push_back({kind.word, note->line, note->text,
                                            kind.before + excerpt(note->text) + kind.behind});
        }
    }
}

// ---- Options ------------------------------------------------------------------------------------

bool parse_number(const std::string &text, double *number) {
    char *end = nullptr;
    *number = strtod(text.c_str(), &end);
    return end != text.c_str() && *end == 0 && std::isfinite(*number);
}

bool is_written_as_number(OptionId id) {
    if (id == k_option_count) {
        return false;
    }
    const OptionInfo *info = option_info(id);
    return info->type != OptionType::text && info->words[0].text[0] == 0;
}

// Words are the same as cellnames are, numbers in any spelling. A text is kept to the letter or
// cut.
bool says_the_same(OptionId id, const std::string &given, const std::string &kept) {
    const auto same = [](char a, char b) { return fold_char(a) == fold_char(b); };
    if (std::equal(given.begin(), given.end(), kept.begin(), kept.end(), same)) {
        return true;
    }
    constexpr size_t k_number_max = 25;
    double a = 0;
    double b = 0;
    return is_written_as_number(id) && given.size() <= k_number_max && parse_number(given, &a) &&
           parse_number(kept, &b) && a == b;
}

void check_options(CheckedFile *file) {
    for (const auto &[tag, given] : check.options) {
        const OptionId id = web_tag_option(tag);
        const std::string kept = id != k_option_count ? option_value_text(id) : "";
        if (!says_the_same(id, given.text, kept)) {
            file->findings.push_back({"option_changed", given.line, given.text,
                                      std::string("<") + web_tag_name(tag) + "> \"" +
                                          excerpt(given.text) + "\" becomes \"" + excerpt(kept) +
                                          "\""});
        }
    }
}

// ---- The web that was read ----------------------------------------------------------------------

// A long name was noted before; what becomes of it is known now.
void note_colliding_name(CheckedFile *file, const std::string &name, const std::string &written) {
    for (Finding &finding : file->findings) {
        if (finding.kind == "long_name" && finding.text == name) {
            finding.kind = "colliding_name";
            finding.message = "a name begins with the same 48 characters as another one and is "
                              "saved as \"" +
                              written + "\": \"" + excerpt(name) + "\"";
        }
    }
}

void check_name(CheckedFile *file, CellHandle cell) {
    const char *written = written_name(cell);
    if (written == nullptr) {
        return;
    }
    const std::string name = text_bytes(cell_name(cell));
    if (name.compare(0, k_cellname_max, written) != 0) {
        note_colliding_name(file, name, written);
    }
}

void note_long_text(CheckedFile *file, CellHandle cell) {
    const uint32_t size = text_size(cell_text(cell));
    if (size > k_scanned_text_max) {
        const std::string name = cell_name_string(cell);
        file->notes.push_back({"long_text", 0, name,
                               "text of \"" + name + "\" has " + std::to_string(size) +
                                   " characters, links and reports see the first " +
                                   std::to_string(k_scanned_text_max)});
    }
}

void note_cells_without_number(CheckedFile *file, const std::string &first) {
    const uint32_t count = file->cells - k_cell_number_max;
    const char *have = count == 1 ? " cell has" : " cells have";
    file->notes.push_back({"no_cell_number", 0, first,
                           std::to_string(count) + have +
                               " no cell number, so links to them are not reported: \"" + first +
                               "\" and what sorts after it"});
}

void check_cells(CheckedFile *file) {
    std::string first_unnumbered;
    written_names_begin();
    CellHandle cell = first_live_cell();
    for (; cell != 0; cell = next_live_cell(cell)) {
        check_name(file, cell);
        note_long_text(file, cell);
        if (file->cells++ == k_cell_number_max) {
            first_unnumbered = cell_name_string(cell);
        }
    }
    if (file->cells > k_cell_number_max) {
        note_cells_without_number(file, first_unnumbered);
    }
}

void note_not_whole(CheckedFile *file) {
    const std::string kept = is_standard_stream(file->name.c_str())
                                 ? ""
                                 : ": a save over it keeps it as \"" + file->name + ".bad\"";
    file->findings.push_back({"not_whole", 0, "", "the file cannot be read whole" + kept});
}

// Reading tells some things only when it has gone past them.
void sort_findings(std::vector<Finding> *findings) {
    std::stable_sort(findings->begin(), findings->end(),
                     [](const Finding &a, const Finding &b) { return a.line < b.line; });
}

void read_file(CheckedFile *file) {
    check.file = file;
    check.options.clear();
    web_read_observe(take_note);
    host_hold_messages(true);
    file->status = web_load(file->name.c_str());
    host_hold_messages(false);
    web_read_observe(nullptr);
    if (file->status == k_exit_done && web_read_failed()) {
        file->status = k_exit_failed;
    }
    file->whole = file->status == k_exit_done && web_read_was_whole();
}

}  // namespace

void check_file(const char *name, CheckedFile *file) {
    *file = {};
    file->name = name;
    read_file(file);
    if (file->status == k_exit_done) {
        file->blocks_used = blocks_in_use();
        file->blocks_left = blocks_free();
        check_options(file);
        check_cells(file);
    }
    sort_findings(&file->findings);
    if (file->refused || (file->status == k_exit_done && !file->whole)) {
        note_not_whole(file);
    } else if (file->status != k_exit_done) {
        host_print_held();
        file->error = host_held_message();
        file->reason = host_held_reason();
    }
}

// A refused name is a finding; whatever else keeps a file from being read is a failure.
int check_status(const CheckedFile &file) {
    if (file.status != k_exit_done && !file.refused) {
        return file.status;
    }
    return file.findings.empty() ? k_exit_done : k_exit_refused;
}
