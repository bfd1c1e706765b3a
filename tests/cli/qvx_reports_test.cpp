// Reports and checks by qvx.
#include "tests/cli/run_qvx.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace {

const std::string k_web = "<opts><rfmt>[\\N:\\T]\\n</rfmt></opts>"
                          "<cell><cname>home</cname><text>alpha, beta</text></cell>"
                          "<cell><cname>alpha</cname><text>home</text></cell>"
                          "<cell><cname>beta</cname></cell></eof>";

class QvxReports : public testing::Test {
protected:
    void SetUp() override {
        enter_empty_folder();
        write_file("w.qvx", k_web);
    }
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
}

TEST_F(QvxReports, WritesToExactlyTheFileNamed) {
    EXPECT_EQ(report({"--output", "plain", "--cell", "beta"}), "");
    EXPECT_EQ(file_bytes("plain"), "[beta:]\n");
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--output", std::string(257, 'p')}).status, 2);

    write_file("w.qvx", "<odest>file</odest><oname>own</oname><rfmt>\\N</rfmt></eof>");
    EXPECT_EQ(report({}), "");
    EXPECT_EQ(file_bytes("own.txt"), "home");
    EXPECT_EQ(report({"--output", "-"}), "home");

    EXPECT_EQ(run_qvx({"report", "w.qvx", "--output", "/dev/full"}).status, 2);
    EXPECT_EQ(run_qvx({"report", "w.qvx", "--output", "-"}, "", 2).status, 2);
}

TEST_F(QvxReports, CheckFindsWithLineNumbers) {
    const std::string long_name(60, 'n');
    write_file("f.qvx", "<cname>home</cname>\n<text>a <b>bold</b>\n&gt; &amp; </text>\n"
                        "<cname>twice</cname>\n<cname>" +
                            long_name + "</cname>\n<cname>TWICE</cname><text>" +
                            std::string(5000, 'x') + "</text>\n</eof>\nmore\n");
    const Outcome text = run_qvx({"check", "f.qvx"});
    EXPECT_EQ(text.status, 1);
    EXPECT_NE(text.out.find("f.qvx:3: unknown entity &gt; becomes text\n"), std::string::npos);
    EXPECT_NE(text.out.find("f.qvx: 3 cells, "), std::string::npos);

    const Outcome outcome = run_qvx({"check", "--json", "f.qvx", "w.qvx"});
    EXPECT_EQ(outcome.status, 1);
    const nlohmann::json documents = nlohmann::json::parse(outcome.out);
    ASSERT_EQ(documents.size(), 2u);
    std::vector<std::pair<std::string, int>> found;
    for (const nlohmann::json &finding : documents[0]["findings"]) {
        found.emplace_back(finding["kind"], finding.value("line", 0));
    }
    const std::vector<std::pair<std::string, int>> expected = {
        {"unknown_tag", 2},    {"unknown_tag", 2},     {"unknown_entity", 3}, {"long_name", 5},
        {"duplicate_name", 6}, {"bytes_after_end", 7}, {"long_text", 0}};
    for (const auto &finding : expected) {
        EXPECT_EQ(std::count(found.begin(), found.end(), finding),
                  std::count(expected.begin(), expected.end(), finding))
            << finding.first;
    }
    EXPECT_EQ(found.size(), expected.size());
    EXPECT_EQ(documents[0]["cells"], 3);
    EXPECT_EQ(documents[1]["findings"].size(), 0u);
    EXPECT_EQ(documents[1]["status"], 0);
}

TEST_F(QvxReports, CheckStatuses) {
    EXPECT_EQ(run_qvx({"check", "w.qvx"}).status, 0);
    EXPECT_EQ(run_qvx({"check", "-"}, k_web).status, 0);
    EXPECT_EQ(run_qvx({"check", "-"}, k_web + std::string(2, '\0')).status, 1);
    const Outcome mixed = run_qvx({"check", "nofile", "w.qvx"});
    EXPECT_EQ(mixed.status, 2);
    EXPECT_NE(mixed.out.find("w.qvx: 3 cells"), std::string::npos);
    const Outcome refused = run_qvx({"check", "-"}, "<cname>ok</cname>\n<cname>9</cname>");
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.out.find("-:2: \"9\" is no cellname"), std::string::npos);
    EXPECT_EQ(run_qvx({"check", "-", "w.qvx"}, "<text>" + std::string(400000, 'x')).status, 3);

    const std::string no_text = "<text>&\x1b\xff;</text></eof>";
    EXPECT_FALSE(nlohmann::json::parse(run_qvx({"check", "--json", "-"}, no_text).out).empty());
    EXPECT_EQ(run_qvx({"check", "-"}, no_text).out.find('\x1b'), std::string::npos);
}

}  // namespace
