// Reports and checks by qvx.
#include "tests/cli/run_qvx.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <map>

#include <sys/wait.h>

using namespace std::string_literals;

namespace {

const std::string k_web = "<opts><rfmt>[\\N:\\T]\\n</rfmt></opts>" +
                          web_of("alpha, beta", cell_of("alpha", "home") + cell_of("beta"));

struct QvxReports : QvxTest {
    QvxReports() : QvxTest(k_web) {}
};

std::string report(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"report", "w.qvx"});
    const Outcome outcome = run_qvx(arguments);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

TEST_F(QvxReports, CoversWhatTheCommandLineAsksFor) {
    EXPECT_EQ(report({}), "[alpha:home]\r\n[beta:]\r\n[home:alpha, beta]\r\n");
    EXPECT_EQ(report({"--cell", "ALPHA"}), "[alpha:home]\r\n");
    EXPECT_EQ(report({"--select", "beta or alpha"}), "[beta:]\r\n[alpha:home]\r\n");
    EXPECT_EQ(report({"--select", "nobody"}), "[home:alpha, beta]\r\n");
    EXPECT_EQ(report({"--format", "\\N ", "--all"}), "alpha beta home ");
    EXPECT_EQ(report({"--type", "inptr", "--cell", "home"}), "\nhome\n    <alpha");
    EXPECT_EQ(report({"--type", "outptr", "--cell", "home"}), "\nhome\n    >alpha\n    >beta");
    EXPECT_EQ(report({"--type", "trail"}), "\nTrail:");
    EXPECT_EQ(file_bytes("w.qvx"), k_web);

    const Outcome unknown = run_qvx({"report", "w.qvx", "--cell", "nobody", "--output", "o"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(file_bytes("o"), "(none)");
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--cell", ""}).err, "qvx: w.qvx: : no such cell\n");
    EXPECT_EQ(report({"--format", ""}), "");
    EXPECT_EQ(report({"--cell", "beta", "--format", std::string(256, 'f')}), std::string(256, 'f'));
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--format", std::string(257, 'f')}).err,
              "qvx: w.qvx: a report format has at most 256 characters\n");
    write_file("w.qvx", "<rall>no</rall><rfmt>\\N</rfmt>" + k_web);
    EXPECT_EQ(report({"--format", "\\N"}), "home");
    EXPECT_EQ(report({"--format", "\\N", "--all"}), "alphabetahome");
}

TEST_F(QvxReports, EndsLinesAsAskedFor) {
    const std::string text = "\none\ntwo\n\r\nend\r";
    write_file("w.qvx", "<rfmt>\\T</rfmt>" + web_of(text));
    const std::string crlf = "\r\none\r\ntwo\r\n\r\nend\r", lf = "\none\ntwo\n\nend";
    EXPECT_EQ(report({}), crlf);
    EXPECT_EQ(report({"--output", "o"}), "");
    EXPECT_EQ(file_bytes("o"), lf);
    for (const auto &[mode, out] : std::map<std::string, std::string>{
             {"crlf", crlf}, {"lf", lf}, {"cr", "\rone\rtwo\r\rend\r"}}) {
        EXPECT_EQ(report({"--newline", mode}), out);
        EXPECT_EQ(report({"--newline", mode, "--output", "o"}), "");
        EXPECT_EQ(file_bytes("o"), out);
    }
}

TEST_F(QvxReports, RunningOutOfBlocksIsAFailure) {
    const std::string web = cell_of("a", times(1000, "a ")) + web_of(std::string(9900 * 36, 'x'));
    const Outcome outcome = run_qvx({"report", "-", "--type", "inptr"}, web);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.err.find("qvx: -: OUT OF MEMORY\n"), std::string::npos) << outcome.err;
}

