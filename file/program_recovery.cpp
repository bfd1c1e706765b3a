#include "file/document.h"

#include "core/errors.h"
#include "core/host_view.h"
#include "core/recovery.h"
#include "file/web_reader.h"
#include "report/output.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/links.h"
#include "web/value.h"

namespace {

// The pane may hold text that does not fit: it then keeps it, and the user sees why below.
void show_views(void *) {
    cell_list_clear();
    cell_list_fill();
    refresh_current_view();
}

}  // namespace

// A command that ran out while the offer to save and exit stood open, in the middle of another
// one's allocation, has nothing half-made of its own.
void program_recover() {
    if (short_on_memory_offer_open()) {
        show_error(k_out_of_memory);
        return;
    }
    block_arena_recover();
    output_recover();
    links_recover();
    cell_ops_recover();
    val_recover();
    web_read_recover();
    document_recover();
    recovery_run(show_views, nullptr);
    show_error(k_out_of_memory);
}
