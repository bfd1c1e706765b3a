#include "shell/find/find.h"

#include "core/busy.h"
#include "core/host_messages.h"
#include "shell/base/focus.h"
#include "shell/base/guard.h"
#include "shell/find/search_walk.h"
#include "shell/panes/input.h"
#include "shell/panes/scintilla.h"
#include "shell/panes/wrapping.h"
#include "web/options.h"
#include "web/trail.h"

struct Match {
    LRESULT start;
    LRESULT end;
};

static struct Find {
    bool found;       // the last search succeeded
    CellHandle cell;  // in this cell
    Match match;
} find;

namespace {

bool search(LRESULT from, LRESULT to, Match *match) {
    Sci_TextToFind range = {};
    range.chrg.cpMin = static_cast<Sci_PositionCR>(from);
    range.chrg.cpMax = static_cast<Sci_PositionCR>(to);
    range.lpstrText = option_starg();
    const LRESULT flags = option_search_case() != 0 ? SCFIND_MATCHCASE : SCFIND_NONE;
    if (sci(text_pane(), SCI_FINDTEXT, flags, as_lparam(&range)) < 0) {
        return false;
    }
    *match = {range.chrgText.cpMin, range.chrgText.cpMax};
    return true;
}

bool search_from(LRESULT from, Match *match) {
    return search(from, sci(text_pane(), SCI_GETTEXTLENGTH), match);
}

// The start cell is searched a second time, from its start, when no other has a match.
bool search_other_cells(Match *match) {
    const CellHandle start = current_cell();
    CellHandle cell = start;
    bool found = false;
    do {
        cell = next_cell_to_search(cell, start, option_starg(), option_search_case() != 0);
        set_current_and_select(cell);
        sci(text_pane(), SCI_SETSEL, 0, 0);
        found = search_from(0, match);
    } while (!found && cell != start);
    return found;
}

// A selection that a click has hidden would be taken away by the next restyling.
void search_web(void *) {
    show_hidden_selection();
    Match match = {};
    if (search_from(sci(text_pane(), SCI_GETSELECTIONEND), &match) || search_other_cells(&match)) {
        sci(text_pane(), SCI_SETSEL, match.start, match.end);
        pane_scroll_to_caret(text_pane());
        find = {true, current_cell(), match};
    }
}

bool selection_is_match() {
    Match match = {};
    return find.cell == current_cell() &&
           sci(text_pane(), SCI_GETSELECTIONSTART) == find.match.start &&
           sci(text_pane(), SCI_GETSELECTIONEND) == find.match.end &&
           search(find.match.start, find.match.end, &match) && match.start == find.match.start &&
           match.end == find.match.end;
}

}  // namespace

void find_next() {
    find.found = false;
    if (text_pane() == nullptr || current_view() != k_view_text || current_cell() == 0 ||
        refused_while_busy()) {
        return;
    }
    // The options may have changed since the bar was opened.
    if (option_starg()[0] == 0) {
        show_status_message("Nothing to search for");
        return;
    }
    run_guarded(search_web, nullptr);
    focus_active_pane();
}

void replace_and_find() {
    if (!find.found || refused_while_busy()) {
        return;
    }
    if (selection_is_match()) {
        sci_text(text_pane(), SCI_REPLACESEL, 0, option_srpl());
    }
    find_next();
}
