// The cell operations: what each asks, stores, shows and remembers, in order; and what is left of
// it when the blocks run out on the way.
#include "tests/engine/engine_test.h"

using CellOps = EngineTest;

namespace {

// An operation in the scene (tests/engine/engine_test.h), and the calls that it leads to. Where it
// leaves the rings and the flag is the model test's.
struct Row {
    std::string what;
    std::function<void()> run;
    Log log = {};
    bool agree = true;            // to its questions
    std::string typed_name = {};  // in the cellname dialog
};

Log shown(const std::string &name) {
    return {"store 1", "show " + name, "list_select " + name};
}

Log made(const std::string &name) {
    return {"store 1", "show " + name, "list_add " + name};
}

Log asked(const std::string &question, Log log) {
    log.insert(log.begin(), question);
    return log;
}

const std::string k_create = "ask_yes_no No such cell. Create it?|";
const std::string k_exists = "ask_yes_no Cell already exists, go there?|alpha";
const std::string k_delete = "ask_ok_cancel Delete current cell?|Quorvane";
const std::string k_ask = "ask_cellname";

std::vector<Row> rows() {
    auto to = [](const char *name) { return [name] { go_to_name(name); }; };
    auto make = [](const char *name) { return [name] { new_cell(name); }; };
    auto clone = [](const char *name) { return [name] { clone_cell(name); }; };
    auto jump = [](const char *name) { return [name] { jump_to_trail_entry(name); }; };
    const Log deleted = {k_delete, "show bent", "list_select bent", "list_remove beta"};
    return {
        {"cell", [] { go_to_cell(cell_lookup("alpha")); }, shown("alpha")},
        {"link", [] { go_to_link(cell_lookup("alpha")); }, shown("alpha")},
        {"name", to("  1ALPHA"), shown("alpha")},
        {"name declined", to("x!"), {k_create + "x!"}, false},
        {"name agreed", to("x!"), asked(k_create + "x!", made("x!"))},
        {"deleted name", to("DELTA"), asked(k_create + "DELTA", made("delta"))},
        {"bad name", to("12"), {"warning Bad cell name supplied|Quorvane"}},
        {"no name", to(nullptr), {k_ask}},
        {"new", make("foo"), made("foo")},
        {"new, asked for", make(""), asked(k_ask, made("f")), true, "f"},
        {"new, declined", make("alpha"), {k_exists}, false},
        {"new, there", make("alpha"), asked(k_exists, shown("alpha"))},
        {"clone", clone("copy"), made("copy")},
        {"duplicate", clone("ALPHA"), {"warning Duplicate cell name supplied|Quorvane"}},
        {"not deleted", delete_cell, {k_delete}, false},
        {"delete", delete_cell, deleted},
        {"previous", previous_cell, shown("bent")},
        {"next", next_cell, shown("gamma")},
        {"first", first_cell, shown("alpha")},
        {"last", last_cell, shown("home")},
        {"home", go_home, shown("home")},
        {"back", back, shown("alpha")},
        {"forward", forward, asked("store 1", shown("gamma"))},
        {"jump", jump("home"), shown("home")},
        {"jump, other case", jump("Alpha")},
        {"jump to a cell", [] { jump_to_trail_cell(index_root()); }, shown("home")},
        {"jump, not there", [] { jump_to_trail_cell(cell_lookup("gamma")); }},
    };
}

void open_scene_for(const Row &row, const std::string &typed = "") {
    start_program();
    open_scene();
    host().yes_no = {row.agree};
    host().ok_cancel = {row.agree};
    if (!row.typed_name.empty()) {
        host().cellnames = {row.typed_name};
    }
    if (!typed.empty()) {
        type_text(typed);
    }
}

std::string check_all(const Row &row, bool done) {
    EXPECT_EQ(host().selected_item, cell_list_item(current_cell()));
    bool cloned = done && row.what == "clone";
    return check_engine(cloned ? 1 : 0) + check_cell_list();
}

Names state_after(const Row &row, const std::string &typed) {
    open_scene_for(row, typed);
    row.run();
    return visible_state();
}

}  // namespace

