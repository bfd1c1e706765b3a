// New cell, follow and Enter in the cellname box, by the pane that has the focus.
#include "shell/cell_commands.h"

#include "report/reports.h"
#include "resources/resource.h"
#include "shell/cellname_box.h"
#include "shell/scintilla.h"
#include "shell/text_pane.h"
#include "tests/shell/answers.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/options.h"

struct CellCommands : ShellTest {};

TEST_F(CellCommands, Smoke) {
    start(web_of("go to plan", cell_of("plan", "a plan")));
    EXPECT_EQ(item_count(), 2);
    EXPECT_EQ(box_text(), "home");
    EXPECT_TRUE(status_becomes("Ready"));
    show_tab(1);
    EXPECT_EQ(pane_text(text_pane()), "go to plan");
    EXPECT_EQ(style_at(text_pane(), 7), 2);
    EXPECT_EQ(style_at(text_pane(), 1), 0);
    click(text_pane(), 7);
    EXPECT_EQ(current_name(), "plan");
    std::string text;
    for (int i = 0; i < 300; ++i) {
        text += std::string(100, 'x') + "\r\n";
    }
    for (int i = 0; i < 10; ++i) {
        command(CMD_BACK);
    }
    set_option_rfmt("\\T\\n");
    set_option_rall(1);
    for (int i = 0; i < 100; ++i) {
        new_cell(("c" + std::to_string(i)).c_str());
        set_web_changed(false);
        sci_text(text_pane(), SCI_SETTEXT, 0, text.substr(0, 3000).c_str());
    }
    show_tab(2);
    for (int i = 0; i < 3; ++i) {
        DWORD t = GetTickCount();
        command(CMD_REPORT);
        printf("report %d bytes in %d ms\n", (int)sci(console_pane(), SCI_GETLENGTH),
               (int)(GetTickCount() - t));
        if (i == 1)
            show_tab(0);
    }
}
