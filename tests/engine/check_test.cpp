// Callers who are wrong: each kind of check fails where its condition does not hold.
#include "tests/engine/engine_test.h"

#include "file/web_writer.h"
#include "web/link_list.h"
#include "web/links.h"
#include "web/report_selection.h"

using Check = EngineTest;

namespace {

struct Wrong {
    const char *check;
    void (*call)();
};

CellHandle dead_cell() {
    CellHandle cell = make_cell("dead", "text");
    cell_delete(cell);
    return cell;
}

BlockHandle released(BlockHandle h) {
    block_free(h);
    return h;
}

CellHandle node_outside() {
    CellHandle node = block_alloc(k_block_node);
    cell_set_name(node, text_from_cstring("outside"));
    return node;
}

ByteInput input;
ByteOutput output;

constexpr Wrong k_wrong[] = {
    // The arena.
    {"block_arena.cpp: is_taken(h)", [] { block_free(released(text_alloc(0))); }},
    {"block_arena.cpp: is_taken(h)", [] { block_free(k_block_count + 1); }},
    {"block_arena.cpp: is_taken(h)", [] { chain_free(released(text_from_cstring("text"))); }},
    {"block_arena.cpp: is_taken(h)", [] { block_clear(released(text_alloc(0))); }},
    {"block_arena.cpp: arena.parked_count > 0", [] { chain_unpark(); }},
    {"block_arena.cpp: arena.parked_count < k_parked_max",
     [] {
         for (uint32_t i = 0; i <= k_parked_max; ++i) {
             chain_park(0);
         }
     }},
    {"block_arena.cpp: *tail != 0 && n > 0",
     [] {
         BlockHandle none = 0;
         chain_extend(&none, k_block_text, "x", 1);
     }},
    {"options.cpp: is_allowed(k_info[id], value)", [] { set_option_rtype(k_rtype_max + 1); }},
    {"options.cpp: is_whole_number(k_info[id])", [] { set_option(k_option_xmax, 1); }},
    {"options.cpp: is_whole_number(k_info[id])",
     [] { option_integer(options_in_force(), k_option_xmax); }},
    // Recovery, busy and streams.
    {"recovery.cpp: recovery_available()", recovery_jump},
    {"recovery.cpp: recovery.innermost == &point",
     [] { recovery_run([](void *) { recovery_reset(); }, nullptr); }},
    {"busy.cpp: state.busy != busy", [] { busy_set(false); }},
    {"byte_stream.cpp: file != nullptr", [] { byte_input_bind(&input, nullptr); }},
    {"byte_stream.cpp: file != nullptr", [] { byte_output_bind(&output, nullptr); }},
    {"byte_stream.cpp: in->next >= in->end",
     [] {
         input.end = input.next + 1;
         byte_input_fill(&input);
     }},
    {"byte_stream.cpp: out->fill <= k_byte_buffer_size",
     [] {
         output.fill = k_byte_buffer_size + 1;
         byte_output_flush(&output);
     }},
    // Texts.
    {"text.cpp: builder.head != 0",
     [] {
         text_builder_reset();
         text_builder_restart();
     }},
    {"text.cpp: last != 0", [] { text_assign(text_alloc(0), "", k_text_block_chars); }},
    {"text.cpp: h != 0", [] { text_insert_block_after(0); }},
    {"text.cpp: builder.tail != 0",
     [] {
         text_builder_reset();
         text_builder_put_run("x", 1);
     }},
    // The index.
    {"index.cpp: is_node(node)", [] { index_next(released(node_outside())); }},
    {"index.cpp: is_node(node)", [] { index_prev(cell_name(index_root())); }},
    {"index.cpp: is_node(node)",
     [] { index_link(released(node_outside()), index_root_address()); }},
    // Cells that are no longer there.
    {"cells.cpp: is_live_cell(cell)", [] { cell_delete(dead_cell()); }},
    {"trail.cpp: is_live_or_none(cell)", [] { current_cell_reset(dead_cell()); }},
    {"trail.cpp: is_live_or_none(cell)", [] { set_current(dead_cell()); }},
    {"trail.cpp: is_live_or_none(cell)", [] { trail_push(dead_cell()); }},
    {"trail.cpp: node == 0 || is_node(node)", [] { list_position_set(text_alloc(0)); }},
    {"trail.cpp: holds(&trail.back, trail.cursor)",
     [] {
         trail_push(index_root());
         trail_walk_start();
         trail_forget(index_root());
         trail_walk_next();
     }},
    {"cell_text.cpp: is_live_cell(cell)", [] { cell_replace_text(dead_cell(), "x", 1); }},
    {"cell_ops.cpp: is_live_cell(source)",
     [] {
         current_cell_reset(0);
         clone_cell("x");
     }},
    {"cell_text.cpp: is_live_cell(cell)", [] { cell_view(dead_cell()); }},
    // Values, links, reports and the writer.
    {"value.cpp: value != 0", [] { val_set_text(0, 0); }},
    {"value.cpp: value != 0", [] { val_make_text(0); }},
    {"link_list.cpp: is_list(list)", [] { link_list_append(text_alloc(0)); }},
    {"link_list.cpp: is_list(list)", [] { link_list_free(released(link_list_new(1, 0))); }},
    {"link_list.cpp: list == 0 || is_list(list)",
     [] { link_list_next(released(link_list_new(1, 0))); }},
    {"reports.cpp: is_live_cell(cell)",
     [] {
         CellHandle cell = make_cell("dead");
         report_selection_build("dead");
         cell_delete(cell);
         report_selected_cells();
     }},
    {"output.cpp: !output.open",
     [] {
         output_open();
         output_clear_stop();
     }},
    {"web_writer.cpp: tag >= 0 && tag < k_tag_count", [] { web_write_open_tag(-1); }},
};

}  // namespace

TEST_F(Check, FailsForACallerWhoIsWrong) {
    for (const Wrong &wrong : k_wrong) {
        EXPECT_EQ(run_until_check_fails(wrong.call), wrong.check);
        start_program();
    }
}
