// Webs made, changed and converted by qvx, and left alone when a command fails.
#include "tests/cli/run_qvx.h"

#include <cstring>

using namespace std::string_literals;

namespace {

const std::string k_small =
    web_of("see alpha", cell_of("alpha", "back home") + "<val>2.50</val><script>s</script>");

struct QvxWebs : QvxTest {
    QvxWebs() : QvxTest(k_small) {}
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
    EXPECT_EQ(run_qvx({"list", "-0", "n.qvx"}).out, "a<b & c>\0home\0"s);
    ASSERT_EQ(run_qvx({"set", "n.qvx", "b[z]", "--text", "[a,b]"}).status, 0);
    EXPECT_EQ(run_qvx({"show", "n.qvx", "b[z]"}).out, "[a,b]");
}

TEST_F(QvxWebs, ATerminalGetsNoControlBytes) {
    write_file("w.qvx", "<cname>a\x1b[2J\x7f\xc2\x9b\xc3\xa9</cname></eof>");
    EXPECT_EQ(run_qvx({"list", "w.qvx"}).out, "a\x1b[2J\x7f\xc2\x9b\xc3\xa9\nhome\n");
    EXPECT_EQ(qvx_on_terminal({"list", "w.qvx"}), "a\\x1b[2J\\x7f\\xc2\\x9b\xc3\xa9\r\nhome\r\n");
    EXPECT_EQ(qvx_on_terminal({"list", "-0", "w.qvx"}), "a\x1b[2J\x7f\xc2\x9b\xc3\xa9\0home\0"s);
}

TEST_F(QvxWebs, ShowsTheLineEndsThatAreAskedFor) {
    write_file("w.qvx", "<cname>home</cname><text>\rone\ntwo\r\r\n\n</text></eof>");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "home"}).out, "\rone\ntwo\r\n\n");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "home", "--newline", "lf"}).out, "\rone\ntwo\r\n\n");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "home", "--newline", "crlf"}).out,
              "\rone\r\ntwo\r\r\n\r\n");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "home", "--newline", "cr"}).out, "\rone\rtwo\r\r\r");
}

// The file below is not as the program would write it.
TEST_F(QvxWebs, SettingWhatIsThereWritesNothing) {
    write_file("w.qvx", "<cname>a</cname><text>one\r\ntwo\n</text></eof>");
    const std::string before = file_bytes("w.qvx");
    for (const std::vector<std::string> &last :
         {std::vector<std::string>{}, {"--text", "one\ntwo\n"}, {"--text", "one\r\ntwo\r\n"}}) {
        std::vector<std::string> arguments = {"set", "w.qvx", "A"};
        arguments.insert(arguments.end(), last.begin(), last.end());
        EXPECT_EQ(run_qvx(arguments).status, 0);
        EXPECT_EQ(file_bytes("w.qvx"), before);
        arguments[1] = "-";
        EXPECT_NE(run_qvx(arguments, before).out.find("<cname>a</cname>"), std::string::npos);
    }
    for (const char *text : {"one\ntwo", "one\ntwo\n\n", "one two\n", "One\ntwo\n", ""}) {
        write_file("w.qvx", before);
        EXPECT_EQ(run_qvx({"set", "w.qvx", "a", "--text", text}).status, 0);
        EXPECT_EQ(run_qvx({"show", "w.qvx", "a"}).out, text);
    }
}

