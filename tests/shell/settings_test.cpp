// The settings sheet, driven by its pages' controls, and the rules behind it.
#include "shell/settings.h"

#include "core/host.h"
#include "core/numbers.h"
#include "report/output.h"
#include "resources/resource.h"
#include "shell/dialogs.h"
#include "shell/main_window.h"
#include "shell/pane_styles.h"
#include "shell/scintilla.h"
#include "shell/text_conversion.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cells.h"

namespace {

enum PageIndex : WPARAM { report, output, links, numbers, pane, search, page_count };

struct SettingsTest : ShellTest {
    void TearDown() override {
        remove("out.txt");
        ShellTest::TearDown();
    }
};

HWND shown_page(HWND sheet) {
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

// Shows another page.
HWND show_page(HWND sheet, WPARAM index) {
    SendMessageW(sheet, PSM_SETCURSEL, index, 0);
    return shown_page(sheet);
}

// Clicks the tab of a page.
void click_tab(HWND sheet, WPARAM index) {
    HWND tabs = reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETTABCONTROL, 0, 0));
    RECT rect;
    SendMessageW(tabs, TCM_GETITEMRECT, index, as_lparam(&rect));
    const LPARAM point = MAKELPARAM(rect.left + 4, rect.top + 4);
    PostMessageW(tabs, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(tabs, WM_LBUTTONUP, 0, point);
}

void press_on(HWND page, int control) {
    SendDlgItemMessageW(page, control, BM_CLICK, 0, 0);
}

bool is_marked(HWND page, int control) {
    return SendDlgItemMessageW(page, control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void enter(HWND page, int control, const std::wstring &text) {
    SetDlgItemTextW(page, control, text.c_str());
}

std::string entry(HWND page, int control) {
    return text_of(GetDlgItem(page, control));
}

// Chooses something else than the default on every page.
void change_everything(HWND sheet) {
    HWND page = show_page(sheet, report);
    press_on(page, CTL_REPORT_TRAIL);
    enter(page, CTL_REPORT_FORMAT, L"\\N: \\T\r\n");
    press_on(page, CTL_REPORT_ALL);
    page = show_page(sheet, output);
    press_on(page, CTL_OUTPUT_FILE);
    enter(page, CTL_OUTPUT_NAME, L"d\u00E9j\u00E0");
    press_on(page, CTL_OUTPUT_CRLF);
    page = show_page(sheet, links);
    press_on(page, CTL_LINKS_GREEN);
    press_on(page, CTL_LINKS_CREATE);
    press_on(page, CTL_LINKS_ASK);
    page = show_page(sheet, numbers);
    press_on(page, CTL_NUMBERS_EXPONENT);
    enter(page, CTL_NUMBERS_DIGITS, L" 4 ");
    press_on(page, CTL_NUMBERS_RADIANS);
    page = show_page(sheet, pane);
    SendDlgItemMessageW(page, CTL_PANE_FONT, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                        as_lparam(L"Courier"));
    enter(page, CTL_PANE_SIZE, L"13");
    press_on(page, CTL_PANE_BOLD);
    press_on(page, CTL_PANE_ITALIC);
    page = show_page(sheet, search);
    enter(page, CTL_SEARCH_TEXT, L"find");
    enter(page, CTL_REPLACE_TEXT, L"put");
    press_on(page, CTL_SEARCH_CASE);
}

// Options that no page shows stand between those that do.
std::string options_block(bool changed) {
    return std::string("\n<opts>\n<isrc>cell</isrc>\n<iname>in</iname>\n<iecho>yes</iecho>") +
           (changed
                ? "\n<odest>file</odest>\n<oname>d\xC3\xA9j\xC3\xA0</oname>\n<onewl>crlf</onewl>"
                : "\n<odest>screen</odest>\n<oname>OUTPUT</oname>\n<onewl>lf</onewl>") +
           "\n<cfmt>#</cfmt>\n<citer>3</citer>\n<cdisp>list</cdisp>" +
           (changed ? "\n<rtype>trail</rtype>\n<rfmt>\\N: \\T\n</rfmt>\n<rall>no</rall>"
                      "\n<starg>find</starg>\n<srpl>put</srpl>"
                    : "\n<rtype>fmt</rtype>\n<rfmt>\\N</rfmt>\n<rall>yes</rall>"
                      "\n<starg></starg>\n<srpl></srpl>") +
           "\n<scount>7</scount>\n<sout>no</sout>" +
           (changed ? "\n<nfmt>exponent</nfmt>\n<ndec>4</ndec>\n<nang>radians</nang>"
                    : "\n<nfmt>general</nfmt>\n<ndec>2</ndec>\n<nang>degrees</nang>") +
           "\n<pltng>on</pltng>" +
           (changed ? "\n<xmax>9.0000e+00</xmax>\n<xmin>-5.0000e+00</xmin>"
                      "\n<ymax>5.0000e+00</ymax>\n<ymin>-5.0000e+00</ymin>"
                    : "\n<xmax>9</xmax>\n<xmin>-5</xmin>\n<ymax>5</ymax>\n<ymin>-5</ymin>") +
           "\n<xintrvls>6</xintrvls>\n<yintrvls>5</yintrvls>\n<xycells>a,b</xycells></opts>";
}

TEST_F(SettingsTest, EveryPageComesBackFromTheSavedFile) {
    const std::string cells = web_of("go to home");
    start(options_block(false) + cells);
    command(CMD_FILE_SAVE);
    EXPECT_EQ(file_bytes(path), options_block(false) + cells);
    answer_with("Settings", [](HWND sheet) {
        change_everything(sheet);
        press_button(sheet, IDOK);
    });
    command(CMD_SETTINGS);
    EXPECT_TRUE(web_changed());
    command(CMD_FILE_SAVE);
    EXPECT_EQ(file_bytes(path), options_block(true) + cells);
}

TEST_F(SettingsTest, OkAppliesAtOnce) {
    start(web_of("go to home"));
    show_tab(1);
    answer_with("Settings", [](HWND sheet) {
        change_everything(sheet);
        press_button(sheet, IDOK);
    });
    command(CMD_SETTINGS);
    for (HWND window : {text_pane(), console_pane()}) {
        EXPECT_EQ(sci(window, SCI_STYLEGETFORE, k_style_link), RGB(43, 155, 34));
        EXPECT_EQ(sci(window, SCI_STYLEGETSIZE, k_style_text), 13);
        EXPECT_TRUE(sci(window, SCI_STYLEGETBOLD, k_style_text));
        EXPECT_TRUE(sci(window, SCI_STYLEGETITALIC, k_style_link));
        char face[64] = "";
        sci(window, SCI_STYLEGETFONT, STYLE_DEFAULT, as_lparam(face));
        EXPECT_EQ(std::string(face).substr(0, 7), "Courier");
    }
    EXPECT_EQ(option_search_case(), 1);
    EXPECT_EQ(option_number_format()->digits, 4);
    set_option_oname("out");
    set_option_rtype(k_report_fmt);
    command(CMD_REPORT);
    EXPECT_EQ(file_bytes("out.txt"), "home: go to home\n") << "to a file, from the next report on";
}

TEST_F(SettingsTest, CancelAndEscapeChangeNothing) {
    const std::string cells = web_of("go to home");
    start(options_block(false) + cells);
    answer_with("Settings", [](HWND sheet) {
        change_everything(sheet);
        press_button(sheet, IDCANCEL);
    });
    command(CMD_SETTINGS);
    answer_with("Settings", [](HWND sheet) {
        change_everything(sheet);
        PostMessageW(GetDlgItem(sheet, IDOK), WM_KEYDOWN, VK_ESCAPE, 0);
    });
    command(CMD_SETTINGS);
    EXPECT_FALSE(web_changed());
    Settings now;
    settings_load(&now);
    EXPECT_EQ(now.points, 9);
    EXPECT_EQ(now.link_colour, k_link_red);
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETSIZE, k_style_text), 9);
    command(CMD_FILE_SAVE);
    EXPECT_EQ(file_bytes(path), options_block(false) + cells);
}

TEST_F(SettingsTest, EnterAndEscapeCloseItFromEveryField) {
    start();
    const struct {
        WPARAM page;
        int control;
    } fields[] = {
        {report, CTL_REPORT_TRAIL}, {report, CTL_REPORT_FORMAT},   {output, CTL_OUTPUT_NAME},
        {links, CTL_LINKS_CREATE},  {numbers, CTL_NUMBERS_DIGITS}, {pane, CTL_PANE_FONT},
        {pane, CTL_PANE_SIZE},      {search, CTL_REPLACE_TEXT},
    };
    for (const auto &one : fields) {
        for (const WPARAM key : {WPARAM{VK_ESCAPE}, WPARAM{VK_RETURN}}) {
            set_option_rall(1);
            answer_with("Settings", [&](HWND sheet) {
                press_on(shown_page(sheet), CTL_REPORT_ALL);
                SetFocus(GetDlgItem(show_page(sheet, one.page), one.control));
                PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
            });
            command(CMD_SETTINGS);
            EXPECT_EQ(option_rall(), key == VK_ESCAPE) << one.control;
        }
    }
}

TEST_F(SettingsTest, OpenedAgainItShowsWhatWasChosen) {
    start();
    answer_with("Settings", [](HWND sheet) {
        change_everything(sheet);
        press_button(sheet, IDOK);
    });
    command(CMD_SETTINGS);
    set_web_changed(false);
    answer_with("Settings", [](HWND sheet) {
        HWND page = show_page(sheet, report);
        EXPECT_TRUE(is_marked(page, CTL_REPORT_TRAIL));
        EXPECT_FALSE(is_marked(page, CTL_REPORT_FORMATTED));
        EXPECT_FALSE(is_marked(page, CTL_REPORT_ALL));
        EXPECT_EQ(entry(page, CTL_REPORT_FORMAT), "\\N: \\T\r\n");
        page = show_page(sheet, output);
        EXPECT_TRUE(is_marked(page, CTL_OUTPUT_FILE));
        EXPECT_TRUE(is_marked(page, CTL_OUTPUT_CRLF));
        EXPECT_EQ(entry(page, CTL_OUTPUT_NAME), "d\xC3\xA9j\xC3\xA0");
        page = show_page(sheet, links);
        EXPECT_TRUE(is_marked(page, CTL_LINKS_GREEN));
        EXPECT_FALSE(is_marked(page, CTL_LINKS_CREATE));
        EXPECT_FALSE(is_marked(page, CTL_LINKS_ASK));
        page = show_page(sheet, numbers);
        EXPECT_TRUE(is_marked(page, CTL_NUMBERS_EXPONENT));
        EXPECT_TRUE(is_marked(page, CTL_NUMBERS_RADIANS));
        EXPECT_EQ(entry(page, CTL_NUMBERS_DIGITS), "4");
        page = show_page(sheet, pane);
        EXPECT_EQ(entry(page, CTL_PANE_FONT).substr(0, 7), "Courier");
        EXPECT_EQ(entry(page, CTL_PANE_SIZE), "13");
        EXPECT_TRUE(is_marked(page, CTL_PANE_BOLD));
        EXPECT_TRUE(is_marked(page, CTL_PANE_ITALIC));
        page = show_page(sheet, search);
        EXPECT_EQ(entry(page, CTL_SEARCH_TEXT), "find");
        EXPECT_TRUE(is_marked(page, CTL_SEARCH_CASE));
        press_button(sheet, IDOK);
    });
    command(CMD_SETTINGS);
    EXPECT_FALSE(web_changed()) << "nothing was changed this time";
}

struct BadEntry {
    WPARAM page;
    int control;
    std::wstring bad;
    const char *sentence;
    const wchar_t *good;
};

TEST_F(SettingsTest, BadEntriesAreRefusedOnTheirPage) {
    start();
    const BadEntry entries[] = {
        {report, CTL_REPORT_FORMAT, std::wstring(257, 'x'), "at most 256 characters", L"\\N"},
        {output, CTL_OUTPUT_NAME, std::wstring(49, 'x'), "at most 48 characters", L"out"},
        {output, CTL_OUTPUT_NAME, L"what?", "none of * ? \" < > |", L"C:\\out.txt"},
        {numbers, CTL_NUMBERS_DIGITS, L"9", "from 0 to 8", L"8"},
        {numbers, CTL_NUMBERS_DIGITS, L"", "from 0 to 8", L"0"},
        {pane, CTL_PANE_SIZE, L"3", "from 4 to 72", L"4"},
        {pane, CTL_PANE_SIZE, L"ten", "from 4 to 72", L"72"},
        {search, CTL_SEARCH_TEXT, std::wstring(25, 0xE9), "at most 48 characters", L"x"},
        {search, CTL_REPLACE_TEXT, std::wstring(49, 'x'), "replacement has at most 48", L""},
    };
    for (const BadEntry &one : entries) {
        SCOPED_TRACE(one.sentence);
        Settings before = {};
        settings_load(&before);
        answer_with("Settings", [&](HWND sheet) {
            enter(show_page(sheet, one.page), one.control, one.bad);
            click_tab(sheet, links);
        });
        answer(one.sentence, IDOK);
        answer_with("Settings", [](HWND sheet) { press_button(sheet, IDOK); });
        answer(one.sentence, IDOK);
        answer_with("Settings", [&](HWND sheet) {
            HWND page = shown_page(sheet);
            EXPECT_TRUE(IsChild(page, GetFocus()));
            Settings now = {};
            settings_load(&now);
            EXPECT_EQ(memcmp(&now, &before, sizeof now), 0);
            enter(page, one.control, one.good);
            EXPECT_NE(show_page(sheet, links), page);
            press_button(sheet, IDOK);
        });
        command(CMD_SETTINGS);
        EXPECT_TRUE(all_asked());
    }
    EXPECT_STREQ(option_oname(), "C:\\out.txt");
    EXPECT_EQ(option_ndec(), 0);
    EXPECT_EQ(option_font_size(), 720);
}

TEST_F(SettingsTest, WhatCannotBeShownIsKept) {
    start(web_of("home"));
    const std::string odd = "a\xFF\x01\nb\r\n\xE2";
    set_option_rfmt((odd + std::string(240, '\\')).c_str());
    set_option_starg(odd.c_str());
    set_option_oname(odd.c_str());
    set_option_odest(k_output_print);
    set_option_font_name("No such font");
    set_option_font_size(94);
    set_option_font_style(0xF0);
    Settings before;
    settings_load(&before);
    answer_with("Settings", [](HWND sheet) {
        for (WPARAM page = report; page < page_count; ++page) {
            show_page(sheet, page);
        }
        press_button(sheet, IDOK);
    });
    command(CMD_SETTINGS);
    EXPECT_FALSE(web_changed());
    EXPECT_EQ(option_starg(), odd);
    EXPECT_EQ(option_oname(), odd);
    EXPECT_STREQ(option_rfmt(), before.rfmt);
    EXPECT_EQ(option_odest(), k_output_print);
    EXPECT_STREQ(option_font_name(), "No such font");
    EXPECT_EQ(option_font_size(), 94);
    EXPECT_EQ(option_font_style(), 0xF0U);
}

TEST_F(SettingsTest, TheOpenSearchBarFollows) {
    start(web_of("some Beans"));
    show_tab(1);
    answer_with("Search for:", [](HWND dialog) {
        enter(dialog, CTL_SEARCH_TEXT, L"none");
        press_button(dialog, IDOK);
    });
    command(CMD_FIND);
    answer_with("Settings", [](HWND sheet) {
        HWND page = show_page(sheet, search);
        EXPECT_EQ(entry(page, CTL_SEARCH_TEXT), "none");
        enter(page, CTL_SEARCH_TEXT, L"beans");
        press_on(page, CTL_SEARCH_CASE);
        press_button(sheet, IDOK);
    });
    command(CMD_SETTINGS);
    EXPECT_TRUE(is_marked(search_bar(), CTL_NEXT_CASE));
    press_on(search_bar(), CTL_NEXT_FIND);
    EXPECT_EQ(sci(text_pane(), SCI_GETSELECTIONEND), 0);
    press_on(search_bar(), CTL_NEXT_CASE);
    press_on(search_bar(), CTL_NEXT_FIND);
    EXPECT_EQ(sci(text_pane(), SCI_GETSELECTIONEND), 10);
}

TEST_F(SettingsTest, RefusedWhileOutputRuns) {
    start();
    ASSERT_EQ(output_open(), 0);
    command(CMD_SETTINGS);
    EXPECT_EQ(status_text(), "OUTPUT IN USE");
    output_close();
}

// ---- The sheet on the handheld's screen ---------------------------------------------------------

// The width that a control's text needs on one line.
long needed_width(HWND control) {
    const LONG type = GetWindowLongW(control, GWL_STYLE) & 0x1F;
    wchar_t kind[16] = L"";
    GetClassNameW(control, kind, 16);
    const bool is_button = lstrcmpiW(kind, L"BUTTON") == 0;
    if (!is_button && lstrcmpiW(kind, L"STATIC") != 0) {
        return 0;
    }
    wchar_t text[128] = L"";
    GetWindowTextW(control, text, 128);
    HDC context = GetDC(control);
    HGDIOBJ previous =
        SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT rect = {};
    DrawTextW(context, text, -1, &rect, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(context, previous);
    ReleaseDC(control, context);
    RECT place;
    GetClientRect(control, &place);
    const long lines = is_button ? 1 : place.bottom / rect.bottom;
    const bool has_box = is_button && type != BS_GROUPBOX && type != BS_DEFPUSHBUTTON;
    return rect.right / lines + (has_box ? 18 : 0);
}

void check_page(HWND page) {
    RECT room;
    GetClientRect(page, &room);
    for (HWND one = GetWindow(page, GW_CHILD); one; one = GetWindow(one, GW_HWNDNEXT)) {
        RECT rect;
        GetWindowRect(one, &rect);
        MapWindowPoints(nullptr, page, reinterpret_cast<POINT *>(&rect), 2);
        EXPECT_LE(rect.right, room.right) << text_of(one);
        EXPECT_LE(rect.bottom, room.bottom) << text_of(one);
        EXPECT_LE(needed_width(one), rect.right - rect.left) << text_of(one);
    }
}

TEST_F(SettingsTest, FitsTheHandheldsScreen) {
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", L"240x320");
    start();
    SetEnvironmentVariableW(L"QUORVANE_SCREEN", nullptr);
    answer_with("Settings", [](HWND sheet) {
        RECT rect;
        GetWindowRect(sheet, &rect);
        EXPECT_LE(rect.right - rect.left, 240);
        EXPECT_LE(rect.bottom - rect.top, 320);
        for (WPARAM index = report; index < page_count; ++index) {
            SCOPED_TRACE(index);
            check_page(show_page(sheet, index));
        }
        press_button(sheet, IDCANCEL);
    });
    command(CMD_SETTINGS);
}

TEST_F(SettingsTest, SamplesHaveTheLinksColours) {
    start();
    answer_with("Settings", [](HWND sheet) {
        HWND page = show_page(sheet, links);
        for (int i = 0; i < 4; ++i) {
            HWND sample = GetDlgItem(page, CTL_LINKS_SAMPLE_RED + i);
            HDC context = GetDC(sample);
            SendMessageW(page, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                         as_lparam(sample));
            EXPECT_EQ(GetTextColor(context), link_colour(i));
            ReleaseDC(sample, context);
        }
        press_button(sheet, IDCANCEL);
    });
    command(CMD_SETTINGS);
}

// ---- The rules without a window -----------------------------------------------------------------

TEST(SettingsRules, EachChangeHasItsEffects) {
    option_defaults();
    const struct {
        void (*change)(Settings *draft);
        uint32_t effects;
    } cases[] = {
        {[](Settings *) {}, 0},
        {[](Settings *draft) { draft->rtype = k_report_trail; }, k_effect_saved},
        {[](Settings *draft) { strcpy(draft->rfmt, "x"); }, k_effect_saved},
        {[](Settings *draft) { draft->odest = k_output_file; }, k_effect_saved | k_effect_output},
        {[](Settings *draft) { strcpy(draft->oname, "x"); }, k_effect_saved | k_effect_output},
        {[](Settings *draft) { draft->link_colour = k_link_blue; }, k_effect_panes},
        {[](Settings *draft) { draft->dclick_ask = 0; }, 0},
        {[](Settings *draft) { draft->ndec = 8; }, k_effect_saved},
        {[](Settings *draft) { draft->bold = 1; }, k_effect_panes},
        {[](Settings *draft) { draft->points = 20; }, k_effect_panes},
        {[](Settings *draft) { strcpy(draft->srpl, "x"); }, k_effect_saved},
        {[](Settings *draft) { draft->search_case = 1; }, 0},
    };
    for (const auto &one : cases) {
        Settings draft;
        settings_load(&draft);
        one.change(&draft);
        set_web_changed(false);
        EXPECT_EQ(settings_apply(&draft), one.effects);
        EXPECT_EQ(web_changed(), (one.effects & k_effect_saved) != 0);
        EXPECT_EQ(settings_apply(&draft), 0U) << "applied already";
    }
    set_web_changed(false);
}

TEST(SettingsRules, NumbersAreWholeAndWithinTheirRange) {
    struct {
        const wchar_t *text;
        bool allowed;
        int32_t value;
    } const cases[] = {
        {L"4", true, 4},    {L"72", true, 72},
        {L" 9 ", true, 9},  {L"007", true, 7},
        {L"3", false, 0},   {L"73", false, 0},
        {L"", false, 0},    {L" ", false, 0},
        {L"-5", false, 0},  {L"9.5", false, 0},
        {L"9 9", false, 0}, {L"9x", false, 0},
        {L"+9", false, 0},  {L"99999999999999999999", false, 0},
    };
    for (const auto &one : cases) {
        int32_t value = -1;
        EXPECT_EQ(number_allowed(one.text, k_points_min, k_points_max, &value), one.allowed)
            << to_8bit(one.text);
        EXPECT_EQ(value, one.allowed ? one.value : -1) << to_8bit(one.text);
    }
}

}  // namespace
