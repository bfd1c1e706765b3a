// What each command does, by the pane that is active: one table, compared with what is seen.
#include "shell/commands.h"

#include "tests/shell/shell_test.h"

#include "version.h"

#include <map>
#include <span>
#include <utility>

#include <aygshell.h>

namespace {

constexpr WORD k_enter_key = 1;  // no command: the key, pressed in the pane

using Sight = std::map<std::string, std::string>;

std::string question_in(const std::string &dialog) {
    for (const char *text :
         {"Enter New Cellname", "Delete current cell?", "Choose Zoom Factor", QUORVANE_ABOUT_TITLE,
          "Replace", "Settings", "No such cell. Create it?", "Save As", "Open"}) {
        if (dialog.find(text) != std::string::npos) {
            return text;
        }
    }
    return dialog;
}

std::string selection_of(HWND pane) {
    const auto start = static_cast<size_t>(sci(pane, SCI_GETSELECTIONSTART));
    const auto end = static_cast<size_t>(sci(pane, SCI_GETSELECTIONEND));
    return pane_text(pane).substr(start, end - start);
}

std::string clipboard() {
    std::string text;
    if (OpenClipboard(nullptr)) {
        HANDLE memory = GetClipboardData(CF_TEXT);
        text = memory ? static_cast<const char *>(GlobalLock(memory)) : "";
        GlobalUnlock(memory);
        CloseClipboard();
    }
    return text;
}

constexpr const char *k_panes[] = {"box", "text", "list", "tabs", "console"};

Sight look() {
    return {{"asks", question_in(unexpected_dialogs())},
            {"box", box_text()},
            {"cell", current_name()},
            {"cells", std::to_string(item_count())},
            {"clipboard", clipboard()},
            {"console", pane_text(console_pane()).substr(0, 14)},
            {"console selection", selection_of(console_pane())},
            {"pane", k_panes[active_pane()]},
            {"says", status_text()},
            {"text", words()},
            {"text selection", selection_of(text_pane())}};
}

// What follows from something else: the name and text of another cell, where a changed text is
// selected.
bool goes_without_saying(const std::string &what, Sight before, Sight after) {
    return what == "box"                 ? after["box"] == after["cell"]
           : what == "text"              ? after["cell"] != before["cell"]
           : what == "text selection"    ? after["text"] != before["text"]
           : what == "console selection" ? after["console"] != before["console"]
                                         : false;
}

struct Commands : ShellTest {
    // In the middle of the trail from home over plan to zeta, with an unfinished name in the box
    // and, in both text panes, something to undo and perhaps a word selected.
    void prepare(PaneIndex pane, bool selected) {
        set_web_changed(false);
        write_file(path, web_of("", cell_of("plan", "new home") + cell_of("zeta")));
        open_web_path(path.c_str());
        go_to_name("plan");
        go_to_name("zeta");
        back();
        sci_text(console_pane(), SCI_SETTEXT, 0, "new home");
        for (HWND window : {text_pane(), console_pane()}) {
            sci(window, SCI_EMPTYUNDOBUFFER);
            sci_text(window, SCI_INSERTTEXT, 0, "x ");
        }
        select(text_pane(), 2, selected ? 5 : 2);
        select(console_pane(), 6, selected ? 10 : 6);
        sci_text(text_pane(), SCI_COPYTEXT, 4, "clip");
        show_tab(pane == k_pane_text ? 1 : pane == k_pane_console ? 2 : 0);
        SetFocus(pane_window(pane));
        SetWindowTextW(cellname_edit(), pane == k_pane_box ? L"fresh" : L"plan");
        set_web_changed(false);
        set_option_rfmt("\\N ");
        show_status_message("-");
        run();
    }