// What cannot be read whole is looked at as far as it goes, and only written when somebody insists.
TEST_F(QvxWebs, AWebThatWasNotReadWholeIsNotWritten) {
    const std::string a = "<cname>a</cname><text>1</text>";
    const struct {
        std::string file;
        int list_status;
        std::string message;
    } rows[] = {
        {a, 0, "qvx: w.qvx: The end of this file is missing\n"},
        {a + "\0<cname>b</cname></eof>"s, 0, "qvx: w.qvx: The end of this file is missing\n"},
        {a + "<cname>1</cname></eof>", 2, "qvx: w.qvx: Bad Input File\n"},
        {a + "<cname>b</cname><text>2</eof>", 0, ""},
        {a + "<cname>b</cname><text>2</script></eof>", 0, ""},
        {"stray" + a + "</eof>", 0, ""},
        {"no web", 0, ""},
    };
    const std::string refusal =
        "qvx: w.qvx: cannot be read whole, and writing would lose the rest: "
        "see qvx check w.qvx, or use --force\n";
    const std::string warning = "qvx: w.qvx: cannot be read whole: see qvx check w.qvx\n";
    for (const auto &row : rows) {
        SCOPED_TRACE(row.file);
        write_file("w.qvx", row.file);
        const Outcome list = run_qvx({"list", "w.qvx"});
        EXPECT_EQ(list.status, row.list_status);
        EXPECT_EQ(list.err, row.message + (row.list_status == 0 ? warning : ""));
        for (const std::vector<std::string> &arguments :
             {std::vector<std::string>{"set", "w.qvx", "home", "--text", "new"},
              {"rm", "w.qvx", "a"},
              {"convert", "w.qvx", "w.qvx"},
              {"convert", "w.qvx", "other.qvx"}}) {
            const Outcome refused = run_qvx(arguments);
            EXPECT_EQ(refused.status, 1);
            EXPECT_EQ(refused.err, row.message + refusal);
            EXPECT_EQ(file_bytes("w.qvx"), row.file);
            EXPECT_EQ(file_bytes("other.qvx"), "(none)");
        }
        EXPECT_EQ(run_qvx({"set", "--force", "w.qvx", "home", "--text", "new"}).status, 0);
        EXPECT_EQ(run_qvx({"show", "w.qvx", "home"}).out, "new");
        const bool keeps_a = row.list_status == 0 && row.file != "no web";
        EXPECT_EQ(run_qvx({"rm", "--force", "w.qvx", "a"}).status, keeps_a ? 0 : 1);
        EXPECT_EQ(run_qvx({"check", "w.qvx"}).status, 0);
    }
    EXPECT_EQ(run_qvx({"set", "-", "a", "--text", "x"}, a).status, 1);
    EXPECT_EQ(run_qvx({"convert", "--force", "-", "-"}, "x").status, 0);
}

TEST_F(QvxWebs, RefusesAndLeavesTheFileAlone) {
    const std::string w = "qvx: w.qvx: ", bad_name = ": Bad cell name supplied\n";
    const std::string cannot_open = "UNABLE TO OPEN WEB FILE: ",
                      cannot_write = "UNABLE TO WRITE TO WEB FILE: ";
    const std::string none = "No such file or directory\n";
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string err;
    } cases[] = {
        {{"new", "w.qvx"}, 1, "qvx: w.qvx: file exists\n"},
        {{"show", "w.qvx", "nobody"}, 1, "qvx: w.qvx: nobody: no such cell\n"},
        {{"rm", "w.qvx", "nobody"}, 1, "qvx: w.qvx: nobody: no such cell\n"},
        {{"rm", "w.qvx", "HOME"}, 1, "qvx: w.qvx: home: Can't Delete Home\n"},
        {{"set", "w.qvx", "1st", "--text", "x"}, 1, w + "1st" + bad_name},
        {{"set", "w.qvx", "a\nb", "--text", "x"}, 1, w + "a\\x0ab" + bad_name},
        {{"set", "w.qvx", "a\rb", "--text", "x"}, 1, w + "a\\x0db" + bad_name},
        {{"set", "w.qvx", std::string(49, 'a')}, 1, w + std::string(49, 'a') + bad_name},
        {{"set", "w.qvx", "[z]"}, 1, w + "[z]" + bad_name},
        {{"set", "w.qvx", ""}, 1, w + bad_name},
        {{"show", "w.qvx", ""}, 1, "qvx: w.qvx: : no such cell\n"},
        {{"list", "no"}, 2, "qvx: no: " + cannot_open + none},
        {{"convert", "w.qvx", ""}, 2, "qvx: " + cannot_open + none},
        {{"list", ""}, 2, "qvx: " + cannot_open + none},
        {{"list", "."}, 2, "qvx: .: UNABLE TO READ FROM WEB FILE: Is a directory\n"},
        {{"convert", "w.qvx", "no/where"}, 2, "qvx: no/where: " + cannot_open + none},
        {{"convert", "w.qvx", "/dev/full"},
         2,
         "qvx: /dev/full: " + cannot_write + "No space left on device\n"},
        {{"set", "w.qvx", "a", "--file", "no"}, 2, "qvx: no: cannot be opened: " + none},
        {{"set", "w.qvx", "a", "--file", ""}, 2, "qvx: cannot be opened: " + none},
        {{"set", "w.qvx", "a", "--file", "."}, 2, "qvx: .: cannot be read: Is a directory\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.arguments[0] + " " + c.err);
        const Outcome outcome = run_qvx(c.arguments);
        EXPECT_EQ(outcome.status, c.status);
        EXPECT_EQ(outcome.err, c.err);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(file_bytes("w.qvx"), k_small);
    }
    for (const char *name : {"w.qvx", "fresh.qvx"}) {
        ASSERT_EQ(run_qvx({"new", "--force", name}).status, 0);
        EXPECT_EQ(run_qvx({"list", name}).out, "home\n");
    }
}

