// Cells read and written by qvx as a person does: several at once, in an editor, piece by piece.
#include "tests/cli/run_qvx.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <sys/stat.h>

using namespace std::string_literals;

namespace {

const std::string k_web =
    web_of("see inbox", cell_of("inbox", "milk") + "<val>2.50</val><script>s\n</script>" +
                            cell_of("to do", "one\ntwo\n"));

struct QvxCells : QvxTest {
    QvxCells() : QvxTest(k_web) {}
};

std::string shown(const std::string &cell) {
    return run_qvx({"show", "w.qvx", cell}).out;
}

struct Row {
    std::vector<std::string> arguments;
    int status;
    std::string out;
    std::string err;
};

void expect_rows(const std::vector<Row> &rows) {
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const Outcome outcome = run_qvx(row.arguments);
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err, row.err);
    }
}

TEST_F(QvxCells, ReadsSeveralCellsAndWebs) {
    const std::string none = "qvx: w.qvx: nix: no such cell\n";
    const std::string missing = "qvx: no: UNABLE TO OPEN WEB FILE: No such file or directory\n";
    const std::string listed = "w.qvx:home\nw.qvx:inbox\nw.qvx:to do\n";
    write_file("{}", web_of("", cell_of("a\"\xc2\x9b\x7f")));
    expect_rows({
        {{"cat", "w.qvx", "inbox", "To_Do", "inbox"}, 0, "milk\none\ntwo\nmilk", ""},
        {{"cat", "w.qvx", "inbox", "nix", "home"}, 1, "milk\nsee inbox", none},
        {{"cat", "w.qvx", "nix"}, 1, "", "qvx: w.qvx: nix: no such cell\n"},
        {{"show", "w.qvx", "INBOX", "nix", "to do", "nix"},
         1,
         "==> inbox <==\nmilk\n\n==> to do <==\none\ntwo\n",
         none + none},
        {{"show", "w.qvx", "to do", "--json", "--newline", "crlf"},
         0,
         R"({"file":"w.qvx","cell":"to do","text":"one\r\ntwo\r\n","script":"","value":""})"
         "\n",
         ""},
        {{"show", "w.qvx", "--json", "inbox"},
         0,
         R"({"file":"w.qvx","cell":"inbox","text":"milk","script":"s\n","value":"2.50"})"
         "\n",
         ""},
        {{"list", "w.qvx", "no", "w.qvx"}, 2, listed + listed, missing},
        {{"list", "-0", "w.qvx", "{}"},
         0,
         "w.qvx:home\0w.qvx:inbox\0w.qvx:to do\0{}:a\"\xc2\x9b\x7f\0{}:home\0"s,
         ""},
        {{"list", "{}", "--json"},
         0,
         R"({"file":"{}","cell":"a\"\u009b\u007f","bytes":0,"lines":0})"
         "\n"
         R"({"file":"{}","cell":"home","bytes":0,"lines":0})"
         "\n",
         ""},
    });
}

TEST_F(QvxCells, ATerminalGetsTextsWithoutControlBytes) {
    write_file("w.qvx", "<rfmt>\\T</rfmt>" + web_of("\x1b[2J\tx\r\n\x07", cell_of("b\x1b")));
    for (const char *command : {"show", "cat", "report"}) {
        std::vector<std::string> arguments = {command, "w.qvx"};
        if (command != "report"s) {
            arguments.push_back("home");
        }
        EXPECT_NE(run_qvx(arguments).out.find("\x1b[2J\tx"), std::string::npos);
        const std::string out = qvx_on_terminal(arguments);
        EXPECT_NE(out.find("\\x1b[2J\tx\r"), std::string::npos) << command << out;
        EXPECT_NE(out.find("\\x07"), std::string::npos) << command;
    }
    setenv("NO_COLOR", "1", 1);
    EXPECT_EQ(qvx_on_terminal({"show", "w.qvx", "b\x1b", "b\x1b"}),
              "==> b\\x1b <==\r\n\r\n==> b\\x1b <==\r\n");
    unsetenv("NO_COLOR");
    EXPECT_NE(qvx_on_terminal({"show", "w.qvx", "home", "home"}).find("\x1b[36m"),
              std::string::npos);
}

