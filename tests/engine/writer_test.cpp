// The web writer, byte for byte, and webs that go through writing and reading.
#include "tests/engine/engine_test.h"
#include "tests/engine/report_model.h"

#include "web/option_text.h"

#include <random>
#include <set>

using namespace std::string_literals;
using Writer = EngineTest;
using RoundTrip = EngineTest;

namespace {

constexpr const char *k_default_options =
    "\n<opts>\n<isrc>keyboard</isrc>\n<iname>INPUT</iname>\n<iecho>no</iecho>"
    "\n<odest>screen</odest>\n<oname>OUTPUT</oname>\n<onewl>lf</onewl>\n<cfmt>~\\n</cfmt>"
    "\n<citer>1</citer>\n<cdisp>nolist</cdisp>\n<rtype>fmt</rtype>"
    "\n<rfmt>\\n*****\\N**************************\\n\\T\\n\\n</rfmt>\n<rall>yes</rall>"
    "\n<starg></starg>\n<srpl></srpl>\n<scount>1</scount>\n<sout>yes</sout>"
    "\n<nfmt>general</nfmt>\n<ndec>2</ndec>\n<nang>degrees</nang>\n<pltng>on</pltng>"
    "\n<xmax>5</xmax>\n<xmin>-5</xmin>\n<ymax>5</ymax>\n<ymin>-5</ymin>"
    "\n<xintrvls>5</xintrvls>\n<yintrvls>5</yintrvls>\n<xycells>home,home</xycells></opts>";

}  // namespace

TEST_F(Writer, AWebOfOneCell) {
    make_cell("other");
    cell_delete(cell_lookup("other"));
    refresh_views();
    type_text("Hi & bye");
    store_text_pane(1);
    cell_set_value(index_root(), val_new());
    val_make_number(cell_value(index_root()));
    EXPECT_EQ(written_web(), k_default_options +
                                 "\n<cell>\n<cname>home</cname>\n<text>Hi &amp; bye</text>"
                                 "\n<val>0</val></cell></eof>"s);
}

// Of names that are alike in what is written of them the first keeps it, and the others become
// different from it, from each other and from every name that is there.
TEST_F(RoundTrip, NamesThatBeginAlikeStayDifferentCells) {
    const std::string n44(44, 'n');
    Names names = {n44 + "_001",  n44 + "0001",   n44 + "0001a",      n44 + "0001b",
                   n44 + "0004x", n44 + "mmmm",   n44 + "mmmm1",      n44 + "MMMM2",
                   n44 + "mm m3", n44 + "mm_m3x", "b" + n44 + "mmm1", "b" + n44 + "mmm2"};
    for (char c = 'a'; c <= 'z'; ++c) {  // more than 20 numbers
        names.push_back(n44 + "mmmmz" + c);
    }
    for (const std::string &name : names) {
        make_cell(name.c_str(), name);
    }
    refresh_views();
    ASSERT_EQ(cell_names().size(), names.size() + 1);
    cell_delete(make_cell((n44 + "mmmm0").c_str()));
    ASSERT_EQ(read_web(written_web()), 0);
    EXPECT_TRUE(web_read_was_whole());
    const std::string settled = written_web();
    ASSERT_EQ(read_web(settled), 0);
    EXPECT_EQ(written_web(), settled);
    std::multiset<std::string> texts;
    for (const std::string &name : cell_names()) {
        EXPECT_LE(name.size(), k_cellname_max);
        texts.insert(stored_text(name.c_str()));
    }
    texts.erase("");
    EXPECT_EQ(texts, std::multiset<std::string>(names.begin(), names.end()));
    EXPECT_EQ(stored_text((n44 + "mmmm").c_str()), n44 + "mmmm");
    EXPECT_EQ(stored_text((n44 + "0001").c_str()), n44 + "0001");
}

