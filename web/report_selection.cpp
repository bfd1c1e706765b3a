#include "web/report_selection.h"

#include "core/names.h"
#include "web/cells.h"
#include "web/words.h"

#include <cstring>

static struct ReportSelection {
    CellHandle cells[k_selection_max];
    uint32_t count;
} selection;

void report_selection_build(const char *text) {
    selection.count = 0;
    uint32_t length;
    while (const char *word = next_word(&text, &length)) {
        char name[k_cellname_max + 1];
        const uint32_t kept = length < k_cellname_max ? length : k_cellname_max;
        memcpy(name, word, kept);
        name[kept] = 0;
        const CellHandle cell = cell_lookup(name);
        if (cell != 0) {
            selection.cells[selection.count++] = cell;
            if (selection.count == k_selection_max) {
                return;
            }
        }
    }
}

uint32_t report_selection_count() {
    return selection.count;
}

CellHandle report_selection_at(uint32_t i) {
    return i < selection.count ? selection.cells[i] : 0;
}
