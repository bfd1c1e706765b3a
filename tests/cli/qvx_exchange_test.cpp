// Webs brought out as Markdown or as a page, and in again from folders, files and lists.
#include "tests/cli/run_qvx.h"

#include <algorithm>
#include <random>

using namespace std::string_literals;

namespace {

struct QvxExchange : QvxTest {
    QvxExchange() : QvxTest(web_of("see alpha", cell_of("alpha", "back home"))) {}
};

std::string saved(const std::string &web) {
    return run_qvx({"convert", "--force", "-", "-"}, web).out;
}

std::vector<std::string> files_in(const fs::path &folder) {
    std::vector<std::string> names;
    for (const auto &entry : fs::recursive_directory_iterator(folder)) {
        names.push_back(entry.path().lexically_relative(folder).generic_string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string escaped(const std::string &text) {
    std::string all;
    for (const char ch : text) {
        all += ch == '<' ? "&lt;"s : ch == '&' ? "&amp;"s : std::string(1, ch);
    }
    return all;
}

// ---- Out and in again ---------------------------------------------------------------------------

// Pieces that Markdown, file systems and the reader take for something.
const std::vector<std::string> k_pieces = {"a",
                                           "b1",
                                           "beans",
                                           "Aunt_May",
                                           "aunt may",
                                           "home",
                                           "con",
                                           "NUL",
                                           "index",
                                           "README",
                                           "x_",
                                           "_x",
                                           " ",
                                           "  ",
                                           "\t",
                                           "\n",
                                           "\n\n",
                                           "\r",
                                           "\r\n",
                                           "\\",
                                           "\\\\",
                                           "`",
                                           "```",
                                           "~~~",
                                           "*",
                                           "_",
                                           "__",
                                           "{",
                                           "[",
                                           "]",
                                           "(",
                                           ")",
                                           "[[",
                                           "]]",
                                           "](beans.md)",
                                           "[beans](beans.md)",
                                           "[[beans|x]]",
                                           "!",
                                           "#",
                                           "# ",
                                           "-",
                                           "---",
                                           "+",
                                           ".",
                                           "1. ",
                                           "2)",
                                           ">",
                                           "<",
                                           "<b>",
                                           "&",
                                           "&amp;",
                                           "&#32;",
                                           ";",
                                           "|",
                                           "=",
                                           "$",
                                           ":",
                                           "\"",
                                           "'",
                                           "/",
                                           "..",
                                           "../",
                                           "%20",
                                           "qvx-name: \"z\"",
                                           "\xC3\xA4",
                                           "\xC3\x84",
                                           "\xDF",
                                           "\xFF",
                                           "\xFE",
                                           "\xC2\x9B",
                                           "\xEF\xBB\xBF",
                                           "\xE2\x80\x9C",
                                           "e\xCC\x81",
                                           "\x1B",
                                           "\x7F",
                                           "\1"};

struct Pieces {
    std::mt19937 random;

    uint32_t below(uint32_t count) { return static_cast<uint32_t>(random() % count); }
    std::string some(uint32_t most) {
        std::string text;
        for (uint32_t count = below(most + 1); count > 0; --count) {
            text += k_pieces[below(static_cast<uint32_t>(k_pieces.size()))];
        }
        return text;
    }
};

std::string random_web(uint32_t seed) {
    Pieces pieces = {std::mt19937(seed)};
    std::string web = "<rfmt>" + escaped(pieces.some(4)) +
                      "</rfmt><rtype>inptr</rtype><ndec>3"
                      "</ndec><nfmt>fixed</nfmt><xmax>5.125</xmax>";
    for (uint32_t cells = 1 + pieces.below(12); cells > 0; --cells) {
        const std::string first = pieces.below(2) == 0 ? "x" : k_pieces[pieces.below(10)];
        web += "<cname>" + escaped(first + pieces.some(3)) + "</cname><text>" +
               escaped(pieces.some(30)) + "</text>";
        web += pieces.below(3) == 0 ? "<val>" + escaped(pieces.some(2)) + "</val>" : "";
        web += pieces.below(3) == 0 ? "<script>" + escaped(pieces.some(5)) + "</script>" : "";
    }
    return saved(web + "</eof>");
}

void expect_same_again(const std::string &web) {
    fs::remove_all("d");
    fs::remove("again.qvx");
    ASSERT_EQ(run_qvx({"export", "-", "--markdown", "d"}, web).status, 0);
    ASSERT_EQ(run_qvx({"import", "--markdown", "d", "again.qvx"}).status, 0);
    ASSERT_EQ(file_bytes("again.qvx"), web);
}

TEST_F(QvxExchange, MarkdownAndBackIsTheSameWeb) {
    expect_same_again(saved(file_bytes(QVX_SAMPLES "guide.qvx")));
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_NO_FATAL_FAILURE(expect_same_again(random_web(seed)));
    }
}

TEST_F(QvxExchange, MarkdownShowsTheTextAsItStands) {
    const struct {
        const char *text;
        const char *markdown;
    } rows[] = {
        {"", ""},
        {"one\ntwo\n\nthree", "one\\\ntwo\n\nthree\n"},
        {"see Beans, snake_case", "see [Beans](beans.md), snake_case\n"},
        {"aunt_may!beans", "[aunt_may](Aunt%20May.md)\\![beans](beans.md)\n"},
        {"# 1. *b* <i> [x](y) a & b &c", "\\# 1. \\*b\\* \\<i> \\[x](y) a & b \\&c\n"},
        {"1. one\n- two\n> three\n    four", "1\\. one\\\n\\- two\\\n\\> three\\\n&#32;   four\n"},
        {"---\nC:\\dir", "\\---\\\nC:\\\\dir\n"},
    };
    for (const auto &row : rows) {
        fs::remove_all("d");
        const std::string web = web_of(escaped(row.text), cell_of("beans") + cell_of("Aunt May"));
        ASSERT_EQ(run_qvx({"export", "-", "--markdown", "d"}, web).status, 0);
        EXPECT_EQ(file_bytes("d/home.md"), row.markdown);
    }
}

// Names as files: none leaves the folder, none is a device's, no two are one where case is not
// told.
TEST_F(QvxExchange, EveryNameFindsAFile) {
    std::string cells = "<cname>a/../../b</cname><val>1</val><script>s\"\\\n</script>";
    for (const char *name : {"con", "Com1", "a.", "a!", "a?", "a b", "x\xC3\xA4", "x\xC3\x84",
                             "xe\xCC\x81", "x\xFF", "x\xC5\xBF", "x\n", "x-y"}) {
        cells += cell_of(name, "t");
    }
    const Outcome out = run_qvx({"export", "-", "--markdown", "d"}, web_of("", cells));
    EXPECT_EQ(out.status, 0);
    EXPECT_EQ(out.out.substr(0, out.out.find('\n')), "a! -> a_.md");
    std::vector<std::string> found = files_in("d");
    EXPECT_EQ(found.size(), 15U);
    std::vector<std::string> caseless;
    for (const std::string &name : found) {
        EXPECT_EQ(name.find_first_of("/\\.:?*\"<>|\n"), name.size() - 3) << name;
        std::string small = name == "x\xC3\x84.md" ? "x\xC3\xA4.md" : name;
        std::transform(small.begin(), small.end(), small.begin(), [](char ch) {
            return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch + 32) : ch;
        });
        EXPECT_EQ(std::count(caseless.begin(), caseless.end(), small), 0) << name;
        caseless.push_back(small);
    }
    EXPECT_EQ(file_bytes("d/a_______b.md"),
              "---\nqvx-name: \"a/../../b\"\nqvx-value: \"1\"\nqvx-script: \"s\\\"\\\\\\r\\n\"\n"
              "---\n");
    EXPECT_EQ(file_bytes("d/con_.md"), "---\nqvx-name: \"con\"\n---\nt\n");
}

TEST_F(QvxExchange, AFolderIsWrittenWholeOrNotAtAll) {
    fs::create_directories("d/alpha.md/in");
    write_file("d/mine.md", "mine");
    write_file("d/home.md", "old");
    const std::vector<std::string> before = files_in("d");
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--markdown", "d"}).err,
              "qvx: d: is not empty: use --force to write over files of the same names\n");
    const Outcome refused = run_qvx({"export", "w.qvx", "--markdown", "d", "--force"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "qvx: d/alpha.md: is a folder\n");
    EXPECT_EQ(files_in("d"), before);
    fs::remove_all("d/alpha.md");
    EXPECT_EQ(
        run_qvx({"export", "w.qvx", "--markdown", "d", "--force"}, "", Circumstances{12}).status,
        2);
    EXPECT_EQ(files_in("d"), (std::vector<std::string>{"home.md", "mine.md"}));
    EXPECT_EQ(file_bytes("d/home.md"), "old");
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--markdown", "d/", "--force", "-n"}).out,
              "alpha -> alpha.md (21 bytes)\nhome -> home.md (22 bytes)\n");
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--markdown", "d/", "--force"}).status, 0);
    EXPECT_EQ(files_in("d"), (std::vector<std::string>{"alpha.md", "home.md", "mine.md"}));
    EXPECT_EQ(file_bytes("d/home.md"), "see [alpha](alpha.md)\n");
    EXPECT_EQ(file_bytes("d/mine.md"), "mine");
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--markdown", "no/where"}).status, 2);
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--markdown", "w.qvx"}).err,
              "qvx: w.qvx: is no folder\n");
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--markdown", "new", "--json"}).out,
              "{\"file\":\"alpha.md\",\"bytes\":21,\"cell\":\"alpha\"}\n"
              "{\"file\":\"home.md\",\"bytes\":22,\"cell\":\"home\"}\n");
}

