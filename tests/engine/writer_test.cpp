// The web writer, byte for byte, and webs that go through writing and reading.
#include "tests/engine/engine_test.h"
#include "tests/engine/web_files.h"

#include "core/byte_stream.h"
#include "core/text.h"
#include "file/web_reader.h"
#include "file/web_writer.h"
#include "web/cells.h"
#include "web/options.h"
#include "web/value.h"

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

// What web_write() makes of the cells alone.
std::string written_cells() {
    std::string web = written_web();
    size_t end = web.find("</opts>") + strlen("</opts>");
    return web.substr(end);
}

void set_script(CellHandle cell, const std::string &script) {
    cell_set_script(cell, text_from_cstring(script.c_str()));
}

void set_value(CellHandle cell, const std::string &text) {
    cell_set_value(cell, val_from_text(text_from_cstring(text.c_str())));
}

}  // namespace

TEST_F(Writer, AWebOfOneCell) {
    make_cell("other");
    cell_delete(cell_lookup("other"));
    refresh_views();
    type_text("Hi & bye");
    store_text_pane(1);
    EXPECT_EQ(written_web(),
              k_default_options +
                  "\n<cell>\n<cname>home</cname>\n<text>Hi &amp; bye</text></cell></eof>"s);
}

TEST_F(Writer, EscapesTwoBytesAndLeavesTheOthers) {
    std::string every;
    std::string escaped;
    for (int c = 1; c < 256; ++c) {
        every.push_back(static_cast<char>(c));
        escaped += c == '<' ? "&lt;" : c == '&' ? "&amp;" : std::string(1, static_cast<char>(c));
    }
    CellHandle a = make_cell("a<&>", every);
    set_script(a, "&amp;" + every);
    set_value(a, "<&>" + every);
    set_option_srpl("<&\n>");
    EXPECT_EQ(written_cells(), "\n<cell>\n<cname>a&lt;&amp;></cname>\n<text>" + escaped +
                                   "</text>\n<val>&lt;&amp;>" + escaped +
                                   "</val>\n<script>&amp;amp;" + escaped + "</script></cell>" +
                                   "\n<cell>\n<cname>home</cname></cell></eof>");
    EXPECT_NE(written_web().find("\n<srpl>&lt;&amp;\n></srpl>\n"), std::string::npos);
}

TEST_F(Writer, LeavesEmptyFieldsOutAndCutsNames) {
    const std::string name(60, 'n');
    CellHandle cell = make_cell(name.c_str());
    cell_set_text(cell, text_from_cstring(""));
    set_script(cell, "");
    set_value(cell, "");
    CellHandle number = make_cell("number");
    cell_set_value(number, val_new());
    val_set_number(cell_value(number), 0.125);
    EXPECT_EQ(written_cells(), "\n<cell>\n<cname>home</cname></cell>\n<cell>\n<cname>" +
                                   name.substr(0, 48) + "</cname></cell>" +
                                   "\n<cell>\n<cname>number</cname>\n<val>0.12</val></cell></eof>");
}

TEST_F(Writer, AFailedWriteStopsAtItsBuffer) {
    for (int i = 100; i < 200; ++i) {
        make_cell(("n" + std::to_string(i)).c_str(), std::string(100, 't'));
    }
    const std::string whole = written_web();
    const size_t buffers = (whole.size() + k_byte_buffer_size - 1) / k_byte_buffer_size;
    ASSERT_GT(buffers, 5U);
    for (size_t n = 0; n <= buffers; ++n) {
        take_log();
        int code = 1;
        byte_stream_fail_write_after(static_cast<int32_t>(n));
        std::string written = written_web(&code);
        byte_stream_fail_write_after(-1);
        EXPECT_EQ(code, n < buffers ? -4 : 0);
        EXPECT_EQ(take_log(), n < buffers ? Log{"status UNABLE TO WRITE TO WEB FILE"} : Log());
        EXPECT_EQ(written, whole.substr(0, n * k_byte_buffer_size));
    }
}

TEST_F(RoundTrip, TheGuideChangesNoByte) {
    const std::string guide = file_bytes(ENGINE_TEST_SAMPLES "guide.qvx");
    ASSERT_GT(guide.size(), 10000U);
    EXPECT_EQ(read_web(guide), 0);
    EXPECT_EQ(written_web(), guide);
}
