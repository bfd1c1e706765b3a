// Cell numbers, link lists and the report selection.
#include "tests/engine/engine_test.h"

#include "core/text.h"
#include "web/cells.h"
#include "web/links.h"

using Links = EngineTest;

namespace {

// The names in a cell's list, "?" for a target without a number, up to the end entry.
Names targets(CellHandle cell) {
    Names names;
    LinkEntry *e = link_list_first(cell_out_pointers(cell));
    for (; e != nullptr && e->kind == k_link_cell; e = link_list_next(cell_out_pointers(cell))) {
        CellHandle target = cell_by_number(link_target(e));
        names.push_back(target == 0 ? "?" : name_string(target));
    }
    EXPECT_EQ(e == nullptr, cell_out_pointers(cell) == 0);
    EXPECT_TRUE(e == nullptr || e->kind == k_link_end);
    return names;
}

Names links_of(const std::string &text) {
    CellHandle cell = cell_lookup("t") != 0 ? cell_lookup("t") : make_cell("t");
    chain_free(cell_text(cell));
    cell_set_text(cell, text_from_cstring(text.c_str()));
    uint16_t before = blocks_in_use();
    links_build(cell);
    Names names = targets(cell);
    EXPECT_EQ(check_engine(), "");
    links_drop(cell);
    EXPECT_EQ(blocks_in_use(), before);
    return names;
}

std::string times(int n, const std::string &word) {
    std::string text;
    for (int i = 0; i < n; ++i) {
        text += word;
    }
    return text;
}

}  // namespace

TEST_F(Links, AreTheWordsThatNameCells) {
    for (const char *name : {"abc", "it", "s", "a", "b", "x1_y", "my cell", "Note!", "t"}) {
        make_cell(name);
    }
    struct Row {
        const char *text;
        Names names;
    };
    for (const Row &row :
         {Row{"", {}}, Row{"12 ... '\"!", {}}, Row{"home home home", {"home", "home", "home"}},
          Row{"homeward bound", {}}, Row{"1abc _abc .abc", {"abc", "abc", "abc"}},
          Row{"it's", {"it", "s"}}, Row{"a.b", {"a", "b"}}, Row{"X1_Y", {"x1_y"}},
          Row{"MY_CELL my cell", {"my cell"}}, Row{"Note! note", {}}, Row{"abc1 abc_", {}},
          Row{"\xE4"
              "abc\xFF"
              "a\x80",
              {"abc", "a"}},
          Row{"a\tb\r\nt", {"a", "b", "t"}}}) {
        EXPECT_EQ(links_of(row.text), row.names) << row.text;
    }
}

TEST_F(Links, FillBlocksOfEight) {
    make_cell("t");
    struct Row {
        int names;
        int blocks;  // the header too
    };
    for (Row row : {Row{0, 2}, Row{7, 2}, Row{8, 3}, Row{15, 3}, Row{16, 4}}) {
        CellHandle cell =
            make_cell(("u" + std::to_string(row.names)).c_str(), times(row.names, "t "));
        uint16_t before = blocks_in_use();
        links_build(cell);
        EXPECT_EQ(blocks_in_use() - before, row.names == 0 ? 0 : row.blocks);
        EXPECT_EQ(targets(cell), Names(static_cast<size_t>(row.names), "t"));
        EXPECT_EQ(check_engine(), "");
        links_build(cell);
        EXPECT_EQ(blocks_in_use() - before, row.names == 0 ? 0 : row.blocks) << "built twice";
        links_drop(cell);
        EXPECT_EQ(blocks_in_use(), before);
    }
    EXPECT_EQ(links_of("."), Names());
}

