// The cell operations: what each asks, stores, shows and remembers, in order; and what is left of
// it when the blocks run out on the way.
#include "tests/engine/engine_test.h"

#include "core/busy.h"
#include "core/text.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/options.h"
#include "web/trail.h"
#include "web/value.h"

using CellOps = EngineTest;

namespace {

const Names k_here = {"home", "alpha"};
const Names k_on = {"home", "alpha", "beta"};
const Names k_ahead = {"gamma"};
const Names k_behind = {"gamma", "beta"};
const Names k_none = {};

// An operation in the scene (tests/engine/engine_test.h), and where it leads if it does not stay.
struct Row {
    std::string what;
    std::function<void()> run;
    Log log = {};
    std::string current = "beta";
    Names trail = k_here;
    Names forward = k_ahead;
    bool changed = false;
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
    const Log bad = {"warning Bad cell name supplied|Quorvane"};
    const Log duplicate = {"warning Duplicate cell name supplied|Quorvane"};
    const Log deleted = {k_delete, "show bent", "list_select bent", "list_remove beta"};
    const Log ahead = {"store 1", "store 1", "show gamma", "list_select gamma"};
    return {
        {"cell", [] { go_to_cell(cell_lookup("alpha")); }, shown("alpha"), "alpha", k_on},
        {"same cell", [] { go_to_cell(current_cell()); }},
        {"no cell", [] { go_to_cell(0); }},
        {"name", to("  1ALPHA"), shown("alpha"), "alpha", k_on, k_none},
        {"own name", to("beta"), shown("beta"), "beta", k_on, k_none},
        {"declined", to("x!"), {k_create + "x!"}, "beta", k_here, k_ahead, false, false},
        {"agreed", to("x!"), asked(k_create + "x!", made("x!")), "x!", k_on, k_none},
        {"deleted", to("DELTA"), asked(k_create + "DELTA", made("delta")), "delta", k_on, k_none},
        {"bad name", to("12"), bad},
        {"no name", to(nullptr), {k_ask}},
        {"asked for", to(""), asked(k_ask, shown("gamma")), "gamma", k_on, k_none, false, true,
         "gamma"},
        {"new", make("foo"), made("foo"), "foo", k_on, k_none, true},
        {"new, asked for", make(""), asked(k_ask, made("foo")), "foo", k_on, k_none, true, true,
         "foo"},
        {"new, bad", make("%"), bad},
        {"new, declined", make("alpha"), {k_exists}, "beta", k_here, k_ahead, false, false},
        {"new, there", make("alpha"), asked(k_exists, shown("alpha")), "alpha", k_on, k_none},
        {"clone", clone("copy"), made("copy"), "copy", k_on, k_none, true},
        {"clone, deleted", clone("Delta"), made("delta"), "delta", k_on, k_none, true},
        {"clone, there", clone("ALPHA"), duplicate},
        {"clone, cancelled", clone(""), {k_ask}},
        {"not deleted", delete_cell, {k_delete}, "beta", k_here, k_ahead, false, false},
        {"delete", delete_cell, deleted, "bent", k_here, k_ahead, true},
        {"previous", previous_cell, shown("bent"), "bent"},
        {"next", next_cell, shown("gamma"), "gamma"},
        {"first", first_cell, shown("alpha"), "alpha"},
        {"last", last_cell, shown("home"), "home"},
        {"home", go_home, shown("home"), "home"},
        {"back", back, shown("alpha"), "alpha", {"home"}, k_behind},
        {"forward", forward, ahead, "gamma", k_on, k_none},
        {"jump", jump("home"), shown("home"), "home", k_none, k_behind},
        {"jump, one", jump("alpha"), shown("alpha"), "alpha", {"home"}, k_behind},
        {"jump, other case", jump("Alpha")},
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
    bool cloned = done && row.what.starts_with("clone") && row.changed;
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
        EXPECT_EQ(current_name(), row.current);
        EXPECT_EQ(trail_names(), row.trail);
        EXPECT_EQ(forward_names(), row.forward);
        EXPECT_EQ(web_changed(), row.changed);
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
    set_option_dclick_ask(0);
    go_to_name("foo");
    EXPECT_EQ(take_log(), made("foo"));
}

TEST_F(CellOps, ACloneHasCopiesOfItsOwn) {
    open_scene();
    type_text("new text");
    CellHandle clone = clone_cell("copy");
    lost_blocks = 1;
    type_text("edited");
    go_home();
    EXPECT_EQ(text_of("beta"), "new text") << "what was typed first belongs to both";
    EXPECT_EQ(text_of("copy"), "edited");
    EXPECT_EQ(text_string(cell_script(clone)), "script");
    EXPECT_EQ(val_number(cell_value(clone)), 12);
}

TEST_F(CellOps, AreRefusedWhileOutputIsUnderWay) {
    open_scene();
    const Names before = visible_state();
    busy_set(true);
    for (const Row &row : rows()) {
        row.run();
    }
    busy_set(false);
    EXPECT_EQ(take_log(), Log(rows().size() - 2, "status OUTPUT IN USE")) << "all but two stay";
    EXPECT_EQ(visible_state(), before);
}

// In a full arena the user can read on, shorten and delete; what does not fit stays in the pane.
TEST_F(CellOps, InAFullArena) {
    open_scene();
    std::vector<BlockHandle> blocks = leave_free_blocks(0);
    const std::string fits(143, 'f');
    type_text(fits);
    EXPECT_TRUE(run_command([] { go_to_cell(cell_lookup("alpha")); }));
    EXPECT_EQ(text_of("beta"), fits);
    type_text(std::string(36, 'x'));
    for (auto *step : {back, forward, go_home, next_cell, previous_cell, last_cell}) {
        EXPECT_FALSE(run_command(step));
        EXPECT_EQ(current_name() + host().pane.text, "alpha" + std::string(36, 'x'));
    }
    type_text("gamma");
    EXPECT_TRUE(run_command(go_home));
    EXPECT_TRUE(run_command(back));
    EXPECT_EQ(text_of("alpha"), "gamma");
    EXPECT_FALSE(run_command([] { new_cell("foo"); }));
    host().ok_cancel.assign(1, true);
    EXPECT_TRUE(run_command([] { go_to_cell(cell_lookup("beta")); }));
    EXPECT_TRUE(run_command(delete_cell));
    EXPECT_TRUE(run_command([] { new_cell("foo"); }));
    give_back(blocks);
}
