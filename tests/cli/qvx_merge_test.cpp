// Versions of a web compared and brought together, and damaged webs repaired.
#include "tests/cli/run_qvx.h"

#include <algorithm>
#include <random>
#include <set>
#include <sstream>

using namespace std::string_literals;

namespace {

using Lines = std::vector<std::string>;

const std::string k_small = web_of("see alpha\nand beta", cell_of("alpha", "one\ntwo\nthree") +
                                                              "<val>2.50</val><script>s</script>");

struct QvxMerge : QvxTest {
    QvxMerge() : QvxTest(k_small) {}
};

std::string converted(const std::string &bytes) {
    return run_qvx({"convert", "--force", "-", "-"}, bytes).out;
}

std::string joined(const Lines &lines) {
    std::string text;
    for (const std::string &line : lines) {
        text += (text.empty() ? "" : "\n") + line;
    }
    return text;
}

// Merges webs; the result is in "out.qvx".
Outcome merge(const std::string &base, const std::string &ours, const std::string &theirs) {
    write_file("base", base);
    write_file("ours", ours);
    write_file("theirs", theirs);
    return run_qvx({"merge", "base", "ours", "theirs", "-o", "out.qvx"});
}

// Merges texts of home.
std::string merged_home(const std::string &base, const std::string &ours,
                        const std::string &theirs) {
    const int status = merge(web_of(base), web_of(ours), web_of(theirs)).status;
    return std::to_string(status) + ":" + run_qvx({"show", "out.qvx", "home"}).out;
}

const std::string k_from = "<<<<<<< ours\n", k_to = "\n>>>>>>> theirs";

// A web of random cells and options; lines repeat now and then.
std::string random_web(std::mt19937 *random) {
    std::string cells;
    for (const char *name : {"a", "b_c", "D", "e", "home"}) {
        if ((*random)() % 4 != 0) {
            Lines lines((*random)() % 8);
            for (std::string &line : lines) {
                line = std::to_string((*random)() % 6);
            }
            cells += cell_of(name, joined(lines)) + "<val>" + std::to_string((*random)() % 3) +
                     "</val><script>" + (((*random)() & 1) != 0 ? "x" : "y\nz") + "</script>";
        }
    }
    return converted("<xmax>" + std::to_string((*random)() % 3) + "</xmax><onewl>" +
                     (((*random)() & 1) != 0 ? "cr" : "lf") + "</onewl>" + cells + "</eof>");
}

std::set<std::string> words_of(const std::string &text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

}  // namespace

TEST_F(QvxMerge, DiffSaysWhatDiffers) {
    const std::string other =
        web_of("see alpha\nand beta\n",
               cell_of("ALPHA", "one\n2\nthree") + "<val>3</val>" + cell_of("new", "fresh"));
    write_file("v.qvx", "<onewl>cr</onewl>" + other);
    const Outcome diff = run_qvx({"diff", "w.qvx", "v.qvx"});
    EXPECT_EQ(diff.status, 1);
    EXPECT_EQ(diff.out, "alpha -> ALPHA\n-2: two\n+2: 2\n-script 1: s\n-value 1: 2.50\n"
                        "+value 1: 3\nhome\n+3: \n+new\n+1: fresh\noption onewl: lf -> cr\n");
    EXPECT_EQ(run_qvx({"diff", "v.qvx", "-"}, k_small).out.substr(0, 33),
              "ALPHA -> alpha\n-2: 2\n+2: two\n+scr");
    EXPECT_NE(run_qvx({"diff", "--json", "w.qvx", "v.qvx"})
                  .out.find(R"({"cell":"new","change":"added","lines":[{"field":"text",)"
                            R"("side":"+","line":1,"text":"fresh"}]})"),
              std::string::npos);
    EXPECT_NE(qvx_on_terminal({"diff", "w.qvx", "v.qvx"}).find("\x1b[31m-2: two\x1b[m"),
              std::string::npos);
    const Outcome same = run_qvx({"diff", "w.qvx", "-"}, converted(k_small));
    EXPECT_EQ(same.status, 0);
    EXPECT_EQ(same.out, "");
    EXPECT_EQ(run_qvx({"diff", "-", "-"}).status, 2);
    EXPECT_EQ(run_qvx({"diff", "w.qvx", "no"}).status, 2);
}

// The lines of a diff make the one text of the other; nothing is compared for long.
TEST_F(QvxMerge, DiffsOfTextsThatHaveLittleInCommon) {
    std::mt19937 random(1);
    for (const unsigned kinds : {2U, 3000U, 1000000U}) {
        Lines texts[2];
        for (Lines &lines : texts) {
            for (size_t size = 0; size < 100000; size += lines.back().size() + 2) {
                lines.push_back(std::to_string(random() % kinds));
            }
        }
        write_file("w.qvx", web_of(joined(texts[0])));
        write_file("v.qvx", web_of(joined(texts[1])));
        std::istringstream out(run_qvx({"diff", "w.qvx", "v.qvx"}).out);
        std::string line;
        std::getline(out, line);
        std::set<size_t> gone;
        std::vector<std::pair<size_t, std::string>> come;
        while (std::getline(out, line)) {
            const size_t number = std::stoul(line.substr(1)) - 1;
            if (line[0] == '-') {
                gone.insert(number);
            } else {
                come.emplace_back(number, line.substr(line.find(": ") + 2));
            }
        }
        Lines made;
        size_t next = 0;
        for (size_t i = 0; i < texts[0].size() || next < come.size(); ++i) {
            for (; next < come.size() && come[next].first == made.size(); ++next) {
                made.push_back(come[next].second);
            }
            if (i < texts[0].size() && !gone.contains(i)) {
                made.push_back(texts[0][i]);
            }
        }
        EXPECT_EQ(joined(made), joined(texts[1])) << kinds;
    }
}

TEST_F(QvxMerge, MergesTextsByLine) {
    const struct {
        std::string base, ours, theirs, merged;
    } rows[] = {
        {"a\nb\nc", "a\nB\nc", "a\nb\nC", "0:a\nB\nC"},
        {"a\nb\nc", "a\nc", "a\nb\nc\nd", "0:a\nc\nd"},
        {"a", "a\nb", "A", "0:A\nb"},
        {"a\nb", "x\na\nb", "a\ny\nb", "0:x\na\ny\nb"},
        {"a\nb", "same\nb", "same\nb", "0:same\nb"},
        {"a\nb\n", "a\n", "b\n", "0:"},
        {"a", "b", "c", "1:" + k_from + "b\n=======\nc" + k_to},
        {"a\nz", "b\nz", "\nz", "1:" + k_from + "b\n=======\n" + k_to + "\nz"},
        {"a", "a\nb", "a\nc", "1:a\n" + k_from + "b\n=======\nc" + k_to},
        {"", "same\nb\nend", "same\nc\nend",
         "1:same\n" + k_from + "b\n=======\nc" + k_to + "\nend"},
        {"a\nb\nc", "A\nnew\nb\nc", "a\nb\nc", "0:A\nnew\nb\nc"},
        // Both put lines in between a and b, perhaps the same ones.
        {"a\nb", "A\nnew\nb", "a\nnew\nb", "1:" + k_from + "A\n=======\na" + k_to + "\nnew\nb"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(merged_home(row.base, row.ours, row.theirs), row.merged);
    }
}

TEST_F(QvxMerge, MergesCellsValuesAndOptions) {
    const std::string home = cell_of("home");
    const auto with = [&home](const std::string &more, const std::string &options = "") {
        return options + home + more + "</eof>";
    };
    const std::string base =
        with(cell_of("gone", "1") + cell_of("kept", "1") + cell_of("v") + "<val>1</val>");
    Outcome outcome =
        merge(base,
              with(cell_of("mine", "m") + cell_of("v") + "<val>2</val><script>s</script>",
                   "<onewl>cr</onewl><ndec>3</ndec>"),
              with(cell_of("gone", "1") + cell_of("kept", "2") + cell_of("V", "t") + "<val>3</val>",
                   "<onewl>crlf</onewl><citer>7</citer>"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.err,
        "qvx: out.qvx: kept: deleted in ours and changed in theirs, which stays\n"
        "qvx: out.qvx: V: conflict of values, 2 stays; both are marked at the end of the text\n"
        "qvx: out.qvx: conflict of the option onewl: cr stays, theirs is crlf\n");
    EXPECT_EQ(
        run_qvx({"text", "out.qvx"}).out,
        "=== home\n\n=== kept\n2\n\n=== mine\nm\n\n=== V\nt\n<<<<<<< ours (value)\n2\n=======\n"
        "3\n>>>>>>> theirs (value)\n--- value\n2\n--- script\ns\n\n"
        "=== (options)\nonewl: cr\nciter: 7\nndec: 3\n\n");
    outcome = run_qvx({"merge", "-", "ours", "theirs", "-o", "ours", "--ours", "HEAD", "--theirs",
                       "topic", "--name", "notes"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err.find("qvx: notes: V: "), 0U) << "without a base both added kept and v";
    EXPECT_NE(file_bytes("ours").find("&lt;&lt;&lt;&lt;&lt;&lt;&lt; HEAD (value)"),
              std::string::npos);
}

TEST_F(QvxMerge, WritesAllOrNothing) {
    const std::string half = "<cname>a</cname><text>1</text>", bad = "<cname>1</cname></eof>";
    write_file("out.qvx", k_small);
    for (int broken = 0; broken < 3; ++broken) {
        const auto web = [broken, &half](int i) { return i == broken ? half : k_small; };
        EXPECT_EQ(merge(web(0), web(1), web(2)).status, 1);
        EXPECT_EQ(run_qvx({"merge", "base", "ours", "theirs", "-o", "ours"}).status, 1);
        EXPECT_EQ(file_bytes("ours"), web(1));
    }
    EXPECT_EQ(merge(k_small, k_small, bad).status, 2);
    EXPECT_EQ(run_qvx({"merge", "--force", "base", "ours", "theirs", "-o", "out.qvx"}).status, 2);
    EXPECT_EQ(run_qvx({"merge", "base", "ours", "none", "-o", "out.qvx"}).status, 2);
    write_file("theirs", half);
    const std::string said =
        run_qvx({"merge", "base", "ours", "theirs", "-o", "out.qvx", "--name", "n.qvx"}).err;
    EXPECT_TRUE(said.ends_with("qvx: n.qvx: theirs cannot be read whole, nothing was merged\n"))
        << said;
    EXPECT_EQ(run_qvx({"merge", "-", "-", "ours"}).status, 2);
    const std::string big(200000, 'b'), huge = web_of("", cell_of("b", big)),
                                        other = web_of("", cell_of("c", big));
    EXPECT_EQ(merge(k_small, huge, other).status, 3);
    EXPECT_EQ(run_qvx({"merge", "base", "ours", "base", "-o", "out.qvx", "-n"}).out, "");
    EXPECT_EQ(run_qvx({"merge", "base", "base", "ours", "-o", "out.qvx", "-n"}).out.substr(0, 9),
              "-alpha\n-1");
    EXPECT_EQ(file_bytes("out.qvx"), k_small);
}

// Merging with oneself gives the other side, byte for byte, and nobody is asked anything.
TEST_F(QvxMerge, ASideThatChangedNothingGivesWay) {
    std::mt19937 random(2);
    for (int round = 0; round < 8; ++round) {
        const std::string a = random_web(&random), b = random_web(&random);
        EXPECT_EQ(merge(a, a, b).status, 0);
        EXPECT_EQ(file_bytes("out.qvx"), b);
        EXPECT_EQ(merge(a, b, a).status, 0);
        EXPECT_EQ(file_bytes("out.qvx"), b);
        EXPECT_EQ(merge(a, b, b).status, 0);
        EXPECT_EQ(file_bytes("out.qvx"), b);
        const Outcome diff = run_qvx({"diff", "ours", "out.qvx"});
        EXPECT_EQ(diff.status, 0);
        EXPECT_EQ(diff.out, "");
        const std::string c = random_web(&random);
        merge(a, b, c);
        std::set<std::string> left = words_of(run_qvx({"text", "out.qvx"}).out);
        for (const std::string &side : {b, c}) {  // what is new in a side is in the result
            std::istringstream lines(run_qvx({"diff", "base", "-"}, side).out);
            for (std::string line; std::getline(lines, line);) {
                if (line.starts_with("+") && line.find(": ") != std::string::npos) {
                    for (const std::string &word : words_of(line.substr(line.find(": ") + 2))) {
                        EXPECT_TRUE(left.contains(word)) << line;
                    }
                }
            }
        }
    }
}

TEST_F(QvxMerge, EditsOfOtherLinesMergeInBothOrders) {
    std::mt19937 random(3);
    for (int round = 0; round < 8; ++round) {
        Lines base, sides[2], merged;
        for (int i = 0; i < 40; ++i) {
            base.push_back("line " + std::to_string(i));
            const auto side = random() % 3;
            const Lines edits[] = {{}, {"new " + std::to_string(random())}, {base.back()}};
            const Lines edit = side < 2 ? edits[random() % 2] : edits[2];
            for (unsigned k = 0; k < 2; ++k) {
                const Lines &own = k == side ? edit : edits[2];
                sides[k].insert(sides[k].end(), own.begin(), own.end());
            }
            merged.insert(merged.end(), edit.begin(), edit.end());
        }
        const std::string result = "0:" + joined(merged);
        EXPECT_EQ(merged_home(joined(base), joined(sides[0]), joined(sides[1])), result);
        EXPECT_EQ(merged_home(joined(base), joined(sides[1]), joined(sides[0])), result);
    }
}

TEST_F(QvxMerge, RepairOfAWholeFileIsConvert) {
    const std::string guide = file_bytes(QVX_SAMPLES "guide.qvx");
    const std::string webs[] = {
        guide,
        k_small,
        "",
        " \r\n",
        "</eof> \n",
        "<cname>a</cname>a<b>x</b></text></eof>",
        "<CNAME>a</cname>&lt;&AMP;&gt;<b>x</b><a<text>\r\n\n\r</text></eof>",
        "<cname>a</cname>x</val><text> </form></eof>",
        cell_of("a", "y") + web_of("x", cell_of("a")),
        "<cname>" + std::string(60, 'a') + "</cname><cname>" + std::string(60, 'a') +
            "b</cname></eof>",
        "<ndec>1</ndec><xmax>7.25</xmax><oname>o&amp;</oname><scrfont>x"
        "</scrfont><odest>print</odest></eof>",
        web_of("\xff\xfe caf\xe9 \x01\r")};
    for (const std::string &web : webs) {
        const Outcome whole = run_qvx({"convert", "-", "-"}, web);
        const Outcome repaired = run_qvx({"repair", "-"}, web);
        EXPECT_EQ(whole.status, 0) << web;
        EXPECT_EQ(repaired.status, 0) << web;
        EXPECT_EQ(repaired.err, "");
        EXPECT_EQ(repaired.out, whole.out) << web;
    }
}

// Wherever a file is cut, the cells before are whole, and what is left of the last one is there.
TEST_F(QvxMerge, RepairKeepsWhatStandsBeforeACut) {
    const std::string whole = converted(k_small);
    const std::string web = "\n<onewl>cr</onewl>" + whole.substr(whole.find("\n<cell>"));
    for (size_t cut = 0; cut < web.size(); ++cut) {
        const Outcome repaired = run_qvx({"repair", "-"}, web.substr(0, cut));
        EXPECT_EQ(repaired.status, web.find_first_not_of("\n") >= cut ? 0 : 1) << cut;
        EXPECT_TRUE(repaired.out.ends_with("</cell></eof>")) << cut;
        size_t from = 0;
        while ((from = web.find("<text>", from)) != std::string::npos) {
            std::string part = web.substr(from, std::min(cut, web.find("</text>", from)) - from);
            while (part.ends_with("\n") || part.ends_with("\r")) {
                part.pop_back();
            }
            from += 6;
            if (cut > from) {
                EXPECT_NE(repaired.out.find(part), std::string::npos) << cut << part;
            }
        }
    }
}

TEST_F(QvxMerge, RepairKeepsAllThatCanBeRead) {
    const std::string a = cell_of("a", "1"), z = cell_of("z", "26");
    const std::string cell_a = "=== a\n1\n\n", home = "=== home\n\n", cell_z = "=== z\n26\n\n",
                      all = cell_a + home + cell_z;
    const auto found = [](const std::string &text) {
        return "=== lost_and_found\nLine 1, " + text + "\n\n";
    };
    const struct {
        std::string bytes, text, list;
    } rows[] = {
        {a + z, all, "no_end_mark"},
        {a + "\0\0"s + z + "</eof>", all, "nul_byte"},
        {a + "<cname>b</cname><te\0xt>2</text>"s + z + "</eof>",
         cell_a + "=== b\n2\n\n" + home + cell_z, "nul_byte"},
        {a + "<cname>1b</cname><text>2</text>" + z + "</eof>",
         cell_a + "=== cell_1b\n2\n\n" + home + cell_z, "bad_name"},
        {a + "<cell><cname>b<text>2<cell>" + z + "</eof>", cell_a + "=== b\n2\n\n" + home + cell_z,
         "unclosed_element"},
        {a + "<cname>b</cname><text>2</val>" + z + "</eof>",
         cell_a + "=== b\n2\n\n" + home + cell_z, "unclosed_element"},
        {a + "<cname>b and a word\n then lines</text>" + z + "</eof>",
         cell_a + "=== b and a word\n\n" + home +
             found("a <cname> that is not closed:\nb and a word\n then lines") + cell_z,
         "unclosed_element"},
        {a + "<cell><cname>b\n then lines<cell>" + z + "</eof>",
         cell_a + "=== b\n\n" + home + found("a <cname> that is not closed:\nb\n then lines") +
             cell_z,
         "unclosed_element"},
        {a + "\n </cell> stray < & words\n<cell>" + z + "</eof>",
         cell_a + home +
             "=== lost_and_found\nLine 2, text outside of the elements:\nstray < & words\n\n" +
             cell_z,
         "text_outside"},
        {a + cell_of("A", "2") + cell_of("a", "1") + z + "</eof>",
         cell_a + "=== A_2\n2\n\n" + home + cell_z, "duplicate_name"},
        {a + "<text>2</text>" + z + "</eof>",
         "=== a\n2\n\n" + home + found("an earlier <text> of a:\n1") + cell_z, "field_given_again"},
        {"<cell><text>2</text></cell>" + a + z + "</eof>",
         cell_a + home + "=== unnamed\n2\n\n" + cell_z, "element_before_name"},
        {a + "</eof>" + z + "</eof>", all, "bytes_after_end"},
        {a + cell_of("b", "x < y & z <a long story that has no end> <" + std::string(40, 'n')) + z +
             "</eof>",
         cell_a + "=== b\nx < y & z a long story that has no end <" + std::string(40, 'n') +
             "\n\n" + home + cell_z,
         "long_tag"},
        {a + z + "<cname>ho", cell_a + home + found("part of a <cname>:\nho") + cell_z,
         "unclosed_element"},
        {"not a web", home + found("text outside of the elements:\nnot a web"), "text_outside"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.bytes);
        write_file("w.qvx", row.bytes);
        fs::remove("r.qvx");
        const Outcome repaired = run_qvx({"repair", "w.qvx", "-o", "r.qvx", "--json"});
        EXPECT_EQ(repaired.status, 1);
        EXPECT_NE(repaired.out.find("\"kind\":\"" + row.list + "\""), std::string::npos)
            << repaired.out;
        EXPECT_EQ(run_qvx({"text", "r.qvx"}).out, row.text);
        EXPECT_EQ(run_qvx({"repair", "r.qvx"}).status, 0);
    }
}

TEST_F(QvxMerge, RepairOverwritesOnlyWhenForced) {
    const std::string cut = k_small.substr(0, 40);
    write_file("w.qvx", cut);
    for (const char *out : {"w.qvx", "r.qvx"}) {
        write_file(out, cut);
        EXPECT_EQ(run_qvx({"repair", "w.qvx", "-o", out}).err, "qvx: "s + out + ": file exists\n");
        EXPECT_EQ(run_qvx({"repair", "w.qvx", "-n", "-o", out}).status, 1);
        EXPECT_EQ(file_bytes(out), cut);
    }
    const Outcome forced = run_qvx({"repair", "w.qvx", "-o", "w.qvx", "--force"});
    EXPECT_EQ(forced.status, 1);
    EXPECT_EQ(forced.out,
              "w.qvx:1: home: <text> is not closed; what follows is kept up to the next "
              "tag\nw.qvx:2: the end of the file is missing\n");
    EXPECT_EQ(run_qvx({"show", "w.qvx", "home"}).out, "see alpha\nand b");
    EXPECT_EQ(file_bytes("w.qvx.bad"), cut);
    EXPECT_EQ(run_qvx({"repair", "none", "-o", "n.qvx"}).status, 2);
    write_file("w.qvx", cut + std::string(500000, 'x'));
    EXPECT_EQ(run_qvx({"repair", "w.qvx", "-o", "n.qvx"}).status, 3);
    EXPECT_FALSE(fs::exists("n.qvx"));
}
