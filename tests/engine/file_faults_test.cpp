// Running out of blocks at every allocation of the File commands and of the reports: the web, the
// document and the file are as before or as after, nothing is lost, and the program goes on.
#include "tests/engine/engine_test.h"

using Faults = EngineTest;

namespace {

const std::string k_typed = "a b_2 " + std::string(200, 't');

const std::string k_first = scratch_path("first.qvx"), k_second = scratch_path("second.qvx");

// A file whose reading takes blocks in every way.
std::string second_file() {
    std::string file = "<rall>no</rall><rfmt>" + std::string(100, 'f') + "</rfmt>";
    for (int i = 0; i < 5; ++i) {
        file += "<cname>" + std::string(static_cast<size_t>(20 * i + 1), 'n') +
                "</cname><text>x&amp;" + std::string(50, 't') +
                "</text><val>12</val><val>{NAN}</val><form>" + std::string(40, 's') +
                "</form><script>s</script>";
    }
    return file + cell_of("N", "double") + cell_of("Home", "h") + "</eof>";
}

// A web from a file with something typed into its home.
void open_file_scene() {
    start_program();
    write_file(k_first, cell_of("a", "home b_2 a a home") + cell_of("b_2", "it's b_2") +
                            cell_of("home", "old") + "</eof>");
    write_file(k_second, second_file());
    doc_command_open_path(k_first.c_str());
    go_to_name("a");
    go_to_name("home");
    type_text(k_typed);
    host().console.clear();
    host().status.clear();
}

// Everything that outlives a command, once the pane is stored.
std::string scene_state() {
    EXPECT_TRUE(run_command([] { store_text_pane(1); }));
    return host().title + "|" + doc_save_path() + "|" + current_name() + "\n" + written_web();
}

struct Step {
    const char *what;
    std::function<void()> run;
    bool may_empty;  // may leave a new web
    bool may_write;  // may write the first file
};

// The file is as before, or the web with or without the text that was typed last.
void check_first_file(const Step &step, const std::string &before, const std::string &state) {
    std::string web = file_bytes(k_first);
    if (step.may_write && web != before && web.find(k_typed) == std::string::npos) {
        web.replace(web.rfind("old"), 3, k_typed);
    }
    EXPECT_TRUE(web == before || (step.may_write && state.ends_with("\n" + web)));
}

void check_scene(const Step &step, const std::string &before, const std::string &goal) {
    const std::string state = scene_state();
    const bool emptied = host().title == "Quorvane - (Untitled)" && cell_names() == Names{"home"};
    EXPECT_TRUE(state == before || state == goal || (step.may_empty && emptied)) << state;
    EXPECT_EQ(check_engine() + check_cell_list(), "");
    EXPECT_EQ(host().resting, "Ready");
    EXPECT_FALSE(is_busy());
    EXPECT_TRUE(run_command([] { new_cell("onwards"); }));
    EXPECT_EQ(current_name(), "onwards");
}

// Returns whether the step did what it does without a fault.
bool run_with_fault(const Step &step, int n, bool for_ever, const std::string &goal) {
    open_file_scene();
    block_arena_fail_after(n, for_ever);
    bool done = run_command(step.run);
    block_arena_fail_after(-1, false);
    EXPECT_TRUE(done || host().status == "OUT OF MEMORY");
    EXPECT_TRUE(web_changed() || !host().pane.modified);
    return done && host().status != "OUT OF MEMORY" && scene_state() == goal;
}

}  // namespace

TEST_F(Faults, FileCommandsAndReportsAtEveryAllocation) {
    std::vector<Step> steps = {
        {"open", [] { doc_command_open_path(k_second.c_str()); }, true, false},
        {"save", [] { doc_command_save(); }, false, true},
        {"save as", [] { doc_command_save_as(); }, false, false},
        {"new", [] { doc_command_new(); }, true, false},
        {"store", [] { store_text_pane(1); }, false, false},
        {"show", refresh_views, false, false},
        {"new, saved",
         [] {
             host().save_changes = {true};
             doc_command_new();
         },
         true, true},
    };
    for (uint8_t type = k_rtype_min; type <= k_rtype_max; ++type) {
        for (const char *selected : {"(all)", "a b_2 a", ""}) {
            steps.push_back({selected,
                             [=] {
                                 set_option_rtype(type);
                                 set_option_rall(*selected == '(' ? 1 : 0);
                                 host().selected_text = selected;
                                 report_run();
                             },
                             false, false});
        }
    }
    for (const Step &step : steps) {
        SCOPED_TRACE(step.what);
        open_file_scene();
        const std::string old_file = file_bytes(k_first);
        const std::string before = scene_state();
        open_file_scene();
        step.run();
        const std::string goal = scene_state();
        const std::string console = host().console;
        const uint16_t blocks = blocks_in_use();
        bool passed = false;
        for (int n = 0; !passed; ++n) {
            for (bool for_ever : {false, true}) {
                SCOPED_TRACE(n);
                passed = run_with_fault(step, n, for_ever, goal);
                EXPECT_EQ(host().console, passed ? console : "") << "lists come first";
                if (!console.empty()) {
                    EXPECT_TRUE(run_command(step.run));
                    EXPECT_EQ(host().console, console);
                    EXPECT_EQ(blocks_in_use(), blocks);
                }
                check_first_file(step, old_file, before);
                EXPECT_EQ(file_bytes(k_second), second_file());
                check_scene(step, before, goal);
                ASSERT_FALSE(HasFailure());
            }
            ASSERT_LT(n, 300);
        }
    }
    start_program();
}
