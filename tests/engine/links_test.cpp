// Cell numbers, link lists and the report selection.
#include "tests/engine/engine_test.h"

#include "web/cell_numbers.h"
#include "web/link_list.h"
#include "web/links.h"
#include "web/report_selection.h"

using Links = EngineTest;

namespace {

// The names in the list of a cell with this text.
Names links_of(const std::string &text) {
    CellHandle cell = cell_lookup("t") != 0 ? cell_lookup("t") : make_cell("t");
    links_build(cell);
    cell_replace_text(cell, text.data(), static_cast<uint32_t>(text.size()));
    EXPECT_EQ(cell_out_pointers(cell), 0) << "of another text";
    const uint16_t before = blocks_in_use();
    links_build(cell);
    links_build_all();
    Names names;
    const BlockHandle list = cell_out_pointers(cell);
    for (LinkEntry *e = link_list_first(list); e != nullptr; e = link_list_next(list)) {
        if (e->kind == k_link_cell) {
            names.push_back(name_string(cell_by_number(link_target(e))));
        }
    }
    const size_t blocks = names.size() / 8 + 1;
    EXPECT_EQ(blocks_in_use() - before, text.empty() ? 0 : blocks + 1);
    if (list != 0) {  // kind, steps and owner
        EXPECT_EQ(block_ptr(list)[6], 1);
        EXPECT_EQ(block_get16(list, 16), 8 * blocks - 1);
        EXPECT_EQ(block_get16(list, 18), cell);
    }
    EXPECT_EQ(check_engine(), "");
    return names;
}

}  // namespace

TEST_F(Links, AreTheWordsThatNameCells) {
    for (const char *name : {"abc", "it", "s", "a", "b", "x1_y", "my cell", "Note!", "t"}) {
        make_cell(name);
    }
    struct Row {
        std::string text;
        Names names;
    };
    for (const Row &row :
         {Row{"", {}}, Row{"12 ... '\"!", {}}, Row{"homeward bound", {}}, Row{"it's", {"it", "s"}},
          Row{"1abc _abc .abc", {"abc", "abc", "abc"}}, Row{"a.b", {"a", "b"}},
          Row{"MY_CELL my cell X1_Y", {"my cell", "x1_y"}}, Row{"Note! note abc1 abc_", {}},
          Row{"\xE4"
              "abc\xFF"
              "a\x80\tb\r\nt",
              {"abc", "a", "b", "t"}},
          Row{"t t t t t t t", Names(7, "t")}, Row{"t t t t t t t t", Names(8, "t")},
          Row{times(40, "t "), Names(40, "t")}, Row{std::string(4092, ' ') + "abc abc", {"abc"}},
          Row{std::string(4093, ' ') + "abc", {}},
          Row{"abc" + std::string(65536 - 3, ' '), {"abc"}}}) {  // its length is 0 in 16 bits
        EXPECT_EQ(links_of(row.text), row.names) << row.text;
    }
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
    std::string many;
    for (uint32_t i = 0; i <= k_selection_max; ++i) {
        many += "abc ";
    }
    report_selection_build(many.c_str());
    EXPECT_EQ(report_selection_count(), k_selection_max);
    report_selection_build("");
    EXPECT_EQ(report_selection_at(0), 0);
}
