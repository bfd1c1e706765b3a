// What links where: lists, ways, graphs and numbers of a web, and cells renamed with their links.
#include "tests/cli/run_qvx.h"

#include <algorithm>
#include <map>
#include <random>
#include <set>

using namespace std::string_literals;

namespace {

const std::string k_garden =
    web_of("see alpha and Two_Words\nALPHA again, gamma_ray wantedWord\n",
           cell_of("alpha", "beta, home. alpha itself\n\nthe end: BETA_ beta") + "<val>2.50</val>" +
               "<script>alpha</script>" + cell_of("beta") +
               cell_of("Two words", "to beta\nalphas alpha\xc3\xa9 \xe4lpha Gamma_Ray NASA _x a_") +
               cell_of("lonely", "nothing"));

struct QvxLinks : QvxTest {
    QvxLinks() : QvxTest(k_garden) {}
};

std::vector<std::string> lines_in(const std::string &text) {
    std::vector<std::string> lines;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

std::vector<std::string> output_of(std::vector<std::string> arguments) {
    return lines_in(run_qvx(arguments).out);
}

struct Case {
    std::vector<std::string> arguments;
    int status;
    std::string out;
    std::string err;
};

void check(const std::vector<Case> &cases) {
    for (const Case &row : cases) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        const Outcome outcome = run_qvx(row.arguments);
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err, row.err);
    }
}

TEST_F(QvxLinks, PrintsLinesAndCells) {
    const std::string twice = "alpha:3:the end: BETA_ beta\n";
    const std::string from_alpha = "alpha:1:beta, home. alpha itself\n" + twice;
    const std::string from_home =
        "home:1:see alpha and Two_Words\nhome:2:ALPHA again, gamma_ray wantedWord\n";
    const std::string none = "qvx: w.qvx: Gamma: no such cell\n";
    check({
        {{"links", "w.qvx", "ALPHA"}, 0, from_alpha, ""},
        {{"links", "w.qvx"}, 0, from_alpha + from_home + "Two words:1:to beta\n", ""},
        {{"links", "-l", "w.qvx", "home"}, 0, "alpha\nTwo words\n", ""},
        {{"links", "-l0", "w.qvx", "home"}, 0, "alpha\0Two words\0"s, ""},
        {{"links", "-0", "w.qvx", "home"}, 0, "alpha\0Two words\0"s, ""},
        {{"links", "w.qvx", "beta"}, 1, "", ""},
        {{"links", "w.qvx", "Gamma"}, 1, "", none},
        {{"links", "--json", "w.qvx", "home"},
         0,
         R"({"file":"w.qvx","cell":"home","line":1,"text":"see alpha and Two_Words","links":["alpha","Two words"]})"
         "\n"
         R"({"file":"w.qvx","cell":"home","line":2,"text":"ALPHA again, gamma_ray wantedWord","links":["alpha"]})"
         "\n",
         ""},
        {{"backlinks", "w.qvx", "alpha"}, 0, from_home, ""},
        {{"backlinks", "w.qvx", "two_WORDS", "-l"}, 0, "home\n", ""},
        {{"backlinks", "w.qvx", "lonely"}, 1, "", ""},
        {{"backlinks", "w.qvx", "Gamma"}, 1, "", none},
        {{"orphans", "w.qvx"}, 0, "lonely\n", ""},
        {{"orphans", "w.qvx", "w.qvx", "-0"}, 0, "w.qvx:lonely\0w.qvx:lonely\0"s, ""},
        {{"deadends", "w.qvx", "--json"},
         0,
         "{\"file\":\"w.qvx\",\"cell\":\"beta\"}\n{\"file\":\"w.qvx\",\"cell\":\"lonely\"}\n",
         ""},
        {{"wanted", "w.qvx"}, 0, "gamma_ray:2\nwantedWord:1\n", ""},
        {{"wanted", "w.qvx", "-0"}, 0, "gamma_ray\0wantedWord\0"s, ""},
        {{"wanted", "w.qvx", "--json"},
         0,
         "{\"file\":\"w.qvx\",\"word\":\"gamma_ray\",\"count\":2,\"cells\":[\"home\",\"Two "
         "words\"]}\n"
         "{\"file\":\"w.qvx\",\"word\":\"wantedWord\",\"count\":1,\"cells\":[\"home\"]}\n",
         ""},
        {{"path", "w.qvx", "home", "Beta"}, 0, "home\nalpha\nbeta\n", ""},
        {{"path", "w.qvx", "alpha", "Two_words"}, 0, "alpha\nhome\nTwo words\n", ""},
        {{"path", "w.qvx", "beta", "BETA"}, 0, "beta\n", ""},
        {{"path", "w.qvx", "beta", "home"}, 1, "", ""},
        {{"path", "w.qvx", "beta", "Gamma"}, 1, "", none},
        {{"orphans", "no.qvx", "w.qvx"},
         2,
         "w.qvx:lonely\n",
         "qvx: no.qvx: UNABLE TO OPEN WEB FILE: No such file or directory\n"},
    });
    EXPECT_EQ(qvx_on_terminal({"links", "w.qvx", "beta"}), "");
    EXPECT_EQ(qvx_on_terminal({"backlinks", "w.qvx", "Two_words"}),
              "\x1b[35mhome\x1b[m\x1b[36m:\x1b[m\x1b[32m1\x1b[m\x1b[36m:\x1b[msee alpha and "
              "\x1b[31mTwo_Words\x1b[m\r\n");
}

