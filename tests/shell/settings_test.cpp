// The settings sheet, driven by its pages' controls, and the rules behind it.
#include "shell/settings/settings.h"

#include "shell/panes/styles.h"
#include "tests/shell/shell_test.h"

namespace {

enum PageIndex : WPARAM { report, output, links, numbers, pane, search, page_count };

struct SettingsTest : ShellTest {};

HWND shown_page(HWND sheet) {
    return reinterpret_cast<HWND>(SendMessageW(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
}

// Shows another page.
HWND show_page(HWND sheet, WPARAM index) {
    SendMessageW(sheet, PSM_SETCURSEL, index, 0);
    return shown_page(sheet);
}

bool are_still(const OptionRecord &before) {
    return memcmp(options_in_force(), &before, sizeof before) == 0;
}

void settings(const std::function<void(HWND sheet)> &act, int button = IDOK) {
    answer_with("Settings", [&](HWND sheet) {
        act(sheet);
        press_button(sheet, button);
    });
    command(CMD_SETTINGS);
}

// A choice other than the default: a button pressed, or a text entered.
struct Choice {
    WPARAM page;
    int control;
    const wchar_t *text;  // null for a button
    const char *shown;    // afterwards: a button's mark, or how the text begins
};

constexpr Choice k_choices[] = {
    {report, CTL_REPORT_TRAIL, nullptr, "1"},
    {report, CTL_REPORT_ALL, nullptr, "0"},
    {report, CTL_REPORT_FORMAT, L"\\N: \\T\r\n", "\\N: \\T\r\n"},
    {output, CTL_OUTPUT_FILE, nullptr, "1"},
    {output, CTL_OUTPUT_CRLF, nullptr, "1"},
    {output, CTL_OUTPUT_NAME, L"d\u00E9j\u00E0", "d\xC3\xA9j\xC3\xA0"},
    {links, CTL_LINKS_GREEN, nullptr, "1"},
    {links, CTL_LINKS_CREATE, nullptr, "0"},
    {links, CTL_LINKS_ASK, nullptr, "0"},
    {numbers, CTL_NUMBERS_EXPONENT, nullptr, "1"},
    {numbers, CTL_NUMBERS_RADIANS, nullptr, "1"},
    {numbers, CTL_NUMBERS_DIGITS, L" 4 ", "4"},
    {pane, CTL_PANE_FONT, L"Courier", "Courier"},
    {pane, CTL_PANE_SIZE, L"13", "13"},
    {pane, CTL_PANE_BOLD, nullptr, "1"},
    {pane, CTL_PANE_ITALIC, nullptr, "1"},
    {search, CTL_SEARCH_TEXT, L"find", "find"},
    {search, CTL_REPLACE_TEXT, L"put", "put"},
    {search, CTL_SEARCH_CASE, nullptr, "1"},
};

void change_everything(HWND sheet) {
    for (const Choice &one : k_choices) {
        HWND page = show_page(sheet, one.page);
        if (one.text == nullptr) {
            push(page, one.control);
        } else {
            SetDlgItemTextW(page, one.control, one.text);
            SendDlgItemMessageW(page, one.control, CB_SELECTSTRING, static_cast<WPARAM>(-1),
                                as_lparam(one.text));
        }
    }
}

void expect_what_was_chosen(HWND sheet) {
    for (const Choice &one : k_choices) {
        HWND page = show_page(sheet, one.page);
        const std::string seen = one.text == nullptr
                                     ? std::to_string(IsDlgButtonChecked(page, one.control))
                                     : text_of(GetDlgItem(page, one.control));
        EXPECT_EQ(one.control == CTL_PANE_FONT ? seen.substr(0, 7) : seen, one.shown)
            << one.control;
    }
}

// Options that no page shows, which stand in the file between those that do.
constexpr const char *k_options =
    "\n<opts>\n<iecho>yes</iecho>\n<cfmt>#</cfmt>\n<citer>3</citer>\n<scount>7</scount>"
    "\n<pltng>on</pltng>\n<xmax>9</xmax>\n<xycells>a,b</xycells></opts>";

constexpr const char *k_changed_options[] = {
    "<iecho>yes</iecho>\n<odest>file</odest>\n<oname>d\xC3\xA9j\xC3\xA0</oname>"
    "\n<onewl>crlf</onewl>\n<cfmt>#</cfmt>\n<citer>3</citer>",
    "<rtype>trail</rtype>\n<rfmt>\\N: \\T\n</rfmt>\n<rall>no</rall>\n<starg>find</starg>"
    "\n<srpl>put</srpl>\n<scount>7</scount>",
    "<nfmt>exponent</nfmt>\n<ndec>4</ndec>\n<nang>radians</nang>\n<pltng>on</pltng>",
    "<xmax>9",
    "<xycells>a,b</xycells>",
};

TEST_F(SettingsTest, OkAppliesAtOnceAndIsThereAgainInTheSheetAndTheFile) {
    start(k_options + web_of("go to home"));
    settings(change_everything);
    EXPECT_TRUE(web_changed());
    for (HWND window : {text_pane(), console_pane()}) {
        EXPECT_EQ(sci(window, SCI_STYLEGETFORE, k_style_link), RGB(43, 155, 34));
        EXPECT_EQ(sci(window, SCI_STYLEGETSIZE, k_style_text), 13);
        EXPECT_TRUE(sci(window, SCI_STYLEGETBOLD, k_style_text));
        EXPECT_TRUE(sci(window, SCI_STYLEGETITALIC, k_style_link));
        char face[64] = "";
        sci(window, SCI_STYLEGETFONT, STYLE_DEFAULT, as_lparam(face));
        EXPECT_EQ(std::string(face).substr(0, 7), "Courier");
    }
    EXPECT_EQ(number_format_in_force()->digits, 4);
    command(CMD_FILE_SAVE);
    for (const char *part : k_changed_options) {
        EXPECT_NE(file_bytes(path).find(part), std::string::npos) << part;
    }
    settings(expect_what_was_chosen);
    EXPECT_FALSE(web_changed()) << "nothing was changed this time";
    settings([](HWND sheet) { push(show_page(sheet, links), CTL_LINKS_BLUE); });
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETFORE, k_style_link), RGB(24, 35, 105));
    EXPECT_FALSE(web_changed()) << "of what is in no file";
    set_option_oname("out");
    set_option_rtype(k_report_fmt);
    command(CMD_REPORT);
    EXPECT_EQ(file_bytes("out.txt"), "home: go to home\n") << "to a file, from the next report on";
}

TEST_F(SettingsTest, CancelChangesNothing) {
    start(k_options + web_of("go to home"));
    command(CMD_FILE_SAVE);
    const std::string saved = file_bytes(path);
    const OptionRecord before = *options_in_force();
    settings(change_everything, IDCANCEL);
    EXPECT_FALSE(web_changed());
    EXPECT_TRUE(are_still(before));
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETSIZE, k_style_text), 9);
    command(CMD_FILE_SAVE);
    EXPECT_EQ(file_bytes(path), saved);
}

