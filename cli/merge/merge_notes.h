// Webs three ways, cell by cell.
#pragma once

#include "cli/merge/merge_text.h"
#include "cli/note.h"

struct CellConflict {
    std::string cell;
    std::string message;
};

struct MergedNotes {
    Notes notes;
    std::vector<CellConflict> conflicts;  // in the web's order
};

// Texts and scripts by line, values as a whole. A cell that both sides added has an empty base. One
// that a side deleted goes, unless the other side changed it, which is a conflict. So are two
// values: ours stays, and both stand between marks at the end of the text.
MergedNotes merge_notes(const Notes &base, const Notes &ours, const Notes &theirs,
                        const SideLabels &labels);
