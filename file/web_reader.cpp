#include "file/web_reader.h"

#include "core/check.h"
#include "core/errors.h"
#include "core/host_messages.h"
#include "core/names.h"
#include "core/text.h"
#include "file/web_tags.h"
#include "file/web_tokens.h"
#include "web/cell_numbers.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/option_text.h"
#include "web/value.h"

// A cell that was read and waits for the end of the file: a node block outside the index. They are
// linked in file order through their right child fields.
using StagedCell = CellHandle;

static struct Staging {
    StagedCell first;
    StagedCell last;
    uint32_t count;
    bool in_order;  // each name sorts after the one before it
    bool finished;  // the last reading came to an end of the file
} staging;

namespace {

StagedCell staged_next(StagedCell cell) {
    return node_right(cell);
}

// Takes the token text as the name of a new staged cell.
void stage_cell() {
    const StagedCell cell = block_alloc(k_block_node);
    cell_set_kind(cell, k_cell_live);
    cell_set_name(cell, token_take());
    if (staging.last != 0) {
        node_set_right(staging.last, cell);
        staging.in_order &= text_compare(cell_name(staging.last), cell_name(cell)) < 0;
    } else {
        staging.first = cell;
    }
    staging.last = cell;
    ++staging.count;
}

int apply_cname() {
    if (!is_letter(text_block_chars(token_text())[0])) {
        return k_bad_cellname_in_file;
    }
    stage_cell();
    return 0;
}

// A text that another one takes the place of.
void note_replaced(BlockHandle text) {
    if (text != 0 && !text_is_blank(text)) {
        tokens_note_loss();
    }
}

void note_replaced_value(BlockHandle value) {
    if (value != 0) {
        note_replaced(val_text(value));
    }
}

// Puts the token text into a field of the cell staged last, releasing what it replaces. Before the
// first cell there is nowhere to put it.
void apply_field(BlockHandle (*get)(CellHandle), void (*set)(CellHandle, BlockHandle)) {
    if (staging.last == 0) {
        tokens_drop_text();
        return;
    }
    note_replaced(get(staging.last));
    chain_free(get(staging.last));
    set(staging.last, token_take());
}

void apply_value() {
    if (staging.last == 0) {
        tokens_drop_text();
        return;
    }
    const BlockHandle value = val_from_text(token_take());
    note_replaced_value(cell_value(staging.last));
    val_free(cell_value(staging.last));
    cell_set_value(staging.last, value);
}

void apply_option(int tag) {
    const OptionId id = web_tag_option(tag);
    if (id != k_option_count) {
        option_apply_text(id, token_text());
    }
}

// Releases what a staged or live record holds of the fields that a file sets.
void release_read_fields(CellHandle cell) {
    chain_free(cell_text(cell));
    chain_free(cell_script(cell));
    val_free(cell_value(cell));
}

// Moves the fields of a staged duplicate into the cell that has its name.
void merge(StagedCell staged, CellHandle cell) {
    note_replaced(cell_text(cell));
    note_replaced(cell_script(cell));
    note_replaced_value(cell_value(cell));
    release_read_fields(cell);
    cell_set_text(cell, cell_text(staged));
    cell_set_script(cell, cell_script(staged));
    cell_set_value(cell, cell_value(staged));
    node_free(staged);
}

// A staged node becomes the cell's node as it stands; a name that is there already gives it up. The
// search for its name begins at `from`. Returns the node that has the name.
CellHandle commit_one(StagedCell staged, CellHandle from) {
    const CellHandle existing = index_link_new(staged, &from);
    if (existing == 0) {
        return staged;
    }
    merge(staged, existing);
    return existing;
}

// Where the search for the names on one side (+1: behind, -1: before) of a node begins, itself
// found from `from`. Names that come in order belong below the last one that parted them, unless
// the home cell, which alone was there before, is among them.
CellHandle search_from(CellHandle node, int side, CellHandle from) {
    const CellHandle home = index_root();
    if (!staging.in_order) {
        return home;
    }
    const bool home_among =
        from == home && side * text_compare(cell_name(home), cell_name(node)) > 0;
    return home_among ? home : node;
}

// Inserts a run of n staged cells median first, which leaves the index balanced when they come in
// its order. The recursion is as deep as the run's logarithm.
void commit_run(StagedCell first, uint32_t n, CellHandle from) {
    while (n > 0) {
        const uint32_t before = (n - 1) / 2;
        StagedCell middle = first;
        for (uint32_t i = before; i > 0; --i) {
            middle = staged_next(middle);
        }
        CHECK(middle != 0);
        const StagedCell after = staged_next(middle);
        const CellHandle node = commit_one(middle, from);
        commit_run(after, n - 1 - before, search_from(node, 1, from));
        from = search_from(node, -1, from);
        n = before;
    }
}

void forget_staged() {
    staging.first = 0;
    staging.last = 0;
    staging.count = 0;
    staging.in_order = true;
}

void web_commit_staged() {
    commit_run(staging.first, staging.count, index_root());
    forget_staged();
}

void web_discard_staged() {
    StagedCell cell = staging.first;
    while (cell != 0) {
        const StagedCell next = staged_next(cell);
        release_read_fields(cell);
        node_free(cell);
        cell = next;
    }
    forget_staged();
}

// What one element began and another one's tag ended is found where nobody looks for it.
void note_misplaced_text(int tag) {
    const int opened = token_opened();
    if (opened != tag && !web_tag_groups(opened) && !web_tag_groups(tag) &&
        web_tag_field(opened) != web_tag_field(tag)) {
        tokens_drop_text();
    }
}

// Up to the end of the web; a negative code of a tag ends it before.
int read_elements() {
    const ReadWatch *watch = tokens_watch();
    if (watch != nullptr) {
        watch->begin();
    }
    for (;;) {
        const int tag = token_next_closing();
        if (watch != nullptr) {
            watch->closing(tag);
        }
        if (tag == 0) {
            tokens_drop_text();
            return 0;
        }
        note_misplaced_text(tag);
        const int code = web_apply_close_tag(tag);
        if (code != 0) {
            return code;
        }
    }
}

bool end_is_missing() {
    return tokens_ran_out() && tokens_had_tag() && !tokens_failed();
}

}  // namespace