TEST_F(QvxReports, WritesToExactlyTheFileNamed) {
    EXPECT_EQ(report({"--output", "plain", "--cell", "beta"}), "");
    EXPECT_EQ(file_bytes("plain"), "[beta:]\n");
    const std::string far = std::string(200, 'p') + "/" + std::string(200, 'q');
    fs::create_directory(std::string(200, 'p'));
    EXPECT_EQ(report({"--output", far, "--cell", "beta"}), "");
    EXPECT_EQ(file_bytes(far), "[beta:]\n");

    write_file("w.qvx", "<odest>file</odest><oname>own</oname><rfmt>\\N</rfmt></eof>");
    EXPECT_EQ(report({}), "home") << "whatever the web says";
    EXPECT_EQ(report({"--output", "-"}), "home");
    EXPECT_EQ(file_bytes("own.txt"), "(none)");
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--output", ""}).err, "qvx: w.qvx: --output is empty\n");

    const Outcome full = run_qvx({"report", "w.qvx", "--output", "/dev/full"});
    EXPECT_EQ(full.status, 2);
    EXPECT_NE(full.err.find(": No space left on device\n"), std::string::npos);
    const Outcome limited =
        run_qvx({"report", "w.qvx", "--format", std::string(200, 'x')}, "", {.file_limit = 100});
    EXPECT_EQ(limited.status, 2);
    EXPECT_EQ(limited.err, "qvx: standard output: UNABLE TO WRITE TO OUPUT FILE: File too large\n");
}

TEST_F(QvxReports, NeverGoesOverItsOwnWeb) {
    const std::string before = file_bytes("w.qvx");
    fs::create_hard_link("w.qvx", "other");
    fs::create_symlink("w.qvx", "link");
    for (const char *output : {"w.qvx", "./w.qvx", "other", "link"}) {
        const Outcome refused = run_qvx({"report", "w.qvx", "--output", output});
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.err, "qvx: "s + output + ": is the web's own file\n");
        EXPECT_EQ(file_bytes("w.qvx"), before);
    }
    const std::string from_itself = QVX_PATH " report - --output link < w.qvx 2> said";
    EXPECT_EQ(WEXITSTATUS(std::system(from_itself.c_str())), 1);
    EXPECT_EQ(file_bytes("w.qvx"), before);
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--output", "new"}).status, 0);
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--output", "new"}).status, 0);
}

// KIND or KIND@LINE of each finding, or of each note.
std::string kinds(const nlohmann::json &document, const char *of = "findings") {
    std::string kinds;
    for (const nlohmann::json &entry : document[of]) {
        kinds += kinds.empty() ? "" : " ";
        kinds += entry["kind"].get<std::string>();
        kinds += entry.contains("line") ? "@" + std::to_string(entry["line"].get<int>()) : "";
    }
    return kinds;
}