TEST_F(SettingsTest, EnterAndEscapeCloseItFromEveryField) {
    start();
    const std::pair<WPARAM, int> fields[] = {{report, CTL_REPORT_TRAIL},
                                             {report, CTL_REPORT_FORMAT},
                                             {pane, CTL_PANE_FONT},
                                             {search, CTL_REPLACE_TEXT}};
    for (const auto &[page, control] : fields) {
        for (const WPARAM key : {WPARAM{VK_ESCAPE}, WPARAM{VK_RETURN}}) {
            set_option_rall(1);
            answer_with("Settings", [page, control, key](HWND sheet) {
                push(shown_page(sheet), CTL_REPORT_ALL);
                SetFocus(GetDlgItem(show_page(sheet, page), control));
                PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
            });
            command(CMD_SETTINGS);
            EXPECT_EQ(option_rall(), key == VK_ESCAPE) << control;
        }
    }
}

TEST_F(SettingsTest, BadEntriesAreRefusedOnTheirPage) {
    start();
    const struct {
        WPARAM page;
        int control;
        std::wstring bad;
        const char *sentence;
        const wchar_t *good;
    } entries[] = {
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
    for (const auto &one : entries) {
        SCOPED_TRACE(one.sentence);
        const OptionRecord before = *options_in_force();
        answer_with("Settings", [&](HWND sheet) {
            SetDlgItemTextW(show_page(sheet, one.page), one.control, one.bad.c_str());
            PostMessageW(sheet, PSM_SETCURSEL, links, 0);
        });
        answer(one.sentence, IDOK);
        answer("Settings", IDOK);
        answer(one.sentence, IDOK);
        settings([&](HWND sheet) {
            HWND page = shown_page(sheet);
            EXPECT_TRUE(IsChild(page, GetFocus()));
            EXPECT_TRUE(are_still(before));
            SetDlgItemTextW(page, one.control, one.good);
            EXPECT_NE(show_page(sheet, links), page);
        });
        EXPECT_TRUE(all_asked());
    }
    EXPECT_STREQ(option_oname(), "C:\\out.txt");
    EXPECT_EQ(option_ndec(), 0);
    EXPECT_EQ(option_font_size(), 720);
}

TEST_F(SettingsTest, WhatCannotBeShownIsKept) {
    start();
    const std::string odd = "a\xFF\x01\nb\r\n\xE2";
    set_option_rfmt((odd + std::string(240, '\\')).c_str());
    set_option_starg(odd.c_str());
    set_option_oname(odd.c_str());
    set_option_odest(k_output_print);
    set_option_font_name("No such font");
    set_option_font_size(94);
    set_option_font_style(0xF0);
    const OptionRecord before = *options_in_force();
    settings([](HWND sheet) {
        for (WPARAM page = report; page < page_count; ++page) {
            show_page(sheet, page);
        }
    });
    EXPECT_TRUE(are_still(before));
    EXPECT_FALSE(web_changed());
}

TEST_F(SettingsTest, TheOpenSearchBarFollows) {
    start_in_text(web_of("some Beans"));
    answer_with("Search for:", [](HWND dialog) {
        SetDlgItemTextW(dialog, CTL_SEARCH_TEXT, L"none");
        press_button(dialog, IDOK);
    });
    command(CMD_FIND);
    settings([](HWND sheet) {
        HWND page = show_page(sheet, search);
        EXPECT_EQ(text_of(GetDlgItem(page, CTL_SEARCH_TEXT)), "none");
        SetDlgItemTextW(page, CTL_SEARCH_TEXT, L"beans");
        push(page, CTL_SEARCH_CASE);
    });
    EXPECT_TRUE(IsDlgButtonChecked(search_bar(), CTL_NEXT_CASE));
    push(search_bar(), CTL_NEXT_FIND);
    EXPECT_EQ(place(), "home 0-0");
    push(search_bar(), CTL_NEXT_CASE);
    push(search_bar(), CTL_NEXT_FIND);
    EXPECT_EQ(place(), "home 5-10");
    EXPECT_EQ(option_search_case(), 0);
}

// ---- The sheet on the handheld's screen ---------------------------------------------------------

TEST_F(SettingsTest, FitsTheHandheldsScreenAndShowsTheLinksColours) {
    launch("", L"240x320");
    settings([](HWND sheet) {
        RECT rect;
        GetWindowRect(sheet, &rect);
        EXPECT_LE(rect.right - rect.left, 240);
        EXPECT_LE(rect.bottom - rect.top, 320);
        for (WPARAM index = report; index < page_count; ++index) {
            SCOPED_TRACE(index);
            expect_all_fits(show_page(sheet, index));
        }
        HWND page = show_page(sheet, links);
        for (int i = 0; i < 4; ++i) {
            HWND sample = GetDlgItem(page, CTL_LINKS_SAMPLE_RED + i);
            HDC context = GetDC(sample);
            SendMessageW(page, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                         as_lparam(sample));
            EXPECT_EQ(GetTextColor(context), link_colour(i));
            ReleaseDC(sample, context);
        }
    });
}

// ---- The rules without a window -----------------------------------------------------------------

TEST(SettingsRules, NumbersAreWholeAndWithinTheirRange) {
    int32_t value = 0;
    for (const wchar_t *text : {L"4", L" 4 ", L"004"}) {
        EXPECT_TRUE(number_allowed(text, 4, 72, &value) && value == 4) << to_8bit(text);
    }
    for (const wchar_t *text :
         {L"73", L" ", L"-5", L"9.5", L"9 9", L"+9", L"99999999999999999999"}) {
        EXPECT_FALSE(number_allowed(text, 4, 72, &value)) << to_8bit(text);
    }
    EXPECT_EQ(value, 4);
}

}  // namespace