TEST_F(QvxWebs, StandardStreamsStandForFiles) {
    const Outcome set = run_qvx({"set", "-", "gamma", "--text", "new"}, k_small);
    ASSERT_EQ(set.status, 0);
    EXPECT_EQ(run_qvx({"show", "-", "gamma"}, set.out).out, "new");
    EXPECT_EQ(run_qvx({"convert", "-", "-"}, set.out).out, set.out);
    EXPECT_EQ(run_qvx({"list", "-"}, run_qvx({"new", "-"}).out).out, "home\n");
    EXPECT_EQ(run_qvx({"set", "-", "gamma", "--file", "-"}, k_small).status, 2);
    EXPECT_EQ(run_qvx({"set", "w.qvx", "alpha", "--file", "-"}, "1").status, 0);
    EXPECT_EQ(run_qvx({"set", "w.qvx", "alpha", "--file", "-"}, "2\0"s).err,
              "qvx: -: a text cannot hold NUL characters\n");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "alpha"}).out, "1");
    write_file("w.qvx", k_small);
    EXPECT_FALSE(fs::exists("-"));
    for (const char *to : {"n.qvx", "w.qvx"}) {  // over itself, too
        EXPECT_EQ(run_qvx({"convert", "w.qvx", to}).status, 0);
        EXPECT_EQ(file_bytes(to), run_qvx({"convert", "-", "-"}, k_small).out);
    }
}

// A line feed grows on reading, and a new cell takes two blocks beside its text's.
TEST_F(QvxWebs, TextsMayBeAsLongAsCanBeReadAgain) {
    const std::string said = run_qvx({"check", "w.qvx"}).out;
    const size_t left = std::stoul(said.substr(said.rfind("used, ") + strlen("used, ")));
    const std::string longest = "z" + std::string(18 * (left - 2 - 4) - 1, '\n');
    for (const std::string &more : {longest + "\n", std::string(400000, 'z')}) {
        const Outcome refused = run_qvx({"set", "w.qvx", "lines", "--file", "-"}, more);
        EXPECT_EQ(refused.status, 3);
        EXPECT_NE(refused.err.find("OUT OF MEMORY\n"), std::string::npos);
        EXPECT_EQ(file_bytes("w.qvx"), k_small);
    }
    EXPECT_EQ(run_qvx({"set", "w.qvx", "lines", "--file", "-"}, longest).status, 0);
    const Outcome shown = run_qvx({"show", "w.qvx", "lines"});
    EXPECT_EQ(shown.out, longest);
    EXPECT_EQ(shown.err, "qvx: w.qvx: short on memory: fewer than 100 blocks are left\n");
    EXPECT_EQ(run_qvx({"rm", "w.qvx", "lines"}).status, 0);
    const std::string lines = times(150000, "\r\n");  // which do not grow
    EXPECT_EQ(run_qvx({"set", "w.qvx", "lines", "--file", "-"}, lines).status, 0);
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
        {"report", "w.qvx", "--all", "--select", "home"},
        {"report", "w.qvx", "--select", "home", "--cell", "home"},
        {"set", "w.qvx", "a", "--text", "x", "--file", "y"}};
    for (const auto &arguments : misuses) {
        EXPECT_EQ(run_qvx(arguments).status, 2);
    }
}

}  // namespace
