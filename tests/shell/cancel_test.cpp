// Reports that are cancelled, or left for good, while they run. A timer that holds the program up
// makes them last on any machine.
#include "report/reports.h"

#include "core/busy.h"
#include "core/host_messages.h"
#include "report/output.h"
#include "shell/message_loop.h"
#include "shell/output_host.h"
#include "tests/shell/shell_test.h"
#include "web/options.h"

namespace {

constexpr const char *k_box = "Press Button to Cancel Printing";

constexpr size_t k_cells = 60;
constexpr size_t k_cell_length = 4000;
constexpr size_t k_times = 120;  // that a report writes each
constexpr size_t k_whole_length = k_cells * k_cell_length * k_times;

void CALLBACK hold_up(HWND, UINT, UINT_PTR, DWORD) {
    Sleep(80);
}

struct CancelTest : ShellTest {
    UINT_PTR timer = 0;

    void start_long(uint8_t destination) {
        std::string cells;
        for (size_t i = 0; i < k_cells; ++i) {
            cells += cell_of("cell" + std::to_string(i), std::string(k_cell_length, 'x'));
        }
        start_in_text(web_of("", cells));
        set_option_rfmt(times(k_times, "\\T").c_str());
        set_option_odest(destination);
        set_option_oname("out");
        timer = SetTimer(nullptr, 0, 100, hold_up);
    }

    void TearDown() override {
        KillTimer(nullptr, timer);
        ShellTest::TearDown();
        remove("out.txt");
    }
};

void expect_part_of_report(const std::string &text) {
    EXPECT_GT(text.size(), 0U);
    EXPECT_LT(text.size(), k_whole_length);
    EXPECT_EQ(text.find_first_not_of('x'), std::string::npos);
}

void expect_all_is_well_again() {
    EXPECT_FALSE(is_busy());
    EXPECT_FALSE(cancel_box());
    EXPECT_TRUE(IsWindowEnabled(main_window()));
    EXPECT_TRUE(has_focus(text_pane()));
    set_option_rfmt("\\N ");
    set_option_odest(k_output_console);
    command(CMD_REPORT);
    EXPECT_EQ(pane_text(console_pane()).substr(0, 12), "cell0 cell1 ");
    EXPECT_FALSE(web_changed());
}

TEST_F(CancelTest, ConsoleReportStopsAndKeepsWhatItWrote) {
    start_long(k_output_console);
    const DWORD began = GetTickCount();
    DWORD shown = began;
    answer_with(k_box, [&](HWND box) {
        shown = GetTickCount();
        EXPECT_EQ(GetWindow(box, GW_OWNER), main_window());
        EXPECT_TRUE(IsWindowEnabled(main_window()));
        EXPECT_TRUE(has_focus(GetDlgItem(box, IDCANCEL)));
        press_button(box, IDCANCEL);
    });
    command(CMD_REPORT);
    EXPECT_GE(shown - began, 500U);
    EXPECT_EQ(status_text(), "OUTPUT ABORTED");
    expect_part_of_report(pane_text(console_pane()));
    expect_all_is_well_again();
}

TEST_F(CancelTest, ShortReportShowsNoBox) {
    start(web_of("begin"));
    set_option_rfmt("\\T");
    command(CMD_REPORT);
    EXPECT_EQ(pane_text(console_pane()), "begin");
    EXPECT_EQ(status_text(), "Ready");
}

TEST_F(CancelTest, TheCloseCommandReachesTheBox) {
    start_long(k_output_console);
    answer_with(k_box, [](HWND box) {
        command(CMD_CLOSE_MODELESS);
        EXPECT_FALSE(cancel_box());
        press_button(box, IDCANCEL);  // or the report would last for minutes
    });
    command(CMD_REPORT);
    EXPECT_EQ(status_text(), "OUTPUT ABORTED");
    expect_all_is_well_again();
}

TEST_F(CancelTest, FileReportTakesNoInputButTheBoxsAndKeepsWhatItWrote) {
    start_long(k_output_file);
    answer_with(k_box, [](HWND box) {
        EXPECT_FALSE(IsWindowEnabled(main_window()));
        PostMessageW(GetDlgItem(box, IDCANCEL), WM_KEYDOWN, VK_ESCAPE, 0);
    });
    command(CMD_REPORT);
    EXPECT_EQ(status_text(), "OUTPUT ABORTED");
    expect_part_of_report(file_bytes("out.txt"));
    expect_all_is_well_again();
}

TEST_F(CancelTest, CommandsThatWouldChangeTheWebAreRefusedMeanwhile) {
    start_long(k_output_console);
    answer_with(k_box, [](HWND box) {
        for (const int id : {CMD_CELL_NEXT, CMD_CELL_DELETE, CMD_FILE_NEW, CMD_SETTINGS, CMD_ZOOM,
                             CMD_REPORT, CMD_FIND, CMD_HELP_OVERVIEW}) {
            set_resting_status("");
            command(static_cast<WORD>(id));
            EXPECT_EQ(status_text(), "OUTPUT IN USE") << id;
        }
        press_button(box, IDCANCEL);
    });
    command(CMD_REPORT);
    EXPECT_EQ(current_name(), "home");
}

TEST_F(CancelTest, QuittingEndsTheReportFirst) {
    start_long(k_output_console);
    answer_with(k_box, [](HWND) { PostMessageW(main_window(), WM_COMMAND, CMD_QUIT, 0); });
    command(CMD_REPORT);
    EXPECT_TRUE(run_until([] { return ended_with() == 0; }));
    EXPECT_FALSE(is_busy());
}

TEST_F(CancelTest, ClosingTheWindowEndsTheReportFirst) {
    start_long(k_output_file);
    answer_with(k_box, [](HWND) { PostMessageW(main_window(), WM_CLOSE, 0, 0); });
    SendMessageW(main_window(), WM_COMMAND, CMD_REPORT, 0);
    int code = -1;
    EXPECT_FALSE(message_loop_round(&code));
    EXPECT_EQ(code, 0);
    EXPECT_FALSE(is_busy());
}

}  // namespace