TEST_F(QvxCells, ReportsOnSeveralWebsAndAsJson) {
    write_file("v.qvx", "<rtype>inptr</rtype>" + web_of("b\\n", cell_of("b\\n", "home, Home")));
    expect_rows({
        {{"report", "v.qvx", "w.qvx", "--cell", "home", "--format", "\\N;"},
         0,
         "\nhome\n    <b\nhome;",
         ""},
        {{"report", "v.qvx", "--json"},
         0,
         R"({"file":"v.qvx","cell":"b\\n","in":[]})"
         "\n"
         R"({"file":"v.qvx","cell":"home","in":["b\\n"]})"
         "\n",
         ""},
        {{"report", "w.qvx", "--json", "--type", "outptr", "--select", "to_do home"},
         0,
         R"({"file":"w.qvx","cell":"to do","out":[]})"
         "\n"
         R"({"file":"w.qvx","cell":"home","out":["inbox"]})"
         "\n",
         ""},
        {{"report", "w.qvx", "--json", "--format", "\\T\\n", "--cell", "to do"},
         0,
         R"({"file":"w.qvx","report":"one\ntwo\n\n"})"
         "\n",
         ""},
        {{"report", "w.qvx", "v.qvx", "--output", "o"},
         2,
         "",
         "qvx: --output takes the report on one FILE\n"},
    });
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--json", "--output", "o"}).status, 2);
    EXPECT_EQ(file_bytes("o"), "(none)");
}

TEST_F(QvxCells, AppendsBehindALineEnd) {
    const struct {
        std::vector<std::string> last;
        std::string input;
        std::string text;
    } rows[] = {
        {{"eggs"}, "", "milk\neggs"},
        {{"--text", "-"}, "", "milk\neggs\n-"},
        {{"-"}, "a\r\nb\n", "milk\neggs\n-\na\nb\n"},
        {{"--file", "-"}, "", "milk\neggs\n-\na\nb\n"},
        {{"--file", "f"}, "", "milk\neggs\n-\na\nb\nfrom f"},
        {{""}, "", "milk\neggs\n-\na\nb\nfrom f"},
    };
    write_file("f", "from f");
    for (const auto &row : rows) {
        std::vector<std::string> arguments = {"append", "w.qvx", "INBOX"};
        arguments.insert(arguments.end(), row.last.begin(), row.last.end());
        EXPECT_EQ(run_qvx(arguments, row.input).status, 0);
        EXPECT_EQ(shown("inbox"), row.text);
    }
    EXPECT_EQ(run_qvx({"append", "w.qvx", "Neue Ideen", "[1]"}).status, 0);
    EXPECT_EQ(shown("neue_ideen"), "[1]");
    EXPECT_NE(run_qvx({"append", "-", "a", "x"}, k_web).out.find("<text>x</text>"),
              std::string::npos);

    const std::string before = file_bytes("w.qvx");
    expect_rows({
        {{"append", "w.qvx", "a"},
         2,
         "",
         "qvx: append what? TEXT, - for standard input, or --file PATH\n"},
        {{"append", "w.qvx", "9", "x"}, 1, "", "qvx: w.qvx: 9: Bad cell name supplied\n"},
        {{"append", "-", "a", "-"},
         2,
         "",
         "qvx: -: the web and the text cannot both be read here\n"},
    });
    EXPECT_EQ(run_qvx({"append", "w.qvx", "a", "-"}, std::string(380000, 'x')).status, 3);
    EXPECT_EQ(file_bytes("w.qvx"), before);
}