int web_apply_close_tag(int tag) {
    if (!token_is_closing()) {
        return 0;
    }
    switch (tag) {
    case k_tag_cname:
        return apply_cname();
    case k_tag_text:
        apply_field(cell_text, cell_set_text);
        return 0;
    case k_tag_val:
        apply_value();
        return 0;
    case k_tag_form:
    case k_tag_script:
        apply_field(cell_script, cell_set_script);
        return 0;
    default:
        if (web_tag_groups(tag)) {
            tokens_drop_text();
        } else {
            apply_option(tag);
        }
        return 0;
    }
}

int web_read(FILE *file) {
    staging.finished = false;
    web_reset("home");
    forget_staged();
    tokens_begin(file);
    const int code = read_elements();
    if (code < 0) {
        web_discard_staged();
        tokens_end();
        show_status_message("Bad Input File");
        return code;
    }
    tokens_end();
    web_commit_staged();
    cell_numbers_rebuild();
    staging.finished = !tokens_failed();
    if (end_is_missing()) {
        show_status_message("The end of this file is missing");
    }
    return 0;
}

CellHandle web_read_first_staged() {
    return staging.first;
}

bool web_read_failed() {
    return !staging.finished;
}

bool web_read_was_whole() {
    const bool end_mark_is_due = tokens_ran_out() && tokens_had_tag();
    return staging.finished && !end_mark_is_due && !tokens_lost_something();
}

void web_read_recover() {
    web_discard_staged();
    tokens_end();
}
