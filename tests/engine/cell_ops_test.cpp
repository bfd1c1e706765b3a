// The cell operations: what each asks, stores, shows and remembers, in order; and what is left of
// it when the blocks run out on the way.
#include "tests/engine/engine_test.h"

#include "core/busy.h"
#include "core/text.h"
#include "web/cell_ops.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/options.h"
#include "web/trail.h"
#include "web/value.h"

#include <functional>

using CellOps = EngineTest;

namespace {

// An operation in the scene (tests/engine/engine_test.h), with the answer to its questions.
struct Row {
    const char *what;
    std::function<void()> run;
    bool agree;
    std::string typed_name;  // in the cellname dialog
    Log log;
    std::string current;
    Names trail;
    Names forward;
    bool changed;
};

const Log k_nothing = {};
const Names k_here = {"home", "alpha"};
const Names k_on = {"home", "alpha", "beta"};
const Names k_ahead = {"gamma"};
const Names k_no_more = {};

Log shown(const std::string &name) {
    return {"store 1", "show " + name, "list_select " + name};
}

Log asked(const std::string &question, Log log = {}) {
    log.insert(log.begin(), question);
    return log;
}

Log made(const std::string &name) {
    return {"store 1", "show " + name, "list_add " + name};
}

const std::string k_create = "ask_yes_no No such cell. Create it?|";
const std::string k_exists = "ask_yes_no Cell already exists, go there?|alpha";
const std::string k_delete = "ask_ok_cancel Delete current cell?|Quorvane";

std::vector<Row> rows() {
    auto to = [](const char *name) { return [name] { go_to_name(name); }; };
    auto make = [](const char *name) { return [name] { new_cell(name); }; };
    auto clone = [](const char *name) { return [name] { clone_cell(name); }; };
    auto jump = [](const char *name) { return [name] { jump_to_trail_entry(name); }; };
    const Log bad = {"warning Bad cell name supplied|Quorvane"};
    return {
        {"cell", [] { go_to_cell(cell_lookup("alpha")); }, false, "", shown("alpha"), "alpha", k_on,
         k_ahead, false},
        {"same cell",
         [] { go_to_cell(current_cell()); },
         false,
         "",
         {},
         "beta",
         k_here,
         k_ahead,
         false},
        {"no cell", [] { go_to_cell(0); }, false, "", {}, "beta", k_here, k_ahead, false},
        {"name", to("  1ALPHA"), false, "", shown("alpha"), "alpha", k_on, k_no_more, false},
        {"own name", to("beta"), false, "", shown("beta"), "beta", k_on, k_no_more, false},
        {"name declined", to("x!"), false, "", {k_create + "x!"}, "beta", k_here, k_ahead, false},
        {"name agreed", to("x!"), true, "", asked(k_create + "x!", made("x!")), "x!", k_on,
         k_no_more, false},
        {"deleted name", to("DELTA"), true, "", asked(k_create + "DELTA", made("delta")), "delta",
         k_on, k_no_more, false},
        {"bad name", to("12"), true, "", bad, "beta", k_here, k_ahead, false},
        {"no name", to(nullptr), true, "", {"ask_cellname"}, "beta", k_here, k_ahead, false},
        {"name asked for", to(""), false, "gamma", asked("ask_cellname", shown("gamma")), "gamma",
         k_on, k_no_more, false},
        {"new", make("foo"), false, "", made("foo"), "foo", k_on, k_no_more, true},
        {"new, asked for", make(""), false, "foo", asked("ask_cellname", made("foo")), "foo", k_on,
         k_no_more, true},
        {"new, bad", make("%"), true, "", bad, "beta", k_here, k_ahead, false},
        {"new, there, declined",
         make("alpha"),
         false,
         "",
         {k_exists},
         "beta",
         k_here,
         k_ahead,
         false},
        {"new, there", make("alpha"), true, "", asked(k_exists, shown("alpha")), "alpha", k_on,
         k_no_more, false},
        {"clone", clone("copy"), false, "", made("copy"), "copy", k_on, k_no_more, true},
        {"clone of a deleted name", clone("Delta"), false, "", made("delta"), "delta", k_on,
         k_no_more, true},
        {"clone, there",
         clone("ALPHA"),
         true,
         "",
         {"warning Duplicate cell name supplied|Quorvane"},
         "beta",
         k_here,
         k_ahead,
         false},
        {"clone, cancelled", clone(""), true, "", {"ask_cellname"}, "beta", k_here, k_ahead, false},
        {"delete, declined", delete_cell, false, "", {k_delete}, "beta", k_here, k_ahead, false},
        {"delete",
         delete_cell,
         true,
         "",
         {k_delete, "show bent", "list_select bent", "list_remove beta"},
         "bent",
         k_here,
         k_ahead,
         true},
        {"previous", previous_cell, false, "", shown("bent"), "bent", k_here, k_ahead, false},
        {"next", next_cell, false, "", shown("gamma"), "gamma", k_here, k_ahead, false},
        {"first", first_cell, false, "", shown("alpha"), "alpha", k_here, k_ahead, false},
        {"last", last_cell, false, "", shown("home"), "home", k_here, k_ahead, false},
        {"home", go_home, false, "", shown("home"), "home", k_here, k_ahead, false},
        {"back", back, false, "", shown("alpha"), "alpha", {"home"}, {"gamma", "beta"}, false},
        {"forward", forward, false, "", asked("store 1", shown("gamma")), "gamma", k_on, k_no_more,
         false},
        {"jump", jump("home"), false, "", shown("home"), "home", {}, {"gamma", "beta"}, false},
        {"jump, one",
         jump("alpha"),
         false,
         "",
         shown("alpha"),
         "alpha",
         {"home"},
         {"gamma", "beta"},
         false},
        {"jump, other case", jump("Alpha"), false, "", {}, "beta", k_here, k_ahead, false},
    };
}

void open_scene_for(const Row &row) {
    start_program();
    open_scene();
    host().yes_no = {row.agree};
    host().ok_cancel = {row.agree};
    if (!row.typed_name.empty()) {
        host().cellnames = {row.typed_name};
    }
}

uint32_t lost_by(const Row &row) {
    return std::string(row.what).substr(0, 5) == "clone" && row.changed ? 1 : 0;
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
        EXPECT_EQ(host().selected_item, cell_list_item(current_cell()));
        EXPECT_EQ(check_engine(lost_by(row)) + check_cell_list(), "");
    }
    start_program();
}