// A dry run says what the command itself then does.
TEST_F(QvxCells, DryRunsWriteNothing) {
    const std::string two_new =
        "+inbox\n+1: milk\n+script 1: s\n+value 1: 2.50\n+to do\n+1: one\n+2: two\n";
    const std::string two_gone =
        "-inbox\n-1: milk\n-script 1: s\n-value 1: 2.50\n-to do\n-1: one\n-2: two\n";
    const std::string all_gone = "home\n-1: see inbox\n" + two_gone;
    write_file("o.qvx", "<rtype>trail</rtype>" + web_of("old", cell_of("gone")));
    expect_rows({
        {{"new", "-n", "n.qvx"}, 0, "+home\n", ""},
        {{"new", "-n", "w.qvx"}, 1, "", "qvx: w.qvx: file exists\n"},
        {{"new", "--force", "-n", "w.qvx"}, 0, all_gone, ""},
        {{"set", "w.qvx", "inbox", "--text", "tea", "-n"}, 0, "inbox\n-1: milk\n+1: tea\n", ""},
        {{"set", "w.qvx", "inbox", "--text", "milk", "-n"}, 0, "", ""},
        {{"set", "w.qvx", "new", "-n"}, 0, "+new\n", ""},
        {{"append", "-n", "w.qvx", "to do", "x"}, 0, "to do\n+3: x\n", ""},
        {{"rm", "-n", "w.qvx", "inbox", "To_Do", "INBOX"}, 0, two_gone, ""},
        {{"script", "-n", "w.qvx", "inbox", "--text", "t"},
         0,
         "inbox\n-script 1: s\n+script 1: t\n",
         ""},
        {{"value", "-n", "w.qvx", "inbox", "-3"}, 0, "inbox\n-value 1: 2.50\n+value 1: -3\n", ""},
        {{"option", "-n", "w.qvx", "RType", "INPTR"}, 0, "option rtype: fmt -> inptr\n", ""},
        {{"convert", "-n", "w.qvx", "o.qvx"},
         0,
         "-gone\nhome\n-1: old\n+1: see inbox\n" + two_new + "option rtype: trail -> fmt\n",
         ""},
        {{"convert", "-n", "w.qvx", "n.qvx"}, 0, "+home\n+1: see inbox\n" + two_new, ""},
        {{"rm", "-n", "w.qvx", "inbox", "nix"}, 1, "", "qvx: w.qvx: nix: no such cell\n"},
        {{"rm", "w.qvx", "inbox", "HOME"}, 1, "", "qvx: w.qvx: home: Can't Delete Home\n"},
        {{"rm", "w.qvx", "inbox", "nix"}, 1, "", "qvx: w.qvx: nix: no such cell\n"},
    });
    EXPECT_EQ(file_bytes("w.qvx"), k_web);
    EXPECT_EQ(file_bytes("n.qvx"), "(none)");
    EXPECT_EQ(run_qvx({"rm", "w.qvx", "inbox", "To_Do", "INBOX"}).status, 0);
    EXPECT_EQ(run_qvx({"list", "w.qvx"}).out, "home\n");
}

TEST_F(QvxCells, ScriptsAndValues) {
    expect_rows({
        {{"value", "w.qvx", "inbox"}, 0, "2.50\n", ""},
        {{"value", "w.qvx", "Inbox", "--json"},
         0,
         R"({"file":"w.qvx","cell":"inbox","value":"2.50"})"
         "\n",
         ""},
        {{"value", "w.qvx", "home"}, 1, "", ""},
        {{"value", "w.qvx", "nix"}, 1, "", "qvx: w.qvx: nix: no such cell\n"},
        {{"value", "w.qvx", "nix", "1"}, 1, "", "qvx: w.qvx: nix: no such cell\n"},
        {{"value", "w.qvx", "home", "1\n2"}, 1, "", "qvx: w.qvx: home: a value is one line\n"},
        {{"value", "w.qvx", "home", "-07.0"}, 0, "", ""},
        {{"value", "w.qvx", "home"}, 0, "-07.0\n", ""},
        {{"value", "w.qvx", "inbox", ""}, 0, "", ""},
        {{"value", "w.qvx", "inbox"}, 1, "", ""},
        {{"script", "w.qvx", "inbox"}, 0, "s\n", ""},
        {{"script", "w.qvx", "home"}, 1, "", ""},
        {{"script", "w.qvx", "home", "--text", "a\nb"}, 0, "", ""},
        {{"script", "w.qvx", "home", "--newline", "crlf"}, 0, "a\r\nb", ""},
        {{"script", "w.qvx", "inbox", "--text", ""}, 0, "", ""},
        {{"cat", "w.qvx", "home", "inbox"}, 0, "see inbox\nmilk", ""},
    });
    EXPECT_EQ(run_qvx({"script", "w.qvx", "home", "--file", "-"}, "x\n").status, 0);
    EXPECT_EQ(run_qvx({"script", "w.qvx", "home", "--json"}).out,
              "{\"file\":\"w.qvx\",\"cell\":\"home\",\"script\":\"x\\n\"}\n");
    EXPECT_EQ(run_qvx({"script", "w.qvx", "inbox"}).status, 1);
}