// ---- In from elsewhere --------------------------------------------------------------------------

TEST_F(QvxExchange, LinksOfOtherFoldersBecomeWords) {
    fs::create_directories("d/sub/.git");
    write_file("d/Aunt May.md", "\xEF\xBB\xBF# May");
    write_file("d/sub/foo-bar.MD",
               "up: [[Aunt May]], [May](<../Aunt May.md> \"t\"), [i](/index.md)");
    write_file("d/sub/.git/x.md", "no");
    write_file("d/picture.png", "no");
    const struct {
        const char *markdown;
        const char *text;
    } rows[] = {
        {"[[aunt may]] [[Aunt May|my aunt]] [[Later on]]", "aunt_may my aunt (Aunt_May) Later_on"},
        {"[x](Aunt%20May.md#top) [Aunt May](Aunt%20May.md)", "x (Aunt_May) Aunt_May"},
        {"[foo-bar](sub/foo-bar.MD)s [[foo-bar]]s", "foo-bar (foo_bar)s foo_bar s"},
        {"[w](http://a.b/c_d) ![p](picture.png) ![[p]] \\[[x]]",
         "[w](http://a.b/c_d) ![p](picture.png) ![[p]] [[x]]"},
        {"`[[Aunt May]] \\*` \\* &lt;&#228;&no;", "`[[Aunt May]] \\*` * <\xC3\xA4&no;"},
        {"```\n[[Aunt May]]\\\n```\n[[Aunt May]]\\\nx", "```\n[[Aunt May]]\\\n```\nAunt_May\nx"},
        {"---\ntitle: x\\_y\n---\n*b*", "---\ntitle: x\\_y\n---\n*b*"},
        {"---\nqvx-value: \"2\"\ntags: [a]\n---\nb\r\n", "---\ntags: [a]\n---\nb"},
        {"[a [b](c) [[ [x](", "[a [b](c) [[ [x]("},
    };
    for (const auto &row : rows) {
        write_file("d/index.md", row.markdown);
        fs::remove("o.qvx");
        const Outcome out = run_qvx({"import", "--markdown", "d", "o.qvx"});
        EXPECT_EQ(out.err, "");
        EXPECT_EQ(out.out, "index.md -> home\nsub/foo-bar.MD -> foo_bar\n");
        EXPECT_EQ(run_qvx({"show", "o.qvx", "home", "--newline", "lf"}).out, row.text);
        EXPECT_EQ(run_qvx({"list", "o.qvx"}).out, "Aunt May\nfoo_bar\nhome\n");
    }
    EXPECT_EQ(run_qvx({"show", "o.qvx", "foo_bar"}).out, "up: Aunt_May, May (Aunt_May), i (home)");
    EXPECT_EQ(run_qvx({"show", "o.qvx", "aunt may"}).out, "# May");
}

