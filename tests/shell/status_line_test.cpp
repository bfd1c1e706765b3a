// The status line's resting and transient texts, and the conversion of text on its way to the
// screen.
#include "shell/status_line.h"

#include "core/host.h"
#include "shell/text_conversion.h"
#include "tests/shell/shell_test.h"

struct StatusLine : ShellTest {};

TEST_F(StatusLine, TransientTextGivesWayToTheRestingOne) {
    start();
    show_status_message("Saved");
    EXPECT_EQ(status_text(), "Saved");
    set_resting_status("Working...");
    EXPECT_EQ(status_text(), "Saved");
    const DWORD shown = GetTickCount();
    run_until([&] { return GetTickCount() - shown > 2000; });
    // The five seconds begin anew with each message.
    show_status_message("Not Saved");
    const DWORD again = GetTickCount();
    run_until([&] { return GetTickCount() - again > 4500; });
    EXPECT_EQ(status_text(), "Not Saved");
    EXPECT_TRUE(status_becomes("Working..."));
}

TEST(TextConversion, GoesThroughUtf8BothWays) {
    EXPECT_EQ(std::wstring(to_utf16("a\xC3\xA9\xE2\x82\xAC")), L"a\u00E9\u20AC");
    EXPECT_STREQ(to_8bit(L"a\u00E9\u20AC\u07FF\u0800"),
                 "a\xC3\xA9\xE2\x82\xAC\xDF\xBF\xE0\xA0\x80");
    EXPECT_EQ(std::wstring(to_utf16("\xF0\x9F\x98\x80")), L"\xD83D\xDE00");
    EXPECT_EQ(std::wstring(to_utf16("\xE9t\xE9")), L"\u00E9t\u00E9") << "Latin-1";
}

TEST(TextConversion, LeadByteAtTheEndReadsNothingBehindIt) {
    const char text[] = "a\xE2\0bc";
    EXPECT_EQ(std::wstring(to_utf16(text)), L"a\u00E2");
    EXPECT_EQ(std::wstring(to_utf16("\xE2\x82")), L"\u00E2\u0082");
}
