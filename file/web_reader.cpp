#include "file/web_reader.h"

#include "core/errors.h"
#include "core/host_messages.h"
#include "core/text.h"
#include "file/web_tags.h"
#include "file/web_tokens.h"
#include "web/cells.h"
#include "web/links.h"
#include "web/option_tags.h"
#include "web/value.h"

namespace {

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

StagedCell staged_next(StagedCell cell) {
    return node_right(cell);
}

// Takes the token text as the name of a new staged cell.
void stage_cell() {
    StagedCell cell = block_alloc(k_block_node);
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
    BlockHandle value = val_from_text(token_take());
    note_replaced_value(cell_value(staging.last));
    val_free(cell_value(staging.last));
    cell_set_value(staging.last, value);
}

// Releases what a staged or live record holds of the fields that a file sets.
void release_read_fields(CellHandle cell) {
    chain_free(cell_text(cell));
    chain_free(cell_script(cell));
    val_free(cell_value(cell));
}

void release_name_and_node(CellHandle cell) {
    chain_free(cell_name(cell));
    block_free(cell);
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
    release_name_and_node(staged);
}

// A staged node becomes the cell's node as it stands; a name that is there already gives it up.
void commit_one(StagedCell staged) {
    CellHandle existing = index_link_new(staged, index_root_address());
    if (existing != 0) {
        merge(staged, existing);
    }
}

// Inserts a run of n staged cells median first, which leaves the index balanced when they come in
// its order. The recursion is as deep as the run's logarithm.
void commit_run(StagedCell first, uint32_t n) {
    while (n > 0) {
        uint32_t before = (n - 1) / 2;
        StagedCell middle = first;
        for (uint32_t i = before; i > 0; --i) {
            middle = staged_next(middle);
        }
        StagedCell after = staged_next(middle);
        commit_one(middle);
        commit_run(after, n - 1 - before);
        n = before;
    }
}

void forget_staged() {
    staging.first = 0;
    staging.last = 0;
    staging.count = 0;
    staging.in_order = true;
}

// Does what commit_run() would when the names come in order, comparing almost none: builds the tree
// that they have on their own, and turns the home cell to its root, which it is already.
void commit_in_order() {
    CellHandle home = index_root();
    CellHandle root = index_balanced(staging.first, staging.count);
    StagedCell twin = index_find_text(root, cell_name(home));
    if (twin != 0) {
        index_replace(twin, home, &root);
        merge(twin, home);
    } else {
        index_link(home, &root);
    }
    index_raise(home, &root);
}

void web_commit_staged() {
    if (staging.in_order && staging.count > 0) {
        commit_in_order();
    } else {
        commit_run(staging.first, staging.count);
    }
    forget_staged();
}

void web_discard_staged() {
    StagedCell cell = staging.first;
    while (cell != 0) {
        StagedCell next = staged_next(cell);
        release_read_fields(cell);
        release_name_and_node(cell);
        cell = next;
    }
    forget_staged();
}

// What one element began and another one's tag ended is found where nobody looks for it.
void note_misplaced_text(int tag) {
    int opened = token_opened();
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
        int tag = token_next_closing();
        if (watch != nullptr) {
            watch->closing(tag);
        }
        if (tag == 0) {
            tokens_drop_text();
            return 0;
        }
        note_misplaced_text(tag);
        int code = web_apply_close_tag(tag);
        if (code < 0) {
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
    case k_tag_eof:
    case k_tag_cell:
    case k_tag_opts:
        tokens_drop_text();
        return 0;
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
        option_apply_text(tag, token_text());
        return 0;
    }
}

int web_read(FILE *file) {
    staging.finished = false;
    web_reset("home");
    forget_staged();
    tokens_begin(file);
    int code = read_elements();
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
    bool end_mark_is_due = tokens_ran_out() && tokens_had_tag();
    return staging.finished && !end_mark_is_due && !tokens_lost_something();
}

void web_read_recover() {
    web_discard_staged();
    tokens_end();
}