TEST_F(QvxExchange, NoTwoNamesBecomeOne) {
    const std::string long_name(60, 'l');
    fs::create_directories("d/a");
    fs::create_directories("d/b");
    for (const std::string name : {"notes", "a/notes", "b/Notes", "2024-01-05", "01 a - b (c)",
                                   "a_b_c", "\xC3\x84rger", "C++", "a/README", "%%"}) {
        write_file("d/" + name + ".md", name);
    }
    write_file("d/" + long_name + ".md", "1");
    write_file("d/" + long_name + "2.md", "2");
    EXPECT_EQ(run_qvx({"import", "--markdown", "d", "o.qvx"}).out,
              "%%.md -> note_\n01 a - b (c).md -> note_01 a_b_c\n2024-01-05.md -> note_2024_01_05\n"
              "C++.md -> C\n" +
                  long_name + ".md -> " + std::string(48, 'l') + "\n" + long_name + "2.md -> " +
                  std::string(46, 'l') +
                  "_2\n"
                  "\xC3\x84rger.md -> note_\xC3\x84rger\na/notes.md -> notes_2\n"
                  "b/Notes.md -> Notes_3\n");
    EXPECT_EQ(run_qvx({"list", "o.qvx"}).out.find("home\n") != std::string::npos, true);
    EXPECT_EQ(run_qvx({"check", "o.qvx"}).status, 0);
}