TEST_F(Links, SeeTheFirst4095Characters) {
    make_cell("abc");
    EXPECT_EQ(links_of(std::string(4092, ' ') + "abc abc"), Names{"abc"});
    EXPECT_EQ(links_of(std::string(4093, ' ') + "abc"), Names());
    EXPECT_EQ(links_of(std::string(4094, ' ') + "t abc"), Names{"t"});
    EXPECT_EQ(links_of(std::string(65536 - 3, ' ') + "abc"), Names());
    EXPECT_EQ(links_of("abc" + std::string(65536 - 3, ' ')), Names{"abc"}) << "length 0 in 16 bits";
}

TEST_F(Links, CellsBeyondThe256thHaveNoNumber) {
    char name[8];
    for (int i = 0; i < 300; ++i) {
        snprintf(name, sizeof name, "c%03d", i);
        make_cell(name);
    }
    EXPECT_EQ(cell_number_of(cell_lookup("c000")), 0);
    EXPECT_EQ(cell_number_of(cell_lookup("c255")), 255);
    EXPECT_EQ(cell_number_of(cell_lookup("c256")), -1);
    EXPECT_EQ(cell_number_of(0), -1);
    EXPECT_EQ(cell_by_number(255), cell_lookup("c255"));
    EXPECT_EQ(cell_by_number(256) | cell_by_number(-1) | cell_by_number(-32768), 0);
    EXPECT_EQ(links_of("c255 c256 c000"), (Names{"c255", "?", "c000"}));
    make_cell("b");
    EXPECT_EQ(cell_number_of(cell_lookup("c255")), -1);
    EXPECT_EQ(links_of("c254 c255"), (Names{"c254", "?"}));
}

TEST_F(Links, NameACellHoweverOften) {
    CellHandle home = index_root();
    CellHandle a = make_cell("a", "home a home");
    CellHandle b = make_cell("b", "a");
    uint16_t before = blocks_in_use();
    links_build_all();
    EXPECT_TRUE(links_name(a, home) && links_name(a, a) && links_name(b, a));
    EXPECT_FALSE(links_name(b, home) || links_name(home, a) || links_name(a, b));
    EXPECT_EQ(check_engine(), "");
    links_drop_all();
    EXPECT_EQ(blocks_in_use(), before);
    EXPECT_FALSE(links_name(a, home));
    links_build(0);
    links_drop(0);
    link_list_free(0);
    EXPECT_EQ(link_list_first(0), nullptr);
    EXPECT_EQ(link_list_next(0), nullptr);
}

// Lists may own chains, though nothing makes such entries.
TEST_F(Links, FreeingAListFreesWhatItsEntriesOwn) {
    uint16_t before = blocks_in_use();
    BlockHandle list = link_list_new(1, index_root());
    EXPECT_EQ(link_list_first(list), nullptr);
    for (uint8_t kind : {k_link_chain_a, k_link_none, k_link_chain_b, k_link_end}) {
        LinkEntry *entry = link_list_append(list);
        entry->kind = kind;
        if (kind == k_link_chain_a || kind == k_link_chain_b) {
            BlockHandle owner = block_alloc(k_block_text);
            block_set16(owner, k_block_payload_at, text_from_cstring(times(9, "text ").c_str()));
            link_set_target(entry, owner);
        }
    }
    EXPECT_EQ(blocks_in_use(), before + 2 + 2 * 3);
    link_list_free(list);
    EXPECT_EQ(blocks_in_use(), before);
}

TEST_F(Links, TheReportSelectionHasTheCellsThatWordsName) {
    make_cell("abc");
    make_cell(std::string(48, 'w').c_str());
    report_selection_build(("home, abc;no 1home " + std::string(60, 'w')).c_str());
    Names names;
    for (uint32_t i = 0; i < report_selection_count(); ++i) {
        names.push_back(name_string(report_selection_at(i)));
    }
    EXPECT_EQ(names, (Names{"home", "abc", "home", std::string(48, 'w')}));
    EXPECT_EQ(report_selection_at(4), 0);
    report_selection_build(times(70, "abc ").c_str());
    EXPECT_EQ(report_selection_count(), k_selection_max);
    report_selection_build("");
    EXPECT_EQ(report_selection_count(), 0U);
}
