// Webs made, changed and converted by qvx, and left alone when a command fails.
#include "tests/cli/run_qvx.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

const std::string k_small = "<cell><cname>home</cname><text>see alpha</text></cell>"
                            "<cell><cname>alpha</cname><text>back "
                            "home</text><val>2.50</val><script>s</script></cell></eof>";

class QvxWebs : public testing::Test {
protected:
    void SetUp() override {
        enter_empty_folder();
        write_file("w.qvx", k_small);
    }
};

TEST_F(QvxWebs, MakesChangesAndListsCells) {
    ASSERT_EQ(run_qvx({"new", "n.qvx"}).status, 0);
    EXPECT_EQ(run_qvx({"list", "n.qvx"}).out, "home\n");
    ASSERT_EQ(run_qvx({"set", "n.qvx", "Beta", "--text", "one"}).status, 0);
    ASSERT_EQ(run_qvx({"set", "n.qvx", "a<b & c>", "--text", "-two <&> \"'\\"}).status, 0);
    ASSERT_EQ(run_qvx({"set", "n.qvx", "BETA", "--text", "three"}).status, 0);
    EXPECT_EQ(run_qvx({"list", "n.qvx"}).out, "a<b & c>\nBeta\nhome\n");
    EXPECT_EQ(run_qvx({"show", "n.qvx", "beta"}).out, "three");
    EXPECT_EQ(run_qvx({"show", "n.qvx", "A<b_& c>"}).out, "-two <&> \"'\\");
    ASSERT_EQ(run_qvx({"set", "n.qvx", "beta"}).status, 0);
    EXPECT_EQ(run_qvx({"show", "n.qvx", "beta"}).out, "three");
    ASSERT_EQ(run_qvx({"set", "n.qvx", "beta", "--text", ""}).status, 0);
    EXPECT_EQ(run_qvx({"show", "n.qvx", "beta"}).out, "");
    ASSERT_EQ(run_qvx({"rm", "n.qvx", "beta"}).status, 0);
    EXPECT_EQ(run_qvx({"list", "n.qvx"}).out, "a<b & c>\nhome\n");
}

TEST_F(QvxWebs, RefusesAndLeavesTheFileAlone) {
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string err;
    } cases[] = {
        {{"new", "w.qvx"}, 1, "qvx: w.qvx: file exists\n"},
        {{"show", "w.qvx", "nobody"}, 1, "qvx: w.qvx: no such cell\n"},
        {{"rm", "w.qvx", "nobody"}, 1, "qvx: w.qvx: no such cell\n"},
        {{"rm", "w.qvx", "HOME"}, 1, "qvx: w.qvx: Can't Delete Home\n"},
        {{"set", "w.qvx", "1st", "--text", "x"}, 2, "qvx: w.qvx: Bad cell name supplied\n"},
        {{"set", "w.qvx", "a\nb", "--text", "x"}, 2, "qvx: w.qvx: Bad cell name supplied\n"},
        {{"set", "w.qvx", std::string(49, 'a')}, 2, "qvx: w.qvx: Bad cell name supplied\n"},
        {{"list", "nofile"}, 2, "qvx: nofile: UNABLE TO OPEN WEB FILE\n"},
        {{"convert", "w.qvx", "no/such/folder"},
         2,
         "qvx: no/such/folder: UNABLE TO OPEN WEB FILE\n"},
        {{"convert", "w.qvx", "/dev/full"}, 2, "qvx: /dev/full: UNABLE TO WRITE TO WEB FILE\n"},
        {{"set", "w.qvx", "alpha", "--file", "nofile"}, 2, "qvx: nofile: cannot be opened\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.arguments[0] + " " + c.err);
        const Outcome outcome = run_qvx(c.arguments);
        EXPECT_EQ(outcome.status, c.status);
        EXPECT_EQ(outcome.err, c.err);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(file_bytes("w.qvx"), k_small);
    }
    ASSERT_EQ(run_qvx({"new", "--force", "w.qvx"}).status, 0);
    EXPECT_EQ(run_qvx({"list", "w.qvx"}).out, "home\n");
}

TEST_F(QvxWebs, CarriesEveryByteButNul) {
    std::string text;
    for (int i = 0; i < 600; ++i) {
        const char ch = static_cast<char>(1 + i % 255);
        text += ch == '\n' ? "\r\n" : std::string(1, ch);
    }
    ASSERT_EQ(run_qvx({"set", "w.qvx", "alpha", "--file", "-"}, text).status, 0);
    EXPECT_EQ(run_qvx({"show", "w.qvx", "alpha"}).out, text);
    const std::string before = file_bytes("w.qvx");
    EXPECT_EQ(run_qvx({"set", "w.qvx", "alpha", "--file", "-"}, std::string("a\0b", 3)).status, 2);
    EXPECT_EQ(file_bytes("w.qvx"), before);
}

TEST_F(QvxWebs, StandardStreamsStandForFiles) {
    const Outcome set = run_qvx({"set", "-", "gamma", "--text", "new"}, k_small);
    ASSERT_EQ(set.status, 0);
    EXPECT_EQ(run_qvx({"show", "-", "gamma"}, set.out).out, "new");
    EXPECT_EQ(run_qvx({"convert", "-", "-"}, set.out).out, set.out);
    EXPECT_EQ(run_qvx({"list", "-"}, run_qvx({"new", "-"}).out).out, "home\n");
    EXPECT_EQ(run_qvx({"set", "-", "gamma", "--file", "-"}, k_small).status, 2);
    EXPECT_FALSE(fs::exists("-"));
}