TEST_F(QvxExchange, TextsAndTermsBecomeCells) {
    write_file("one two.txt", "\xEF\xBB\xBF[[x]]\n\\*\n");
    write_file("C++.txt", "");
    write_file("g.tsv", "pulse\tbean, pea\tor lentil\r\n\nPulse\tbeat\n1st\tx\n");
    EXPECT_EQ(run_qvx({"import", "--text", "one two.txt", "C++.txt", "t.qvx"}).out, "");
    EXPECT_EQ(run_qvx({"list", "t.qvx"}).out, "C++\nhome\none two\n");
    EXPECT_EQ(run_qvx({"show", "t.qvx", "one two"}).out, "[[x]]\n\\*\n");
    EXPECT_EQ(run_qvx({"import", "--tsv", "g.tsv", "g.qvx"}).out,
              "g.tsv:3 -> Pulse_2\ng.tsv:4 -> note_1st\n");
    EXPECT_EQ(run_qvx({"show", "g.qvx", "pulse"}).out, "bean, pea\tor lentil");
    const Outcome piped = run_qvx({"import", "--tsv", "-", "-"}, "1\tx\n");
    EXPECT_EQ(piped.err, "qvx: -:1: becomes note_1\n");
    EXPECT_NE(piped.out.find("<cname>note_1</cname>\n<text>x</text>"), std::string::npos);
}