TEST_F(QvxLinks, PrintsGraphsAndNumbers) {
    write_file("odd.qvx",
               web_of("to q_and_q", cell_of("q and q") + cell_of("e\"\\&lt;#>", "home")));
    check({
        {{"graph", "odd.qvx"},
         0,
         "digraph links {\n    node [shape=box];\n    \"e\\\"\\\\<#>\";\n    \"home\";\n"
         "    \"q and q\";\n    \"e\\\"\\\\<#>\" -> \"home\";\n    \"home\" -> \"q and q\";\n}\n",
         ""},
        {{"graph", "odd.qvx", "--format", "mermaid"},
         0,
         "flowchart LR\n    c0[\"e#34;\\#60;#35;#62;\"]\n    c1[\"home\"]\n    c2[\"q and q\"]\n"
         "    c0 --> c1\n    c1 --> c2\n",
         ""},
        {{"graph", "--json", "w.qvx", "--cell", "BETA"},
         0,
         "{\"cell\":\"alpha\",\"links\":[\"beta\"]}\n{\"cell\":\"beta\",\"links\":[]}\n"
         "{\"cell\":\"Two words\",\"links\":[\"beta\"]}\n",
         ""},
        {{"graph", "--format", "json", "w.qvx", "--cell", "beta", "--depth", "0"},
         0,
         "{\"cell\":\"beta\",\"links\":[]}\n",
         ""},
        {{"graph", "w.qvx", "--cell", "Gamma"}, 1, "", "qvx: w.qvx: Gamma: no such cell\n"},
        {{"graph", "w.qvx", "--depth", "-1"}, 2, "", "qvx: --depth is less than 0\n"},
        {{"stats", "w.qvx", "--json"},
         0,
         "{\"file\":\"w.qvx\",\"cells\":5,\"lines\":8,\"words\":26,\"bytes\":164,\"links\":7,"
         "\"orphans\":1,\"deadends\":2,\"wanted\":2,\"longest\":\"home\",\"most_linked\":\"beta\","
         "\"blocks_used\":21,\"blocks_free\":9979}\n",
         ""},
    });
    EXPECT_EQ(output_of({"graph", "--json", "w.qvx", "--cell", "beta", "--depth", "2"}).size(), 4U);
    EXPECT_EQ(output_of({"stats", "w.qvx", "odd.qvx"}).at(12), "odd.qvx:cells: 3");
}

