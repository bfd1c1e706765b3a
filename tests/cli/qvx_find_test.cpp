// Texts found and replaced.
#include "tests/cli/run_qvx.h"

#include <utility>

using namespace std::string_literals;

namespace {

const std::string k_text = "One fish\r\n\r\ntwo FISHES, c++ f.sh fish\n\xc3\x84pfel \xe4pfel\n";
const std::string k_web =
    web_of(k_text, cell_of("Fish pond", "none") + cell_of("more", "[x] a_fish \xff z\xffish"));

struct QvxFind : QvxTest {
    QvxFind() : QvxTest(k_web) {}
};

const std::string k_first = "home:1:One fish\n", k_third = "home:3:two FISHES, c++ f.sh fish\n",
                  k_more = "more:1:[x] a_fish \xff z\xffish\n",
                  k_apples = "home:4:\xc3\x84pfel \xe4pfel\n";

TEST_F(QvxFind, FindsWhatIsAskedFor) {
    const struct {
        std::vector<std::string> arguments;
        std::string out;
    } rows[] = {
        {{"fish"}, k_first + k_third + k_more},
        {{"FISHES", "--case"}, k_third},
        {{"Fishes", "--case"}, ""},
        {{"fish", "--word"}, k_first + k_third},
        {{"c++", "--word"}, k_third},
        {{"f.s", "--word"}, ""},
        {{"f.sh"}, k_third},
        {{"f.sh", "-E"}, k_first + k_third + k_more},
        {{"[x]"}, k_more},
        {{"--", "[x] "}, k_more},
        {{"^[^f]*FISH$", "-E", "--case"}, ""},
        {{"^\\S+ fish$", "-E"}, k_first},
        {{"^(one|two).*fish$", "-E"}, k_first + k_third},
        {{"fi.h", "-E", "--word"}, k_first + k_third},
        {{"\xc3\xa4PFEL"}, k_apples},
        {{"^\\w{5} ", "-E"}, k_apples},
        {{"\xff z"}, k_more},
        {{"\xe4"}, k_apples},
        {{"^$", "-E"}, "home:2:\n"},
        {{"fish\\s+two", "-E"}, ""},
        {{"", "--case"},
         k_first + "home:2:\n" + k_third + k_apples + "more:1:[x] a_fish \xff z\xffish\n"},
        {{"fish", "-l"}, "home\nmore\n"},
        {{"fish", "-l0"}, "home\0more\0"s},
        {{"fish", "-c"}, "home:2\nmore:1\n"},
        {{"FISH_p", "--names"}, "Fish pond\n"},
        {{"^m|_", "--names", "-E"}, "more\n"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        std::vector<std::string> arguments = row.arguments;
        arguments.insert(arguments.begin(), "find");
        arguments.emplace_back("w.qvx");
        const Outcome outcome = run_qvx(arguments);
        std::string out = row.out;
        if (row.arguments[0].empty()) {
            out.insert(0, "Fish pond:1:none\n");
        }
        EXPECT_EQ(outcome.out, out);
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.status, out.empty() ? 1 : 0);
    }
}

TEST_F(QvxFind, TellsFilesApart) {
    const Outcome both = run_qvx({"find", "one", "w.qvx", "-"}, web_of("none"));
    EXPECT_EQ(both.out, "w.qvx:Fish pond:1:none\nw.qvx:home:1:One fish\n-:home:1:none\n");
    EXPECT_EQ(run_qvx({"find", "none", "-c", "w.qvx", "-"}, web_of("no")).out,
              "w.qvx:Fish pond:1\n");
    EXPECT_EQ(run_qvx({"find", "one", "w.qvx", "-0"}).out, "Fish pond\0home\0"s);
    EXPECT_EQ(run_qvx({"find", "one", "w.qvx", "--json"}).out,
              R"({"file":"w.qvx","cell":"Fish pond","line":1,"text":"none","matches":["one"]})"
              "\n"
              R"({"file":"w.qvx","cell":"home","line":1,"text":"One fish","matches":["One"]})"
              "\n");
    EXPECT_EQ(run_qvx({"find", "one", "w.qvx", "--json", "-c"}).out,
              "{\"file\":\"w.qvx\",\"cell\":\"Fish pond\",\"count\":1}\n"
              "{\"file\":\"w.qvx\",\"cell\":\"home\",\"count\":1}\n");
    write_file("t.qvx", web_of("a\x1b[2Jb a\x9b"));
    EXPECT_EQ(qvx_on_terminal({"find", "A", "t.qvx"}),
              "\x1b[35mhome\x1b[m\x1b[36m:\x1b[m\x1b[32m1\x1b[m\x1b[36m:\x1b[m"
              "\x1b[31ma\x1b[m\\x1b[2Jb \x1b[31ma\x1b[m\x9b\r\n");
}

TEST_F(QvxFind, SaysWhatIsWrong) {
    const std::string steps = "(a+)+$";
    write_file("a.qvx", web_of("aa\n" + times(60, "a") + "b\n"));
    const struct {
        std::vector<std::string> arguments;
        std::string err;
    } rows[] = {
        {{"find", "-E", "a(b", "w.qvx"},
         "qvx: the expression is wrong at character 4: missing closing parenthesis\n"},
        {{"find", "-E", "[", "w.qvx"},
         "qvx: the expression is wrong at character 2: missing terminating ] for character "
         "class\n"},
        {{"find", "-E", "--word", "a)(b", "w.qvx"},
         "qvx: the expression is wrong at character 2: unmatched closing parenthesis\n"},
        {{"find", "a\nb", "w.qvx"}, "qvx: a line end never stands within a line\n"},
        {{"replace", "w.qvx", "", "x"}, "qvx: what is to be replaced is empty\n"},
        {{"find", "-E", "(a+)+$", "-c", "a.qvx"},
         "qvx: a.qvx: home: line 2: the expression takes too many steps\n"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const Outcome outcome = run_qvx(row.arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err, row.err);
    }
    EXPECT_EQ(run_qvx({"find", "-l", "-c", "x", "w.qvx"}).status, 2);
    EXPECT_EQ(file_bytes("w.qvx"), k_web);
}

TEST_F(QvxFind, Replaces) {
    ASSERT_EQ(run_qvx({"convert", "w.qvx", "w.qvx"}).status, 0);
    const std::string before = file_bytes("w.qvx");
    EXPECT_EQ(run_qvx({"replace", "w.qvx", "fish", "$1\\0 bird", "--word", "-n"}).out,
              "home\n-1: One fish\n+1: One $1\\0 bird\n"
              "-3: two FISHES, c++ f.sh fish\n+3: two FISHES, c++ f.sh $1\\0 bird\n");
    EXPECT_EQ(run_qvx({"replace", "w.qvx", "[x]", "a\nb", "-n"}).out,
              "more\n-1: [x] a_fish \xff z\xffish\n+1: a\n+1: b a_fish \xff z\xffish\n");
    EXPECT_EQ(run_qvx({"replace", "w.qvx", "ONE", "two", "-n", "--json"}).out,
              "{\"cell\":\"Fish pond\",\"line\":1,\"before\":\"none\",\"after\":\"ntwo\"}\n"
              "{\"cell\":\"home\",\"line\":1,\"before\":\"One fish\",\"after\":\"two fish\"}\n");
    EXPECT_EQ(run_qvx({"replace", "w.qvx", "bird", "x"}).status, 1);
    EXPECT_EQ(run_qvx({"replace", "w.qvx", "o", times(120000, "x")}).status, 3);
    EXPECT_EQ(file_bytes("w.qvx"), before);
    const std::pair<const char *, const char *> steps[] = {
        {"fish", "a\nb"}, {"\xff", ""}, {"\xc3\xa4pfel", "pears"}};
    for (const auto &[old, replacement] : steps) {
        const Outcome outcome = run_qvx({"replace", "w.qvx", old, replacement});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out + outcome.err, "");
    }
    EXPECT_EQ(run_qvx({"show", "w.qvx", "home", "--newline", "crlf"}).out,
              "One a\r\nb\r\n\r\ntwo a\r\nbES, c++ f.sh a\r\nb\r\npears \xe4pfel\r\n");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "more"}).out, "[x] a_a\nb  zish");
    EXPECT_EQ(run_qvx({"list", "w.qvx"}).out, "Fish pond\nhome\nmore\n");
}

}  // namespace
