#include "cli/check.h"

#include "cli/exit_status.h"
#include "cli/web_file.h"
#include "core/text.h"
#include "file/web_reader.h"
#include "web/cells.h"
#include "web/links.h"

namespace {

struct FindingKind {
    ReadFinding finding;
    const char *word;
    const char *before;  // the message is before + text + behind
    const char *behind;
};

constexpr FindingKind k_read_findings[] = {
    {ReadFinding::unknown_tag, "unknown_tag", "unknown tag <", "> becomes text"},
    {ReadFinding::unknown_entity, "unknown_entity", "unknown entity &", "; becomes text"},
    {ReadFinding::bad_name, "bad_name", "\"", "\" is no cellname, so the file is refused"},
    {ReadFinding::long_name, "long_name", "a name is cut to 48 characters when saved: \"", "\""},
    {ReadFinding::duplicate_name, "duplicate_name", "cell \"", "\" appears again"},
    {ReadFinding::bytes_after_end, "bytes_after_end", "bytes after the end are not read", ""},
};

// Where the observer, which the reader calls, puts what it hears.
struct Check {
    CheckedFile *file;
} check;

void hear(ReadFinding finding, uint32_t line, const char *text) {
    check.file->refused |= finding == ReadFinding::bad_name;
    for (const FindingKind &kind : k_read_findings) {
        if (kind.finding == finding) {
            const std::string subject = *kind.behind == 0 ? "" : text;
            check.file->findings.push_back(
                {kind.word, line, subject, kind.before + subject + kind.behind});
        }
    }
}

void note_long_text(CheckedFile *file, CellHandle cell) {
    const uint32_t size = text_size(cell_text(cell));
    if (size > k_scanned_text_max) {
        const std::string name = cell_name_string(cell);
        file->findings.push_back({"long_text", 0, name,
                                  "text of \"" + name + "\" has " + std::to_string(size) +
                                      " characters, links and reports see the first " +
                                      std::to_string(k_scanned_text_max)});
    }
}

// Goes through the web that was read.
void check_cells(CheckedFile *file) {
    std::string first_unnumbered;
    CellHandle cell = live_from(index_first(index_root()));
    for (; cell != 0; cell = live_from(index_next(cell))) {
        note_long_text(file, cell);
        if (file->cells++ == k_cell_number_max) {
            first_unnumbered = cell_name_string(cell);
        }
    }
    if (file->cells > k_cell_number_max) {
        const uint32_t count = file->cells - k_cell_number_max;
        file->findings.push_back({"no_cell_number", 0, first_unnumbered,
                                  std::to_string(count) +
                                      " cells have no cell number, so links to them are not "
                                      "reported: \"" +
                                      first_unnumbered + "\" and what sorts after it"});
    }
}

}  // namespace

void check_file(const char *name, CheckedFile *file) {
    *file = {name, k_exit_done, false, {}, 0, 0, 0};
    check.file = file;
    web_read_observe(hear);
    file->status = web_load(name);
    web_read_observe(nullptr);
    if (file->status == k_exit_done) {
        file->blocks_used = blocks_in_use();
        file->blocks_left = blocks_free();
        check_cells(file);
    }
}

// A refused name is a finding; whatever else keeps a file from being read is a failure.
int check_status(const CheckedFile &file) {
    if (file.status != k_exit_done && !file.refused) {
        return file.status;
    }
    return file.findings.empty() ? k_exit_done : k_exit_refused;
}