// However the blocks run out, the web and the way through it are as before or as after, the pane
// keeps what was typed, nothing is lost, and the program goes on.
TEST_F(CellOps, RunningOutOfBlocksOnTheWay) {
    const std::string typed = std::string(200, 'T');
    for (const Row &row : rows()) {
        open_scene_for(row);
        type_text(typed);
        row.run();
        const Names after = visible_state();
        bool passed = false;
        for (int n = 0; !passed; ++n) {
            for (bool for_ever : {false, true}) {
                SCOPED_TRACE(row.what + (" at " + std::to_string(n)));
                open_scene_for(row);
                type_text(typed);
                const Names before = visible_state();
                host().log.clear();
                block_arena_fail_after(n, for_ever);
                bool done = run_command(row.run);
                passed = done && for_ever;
                block_arena_fail_after(-1, false);
                Names state = visible_state();
                if (!done) {
                    EXPECT_EQ(host().status, "OUT OF MEMORY");
                    // The refresh that follows a failure stores what was typed.
                    ASSERT_TRUE(run_command([] { store_text_pane(1); }));
                    state = visible_state();
                    Names stored = before;
                    for (std::string &line : stored) {
                        if (line.starts_with("cell beta: ")) {
                            line = "cell beta: " + typed + "|script|12";
                        }
                    }
                    EXPECT_TRUE(state == stored || state == after) << testing::PrintToString(state);
                } else {
                    EXPECT_EQ(state, after);
                }
                EXPECT_EQ(check_engine(done ? lost_by(row) : 0) + check_cell_list(), "");
                go_home();
                EXPECT_EQ(current_name(), "home");
                ASSERT_FALSE(HasFailure());
            }
            ASSERT_LT(n, 100);
        }
    }
    start_program();
}

// At any of its allocations the user may take up the offer to save and exit and then cancel the
// save, which stores the pane and fills the cell list from within the operation.
TEST_F(CellOps, GoingOnAfterAnOfferOnTheWay) {
    const std::string typed(300, 'T');
    for (const Row &row : rows()) {
        open_scene_for(row);
        type_text(typed);
        row.run();
        const Names after = visible_state();
        bool offered = true;
        for (size_t n = 0; offered; ++n) {
            SCOPED_TRACE(row.what + (" at " + std::to_string(n)));
            open_scene_for(row);
            type_text(typed);
            std::vector<BlockHandle> blocks = leave_free_blocks(k_low_block_count);
            host().ok_cancel.resize(row.log.empty() || row.log[0] != k_delete ? 0 : 1);
            host().ok_cancel.insert(host().ok_cancel.end(), n, false);
            host().ok_cancel.push_back(true);
            host().save_changes = {true};
            EXPECT_TRUE(run_command(row.run));
            offered = host().save_changes.empty();
            give_back(blocks);
            EXPECT_EQ(visible_state(), after);
            EXPECT_EQ(host().selected_item, cell_list_item(current_cell()));
            EXPECT_EQ(check_engine(lost_by(row)) + check_cell_list(), "");
            ASSERT_FALSE(HasFailure());
        }
    }
    start_program();
}

TEST_F(CellOps, CreatingWithoutAsking) {
    set_option_dclick_ask(0);
    go_to_name("foo");
    EXPECT_EQ(take_log(), made("foo"));
    EXPECT_FALSE(web_changed());
}