TEST_F(QvxLinks, RenamesTheWordsThatAreAskedFor) {
    ASSERT_EQ(run_qvx({"convert", "w.qvx", "w.qvx"}).status, 0);
    const std::string before = file_bytes("w.qvx");
    check({{{"rename", "w.qvx", "ALPHA", "New name", "--links", "-n"},
            0,
            "alpha -> New name\n"
            "-1: beta, home. alpha itself\n+1: beta, home. New_name itself\n"
            "home\n-1: see alpha and Two_Words\n+1: see New_name and Two_Words\n"
            "-2: ALPHA again, gamma_ray wantedWord\n"
            "+2: New_name again, gamma_ray wantedWord\n",
            ""},
           {{"rename", "w.qvx", "Two_words", "x-y", "-n"}, 0, "Two words -> x-y\n", ""},
           {{"rename", "w.qvx", "two_words", "x", "--links", "-n", "--json"},
            0,
            "{\"cell\":\"Two words\",\"renamed\":\"x\"}\n"
            "{\"cell\":\"home\",\"line\":1,\"before\":\"see alpha and Two_Words\","
            "\"after\":\"see alpha and x\"}\n",
            ""}});
    EXPECT_EQ(file_bytes("w.qvx"), before);
    check({{{"rename", "w.qvx", "alpha", "New name", "--links"}, 0, "", ""},
           {{"show", "w.qvx", "New name"},
            0,
            "beta, home. New_name itself\n\nthe end: BETA_ beta",
            ""},
           {{"show", "w.qvx", "home"},
            0,
            "see New_name and Two_Words\nNew_name again, gamma_ray wantedWord\n",
            ""},
           {{"show", "w.qvx", "Two words"},
            0,
            "to beta\nalphas alpha\xc3\xa9 \xe4lpha Gamma_Ray NASA _x a_",
            ""},
           {{"rename", "w.qvx", "new_name", "NEW_NAME"}, 0, "", ""},
           {{"list", "w.qvx"}, 0, "beta\nhome\nlonely\nNEW_NAME\nTwo words\n", ""}});
    const std::string after = file_bytes("w.qvx");
    EXPECT_NE(after.find("<val>2.50</val>"), std::string::npos);
    EXPECT_NE(after.find("<script>alpha</script>"), std::string::npos);
    EXPECT_EQ(run_qvx({"rename", "-", "lonely", "alone"}, after).status, 0);
}

TEST_F(QvxLinks, RefusesToRename) {
    write_file("full.qvx", web_of(times(340000, "a"), cell_of("b", times(1990, " b"))));
    const std::string files[] = {file_bytes("w.qvx"), file_bytes("full.qvx")};
    const std::string low = "qvx: full.qvx: short on memory: fewer than 100 blocks are left\n";
    const std::string no_word = "cannot be a link: no word has such characters\n";
    check({
        {{"rename", "w.qvx", "HOME", "x"},
         1,
         "",
         "qvx: w.qvx: home: the home cell keeps its name\n"},
        {{"rename", "w.qvx", "x", "y"}, 1, "", "qvx: w.qvx: x: no such cell\n"},
        {{"rename", "w.qvx", "alpha", "two_WORDS"},
         1,
         "",
         "qvx: w.qvx: two_WORDS: is the name of another cell\n"},
        {{"rename", "w.qvx", "alpha", "Home"},
         1,
         "",
         "qvx: w.qvx: Home: is the name of another cell\n"},
        {{"rename", "w.qvx", "alpha", "1st"}, 1, "", "qvx: w.qvx: 1st: Bad cell name supplied\n"},
        {{"rename", "w.qvx", "alpha", ""}, 1, "", "qvx: w.qvx: : Bad cell name supplied\n"},
        {{"rename", "w.qvx", "alpha", times(49, "a")},
         1,
         "",
         "qvx: w.qvx: " + times(49, "a") + ": Bad cell name supplied\n"},
        {{"rename", "w.qvx", "alpha", "x-y", "--links"}, 1, "", "qvx: w.qvx: x-y: " + no_word},
        {{"rename", "w.qvx", "alpha", "x-y", "--links", "-n"},
         1,
         "",
         "qvx: w.qvx: x-y: " + no_word},
        {{"rename", "full.qvx", "b", times(48, "c"), "--links"},
         3,
         "",
         low + "qvx: full.qvx: OUT OF MEMORY\n"},
        {{"rename", "full.qvx", "b", times(48, "c"), "--links", "-n"},
         3,
         "",
         low + "qvx: full.qvx: OUT OF MEMORY\n"},
    });
    EXPECT_EQ(file_bytes("w.qvx"), files[0]);
    EXPECT_EQ(file_bytes("full.qvx"), files[1]);
    EXPECT_EQ(run_qvx({"rename", "w.qvx", "alpha", "x-y"}).status, 0);
}

