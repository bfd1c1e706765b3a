// Reports that are cancelled, or left for good, while they run. A timer that holds the program up
// makes them last on any machine.
#include "report/reports.h"

#include "core/busy.h"
#include "shell/dialogs/cancel_box.h"
#include "shell/message_loop.h"
#include "tests/shell/shell_test.h"

namespace {

constexpr size_t k_cells = 60;
constexpr size_t k_cell_length = 4000;
constexpr size_t k_times = 120;  // that a report writes each

struct CancelTest : ShellTest {
    UINT_PTR timer = 0;
    DWORD began = 0;

    // Runs a long report, and does something when its box appears.
    void report(uint8_t destination, const std::function<void(HWND box)> &act) {
        std::string cells;
        for (size_t i = 0; i < k_cells; ++i) {
            cells += cell_of("cell" + std::to_string(i), std::string(k_cell_length, 'x'));
        }
        start_in_text(web_of("", cells));
        set_option_rfmt(times(k_times, "\\T").c_str());
        set_option_odest(destination);
        set_option_oname("out");
        timer = SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) { Sleep(80); });
        answer_with("Press Button to Cancel Printing", act);
        began = GetTickCount();
        SendMessageW(main_window(), WM_COMMAND, CMD_REPORT, 0);
        EXPECT_FALSE(is_busy());
    }

    void TearDown() override {
        KillTimer(nullptr, timer);
        ShellTest::TearDown();
    }
};

void expect_part_of_report(const std::string &text) {
    EXPECT_GT(text.size(), 0U);
    EXPECT_LT(text.size(), k_cells * k_cell_length * k_times);
    EXPECT_EQ(text.find_first_not_of('x'), std::string::npos);
}

void expect_all_is_well_again() {
    EXPECT_EQ(status_text(), "OUTPUT ABORTED");
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
    report(k_output_console, [this](HWND box) {
        EXPECT_GE(GetTickCount() - began, 500U) << "a short report shows no box";
        EXPECT_EQ(GetWindow(box, GW_OWNER), main_window());
        EXPECT_TRUE(IsWindowEnabled(main_window()));
        EXPECT_TRUE(has_focus(GetDlgItem(box, IDCANCEL)));
        press_button(box, IDCANCEL);
    });
    expect_part_of_report(pane_text(console_pane()));
    expect_all_is_well_again();
}

TEST_F(CancelTest, FileReportTakesNoInputButTheBoxsAndKeepsWhatItWrote) {
    report(k_output_file, [](HWND box) {
        EXPECT_FALSE(IsWindowEnabled(main_window()));
        PostMessageW(GetDlgItem(box, IDCANCEL), WM_KEYDOWN, VK_ESCAPE, 0);
    });
    run();
    expect_part_of_report(file_bytes("out.txt"));
    expect_all_is_well_again();
}

TEST_F(CancelTest, CommandsThatWouldChangeTheWebAreRefusedAndTheCloseCommandReachesTheBox) {
    report(k_output_console, [](HWND box) {
        for (const int id : {CMD_CELL_NEXT, CMD_CELL_DELETE, CMD_FILE_NEW, CMD_SETTINGS, CMD_ZOOM,
                             CMD_REPORT, CMD_FIND, CMD_HELP_OVERVIEW, CMD_CELL_NEW}) {
            set_resting_status("");
            command(static_cast<WORD>(id));
            EXPECT_EQ(status_text(), "OUTPUT IN USE") << id;
        }
        command(CMD_CLOSE_MODELESS);
        EXPECT_FALSE(cancel_box());
        press_button(box, IDCANCEL);  // or the report would last for minutes
    });
    EXPECT_EQ(current_name(), "home");
    expect_all_is_well_again();
}

TEST_F(CancelTest, QuittingEndsTheReportFirst) {
    report(k_output_console, [](HWND) { PostMessageW(main_window(), WM_COMMAND, CMD_QUIT, 0); });
    EXPECT_TRUE(run_until([] { return ended_with() == 0; }));
}

TEST_F(CancelTest, ClosingTheWindowEndsTheReportFirst) {
    report(k_output_file, [](HWND) { PostMessageW(main_window(), WM_CLOSE, 0, 0); });
    int code = -1;
    EXPECT_FALSE(message_loop_round(&code));
    EXPECT_EQ(code, 0);
}

}  // namespace