TEST_F(QvxCells, OptionsComeBackAsTheyWereSet) {
    const struct {
        const char *name;
        const char *value;
    } good[] = {
        {"rtype", "inptr"},  {"rfmt", " [\\N <&>]\\n "}, {"rall", "no"},    {"citer", "32767"},
        {"ndec", "8"},       {"xmin", "-12.5"},          {"ymax", "1e+30"}, {"nfmt", "exponent"},
        {"xintrvls", "255"}, {"starg", "\xc3\xbc\xff"},  {"srpl", ""},      {"iname", "-"}};
    for (const auto &[name, value] : good) {
        SCOPED_TRACE(name);
        const Outcome set = run_qvx({"option", "w.qvx", name, value});
        EXPECT_EQ(set.status, 0) << set.err;
        const std::string kept = run_qvx({"option", "w.qvx", name}).out;
        EXPECT_EQ(kept, value + "\n"s);
    }
    const std::string all = run_qvx({"option", "w.qvx"}).out;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 27);
    EXPECT_NE(all.find("\nrtype inptr\nrfmt  [\\N <&>]\\n \nrall no\n"), std::string::npos) << all;
    EXPECT_EQ(run_qvx({"option", "w.qvx", "--json", "RALL"}).out,
              "{\"file\":\"w.qvx\",\"option\":\"rall\",\"value\":\"no\"}\n");
    EXPECT_EQ(run_qvx({"check", "w.qvx"}).status, 0);
    EXPECT_EQ(shown("to do"), "one\ntwo\n");
}

TEST_F(QvxCells, OptionsAreRefusedRatherThanClipped) {
    const std::string w = "qvx: w.qvx: ";
    expect_rows({
        {{"option", "w.qvx", "rtype", "list"},
         1,
         "",
         w + "rtype: \"list\" is none of: fmt, inptr, outptr, trail\n"},
        {{"option", "w.qvx", "pltng", "off"}, 1, "", w + "pltng: \"off\" is none of: on\n"},
        {{"option", "w.qvx", "odest", "print"},
         1,
         "",
         w + "odest: \"print\" is none of: screen, file\n"},
        {{"option", "w.qvx", "ndec", "9"},
         1,
         "",
         w + "ndec: \"9\" is no whole number from 0 to 8\n"},
        {{"option", "w.qvx", "citer", "1x"},
         1,
         "",
         w + "citer: \"1x\" is no whole number from 1 to 32767\n"},
        {{"option", "w.qvx", "xintrvls", "256"},
         1,
         "",
         w + "xintrvls: \"256\" is no whole number from 1 to 255\n"},
        {{"option", "w.qvx", "xmax", "1e999"}, 1, "", w + "xmax: \"1e999\" is no number\n"},
        {{"option", "w.qvx", "xmax", "5.125"},
         1,
         "",
         w + "xmax: xmax 5.125 would be kept as 5.1: see nfmt and ndec\n"},
        {{"option", "w.qvx", "starg", std::string(49, 'x')},
         1,
         "",
         w + "starg: the value has 49 characters, at most 48 are kept\n"},
        {{"option", "w.qvx", "rfmt", "a\nb"}, 1, "", w + "rfmt: a value is one line\n"},
    });
    for (const std::vector<std::string> &last :
         {std::vector<std::string>{"bogus"}, {"bogus", "1"}, {"", "1"}}) {
        std::vector<std::string> arguments = {"option", "w.qvx"};
        arguments.insert(arguments.end(), last.begin(), last.end());
        const Outcome outcome = run_qvx(arguments);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.err.find(": no such option; there are isrc, iname,"), std::string::npos);
    }
    EXPECT_EQ(file_bytes("w.qvx"), k_web);
    ASSERT_EQ(run_qvx({"option", "w.qvx", "xmax", "12"}).status, 0);
    EXPECT_EQ(run_qvx({"option", "w.qvx", "ndec", "1"}).err,
              w + "ndec: xmax 12 would be kept as 1e+01: see nfmt and ndec\n");
    EXPECT_EQ(run_qvx({"option", "w.qvx", "ndec"}).out, "2\n");
}