TEST_F(QvxReports, CheckFindsWhatOpeningLosesOrChanges) {
    const std::string a = "<cname>a</cname>\n", end = "</eof>", n47(47, 'n'), c32(32, 'c');
    static const struct {
        std::string file;
        std::string kinds;
    } rows[] = {
        {"", ""},
        {"\n \t", ""},
        {"\n<opts>\n</opts><cell>" + a + "<text>\n\nx\n</text></cell>" + end + "\r\n \t\n", ""},
        {"<NANG>RADIANS</NANG><nfmt>fixed</nfmt><ndec>3</ndec><xmax>1.5</xmax><citer>07</citer>" +
             end,
         ""},
        {"words", "text_outside@1 not_whole"},
        {a + "<text>x</text>\n", "no_end_mark@3 not_whole"},
        {a + "<text>x</text>\n\0"s + end, "nul_byte@3 not_whole"},
        {a + "<text>x\n<b", "unclosed_element@2 unended_tag@3 no_end_mark@3 not_whole"},
        {a + "\n<text>x\n</cell>" + end, "unclosed_element@3 not_whole"},
        {a + "<text>\n<cname>b</cname>" + end, "unclosed_element@2"},
        {a + "<val>1</text>" + end, "unclosed_element@2 not_whole"},
        {a + "<form>1</script><script> </text>" + end, "unclosed_element@2"},
        {"\n\nx\ny\n" + a + end, "text_outside@3 not_whole"},
        {a + "<cell>\nx</cell>" + end, "text_outside@3 not_whole"},
        {"<text>x</text>" + a + "<form> </form>" + end, "element_before_name@1 not_whole"},
        {a + "<text>1</text>\n<text>1</text>" + end, "field_given_again@3 not_whole"},
        {a + "<form>1</form>\n<script>1</script>" + end, "field_given_again@3 not_whole"},
        {"<rall>no</rall>\n<rall>no</rall>" + end, "option_given_again@2"},
        {"<rtype>list</rtype>\n<odest>print</odest>\n<pltng>off</pltng>" + end,
         "option_changed@1 option_changed@2 option_changed@3"},
        {"<citer>0</citer>\n<ndec>9</ndec>\n<scount>1x</scount>\n<yintrvls>256</yintrvls>" + end,
         "option_changed@1 option_changed@2 option_changed@3 option_changed@4"},
        {"<xmax>1." + std::string(24, '0') + "</xmax>" + end, "option_changed@1"},
        {"<xmax>7.25</xmax><xmin>x</xmin><scrfont>f</scrfont>" + end,
         "option_changed@1 option_changed@1 option_changed@1"},
        {"<starg>" + n47 + "n</starg>\n<srpl>" + n47 + "nn</srpl>" + end, "option_changed@2"},
        {"\n<cname>a\nb</cname>" + end, "line_end_in_name@3"},
        {"<cname>a_b</cname>\n<cname>A b</cname>" + end, "duplicate_name@2"},
        {a + "<text>x</text>" + a + end, "duplicate_name@2 not_whole"},
        {"<cname>" + n47 + "nn</cname>" + end, "long_name@1"},
        {"<cname>" + n47 + "nx</cname>\n<cname>" + n47 + "Ny</cname>" + end,
         "long_name@1 colliding_name@2"},
        {a + "<text><b>\n&gt;</text>" + end, "unknown_tag@2 unknown_entity@3"},
        {a + "<text><" + c32 + ">\n&" + c32 + ";</text>" + end,
         "long_tag@2 long_entity@3 not_whole"},
        {"<cname>9</cname>" + end, "bad_name@1 not_whole"},
        {end + "\n\nmore", "bytes_after_end@3"},
        {end + "\n\0"s, "bytes_after_end@2"},
    };
    for (const auto &row : rows) {
        write_file("f.qvx", row.file);
        const Outcome outcome = run_qvx({"check", "--json", "f.qvx"});
        const nlohmann::json document = nlohmann::json::parse(outcome.out)[0];
        EXPECT_EQ(kinds(document), row.kinds) << row.file;
        EXPECT_EQ(outcome.status, row.kinds.empty() ? 0 : 1) << row.file;
        EXPECT_EQ(document["status"], outcome.status) << row.file;
        EXPECT_EQ(document["whole"], row.kinds.find("not_whole") == std::string::npos) << row.file;
        EXPECT_EQ(outcome.err, "") << row.file;
    }
}

TEST_F(QvxReports, CheckSaysSoInLines) {
    const std::string n48(48, 'n');
    write_file("f.qvx", "<cname>home</cname>\n<text>a &gt; b</text>\n<cname>" + n48 +
                            "1</cname>\n" + "<cname>" + n48 +
                            "2</cname>\n<rtype>list</rtype>\x1b</eof>");
    const Outcome text = run_qvx({"check", "f.qvx", "f.qvx"});  // the second is as the first
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(
        text.out,
        times(2,
              "f.qvx:2: unknown entity &gt; becomes text\n"
              "f.qvx:3: a name is cut to 48 characters when saved: \"" +
                  n48 +
                  "1\"\n"
                  "f.qvx:4: a name begins with the same 48 characters as another one and is saved "
                  "as \"" +
                  n48.substr(4) + "0001\": \"" + n48 +
                  "2\"\n"
                  "f.qvx:5: text outside of the elements is dropped: \"\\x1b\"\n"
                  "f.qvx:5: <rtype> \"list\" becomes \"fmt\"\n"
                  "f.qvx: the file cannot be read whole: a save over it keeps it as \"f.qvx.bad\"\n"
                  "f.qvx: 3 cells, 9 blocks used, 9991 left\n"));
    ASSERT_EQ(run_qvx({"convert", "--force", "f.qvx", "g.qvx"}).status, 0);
    EXPECT_EQ(run_qvx({"check", "g.qvx"}).out, "g.qvx: 3 cells, 9 blocks used, 9991 left\n");
    EXPECT_EQ(run_qvx({"list", "g.qvx"}).out, "home\n" + n48.substr(4) + "0001\n" + n48 + "\n");
}

