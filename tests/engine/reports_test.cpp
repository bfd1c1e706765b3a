// Reports: their layout, which cells they cover, and that they leave nothing behind however they
// end.
#include "tests/engine/engine_test.h"

using namespace std::string_literals;
using Reports = EngineTest;

namespace {

std::string run_report() {
    host().console.clear();
    EXPECT_EQ(report_run(), 0);
    return host().console;
}

// The report of a type over everything, or else over the selected names.
std::string report(uint8_t type, bool all, const std::string &selected = "") {
    set_option_rtype(type);
    set_option_rall(all ? 1 : 0);
    host().selected_text = selected;
    return run_report();
}

void make_linked_web() {
    make_cell("a", "Home, a and A; home again");
    make_cell("b_2", "it's b 2 or b_2.");
    make_cell("c");
    type_text("b_2 a\\nc");
}

}  // namespace

TEST_F(Reports, TheLayoutOfEachType) {
    make_linked_web();
    EXPECT_EQ(report(k_report_inptr, true), "\na\n    <a\n    <home"
                                            "\nb_2\n    <b_2\n    <home"
                                            "\nc"
                                            "\nhome\n    <a");
    EXPECT_EQ(stored_text("home"), "b_2 a\\nc") << "the pane was stored first";
    EXPECT_EQ(report(k_report_outptr, true), "\na\n    >home\n    >a\n    >a\n    >home"
                                             "\nb_2\n    >b_2"
                                             "\nc"
                                             "\nhome\n    >b_2\n    >a");
    EXPECT_EQ(report(k_report_outptr, false), "\nhome\n    >b_2\n    >a");
    EXPECT_EQ(report(k_report_outptr, false, "c, A"),
              "\nc\na\n    >home\n    >a\n    >a\n    >home");
    EXPECT_EQ(report(k_report_inptr, false, "c B_2 c"), "\nc\nb_2\n    <b_2\n    <home\nc");
    const std::string rule(26, '*');
    EXPECT_EQ(report(k_report_fmt, false, "a home"),
              "\r\n*****a" + rule + "\r\nHome, a and A; home again\r\n\r\n" + "\r\n*****home" +
                  rule + "\r\nb_2 a\nc\r\n\r\n");
    for (const char *name : {"new", "newer"}) {  // after reports on all cells: whole, and cut off
        make_cell(name, name);
        EXPECT_EQ(report(k_report_outptr, false, name), "\n"s + name + "\n    >" + name);
        set_option_rtype(k_report_inptr);
        block_arena_fail_after(1, false);
        EXPECT_FALSE(run_command([] { report_run(); }));
    }
    go_to_name("a");
    go_to_name("c");
    take_log();
    EXPECT_EQ(report(k_report_trail, false, "a b_2"), "\nTrail:\n    a\n    home");
    EXPECT_EQ(count(take_log(), "selected_text_free"), 1U);
    output_open();
    output_recover();
    current_cell_reset(0);
    EXPECT_EQ(report(k_report_fmt, false), "") << "there is no current cell";
    EXPECT_EQ(report_result(), 0);
    EXPECT_EQ(report(k_report_trail, false), "\nTrail:\n    a\n    home");
    go_home();
}

TEST_F(Reports, CellsWithoutANumberAreNoTargets) {
    std::string file = "<cname>home</cname><text>n100 n354 n355 n399</text>";
    for (int i = 100; i < 400; ++i) {
        file += cell_of("n" + std::to_string(i), i % 50 == 0 ? "home n399" : "");
    }
    ASSERT_EQ(read_web(file), 0);
    EXPECT_EQ(report(k_report_outptr, false), "\nhome\n    >n100\n    >n354");
    EXPECT_EQ(report(k_report_inptr, false, "n399 n100"), "\nn399\nn100\n    <home");
    EXPECT_EQ(report(k_report_inptr, false, "home"),
              "\nhome\n    <n100\n    <n150\n    <n200\n    <n250\n    <n300\n    <n350");
}

// A message that the pump lets through cancels the report, or runs out of blocks and is recovered
// from.
TEST_F(Reports, InterruptedAnywhereDropsTheListsAndTheNextReportWorks) {
    make_linked_web();
    go_to_name("a");
    go_home();
    const std::string path = scratch_path("interrupted.txt");
    for (int round = 0; round < 32; ++round) {
        const bool all = round % 2 != 0, cancelled = round % 4 < 2, to_file = round % 8 < 4;
        const auto type = static_cast<uint8_t>(k_report_fmt + round / 8);
        const std::string whole = report(type, all);
        const uint16_t blocks = blocks_in_use();
        for (uint32_t n = 1; n <= whole.size(); ++n) {
            at_pump(n, [=] { run_command(cancelled ? output_abort : run_out_of_blocks); });
            set_option_odest(to_file ? k_output_file : k_output_console);
            output_set_path(to_file ? path.c_str() : nullptr);
            const std::string cut = report(type, all);
            EXPECT_TRUE(to_file || cut == whole.substr(0, cancelled ? n : cut.size()));
            EXPECT_LT(report_result(), 0);
            EXPECT_EQ(host().status, cancelled ? "OUTPUT ABORTED" : "OUT OF MEMORY");
            EXPECT_EQ(host().resting, "Ready");
            EXPECT_EQ(host().pumps, n) << "nothing is written after it";
            EXPECT_EQ(blocks_in_use(), blocks);
            EXPECT_FALSE(output_aborted());
            host().on_pump = nullptr;
        }
        set_option_odest(k_output_console);
        EXPECT_EQ(report(type, all), whole);
        EXPECT_EQ(report_result(), 0);
        ASSERT_EQ(check_engine(), "");
    }
    output_set_path(nullptr);
}

TEST_F(Reports, WhatIsTypedDuringAReportIsKept) {
    make_linked_web();
    at_pump(3, [] { type_text("typed meanwhile"); });
    take_log();
    report(k_report_fmt, true);
    EXPECT_EQ(take_log(),
              (Log{"store 1", "resting Working...", "console_clear", "output_began console",
                   "output_ended", "resting Ready", "store 1", "show home"}));
    EXPECT_EQ(stored_text("home"), "typed meanwhile");
    EXPECT_EQ(host().pane.text, "typed meanwhile");
    EXPECT_TRUE(web_changed());
}