// ---- In an editor -------------------------------------------------------------------------------

// A script that is run on the file "$1", and the folder for temporary files.
struct QvxEditor : QvxCells {
    QvxEditor() {
        fs::create_directory("tmp");
        setenv("TMPDIR", "tmp", 1);
        unsetenv("VISUAL");
    }
    ~QvxEditor() override { unsetenv("TMPDIR"); }

    static Outcome edit(const std::string &cell, const std::string &script,
                        const std::vector<std::string> &more = {}) {
        write_file("my editor", "#!/bin/sh\n" + script + "\n");
        chmod("my editor", 0700);
        setenv("EDITOR", "'./my editor' -w", 1);
        std::vector<std::string> arguments = {"edit", "w.qvx", cell};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run_qvx(arguments);
    }

    // The one text that was kept, as "PATH: TEXT"; "" for none.
    static std::string kept() {
        std::string all;
        for (const fs::directory_entry &entry : fs::directory_iterator("tmp")) {
            all += entry.path().string() + ": " + file_bytes(entry.path());
        }
        return all;
    }
};

TEST_F(QvxEditor, WritesWhatTheEditorLeaves) {
    const struct {
        const char *cell;
        const char *script;
        const char *text;
    } rows[] = {
        {"inbox", "echo eggs >> $2", "milk\neggs"},
        {"to do", "sed -i 2d $2", "one\n"},
        {"To_Do", "printf 'a\\r\\nb' > $2", "a\nb"},
        {"new one", "echo first > $2", "first"},
        {"new one", ": > $2", ""},
        {"inbox", "test \"$1\" = -w && stat -c %a $2 > $2.n && cat $2.n > $2 && rm $2.n", "600"},
        {"inbox", "echo $2 > $2", "tmp/qvx-"},
    };
    for (const auto &row : rows) {
        const Outcome outcome = edit(row.cell, row.script);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(shown(row.cell).substr(0, strlen(row.text)), row.text) << row.script;
        EXPECT_EQ(kept(), "");
    }
    EXPECT_TRUE(shown("inbox").ends_with(".txt"));
    EXPECT_EQ(run_qvx({"script", "w.qvx", "inbox"}).out, "s\n");
    setenv("VISUAL", "sed -i s/^/visual:/", 1);
    EXPECT_EQ(edit("to do", "false").status, 0);
    EXPECT_EQ(shown("to do"), "visual:a\nvisual:b");
}

// The file is not as the program would write it.
TEST_F(QvxEditor, NothingChangedNothingWritten) {
    for (const char *script : {":", "touch $2", "sed -i '' $2", "sed -i 's/$/\\r/' $2"}) {
        for (const char *cell : {"inbox", "to do", "new one"}) {
            const Outcome outcome = edit(cell, script);
            EXPECT_EQ(outcome.status, 0);
            EXPECT_EQ(outcome.err, "qvx: w.qvx: "s + cell + ": nothing changed\n") << script;
            EXPECT_EQ(file_bytes("w.qvx"), k_web);
            EXPECT_EQ(kept(), "");
        }
    }
}

