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
    if (!steps.empty()) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dx = MulDiv(steps[0].at.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
        input.mi.dy = MulDiv(steps[0].at.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
        input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | steps[0].button;
        SendInput(1, &input, sizeof input);
        steps.pop_front();
    }
}

POINT before_character(LRESULT position) {
    POINT point = {static_cast<LONG>(sci(text_pane(), SCI_POINTXFROMPOSITION, 0, position)),
                   static_cast<LONG>(sci(text_pane(), SCI_POINTYFROMPOSITION, 0, position)) + 6};
    ClientToScreen(text_pane(), &point);
    return point;
}

// Drags what is selected from one position of the text pane to another.
void drag(LRESULT from, LRESULT to) {
    const POINT start = before_character(from);
    const POINT end = before_character(to);
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

struct Drag : ShellTest {};

TEST_F(Drag, MovesTheWordsInOneStepAndLeavesTheClipboardAlone) {
    start_in_text(web_of("one two plan", cell_of("plan")));
    sci_text(text_pane(), SCI_COPYTEXT, 4, "clip");
    const struct {
        LRESULT start, end, from, to;
        std::string result;  // no press is so near the one before that they make a double click
    } rows[] = {
        {0, 4, 1, 8, "two one plan"},   // forwards
        {4, 8, 5, 0, "two one plan"},   // backwards
        {4, 8, 7, 12, "one plantwo "},  // behind the last word
        {4, 8, 5, 6, "one two plan"},   // back into itself
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.to);
        const bool moved = row.result != "one two plan";
        set_web_changed(false);
        select(text_pane(), row.start, row.end);
        drag(row.from, row.to);
        EXPECT_EQ(words(), row.result);
        EXPECT_EQ(web_changed(), moved);
        EXPECT_EQ(style_at(text_pane(), static_cast<LRESULT>(words().find("plan"))),
                  row.to == 12 ? 0 : 2);
        if (moved) {
            EXPECT_EQ(after(CMD_UNDO, words), "one two plan");
        }
    }
    command(CMD_SELECT_ALL);
    EXPECT_EQ(after(CMD_PASTE, words), "clip");
}

}  // namespace
