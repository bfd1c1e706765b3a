// Files and text dropped on the window and on a Scintilla pane.
#include "desktop_test.h"

#include <ole2.h>
#include <shlobj.h>

namespace {

constexpr UINT k_get_text_length = 2183;  // SCI_GETTEXTLENGTH

// What a drag carries is made by way of the clipboard.
IDataObject *dragged(UINT format, const void *bytes, size_t size) {
    HGLOBAL memory = GlobalAlloc(GHND, size);
    memcpy(GlobalLock(memory), bytes, size);
    GlobalUnlock(memory);
    OpenClipboard(nullptr);
    EmptyClipboard();
    SetClipboardData(format, memory);
    CloseClipboard();
    IDataObject *data = nullptr;
    OleGetClipboard(&data);
    return data;
}

IDataObject *dragged_files(const std::wstring &names) {
    DROPFILES head = {sizeof(DROPFILES), {}, FALSE, TRUE};
    std::string bytes(reinterpret_cast<const char *>(&head), sizeof head);
    bytes.append(reinterpret_cast<const char *>(names.data()), names.size() * sizeof(wchar_t));
    return dragged(CF_HDROP, (bytes + std::string(4, 0)).data(), bytes.size() + 4);
}

// Drags and drops as the system does. Returns the effect.
DWORD drop_on(HWND window, IDataObject *data) {
    IDropTarget *target = static_cast<IDropTarget *>(GetPropW(window, L"OleDropTargetInterface"));
    RECT rect;
    GetWindowRect(window, &rect);
    DWORD effect = DROPEFFECT_COPY | DROPEFFECT_MOVE;
    target->DragEnter(data, MK_LBUTTON, {rect.left + 9, rect.top + 9}, &effect);
    if (effect == DROPEFFECT_NONE) {
        target->DragLeave();
    } else {
        target->Drop(data, 0, {rect.left + 9, rect.top + 9}, &effect);
    }
    data->Release();
    return effect;
}

TEST_F(DesktopTest, DroppedWebFilesAreOpenedAndTextStillDrops) {
    const std::wstring files(L"C:\\other.txt\0C:\\dir with blanks\\Web.QVX\0", 40);
    for (int round = 0; round < 5; ++round) {  // more rounds than there are drop targets
        open_window();
        for (HWND place : {window, pane}) {
            EXPECT_EQ(drop_on(place, dragged_files(L"C:\\notes.txt")), DWORD{DROPEFFECT_NONE});
            EXPECT_EQ(drop_on(place, dragged_files(files)), DWORD{DROPEFFECT_COPY});
            EXPECT_TRUE(opened.empty()) << "opened while the source was waiting";
            ASSERT_TRUE(pump_until([this] { return !opened.empty(); }));
            EXPECT_EQ(opened[0], L"C:\\dir with blanks\\Web.QVX");
            opened.clear();
        }
        EXPECT_NE(drop_on(pane, dragged(CF_UNICODETEXT, L"words", 12)), DWORD{DROPEFFECT_NONE});
        EXPECT_EQ(SendMessageW(pane, k_get_text_length, 0, 0), 5);
        EnableWindow(window, FALSE);
        EXPECT_EQ(drop_on(window, dragged_files(files)), DWORD{DROPEFFECT_NONE}) << "busy";
        DestroyWindow(window);
    }
}

}  // namespace