// ---- Random webs --------------------------------------------------------------------------------

const char *const k_names[] = {"ant", "bee hive", "cow", "dog", "Eel", "fox_1", "home", "\x67nu"};

std::string word_of(std::string name) {
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

// Texts of names spelled as they are, and of what looks like them.
std::string random_text(std::mt19937 *random) {
    constexpr const char *k_between[] = {" ", "\n", ", ", " s_", "-", " \xc3\xa4", " \xff"};
    std::string text;
    for (auto words = (*random)() % 6; words > 0; --words) {
        text += word_of(k_names[(*random)() % std::size(k_names)]);
        text += k_between[(*random)() % std::size(k_between)];
    }
    return text;
}

void write_random_web(uint32_t seed) {
    std::mt19937 random(seed);
    std::string cells;
    for (const char *name : k_names) {
        cells += cell_of(name, random_text(&random));
    }
    write_file("r.qvx", cells + "</eof>");
    ASSERT_EQ(run_qvx({"convert", "r.qvx", "r.qvx"}).status, 0);
}

// What the web's lines of links lead to, by cell.
std::map<std::string, std::set<std::string>> edges() {
    std::map<std::string, std::set<std::string>> edges;
    for (const char *name : k_names) {
        const auto found = output_of({"links", "-l", "r.qvx", name});
        edges[name] = {found.begin(), found.end()};
    }
    return edges;
}

TEST_F(QvxLinks, ListsAgreeWithEachOther) {
    for (const uint32_t seed : {1U, 2U, 3U}) {
        SCOPED_TRACE(seed);
        write_random_web(seed);
        const auto links = edges();
        const auto all = output_of({"links", "r.qvx"});
        std::set<std::string> back, orphans, deadends;
        for (const char *name : k_names) {
            const auto lines = output_of({"backlinks", "r.qvx", name});
            back.insert(lines.begin(), lines.end());
            std::set<std::string> sources;
            for (const auto &[source, targets] : links) {
                if (targets.contains(name)) {
                    sources.insert(source);
                }
            }
            const auto cells = output_of({"backlinks", "-l", "r.qvx", name});
            EXPECT_EQ(std::set<std::string>(cells.begin(), cells.end()), sources);
            if (sources.empty() && name != "home"s) {
                orphans.insert(name);
            }
            if (links.at(name).empty()) {
                deadends.insert(name);
            }
        }
        EXPECT_EQ(back, std::set<std::string>(all.begin(), all.end()));
        const auto lonely = output_of({"orphans", "r.qvx"});
        EXPECT_EQ(std::set<std::string>(lonely.begin(), lonely.end()), orphans);
        const auto dead = output_of({"deadends", "r.qvx"});
        EXPECT_EQ(std::set<std::string>(dead.begin(), dead.end()), deadends);
        for (const char *name : k_names) {
            const auto way = output_of({"path", "r.qvx", "home", name});
            for (size_t i = 1; i < way.size(); ++i) {
                EXPECT_TRUE(links.at(way[i - 1]).contains(way[i]));
            }
            EXPECT_TRUE(way.empty() || (way.front() == "home" && way.back() == name));
            EXPECT_FALSE(way.size() != 2 && links.at("home").contains(name));
        }
    }
}

TEST_F(QvxLinks, RenamingBackAndForthIsTheIdentity) {
    for (const uint32_t seed : {4U, 5U}) {
        write_random_web(seed);
        const std::string before = file_bytes("r.qvx");
        const auto links = output_of({"graph", "r.qvx", "--json"});
        for (const std::string name : k_names) {
            if (name != "home") {
                SCOPED_TRACE(name);
                ASSERT_EQ(run_qvx({"rename", "r.qvx", name, "A New_cell", "--links"}).status, 0);
                EXPECT_NE(file_bytes("r.qvx"), before);
                EXPECT_EQ(output_of({"graph", "r.qvx", "--json"}).size(), links.size());
                ASSERT_EQ(run_qvx({"rename", "r.qvx", "a_new cell", name, "--links"}).status, 0);
                EXPECT_EQ(file_bytes("r.qvx"), before);
            }
        }
    }
}

}  // namespace
