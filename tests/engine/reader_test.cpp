// The web reader: its tokenizer byte by byte, what becomes of each element, and how the cells that
// were read become a web.
#include "tests/engine/engine_test.h"

#include "file/read_watch.h"
#include "web/option_text.h"

using namespace std::string_literals;
using Reader = EngineTest;

namespace {

std::string text_read(const std::string &element) {
    EXPECT_EQ(read_web(cell_of("a", element) + "</eof>"), 0);
    return stored_text("a");
}

// The value text of an option after a file of just this element.
std::string option_read(const std::string &name, OptionId id, const std::string &text) {
    EXPECT_EQ(read_web("<" + name + ">" + text + "</" + name + ">"), 0);
    return option_value_text(id);
}

uint32_t depth_of(CellHandle node) {
    return node == 0 ? 0 : 1 + std::max(depth_of(node_left(node)), depth_of(node_right(node)));
}

// All that byte_input_next() gives, and once more behind the end.
std::string bytes_read(const std::string &file) {
    static ByteInput input;
    FILE *stream = fmemopen(const_cast<char *>(file.data()), file.size(), "rb");
    byte_input_bind(&input, stream);
    std::string bytes;
    while (const int c = byte_input_next(&input)) {
        bytes += static_cast<char>(c);
    }
    EXPECT_EQ(byte_input_next(&input), 0);
    fclose(stream);
    return bytes;
}

int findings;

void count_finding(const ReadNote *note) {
    findings += note->finding != ReadFinding::option ? 1 : 0;
}

}  // namespace

