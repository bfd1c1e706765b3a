#include "pane/keys.h"

#include "pane/commands.h"

#include <Scintilla.h>

namespace {

constexpr int k_shift = SCMOD_SHIFT;
constexpr int k_ctrl = SCMOD_CTRL;
constexpr int k_alt = SCMOD_ALT;

constexpr struct {
    uint16_t virtual_key;
    uint16_t key;  // SCK_..., or the letter
} k_names[] = {
    {VK_DOWN, SCK_DOWN},     {VK_UP, SCK_UP},         {VK_LEFT, SCK_LEFT},
    {VK_RIGHT, SCK_RIGHT},   {VK_HOME, SCK_HOME},     {VK_END, SCK_END},
    {VK_PRIOR, SCK_PRIOR},   {VK_NEXT, SCK_NEXT},     {VK_DELETE, SCK_DELETE},
    {VK_INSERT, SCK_INSERT}, {VK_ESCAPE, SCK_ESCAPE}, {VK_BACK, SCK_BACK},
    {VK_RETURN, SCK_RETURN}, {VK_ADD, SCK_ADD},       {VK_SUBTRACT, SCK_SUBTRACT},
    {VK_DIVIDE, SCK_DIVIDE},
};

struct KeyRow {
    uint16_t key;
    int8_t modifiers;
    uint16_t command;
};

constexpr KeyRow k_keys[] = {
    {SCK_DOWN, 0, SCI_LINEDOWN},
    {SCK_DOWN, k_shift, SCI_LINEDOWNEXTEND},
    {SCK_DOWN, k_ctrl, SCI_LINESCROLLDOWN},
    {SCK_UP, 0, SCI_LINEUP},
    {SCK_UP, k_shift, SCI_LINEUPEXTEND},
    {SCK_UP, k_ctrl, SCI_LINESCROLLUP},
    {SCK_LEFT, 0, SCI_CHARLEFT},
    {SCK_LEFT, k_shift, SCI_CHARLEFTEXTEND},
    {SCK_LEFT, k_ctrl, SCI_WORDLEFT},
    {SCK_LEFT, k_shift | k_ctrl, SCI_WORDLEFTEXTEND},
    {SCK_RIGHT, 0, SCI_CHARRIGHT},
    {SCK_RIGHT, k_shift, SCI_CHARRIGHTEXTEND},
    {SCK_RIGHT, k_ctrl, SCI_WORDRIGHT},
    {SCK_RIGHT, k_shift | k_ctrl, SCI_WORDRIGHTEXTEND},
    {SCK_HOME, 0, SCI_VCHOME},
    {SCK_HOME, k_shift, SCI_VCHOMEEXTEND},
    {SCK_HOME, k_ctrl, SCI_DOCUMENTSTART},
    {SCK_HOME, k_shift | k_ctrl, SCI_DOCUMENTSTARTEXTEND},
    {SCK_END, 0, SCI_LINEEND},
    {SCK_END, k_shift, SCI_LINEENDEXTEND},
    {SCK_END, k_ctrl, SCI_DOCUMENTEND},
    {SCK_END, k_shift | k_ctrl, SCI_DOCUMENTENDEXTEND},
    {SCK_PRIOR, 0, SCI_PAGEUP},
    {SCK_PRIOR, k_shift, SCI_PAGEUPEXTEND},
    {SCK_NEXT, 0, SCI_PAGEDOWN},
    {SCK_NEXT, k_shift, SCI_PAGEDOWNEXTEND},
    {SCK_DELETE, 0, SCI_CLEAR},
    {SCK_DELETE, k_shift, SCI_CUT},
    {SCK_DELETE, k_ctrl, SCI_DELWORDRIGHT},
    {SCK_DELETE, k_shift | k_ctrl, SCI_DELLINERIGHT},
    {SCK_INSERT, 0, SCI_EDITTOGGLEOVERTYPE},
    {SCK_INSERT, k_shift, SCI_PASTE},
    {SCK_INSERT, k_ctrl, SCI_COPY},
    {SCK_ESCAPE, 0, SCI_CANCEL},
    {SCK_BACK, 0, SCI_DELETEBACK},
    {SCK_BACK, k_shift, SCI_DELETEBACK},
    {SCK_BACK, k_ctrl, SCI_DELWORDLEFT},
    {SCK_BACK, k_shift | k_ctrl, SCI_DELLINELEFT},
    {SCK_BACK, k_alt, SCI_UNDO},
    {SCK_RETURN, 0, SCI_NEWLINE},
    {SCK_RETURN, k_shift, SCI_NEWLINE},
    {SCK_ADD, k_ctrl, SCI_ZOOMIN},
    {SCK_SUBTRACT, k_ctrl, SCI_ZOOMOUT},
    {SCK_DIVIDE, k_ctrl, SCI_SETZOOM},
    {'A', k_ctrl, SCI_SELECTALL},
    {'C', k_ctrl, SCI_COPY},
    {'V', k_ctrl, SCI_PASTE},
    {'X', k_ctrl, SCI_CUT},
    {'Y', k_ctrl, SCI_REDO},
    {'Z', k_ctrl, SCI_UNDO},
};

constexpr uint32_t k_key_count = sizeof k_keys / sizeof k_keys[0];
static_assert(k_key_count <= 64, "a bit for each in Pane::cleared_keys");

uint32_t key_of(WPARAM virtual_key) {
    for (const auto &name : k_names) {
        if (name.virtual_key == virtual_key) {
            return name.key;
        }
    }
    return static_cast<uint32_t>(virtual_key);
}

bool held(int key) {
    return GetKeyState(key) < 0;
}

// The row of a key that does something; k_key_count without one.
uint32_t find_row(uint32_t key, int modifiers) {
    uint32_t row = 0;
    while (row < k_key_count && (k_keys[row].key != key || k_keys[row].modifiers != modifiers)) {
        ++row;
    }
    return row;
}

}  // namespace

int key_modifiers() {
    return (held(VK_SHIFT) ? k_shift : 0) | (held(VK_CONTROL) ? k_ctrl : 0) |
           (held(VK_MENU) ? k_alt : 0);
}

bool key_down(Pane *pane, WPARAM key) {
    const uint32_t row = find_row(key_of(key), key_modifiers());
    if (row == k_key_count) {
        return false;
    }
    const bool cleared = (pane->cleared_keys[row / 32] >> row % 32 & 1) != 0;
    return cleared || run_command(pane, k_keys[row].command);
}

void key_clear(Pane *pane, uint32_t definition) {
    const uint32_t row = find_row(definition & 0xFFFF, static_cast<int>(definition >> 16));
    if (row < k_key_count) {
        pane->cleared_keys[row / 32] |= 1U << row % 32;
    }
}