TEST_F(RoundTrip, TheGuideChangesNoByte) {
    const std::string guide = file_bytes(ENGINE_TEST_SAMPLES "guide.qvx");
    ASSERT_GT(guide.size(), 10000U);
    EXPECT_EQ(read_web(guide), 0);
    EXPECT_EQ(written_web(), guide);
}

// Words that mean something somewhere, and bytes of every value but line feeds, which would grow
// when read.
static std::string random_text(std::minstd_rand *random, uint32_t longest) {
    static const Names k_pieces = {"home ", "Alpha", "beta_1 ", "BETA 1", "zoo\r\n", "x_9", "\\n",
                                   "\\",    "'",     "\"",      "_a",     "<",       "&",   "&lt;"};
    std::string s;
    for (auto n = (*random)() % longest; n > 0; --n) {
        const size_t pick = (*random)() % (2 * k_pieces.size());
        const char any = static_cast<char>(1 + (*random)() % 255);
        s += pick < k_pieces.size() ? k_pieces[pick] : std::string(1, any == '\n' ? '\r' : any);
    }
    return s;
}

static void make_random_web(std::minstd_rand *random) {
    web_reset("home");
    for (auto n = (*random)() % 60; n > 0; --n) {
        static const Names k_names = {"alpha", "beta 1", "zoo", "x 9", "a'b\\", "home"};
        std::string name = n < k_names.size() ? k_names[n] : "n" + random_text(random, 12);
        CellHandle cell = cell_lookup(name.c_str());
        cell = cell != 0 ? cell : cell_create(index_root_address(), name.c_str());
        const std::string text = random_text(random, n == 5 ? 3000 : 40);
        cell_replace_text(cell, text.data(), static_cast<uint32_t>(text.size()));
        if (cell_script(cell) == 0) {
            cell_set_script(cell, text_from_cstring(random_text(random, 10).c_str()));
            cell_set_value(cell, val_from_text(text_from_cstring(random_text(random, 10).c_str())));
        }
    }
    const bool escapes = (*random)() % 2 != 0;  // enough of them to fill a buffer
    for (uint32_t id = 0; id < k_saved_option_count; ++id) {
        const std::string value = random_text(random, 300);
        BlockHandle text =
            text_from_cstring(escapes ? std::string(value.size(), '<').c_str() : value.c_str());
        option_apply_text(static_cast<OptionId>(id), text);
        chain_free(text);
    }
}

// A write that fails, or takes a part only, stops at its buffer wherever that ends.
static void expect_writing_to_stop(const std::string &whole, size_t room) {
    int code = 0;
    take_log();
    EXPECT_EQ(written_web(&code, room), whole.substr(0, room));
    EXPECT_EQ(code, -4);
    EXPECT_EQ(take_log(), Log{"status UNABLE TO WRITE TO WEB FILE"});
}

TEST_F(RoundTrip, RandomWebsAreReadAgainAndReportedAsTheModelSays) {
    std::minstd_rand random(20);
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE(round);
        make_random_web(&random);
        const std::string file = written_web();
        ASSERT_EQ(read_web(file), 0);
        ASSERT_EQ(written_web(), file);
        for (size_t buffer = 0; buffer + k_byte_buffer_size < file.size();
             buffer += k_byte_buffer_size) {
            expect_writing_to_stop(file, buffer);
            expect_writing_to_stop(file, buffer + random() % k_byte_buffer_size);
        }
        next_cell();
        go_to_name(round % 2 == 0 ? "zoo" : "home");
        for (uint8_t type = 1; type <= k_rtype_max; ++type) {
            set_option_rtype(type);
            set_option_rall(round % 2 == 0 ? 1 : 0);
            host().selected_text = random_text(&random, 100);
            host().console.clear();
            const std::string expected = model_report();
            report_run();
            ASSERT_EQ(host().console, expected);
            ASSERT_EQ(report_result(), 0);
        }
        ASSERT_EQ(check_engine(), "");
    }
}