TEST_F(QvxExchange, WhatCannotBeDoneChangesNothing) {
    write_file("bad.tsv", "a\tb\nno tab\n");
    write_file("big.txt", std::string(370000, 'x'));
    write_file("nul.txt", "a\0b"s);
    fs::create_directory("empty");
    const std::string before = file_bytes("w.qvx");
    const struct {
        std::vector<std::string> arguments;
        int status;
        std::string err;
    } rows[] = {
        {{"import", "--tsv", "bad.tsv", "o.qvx"}, 1, "qvx: bad.tsv:2: no TAB behind the term\n"},
        {{"import", "--text", "nul.txt", "o.qvx"},
         1,
         "qvx: nul.txt: a text cannot hold NUL characters\n"},
        {{"import", "--text", "nul.txt", "no.txt", "w.qvx"},
         1,
         "qvx: nul.txt: a text cannot hold NUL characters\n"},
        {{"import", "--markdown", "empty", "o.qvx"}, 1, "qvx: empty: holds no Markdown files\n"},
        {{"import", "--markdown", "no", "o.qvx"},
         2,
         "qvx: no: cannot be read: No such file or directory\n"},
        {{"import", "--text", "no", "o.qvx"},
         2,
         "qvx: no: cannot be opened: No such file or directory\n"},
        {{"import", "--tsv", "bad.tsv"},
         2,
         "qvx: import: what to read and the web file to make are required\n"},
        {{"import", "bad.tsv", "o.qvx"},
         2,
         "qvx: import: --markdown, --text or --tsv is required\n"},
        {{"import", "--text", "-", "-", "o.qvx"},
         2,
         "qvx: import: standard input can be read only once\n"},
        {{"import", "--markdown", "-", "o.qvx"}, 2, "qvx: import: - is no folder\n"},
        {{"export", "w.qvx", "--markdown", "-"}, 2, "qvx: export: - is no folder\n"},
        {{"export", "w.qvx"}, 2, "qvx: export: --html OUT or --markdown DIR is required\n"},
        {{"export", "w.qvx", "--html", "w.qvx"}, 1, "qvx: w.qvx: is the web's own file\n"},
        {{"export", "w.qvx", "--html", "bad.tsv"},
         1,
         "qvx: bad.tsv: is no page: use --force to write over it\n"},
        {{"export", "w.qvx", "--html", "no/where"},
         2,
         "qvx: no/where: cannot be written: No such file or directory\n"},
    };
    for (const auto &row : rows) {
        const Outcome out = run_qvx(row.arguments);
        EXPECT_EQ(out.status, row.status);
        EXPECT_EQ(out.err, row.err);
        EXPECT_EQ(file_bytes("o.qvx"), "(none)");
        EXPECT_EQ(file_bytes("w.qvx"), before);
    }
    const Outcome big = run_qvx({"import", "--text", "big.txt", "nul.tsv", "o.qvx"});
    EXPECT_EQ(big.status, 2);
    const Outcome full = run_qvx({"import", "--text", "big.txt", "o.qvx"});
    EXPECT_EQ(full.status, 3);
    EXPECT_NE(
        full.err.find("qvx: o.qvx: OUT OF MEMORY: 2 cells with 370007 bytes do not fit into a "
                      "web, which has room for 360000; the largest is big with 370003\n"),
        std::string::npos)
        << full.err;
    EXPECT_EQ(file_bytes("o.qvx"), "(none)");
}

TEST_F(QvxExchange, ImportLeavesAFileAloneUnlessForced) {
    write_file("a.txt", "new");
    const std::string before = file_bytes("w.qvx");
    for (const char *dry : {"--text", "-n"}) {
        const Outcome out = run_qvx({"import", "--text", dry, "a.txt", "w.qvx"});
        EXPECT_EQ(out.status, 1);
        EXPECT_EQ(out.err, "qvx: w.qvx: file exists\n");
    }
    EXPECT_EQ(run_qvx({"import", "--text", "-n", "--force", "a.txt", "w.qvx"}).out,
              "a.txt -> a (3 bytes)\n");
    EXPECT_EQ(file_bytes("w.qvx"), before);
    EXPECT_EQ(run_qvx({"import", "--text", "--json", "--force", "a.txt", "w.qvx"}).out,
              "{\"path\":\"a.txt\",\"cell\":\"a\",\"bytes\":3}\n");
    EXPECT_EQ(run_qvx({"list", "w.qvx"}).out, "a\nhome\n");
}

// What a browser makes of a page is tried in one (export_page_test.py).
TEST_F(QvxExchange, APageIsReplacedAndPiped) {
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--html", "p.html"}).status, 0);
    const std::string page = file_bytes("p.html");
    EXPECT_NE(page.find("<div class=\"text\">see <a href=\"#alpha\">alpha</a></div>"),
              std::string::npos);
    EXPECT_EQ(run_qvx({"set", "w.qvx", "beta"}).status, 0);
    EXPECT_EQ(run_qvx({"export", "w.qvx", "--html", "p.html"}).status, 0);
    EXPECT_NE(file_bytes("p.html"), page);
    EXPECT_EQ(
        run_qvx({"export", "-", "--html", "-"}, "<cname>alpha</cname></eof>").out.substr(0, 15),
        "<!DOCTYPE html>");
    EXPECT_LT(run_qvx({"export", "-", "--html", "-"}, "").out.size(), 20000U);
}

}  // namespace