TEST_F(Reader, TextIsWhatTheTokenizerMakesOfIt) {
    const std::string digits = "0123456789012345678901234567890123456789";
    static const struct {
        std::string in, out;
    } rows[] = {
        {"", ""},
        {"&amp;&lt;&AMP;&Lt;", "&<&<"},
        {"&gt;&amps;&;x", "gtampsx"},
        {"a&b<c>/&;d", "ab<c>/&d"},
        {"&" + digits + ";x", digits.substr(0, 31) + "x"},
        {"<b>x</b>", "bxb"},
        {"<>x</>", "x"},
        {"<a/b//c>", "abc"},
        {"<" + digits + ">x", digits.substr(0, 31) + "x"},
        {"<text" + digits + ">x", "text" + digits.substr(0, 27) + "x"},
        {"<cell ><xintrvlss><t\x05xt><c@ll>", "cell xintrvlsst\x05xtc@ll"},
        {"lost<XiNtRvLs>\nx", "\r\nx"},
        {"\n<cell>\n&lt;\n<b>\n", "\r\n<\r\nb\r\n"},
        {"before<cell>after", "after"},
        {"<TeXt>after", "after"},
        {"\r\n", "\r\n"},
        {"\ra\r", "\ra\r"},
        {"\n\n\r\n\n", "\r\n\r\n\r\n\r\n"},
        {"\r<b>\n\r&amp;\n", "\rb\r\n\r&\r\n"},
        {"\x01\t\x1f\x7f\x80\x9c\xfe\xff\xfe", "\x01\t\x1f\x7f\x80\x9c\xfe\xff\xfe"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(text_read(row.in), row.out) << row.in;
        ASSERT_EQ(check_engine(), "") << row.in;
    }
}

TEST_F(Reader, NothingChangesWhereTheBufferEnds) {
    const std::string tail = "\r\nb\n\r<u>\n&amp;\r&lt;x\n";
    const std::string read = "\r\nb\r\n\ru\r\n&\r<x\r\n";
    const uint32_t head = static_cast<uint32_t>(cell_of("a", "").size());
    for (uint32_t end = 1; end < tail.size() + 12; ++end) {
        for (uint32_t border : {k_byte_buffer_size, 2 * k_byte_buffer_size}) {
            std::string pad(border - head + 12 - end, 'p');
            ASSERT_EQ(text_read(pad + tail), pad + read) << end;
            ASSERT_EQ(bytes_read(pad + "c\n\r\nd\n\n\re"), pad + "c\r\n\r\nd\r\n\r\n\re");
        }
    }
}

TEST_F(Reader, ASlashAnywhereClosesAndAnyEndEndsTheWeb) {
    const std::string a = "<cname>a</cname><text>";
    static const struct {
        std::string file;
        Names names;
        std::string text;
    } rows[] = {
        {"", {"home"}, "no cell a"},
        {"<cell><cname>home</cname></cell></eof>", {"home"}, "no cell a"},
        {"a<cna/me>x<te/xt>", {"a", "home"}, "x"},
        {"<cname>a</CNAME></cell>t</te/xt/>", {"a", "home"}, "t"},
        {"<cname>a</cname", {"home"}, "no cell a"},
        {a + "t", {"a", "home"}, ""},
        {a + "t&am", {"a", "home"}, ""},
        {a + "t<b", {"a", "home"}, ""},
        {a + "t</text", {"a", "home"}, ""},
        {a + "t</text>\n", {"a", "home"}, "t"},
        {a + "t</text><E/OF><cname>b</cname>", {"a", "home"}, "t"},
        {a + "t</text>\n<eof><cname>b</cname>", {"a", "home"}, "t"},
        {a + "t</text></eof ><cname>b</cname>", {"a", "b", "home"}, "t"},
        {a + "t\0</text><cname>b</cname>"s, {"a", "home"}, ""},
        {a + "t</text>&\0;<cname>b</cname>"s, {"a", "home"}, "t"},
        {a + "t</text><\0><cname>b</cname>"s, {"a", "home"}, "t"},
        {"\0"s + a, {"home"}, "no cell a"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(read_web(row.file), 0) << row.file;
        EXPECT_EQ(cell_names(), row.names) << row.file;
        EXPECT_EQ(stored_text("a"), row.text) << row.file;
        ASSERT_EQ(check_engine(), "") << row.file;
    }
}

TEST_F(Reader, ABadNameTakesAllCellsWithItAndKeepsTheOptions) {
    const std::string start = "<rall>no</rall>" + cell_of("a", "x") + "<val>1</val>" +
                              "<script>s</script><text>y</text>" + cell_of("home", "z");
    for (const char *name : {"", "1a", " a", "_a", "\xc3\xa9", "&amp;a", "{"}) {
        host().status = "";
        EXPECT_EQ(parse_web(start + "dropped<cname>" + name + "</cname></eof>"), -44) << name;
        EXPECT_EQ(host().status, "Bad Input File");
        refresh_views();
        EXPECT_EQ(cell_names(), Names{"home"});
        EXPECT_EQ(stored_text("home"), "");
        EXPECT_EQ(option_rall(), 0);
        ASSERT_EQ(check_engine(), "");
    }
}

TEST_F(Reader, ElementsBelongToTheCellBeforeThem) {
    EXPECT_EQ(read_web("<text>lost</text><val>1</val><script>lost</script>"
                       "<cname>a</cname><text>one</text><text>two</text>"
                       "<val>1</val><val>2</val><form>f</form><script>g</script>"
                       "<cname>b</cname><script>g</script><form>f</form></eof>"),
              0);
    Names state = visible_state();
    state.erase(state.begin(), state.begin() + 3);
    EXPECT_EQ(state, (Names{"cell a: two|g|2", "cell b: |f|", "cell home: ||"}));
}

TEST_F(Reader, ARecordOfAnyHomeFillsTheHomeCell) {
    EXPECT_EQ(read_web(cell_of("HOME", "one") + cell_of("Home", "two")), 0);
    EXPECT_EQ(cell_names(), Names{"home"});
    EXPECT_EQ(stored_text("home"), "two");
    EXPECT_EQ(read_web(cell_of("zoo", "") + cell_of("a", "")), 0);
    EXPECT_EQ(cell_names(), (Names{"a", "home", "zoo"}));
    EXPECT_EQ(current_name(), "home");
    EXPECT_EQ(index_root(), cell_lookup("home"));
}

TEST_F(Reader, OptionsTakeTheirWordsAndKeepToTheirLimits) {
    static const struct {
        const char *name;
        OptionId id;
        std::string in, out;
    } rows[] = {
        {"isrc", k_option_isrc, "disk", "keyboard"},
        {"scrfont", k_option_font_name, "Arial", "Tahoma"},
        {"iecho", k_option_iecho, "YES", "yes"},
        {"odest", k_option_odest, "print", "screen"},
        {"onewl", k_option_onewl, "CrLf", "crlf"},
        {"rtype", k_option_rtype, "list", "fmt"},
        {"rall", k_option_rall, "nope", "yes"},
        {"pltng", k_option_pltng, "off", "on"},
        {"citer", k_option_citer, "12x", "12"},
        {"scount", k_option_scount, "-3", "1"},
        {"citer</citer><citer", k_option_citer, "7</citer><citer>32768", "7"},
        {"ndec", k_option_ndec, "12", "8"},
        {"ndec", k_option_ndec, "99999999999999999999", "2"},
        {"xintrvls", k_option_xintrvls, "0", "1"},
        {"yintrvls", k_option_yintrvls, "256", "0"},
        {"xmax", k_option_xmax, "7.25 m", "7.2"},
        {"iname", k_option_iname, std::string(5000, 'i'), std::string(100, 'i')},
        {"rfmt", k_option_rfmt, "&lt;" + std::string(256, 'r'), "<" + std::string(255, 'r')},
        {"srpl", k_option_srpl, "a\nb", "a\r\nb"},
        {"xycells", k_option_xycells, std::string(300, 'x'), std::string(256, 'x')},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(option_read(row.name, row.id, row.in), row.out) << row.name << " " << row.in;
    }
    const struct {
        const char *name;
        OptionId id;
        Names words;
    } kept[] = {
        {"isrc", k_option_isrc, {"cell", "file", "keyboard"}},
        {"iecho", k_option_iecho, {"yes", "no"}},
        {"odest", k_option_odest, {"file", "screen"}},
        {"onewl", k_option_onewl, {"cr", "crlf", "lf"}},
        {"cdisp", k_option_cdisp, {"list", "fmtlist", "nolist"}},
        {"rtype", k_option_rtype, {"inptr", "outptr", "trail", "fmt"}},
        {"rall", k_option_rall, {"no", "yes"}},
        {"sout", k_option_sout, {"no", "yes"}},
        {"nfmt", k_option_nfmt, {"fixed", "exponent", "general"}},
        {"nang", k_option_nang, {"radians", "degrees"}},
    };
    for (const auto &row : kept) {
        for (const std::string &word : row.words) {
            EXPECT_EQ(option_read(row.name, row.id, word), word);
        }
    }
}

// What is lost is seen wherever the buffer ends, and whether or not somebody listens. What counts
// as lost is in the table of tests/cli/qvx_reports_test.cpp, too.
TEST_F(Reader, KnowsWhetherItTookInEverything) {
    const std::string a = "<cname>a</cname>", t = a + "<text>t</text>", end = "</eof>";
    const std::string k31 = "0123456789012345678901234567890";
    const std::string missing = "The end of this file is missing";
    static const struct {
        std::string file;
        bool whole;
        std::string message;
    } rows[] = {
        {"", true, ""},
        {"<b", false, ""},
        {"&", false, ""},
        {"\n<b>", false, ""},
        {"\0"s, false, ""},
        {"<opts>", false, missing},
        {t + "\n", false, missing},
        {t + "<b", false, missing},
        {t + "</eof\0>"s, false, missing},
        {t + "&\0;</eof>"s, false, missing},
        {end, true, ""},
        {t + "<eof>", true, ""},
        {a + "x</text>" + end, true, ""},
        {a + "<text>&gt;<b>&" + k31 + ";<" + k31 + "></text>" + end, true, ""},
        {a + "<text>&" + k31 + "x;</text>" + end, false, ""},
        {a + "<text><" + k31 + "x></text>" + end, false, ""},
        {"x" + t + end, false, ""},
        {"<text>\n</text><val></val>" + end, true, ""},
        {"<val>1</val>" + end, false, ""},
        {"<script>1</script>" + end, false, ""},
        {a + "<text></text><text>t</text><val> </val><val>1</val>" + end, true, ""},
        {a + "<val>1</val><val>2</val>" + end, false, ""},
        {a + "<cname>b</cname>" + a + "<val>1</val>" + end, false, ""},
        {a + "<script>1</script>" + a + end, false, ""},
        {a + "<form>1</form><script>1</script>" + end, false, ""},
        {t + "<cname>1</cname>" + end, false, "Bad Input File"},
    };
    for (const auto &row : rows) {
        for (size_t pad : {size_t{0}, k_byte_buffer_size - row.file.size() / 2}) {
            for (bool observed : {false, true}) {
                host().status = "";
                findings = 0;
                web_read_observe(observed ? count_finding : nullptr);
                parse_web(std::string(pad, '\n') + row.file);
                EXPECT_TRUE(row.whole || findings != 0 || !observed) << row.file;
                EXPECT_EQ(web_read_was_whole(), row.whole) << row.file << pad;
                EXPECT_EQ(web_read_failed(), row.message == "Bad Input File") << row.file;
                EXPECT_EQ(host().status, row.message) << row.file;
            }
        }
    }
    web_read_observe(nullptr);
    refresh_views();
    EXPECT_EQ(read_web(file_bytes(ENGINE_TEST_SAMPLES "guide.qvx")), 0);
    EXPECT_TRUE(web_read_was_whole());
}

TEST_F(Reader, AReadErrorKeepsWhatCameBefore) {
    std::string file;
    for (int i = 100; i < 300; ++i) {
        file += cell_of("n" + std::to_string(i), std::string(static_cast<size_t>(i / 10), 't'));
    }
    for (int32_t n = 0; n <= static_cast<int32_t>(file.size() / k_byte_buffer_size) + 1; ++n) {
        for (const bool short_read : {false, true}) {  // what is read short counts
            const size_t good =
                static_cast<size_t>(n) * k_byte_buffer_size + (short_read ? 100 : 0);
            ASSERT_EQ(read_web(file.substr(0, good)), 0);
            const std::string expected = written_web();
            EXPECT_FALSE(web_read_failed());
            byte_stream_fail_read_after(short_read ? -1 : n);
            EXPECT_EQ(short_read ? read_web_then_fail(file.substr(0, good)) : read_web(file), 0);
            byte_stream_fail_read_after(-1);
            EXPECT_TRUE(web_read_failed());
            EXPECT_FALSE(web_read_was_whole());
            EXPECT_EQ(host().status, "UNABLE TO READ FROM WEB FILE");
            EXPECT_EQ(written_web(), expected) << n;
        }
    }
}

TEST_F(Reader, AnOrderedFileOfManyCellsGivesABalancedIndex) {
    std::string file;
    for (int i = 1000; i < 1999; ++i) {
        file += cell_of("n" + std::to_string(i), "to n1000");
    }
    EXPECT_EQ(read_web(file + "</eof>"), 0);
    EXPECT_EQ(cell_names().size(), 1000U);
    EXPECT_LE(depth_of(index_root()), 11U);
}

// A staged "home" has a node and a name of its own until the end, and a token one block.
TEST_F(Reader, AWebThatLeavesFourBlocksFreeCanBeReadAgain) {
    for (const char *filled : {"about", "home", "zoo"}) {
        std::string file = "<cname>about</cname><val>12</val><cname>home</cname><cname>zoo</cname>";
        ASSERT_EQ(parse_web(file), 0);
        std::string text(size_t{k_text_block_chars} * (blocks_free() - 4U), 'f');
        file.insert(file.find(filled) + strlen(filled) + strlen("</cname>"),
                    "<text>" + text + "</text>");
        ASSERT_EQ(parse_web(file), 0);
        ASSERT_EQ(blocks_free(), 4) << filled;
        set_option_rfmt(std::string(256, 'r').c_str());
        set_option_xycells(std::string(256, 'x').c_str());
        std::string full = written_web();
        EXPECT_EQ(parse_web(full), 0);
        EXPECT_EQ(blocks_free(), 4) << filled;
        EXPECT_EQ(written_web(), full);
    }
    refresh_views();
}