TEST_F(CellOps, Sequences) {
    for (const Row &row : rows()) {
        SCOPED_TRACE(row.what);
        open_scene_for(row);
        row.run();
        EXPECT_EQ(take_log(), row.log);
        EXPECT_EQ(check_all(row, true), "");
    }
    start_program();
}

// However the blocks run out, the web and the way through it are as before or as after, the pane
// keeps what was typed, nothing is lost, and the program goes on.
TEST_F(CellOps, RunningOutOfBlocksOnTheWay) {
    const std::string typed(200, 'T');
    for (const Row &row : rows()) {
        const Names after = state_after(row, typed);
        bool done = false;
        for (int n = 0; !done || n % 2 != 0; ++n) {  // once and from then on, by turns
            SCOPED_TRACE(row.what + (" at " + std::to_string(n)));
            open_scene_for(row, typed);
            Names before = visible_state();
            for (std::string &line : before) {
                line =
                    line.starts_with("cell beta: ") ? "cell beta: " + typed + "|script|12" : line;
            }
            block_arena_fail_after(n / 2, n % 2 != 0);
            done = run_command(row.run);
            block_arena_fail_after(-1, false);
            if (!done) {
                EXPECT_EQ(host().status, "OUT OF MEMORY");
                // The refresh that follows a failure stores what was typed.
                ASSERT_TRUE(run_command([] { store_text_pane(1); }));
            }
            Names state = visible_state();
            EXPECT_TRUE(state == after || (!done && state == before))
                << testing::PrintToString(state);
            EXPECT_EQ(check_all(row, done), "");
            go_home();
            EXPECT_EQ(current_name(), "home");
            ASSERT_FALSE(HasFailure() || n > 200);
        }
    }
    start_program();
}

// At any of its allocations the user may take up the offer to save and exit and then cancel the
// save, which stores the pane and fills the cell list from within the operation.
TEST_F(CellOps, GoingOnAfterAnOfferOnTheWay) {
    const std::string typed(300, 'T');
    for (const Row &row : rows()) {
        const Names after = state_after(row, typed);
        bool offered = true;
        for (size_t n = 0; offered; ++n) {
            SCOPED_TRACE(row.what + (" at " + std::to_string(n)));
            open_scene_for(row, typed);
            std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
            host().ok_cancel.resize(row.log.empty() || row.log[0] != k_delete ? 0 : 1);
            host().ok_cancel.insert(host().ok_cancel.end(), n, false);
            host().ok_cancel.push_back(true);
            host().save_changes = {true};
            EXPECT_TRUE(run_command(row.run));
            offered = host().save_changes.empty();
            give_back(blocks);
            EXPECT_EQ(visible_state(), after);
            EXPECT_EQ(check_all(row, true), "");
            ASSERT_FALSE(HasFailure());
        }
    }
    start_program();
}

TEST_F(CellOps, HomeStaysAndNewCellsMayComeUnasked) {
    delete_cell();
    EXPECT_EQ(take_log(), Log{"status Can't Delete Home"});
    jump_to_trail_entry("home");
    EXPECT_EQ(take_log(), shown("home")) << "though the trail is empty";
    set_option_dclick_ask(0);
    go_to_name("foo");
    EXPECT_EQ(take_log(), made("foo"));
}

TEST_F(CellOps, AreRefusedWhileOutputIsUnderWay) {
    open_scene();
    const Names before = visible_state();
    busy_set(true);
    for (const Row &row : rows()) {
        row.run();
    }
    for (auto *command :
         {doc_command_new, doc_command_open, doc_command_save, doc_command_save_as, report_run}) {
        EXPECT_EQ(command(), k_output_in_use);
    }
    busy_set(false);
    EXPECT_EQ(take_log(), Log(rows().size() + 5, "status OUTPUT IN USE"));
    EXPECT_EQ(visible_state(), before);
}
