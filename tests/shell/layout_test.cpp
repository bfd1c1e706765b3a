// Where the layout puts the controls, and whether their texts can be read.
#include "shell/layout.h"

#include "shell/base/fonts.h"
#include "shell/status_line.h"
#include "tests/shell/shell_test.h"

namespace {

std::string numbers(LONG left, LONG top, LONG width, LONG height) {
    return std::to_string(left) + "," + std::to_string(top) + " " + std::to_string(width) + "x" +
           std::to_string(height);
}

std::string where(HWND window) {
    const RECT rect = place_of(window);
    return numbers(rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top);
}

// As on the handheld's screen; `height` is what the menu bar leaves of the client area.
void expect_no_gaps(LONG width, LONG height) {
    EXPECT_EQ(where(navigation_buttons()), numbers(0, 0, width, 25));
    EXPECT_EQ(where(pane_window(k_pane_list)), numbers(2, 25, width - 2, height - 70));
    EXPECT_EQ(where(pane_window(k_pane_tabs)), numbers(0, height - 44, width, 20));
    EXPECT_EQ(where(status_line()), numbers(0, height - 24, width, 25));
    EXPECT_EQ(place_of(pane_window(k_pane_box)).right, width - 58);
    EXPECT_EQ(place_of(menu_bar()).top, height);
    RECT buttons[2] = {};
    for (WPARAM i = 0; i < 2; ++i) {
        SendMessageW(navigation_buttons(), TB_GETITEMRECT, i, as_lparam(&buttons[i]));
    }
    EXPECT_TRUE(buttons[0].left >= width - 54 && buttons[1].right <= width);
}

struct Layout : ShellTest {};

TEST_F(Layout, FitsTheHandheldsScreen) {
    launch("", L"240x320");
    expect_no_gaps(240, 294);
}

TEST_F(Layout, FollowsTheWindowsSizeAndCollapsesWhatIsNotShown) {
    start();
    expect_no_gaps(360, 534);
    RECT frame;
    GetWindowRect(main_window(), &frame);
    SetWindowPos(main_window(), nullptr, 0, 0, frame.right - frame.left + 100,
                 frame.bottom - frame.top - 90, SWP_NOMOVE | SWP_NOZORDER);
    run();
    expect_no_gaps(460, 444);
    const PaneIndex panes[] = {k_pane_list, k_pane_text, k_pane_console};
    for (int shown = 0; shown < 3; ++shown) {
        show_tab(shown);
        for (int i = 0; i < 3; ++i) {
            const std::string place = i == 0 ? numbers(2, 25, 458, 374) : numbers(0, 25, 460, 374);
            EXPECT_EQ(where(pane_window(panes[i])), i == shown ? place : numbers(0, 0, 0, 0));
        }
    }
}

TEST_F(Layout, TabsReadInFull) {
    start();
    HWND tabs = pane_window(k_pane_tabs);
    HDC context = GetDC(tabs);
    SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(tabs, WM_GETFONT, 0, 0)));
    WPARAM tab = 0;
    for (const wchar_t *expected : {L"list", L"text", L"console"}) {
        wchar_t text[16] = L"";
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = 16;
        SendMessageW(tabs, TCM_GETITEMW, tab, as_lparam(&item));
        EXPECT_STREQ(text, expected);
        RECT rect = {};
        SIZE size = {};
        SendMessageW(tabs, TCM_GETITEMRECT, tab++, as_lparam(&rect));
        GetTextExtentPoint32W(context, text, lstrlenW(text), &size);
        EXPECT_GE(rect.right - rect.left, size.cx > 30 ? size.cx : 30) << "the tab cuts its text";
    }
    ReleaseDC(tabs, context);
    EXPECT_EQ(SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0), 3);
}

// At 96 pixels an inch; half a pixel more, and halves away from zero.
TEST(Fonts, HaveTheirHeights) {
    for (const auto &[tenths, pixels] :
         {std::pair{90, -13}, std::pair{80, -11}, std::pair{94, -10}}) {
        LOGFONTW description = {};
        HFONT font = make_font(L"Tahoma", tenths, false, tenths != 94);
        GetObjectW(font, sizeof description, &description);
        EXPECT_EQ(description.lfHeight, pixels);
        DeleteObject(font);
    }
}

TEST_F(Layout, PictureButtonsSayWhatTheyDo) {
    start();
    const struct {
        HWND bar;
        WORD command;
        const wchar_t *tip;
    } rows[] = {{navigation_buttons(), CMD_BACK, L"Back (Alt+Left)"},
                {navigation_buttons(), CMD_FOLLOW, L"Follow (Alt+Right)"},
                {menu_bar(), CMD_REPORT, L"Run the report"},
                {menu_bar(), CMD_SPARE_BUTTON, L"Does nothing"},
                {menu_bar(), STR_MENU_FILE, L""}};
    for (const auto &row : rows) {
        wchar_t text[80] = L"";
        TTTOOLINFOW tool = {sizeof tool, 0, row.bar, row.command, {}, nullptr, text, 0, nullptr};
        const LRESULT tips = SendMessageW(row.bar, TB_GETTOOLTIPS, 0, 0);
        SendMessageW(reinterpret_cast<HWND>(tips), TTM_GETTEXTW, 80, as_lparam(&tool));
        EXPECT_STREQ(text, row.tip);
    }
}

}  // namespace