    static std::string outcome(WORD id) {
        Sight before = look();
        if (id == k_enter_key) {
            press(GetFocus(), VK_RETURN);
        } else {
            command(id);
        }
        const Sight after = look();
        std::string all;
        for (const auto &[what, seen] : after) {
            if (seen != before[what] && !goes_without_saying(what, before, after)) {
                all += (all.empty() ? "" : ", ") + what + " " + seen;
            }
        }
        return all;
    }
};

struct Row {
    WORD command;
    const char *box, *list, *text, *console;
};

constexpr Row everywhere(WORD command, const char *outcome) {
    return {command, outcome, outcome, outcome, outcome};
}

// A command that shows a view changes the pane too, unless it is the view's own.
bool shows_own_view(const std::string &expected, PaneIndex pane) {
    return expected.find(std::string(", pane ") + k_panes[pane]) != std::string::npos;
}

// Quitting has tests of its own.
constexpr Row k_with_a_selection[] = {
    everywhere(CMD_FILE_NEW, "cell home, cells 1, console , pane list"),
    everywhere(CMD_FILE_OPEN, "asks Open"),
    everywhere(CMD_FILE_SAVE, ""),
    everywhere(CMD_FILE_SAVE_AS, "asks Save As"),
    everywhere(CMD_REPORT, "console home plan zeta"),
    {CMD_SELECT_ALL, "", "", "text selection x new home", "console selection x new home"},
    {CMD_CUT, "", "", "clipboard new, text x  home", "clipboard home, console x new "},
    {CMD_COPY, "", "", "clipboard new", "clipboard home"},
    {CMD_PASTE, "", "", "text x clip home", "console x new clip"},
    {CMD_DELETE, "", "", "text x  home", "console x new "},
    {CMD_UNDO, "", "", "text new home", "console new home"},
    everywhere(CMD_FIND, "asks Replace, says Nothing to search for"),
    everywhere(CMD_SETTINGS, "asks Settings"),
    everywhere(CMD_ZOOM, "asks Choose Zoom Factor"),
    {CMD_CELL_NEW, "cell fresh, cells 4", "asks Enter New Cellname", "cell new, cells 4",
     "cell home, says Cell already exists, linking to it"},
    everywhere(CMD_CELL_CLONE, "asks Enter New Cellname"),
    everywhere(CMD_CELL_DELETE, "asks Delete current cell?"),
    everywhere(CMD_CELL_PREVIOUS, "cell home"),
    everywhere(CMD_CELL_NEXT, "cell zeta"),
    everywhere(CMD_BACK, "cell home"),
    {CMD_FOLLOW, "cell fresh, cells 4", "cell zeta", "asks No such cell. Create it?", "cell home"},
    everywhere(CMD_HELP_OVERVIEW, "console Quorvane reads, pane console"),
    everywhere(CMD_HELP_REPORT_FORMAT, "console For a formatte, pane console"),
    everywhere(CMD_HELP_MORE, "console Requests for i, pane console"),
    everywhere(CMD_HELP_ABOUT, "asks " QUORVANE_ABOUT_TITLE),
    {CMD_NEXT_PANE, "pane list", "pane box", "pane box", "pane box"},
    everywhere(CMD_SPARE_BUTTON, ""),
    everywhere(CMD_CLOSE_MODELESS, ""),
    {k_enter_key, "cell fresh, cells 4", "", "text x \r\n home", "console x new \r\n"},
};

constexpr Row k_without_a_selection[] = {
    everywhere(CMD_CUT, ""),
    everywhere(CMD_COPY, ""),
    {CMD_PASTE, "", "", "text x clipnew home", "console x new cliphome"},
    {CMD_DELETE, "", "", "text x ew home", "console x new ome"},
    {CMD_CELL_NEW, "cell fresh, cells 4", "asks Enter New Cellname", "asks Enter New Cellname",
     "asks Enter New Cellname"},
    {CMD_FOLLOW, "cell fresh, cells 4", "cell zeta", "cell zeta", "cell zeta"},
};

// The grey items of a pop-up as it opens.
std::string grey_items(WPARAM button) {
    HMENU popup = reinterpret_cast<HMENU>(
        SendMessageW(menu_bar(), SHCMBM_GETSUBMENU, 0, static_cast<LPARAM>(button)));
    SendMessageW(main_window(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
    std::string grey;
    for (int i = 0; i < GetMenuItemCount(popup); ++i) {
        const UINT state = GetMenuState(popup, static_cast<UINT>(i), MF_BYPOSITION);
        if ((state & MF_SEPARATOR) == 0 && (state & MF_GRAYED) != 0) {
            char text[32] = "";
            GetMenuStringA(popup, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
            grey += text;
        }
    }
    return grey;
}

TEST_F(Commands, ThatCanDoNothingAreGreyInTheirMenu) {
    start(web_of(""));
    for (const PaneIndex pane : {k_pane_box, k_pane_text, k_pane_list, k_pane_console}) {
        const bool text = pane == k_pane_text || pane == k_pane_console;
        SCOPED_TRACE(pane);
        prepare(pane, true);
        EXPECT_EQ(grey_items(STR_MENU_EDIT), text ? "" : "Select AllCut&Copy&Paste&Undo");
        EXPECT_EQ(grey_items(STR_MENU_FILE), "");
        EXPECT_EQ(grey_items(STR_MENU_CELL), "");
        command(CMD_BACK);
        EXPECT_EQ(grey_items(STR_MENU_CELL), "&Delete");
        select(active_pane_window(), 0, 0);
        sci(active_pane_window(), SCI_EMPTYUNDOBUFFER);
        OpenClipboard(main_window());
        EmptyClipboard();
        CloseClipboard();
        EXPECT_EQ(grey_items(STR_MENU_EDIT),
                  text ? "Cut&Copy&Paste&Undo" : "Select AllCut&Copy&Paste&Undo");
    }
}

TEST_F(Commands, DoWhatTheActivePaneCallsFor) {
    start(web_of(""));
    for (const bool selected : {true, false}) {
        std::span<const Row> rows = k_with_a_selection;
        for (const Row &row : selected ? rows : k_without_a_selection) {
            const std::pair<PaneIndex, const char *> cases[] = {{k_pane_box, row.box},
                                                                {k_pane_list, row.list},
                                                                {k_pane_text, row.text},
                                                                {k_pane_console, row.console}};
            for (const auto &[pane, expected] : cases) {
                prepare(pane, selected);
                const std::string own = std::string(", pane ") + k_panes[pane];
                EXPECT_EQ(outcome(row.command) + (shows_own_view(expected, pane) ? own : ""),
                          expected)
                    << row.command << " in pane " << pane;
            }
        }
    }
}

}  // namespace