// What the program writes is no finding, but its limits are worth a note.
TEST_F(QvxReports, CheckHasNothingToSayAgainstAWebOfItsOwn) {
    EXPECT_EQ(run_qvx({"check", QVX_SAMPLES "guide.qvx"}).status, 0);
    EXPECT_EQ(run_qvx({"check", "-"}, run_qvx({"new", "-"}).out).out,
              "-: 1 cell, 2 blocks used, 9998 left\n");
    EXPECT_EQ(nlohmann::json::parse(run_qvx({"check", "--json", "-"}, "</eof>").out).dump(),
              R"([{"blocks_left":9998,"blocks_used":2,"cells":1,"file":"-","findings":[],)"
              R"("notes":[],"status":0,"whole":true}])");

    std::string cells = cell_of("a", std::string(4096, 'x')) + cell_of("b", std::string(4095, 'x'));
    for (int i = 0; i < 253; ++i) {
        cells += "<cname>n" + std::to_string(1000 + i) + "</cname>";
    }
    std::string said =
        "-: text of \"a\" has 4096 characters, links and reports see the first 4095\n";
    const std::string rest =
        " no cell number, so links to them are not reported: \"n1253\" and what "
        "sorts after it\n";
    for (const std::string &number : {""s, "1 cell has"s, "2 cells have"s}) {
        const std::string web = run_qvx({"convert", "-", "-"}, cells + "</eof>").out;
        const Outcome outcome = run_qvx({"check", "-"}, web);
        EXPECT_EQ(outcome.status, 0);
        const std::string notes = said + (number.empty() ? "" : "-: " + number + rest);
        EXPECT_EQ(outcome.out.substr(0, outcome.out.rfind("-: ")), notes);
        cells += "<cname>n1253" + number.substr(0, number.find(' ')) + "</cname>";
    }
}

TEST_F(QvxReports, CheckStatuses) {
    write_file("w.qvx~", "an editor's");
    EXPECT_EQ(run_qvx({"check", "w.qvx"}).status, 0);
    const Outcome mixed = run_qvx({"check", "nofile", "w.qvx"});
    EXPECT_EQ(mixed.status, 2);
    EXPECT_EQ(mixed.err, "qvx: nofile: UNABLE TO OPEN WEB FILE: No such file or directory\n");
    EXPECT_NE(mixed.out.find("w.qvx: 3 cells"), std::string::npos);
    EXPECT_EQ(nlohmann::json::parse(run_qvx({"check", "--json", "."}).out).dump(),
              R"([{"error":"UNABLE TO READ FROM WEB FILE","file":".","findings":[],"notes":[],)"
              R"("reason":"Is a directory","status":2,"whole":false}])");
    EXPECT_EQ(run_qvx({"check", "-", "w.qvx"}, "<text>" + std::string(400000, 'x')).status, 3);

    const std::string no_text = "<text>&\x1b\xff\xc3\xa9;</text></eof>";
    const std::string json = run_qvx({"check", "--json", "-"}, no_text).out;
    EXPECT_FALSE(nlohmann::json::parse(json).empty());
    EXPECT_NE(json.find("\xc3\xa9"), std::string::npos);
    EXPECT_EQ(run_qvx({"check", "-"}, no_text).out.find('\x1b'), std::string::npos);
    for (const char *name : {"[w]", "[w,x]", "\1w", ""}) {
        const Outcome outcome = run_qvx({"check", "w.qvx", name});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err, "qvx: " + std::string(name) + (*name == 0 ? "" : ": ") +
                                   "UNABLE TO OPEN WEB FILE: No such file or directory\n");
    }
}

}  // namespace