TEST_F(QvxEditor, KeepsATextThatCannotBeStored) {
    const std::string qvx = QVX_PATH, w = "qvx: w.qvx: inbox: ";
    const std::string changed = w + "changed meanwhile, nothing was written\n";
    const struct {
        std::string script;
        int status;
        std::string said;
    } rows[] = {
        {"echo mine > $2; exit 7", 1,
         w + "the editor failed (status 7), nothing was written: the edited text is kept in "},
        {"echo mine > $2; kill -9 $$", 1, "(status 137)"},
        {"echo mine > $2; " + qvx + " append w.qvx inbox theirs", 1, changed},
        {"echo mine > $2; " + qvx + " rm w.qvx inbox", 1, changed},
        {"echo mine > $2; rm w.qvx", 2, "qvx: w.qvx: UNABLE TO OPEN WEB FILE"},
        {"echo mine > $2; printf x > w.qvx", 1, "writing would lose the rest"},
        {"yes mine | head -c 500000 > $2", 3, "OUT OF MEMORY"},
        {"printf 'mine\\n\\0' > $2", 1, ": a text cannot hold NUL characters\n"},
    };
    for (const auto &row : rows) {
        write_file("w.qvx", k_web);
        const Outcome outcome = edit("inbox", row.script);
        EXPECT_EQ(outcome.status, row.status) << row.script;
        EXPECT_NE(outcome.err.find(row.said), std::string::npos) << outcome.err;
        const std::string file = kept();
        EXPECT_NE(file.find(": mine\n"), std::string::npos) << row.script;
        EXPECT_NE(outcome.err.find(file.substr(0, file.find(": "))), std::string::npos)
            << outcome.err;
        EXPECT_EQ(file_bytes("w.qvx").find("mine"), std::string::npos);
        fs::remove_all("tmp");
        fs::create_directory("tmp");
    }
    write_file("w.qvx", k_web);
    EXPECT_EQ(edit("new", "echo mine > $2; " + qvx + " set w.qvx new --text theirs").status, 1);
    EXPECT_EQ(shown("new"), "theirs");
    EXPECT_NE(kept(), "");
    EXPECT_EQ(edit("inbox", "echo mine > $2; " + qvx + " set w.qvx other --text theirs").status, 0);
    EXPECT_EQ(run_qvx({"cat", "w.qvx", "inbox", "other"}).out, "mine\ntheirs");
}

TEST_F(QvxEditor, LeavesNothingBehindWhereNothingWasWritten) {
    const std::string w = "qvx: w.qvx: ";
    const Outcome failed = edit("inbox", "exit 1");
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.err, w + "inbox: the editor failed (status 1), nothing was written\n");
    const Outcome removed = edit("inbox", "rm $2");
    EXPECT_EQ(removed.status, 1);
    EXPECT_NE(
        removed.err.find(w + "inbox: the editor left no text to store, nothing was written\n"),
        std::string::npos);
    EXPECT_EQ(edit("9", "touch ran").err, w + "9: Bad cell name supplied\n");
    setenv("EDITOR", "no_such_editor", 1);
    EXPECT_EQ(run_qvx({"edit", "w.qvx", "inbox"}).status, 1);
    EXPECT_EQ(run_qvx({"edit", "-", "inbox"}, k_web).status, 2);
    EXPECT_EQ(run_qvx({"edit", "no.qvx", "inbox"}).status, 2);
    EXPECT_EQ(kept(), "");
    EXPECT_EQ(file_bytes("w.qvx"), k_web);

    write_file("w.qvx", "<cname>a</cname>");
    EXPECT_EQ(edit("a", "touch ran; echo x > $2").status, 1);
    EXPECT_FALSE(fs::exists("ran"));
    EXPECT_EQ(edit("a", "echo x > $2", {"--force"}).status, 0);
    EXPECT_EQ(shown("a"), "x");
    const Outcome dry = edit("a", "echo y > $2", {"-n"});
    EXPECT_EQ(dry.out, "a\n-1: x\n+1: y\n");
    EXPECT_NE(kept().find(": y\n"), std::string::npos);
    EXPECT_EQ(shown("a"), "x");
}

}  // namespace