TEST_F(QvxWebs, ConvertingTwiceChangesNothing) {
    write_file("rough.qvx", "stray <OPTS><rtype>inptr</rtype><citer>0</citer><oname>a&lt;b</oname>"
                            "<cell><cname>zeta</cname><text>a\nb &amp; &bogus; <i>c</i></text>"
                            "<cname>home</cname><val>1e3</val><cname>zeta</cname></eof>tail");
    ASSERT_EQ(run_qvx({"convert", "rough.qvx", "one.qvx"}).status, 0);
    for (const char *to : {"two.qvx", "one.qvx"}) {  // over itself, too
        const std::string once = file_bytes("one.qvx");
        ASSERT_EQ(run_qvx({"convert", "one.qvx", to}).status, 0);
        EXPECT_EQ(file_bytes(to), once);
        EXPECT_NE(once.find("<rtype>inptr</rtype>"), std::string::npos);
    }
}

TEST_F(QvxWebs, BadInputFileWritesNothing) {
    write_file("bad.qvx", "<cname>good</cname><cname>1bad</cname></eof>");
    write_file("out.qvx", "kept");
    const Outcome outcome = run_qvx({"convert", "bad.qvx", "out.qvx"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "qvx: bad.qvx: Bad Input File\n");
    EXPECT_EQ(file_bytes("out.qvx"), "kept");
}

TEST_F(QvxWebs, AFailedSaveLeavesTheFormerFile) {
    write_file("w.qvx~", "somebody's");
    const std::string long_text(40000, 'x');
    const Outcome failed = run_qvx({"set", "w.qvx", "big", "--file", "-"}, long_text, 20000);
    EXPECT_EQ(failed.status, 2);
    EXPECT_EQ(file_bytes("w.qvx"), k_small);
    EXPECT_EQ(file_bytes("w.qvx~"), "somebody's");
    ASSERT_EQ(run_qvx({"set", "w.qvx", "big", "--file", "-"}, long_text).status, 0);
    EXPECT_EQ(run_qvx({"convert", "w.qvx", "fresh.qvx"}, "", 20000).status, 2);
    EXPECT_EQ(file_bytes("fresh.qvx"), "(none)");
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 2);
}

TEST_F(QvxWebs, LongTextsAreWholeAndTooLongOnesAreRefused) {
    const std::string long_text(70000, 'y');
    ASSERT_EQ(run_qvx({"set", "w.qvx", "long", "--file", "-"}, long_text).status, 0);
    EXPECT_EQ(run_qvx({"show", "w.qvx", "long"}).out, long_text);
    const std::string before = file_bytes("w.qvx");
    for (const size_t size : {size_t{300000}, size_t{400000}}) {
        const Outcome refused =
            run_qvx({"set", "w.qvx", "more", "--file", "-"}, std::string(size, 'z'));
        EXPECT_EQ(refused.status, 3);
        EXPECT_NE(refused.err.find("OUT OF MEMORY\n"), std::string::npos);
        EXPECT_EQ(file_bytes("w.qvx"), before);
    }
}

// The longest text that is accepted, of line feeds, which grow on reading.
TEST_F(QvxWebs, WhatIsSavedCanBeReadAgain) {
    size_t fits = 170000;
    for (size_t fails = 190000; fails - fits > 1;) {
        const size_t size = (fits + fails) / 2;
        const std::vector<std::string> set = {"set", "w.qvx", "lines", "--file", "-"};
        const int status = run_qvx(set, std::string(size, '\n')).status;
        ASSERT_TRUE(status == 0 || status == 3);
        (status == 0 ? fits : fails) = size;
    }
    const Outcome shown = run_qvx({"show", "w.qvx", "lines"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.err, "qvx: w.qvx: short on memory: fewer than 100 blocks are left\n");
    EXPECT_EQ(run_qvx({"rm", "w.qvx", "lines"}).status, 0);
}

TEST_F(QvxWebs, HelpVersionAndUsage) {
    for (const char *command : {"new", "list", "show", "set", "rm", "convert", "report", "check"}) {
        SCOPED_TRACE(command);
        const Outcome help = run_qvx({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_NE(help.out.find(std::string("qvx ") + command), std::string::npos);
        EXPECT_EQ(run_qvx({command, "--version"}).out, run_qvx({"--version"}).out);
        const Outcome wrong = run_qvx({command, "--bogus"});
        EXPECT_EQ(wrong.status, 2);
        EXPECT_EQ(wrong.err.compare(0, 5, "qvx: "), 0);
    }
    const std::vector<std::string> misuses[] = {
        {},
        {"report", "w.qvx", "--type", "list"},
        {"report", "w.qvx", "--all", "--cell", "home"},
        {"set", "w.qvx", "a", "--text", "x", "--file", "y"}};
    for (const auto &arguments : misuses) {
        EXPECT_EQ(run_qvx(arguments).status, 2);
    }
}

}  // namespace
