// The status line's resting and transient texts, and the conversion of text on its way to the
// screen.
#include "shell/status_line.h"
#include "tests/shell/shell_test.h"

struct StatusLine : ShellTest {};

TEST_F(StatusLine, TransientTextGivesWayToTheRestingOne) {
    start();
    show_status_message("Saved");
    EXPECT_EQ(status_text(), "Saved");
    set_resting_status("Working...");
    EXPECT_EQ(status_text(), "Saved");
    // Five seconds, which begin anew with each message.
    run_for(500);
    show_status_message("Not Saved");
    const DWORD shown_at = GetTickCount();
    EXPECT_TRUE(run_until([] { return status_text() == "Working..."; })) << status_text();
    EXPECT_GE(GetTickCount() - shown_at, 4900U);
}

TEST_F(StatusLine, CutsLongTextsAndShowsErrorMessages) {
    start();
    show_status_message(std::string(200, 'x').c_str());
    EXPECT_EQ(status_text(), std::string(127, 'x'));
    show_status_message((std::string(126, 'x') + "\xC3\xA9").c_str());
    EXPECT_EQ(status_text(), std::string(126, 'x'));
    show_error(k_cannot_open_output);
    EXPECT_EQ(status_text(), "UNABLE TO OPEN OUTPUT FILE");
    show_error(-21);
    EXPECT_EQ(report_error(0), 0);
    EXPECT_EQ(status_text(), "Unexpected Error!");
}

TEST(TextConversion, GoesThroughUtf8BothWays) {
    EXPECT_EQ(std::wstring(to_utf16("a\xC3\xA9\xE2\x82\xAC")), L"a\u00E9\u20AC");
    EXPECT_STREQ(to_8bit(L"a\u00E9\u20AC\u07FF\u0800"),
                 "a\xC3\xA9\xE2\x82\xAC\xDF\xBF\xE0\xA0\x80");
    EXPECT_EQ(std::wstring(to_utf16("\xF0\x9F\x98\x80")), L"\xD83D\xDE00");
    EXPECT_EQ(std::wstring(to_utf16("\xE9t\xE9")), L"\u00E9t\u00E9") << "Latin-1";
    EXPECT_EQ(std::wstring(to_utf16("a\xE2\0bc")), L"a\u00E2") << "nothing behind the end";
    EXPECT_EQ(std::wstring(to_utf16("\xE2\x82")), L"\u00E2\u0082");
}

TEST(TextConversion, StopsAt256) {
    EXPECT_EQ(wcslen(to_utf16(std::string(300, 'x').c_str())), 256U);
    EXPECT_EQ(strlen(to_8bit(std::wstring(300, L'x').c_str())), 256U);
    EXPECT_EQ(strlen(to_8bit(std::wstring(300, L'\u20AC').c_str())), 255U);
    char name[8];
    copy_characters(name, "abc\xE2\x82\xAC", 5);
    EXPECT_STREQ(name, "abc");
    utf8_copy(name, 8, L"ab\xD83D\xDE00");
    EXPECT_STREQ(name, "ab") << "no half of a pair";
    copy_characters(name, "a\xED\xA0\xBD\xED\xB8\x80", 6);
    EXPECT_STREQ(name, "a");
    wchar_t units[3];
    utf16_copy(units, 3, "a\xED\xA0\xBD\xED\xB8\x80");
    EXPECT_EQ(std::wstring(units), L"a");
}