TEST_F(CellOps, StepsWrapAndSkipDeletedCells) {
    open_scene();
    Names seen;
    for (int i = 0; i < 6; ++i) {
        next_cell();
        seen.push_back(current_name());
    }
    EXPECT_EQ(seen, (Names{"gamma", "home", "alpha", "bent", "beta", "gamma"}));
    seen.clear();
    for (int i = 0; i < 6; ++i) {
        previous_cell();
        seen.push_back(current_name());
    }
    EXPECT_EQ(seen, (Names{"beta", "bent", "alpha", "home", "gamma", "beta"}));
    host().ok_cancel = {true, true, true, true};
    first_cell();
    delete_cell();  // the first: the step wraps to the last
    EXPECT_EQ(current_name(), "home");
    take_log();
    delete_cell();
    EXPECT_EQ(take_log(), Log{"status Can't Delete Home"});
    previous_cell();
    delete_cell();
    delete_cell();
    delete_cell();
    EXPECT_EQ(cell_names(), Names{"home"});
    EXPECT_EQ(forward_names(), k_no_more);
    next_cell();
    EXPECT_EQ(current_name(), "home");
}

TEST_F(CellOps, BackWithAnEmptyTrailCanBeUndone) {
    make_cell("alpha");
    next_cell();
    back();
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(forward_names(), Names{"alpha"});
    forward();
    EXPECT_EQ(current_name(), "alpha");
    back();
    back();
    EXPECT_EQ(forward_names(), Names{"alpha"}) << "home is not left for home";
    jump_to_trail_entry("home");
    EXPECT_EQ(current_name(), "home");
}

// The drop-down list shows the first 48 characters of a longer name, which a file may hold.
TEST_F(CellOps, JumpingKnowsNamesAsTheyAreShown) {
    const std::string name(60, 'n');
    go_to_cell(make_cell(name.c_str()));
    go_home();
    trail_push(cell_lookup(name.c_str()));
    jump_to_trail_entry(name.substr(0, 48).c_str());
    EXPECT_EQ(current_name(), name);
}

TEST_F(CellOps, ACloneHasCopiesOfItsOwn) {
    open_scene();
    host().pane.selection_end = 3;
    type_text("new text");
    CellHandle clone = clone_cell("copy");
    lost_blocks = 1;
    EXPECT_EQ(text_of("beta"), "new text") << "what was typed belongs to both";
    EXPECT_EQ(host().pane.text, "new text");
    type_text("edited");
    go_home();
    EXPECT_EQ(text_of("beta"), "new text");
    EXPECT_EQ(text_of("copy"), "edited");
    EXPECT_EQ(text_string(cell_script(clone)), "script");
    EXPECT_EQ(val_number(cell_value(clone)), 12);
    EXPECT_EQ(cell_view(clone).selection_end, 0);
    EXPECT_EQ(cell_view(cell_lookup("beta")).selection_end, 3);
    EXPECT_EQ(cell_out_pointers(clone), 0);
}

TEST_F(CellOps, WhatIsTypedGoesWithItsCell) {
    open_scene();
    type_text("typed");
    host().ok_cancel = {true};
    delete_cell();
    EXPECT_EQ(text_of("bent"), "");
    EXPECT_EQ(host().pane.text, "");
    first_cell();
    type_text("typed at alpha");
    first_cell();  // alpha itself: nothing is lost by showing it again
    EXPECT_EQ(host().pane.text, "typed at alpha");
    go_home();
    EXPECT_EQ(text_of("alpha"), "typed at alpha");
}

TEST_F(CellOps, AreRefusedWhileOutputIsUnderWay) {
    open_scene();
    const Names before = visible_state();
    busy_set(true);
    for (const Row &row : rows()) {
        row.run();
    }
    busy_set(false);
    Log log = take_log();
    EXPECT_EQ(log, Log(log.size(), "status OUTPUT IN USE"));
    EXPECT_EQ(log.size(), rows().size() - 2) << "all but the steps to where the user is";
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
    const Names before = visible_state();
    type_text(std::string(36, 'x'));
    for (auto *step : {back, forward, go_home, next_cell, previous_cell, last_cell}) {
        EXPECT_FALSE(run_command(step));
        EXPECT_EQ(current_name(), "alpha");
        EXPECT_EQ(host().pane.text, std::string(36, 'x'));
    }
    type_text("gamma");
    set_web_changed(false);
    EXPECT_TRUE(run_command(go_home));
    EXPECT_TRUE(run_command(back));
    EXPECT_EQ(text_of("alpha"), "gamma");
    EXPECT_FALSE(run_command([] { new_cell("foo"); }));
    EXPECT_EQ(current_name(), "beta");
    host().ok_cancel.clear();
    host().ok_cancel.push_back(true);
    EXPECT_TRUE(run_command(delete_cell));
    EXPECT_EQ(cell_names(), (Names{"alpha", "bent", "gamma", "home"}));
    EXPECT_GE(blocks_free(), 4);
    EXPECT_TRUE(run_command([] { new_cell("foo"); }));
    give_back(blocks);
}
