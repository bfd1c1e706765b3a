// Dragging selected words with the mouse, through the system's own drag and drop.
#include "tests/shell/shell_test.h"

#include <deque>

namespace {

struct Step {
    POINT at;      // on the screen
    DWORD button;  // MOUSEEVENTF_..., or 0 for a move
};

std::deque<Step> steps;

// Runs from the drag's own message loop too.
void CALLBACK next_step(HWND, UINT, UINT_PTR, DWORD) {
    if (steps.empty()) {
        return;
    }
    const Step step = steps.front();
    steps.pop_front();
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dx = MulDiv(step.at.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
    input.mi.dy = MulDiv(step.at.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | step.button;
    SendInput(1, &input, sizeof input);
}

POINT before_character(HWND pane, LRESULT position) {
    POINT point = {static_cast<LONG>(sci(pane, SCI_POINTXFROMPOSITION, 0, position)),
                   static_cast<LONG>(sci(pane, SCI_POINTYFROMPOSITION, 0, position)) + 6};
    ClientToScreen(pane, &point);
    return point;
}

struct Drag : ShellTest {
    // Drags what is selected from one position of a pane to another.
    static void drag(HWND pane, LRESULT from, LRESULT to) {
        const POINT start = before_character(pane, from);
        const POINT end = before_character(pane, to);
        steps = {{start, MOUSEEVENTF_LEFTDOWN},
                 {{start.x + 8, start.y}, 0},
                 {{end.x + 8, end.y}, 0},
                 {end, 0},
                 {end, MOUSEEVENTF_LEFTUP}};
        const UINT_PTR timer = SetTimer(nullptr, 0, 30, next_step);
        EXPECT_TRUE(run_until([] { return steps.empty() && GetKeyState(VK_LBUTTON) >= 0; }));
        run();
        KillTimer(nullptr, timer);
    }
};

TEST_F(Drag, MovesTheWordsInOneStepAndLeavesTheClipboardAlone) {
    start_in_text(web_of("one two plan", cell_of("plan", "")));
    sci_text(text_pane(), SCI_COPYTEXT, 4, "clip");
    const struct {
        LRESULT start, end, from, to;
        const char *result;  // no press is so near the one before that they make a double click
    } rows[] = {
        {0, 4, 1, 8, "two one plan"},   // forwards
        {4, 8, 5, 0, "two one plan"},   // backwards
        {4, 8, 7, 12, "one plantwo "},  // behind the last word
        {4, 8, 5, 6, "one two plan"},   // back into itself
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.to);
        set_web_changed(false);
        select(text_pane(), row.start, row.end);
        drag(text_pane(), row.from, row.to);
        const bool moved = row.result != std::string("one two plan");
        EXPECT_EQ(pane_text(text_pane()), row.result);
        EXPECT_EQ(web_changed(), moved);
        EXPECT_EQ(style_at(text_pane(), static_cast<LRESULT>(pane_text(text_pane()).find("plan"))),
                  row.to == 12 ? 0 : 2);
        if (moved) {
            command(CMD_UNDO);
            EXPECT_EQ(pane_text(text_pane()), "one two plan");
            sci(text_pane(), SCI_REDO);
            EXPECT_EQ(pane_text(text_pane()), row.result);
            command(CMD_UNDO);
        }
    }
    command(CMD_SELECT_ALL);
    command(CMD_PASTE);
    EXPECT_EQ(pane_text(text_pane()), "clip");
}

}  // namespace
