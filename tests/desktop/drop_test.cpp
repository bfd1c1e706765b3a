// Files and text dropped on the window and on a Scintilla pane.
#include "desktop_test.h"

#include <ole2.h>
#include <shlobj.h>

namespace {

constexpr UINT k_get_text = 2182;  // SCI_GETTEXT

// Memory as the system hands it over: a list of files, or text. The receiver frees it.
HGLOBAL file_list(const std::wstring &names) {
    const std::wstring list = names + L'\0';
    const size_t size = sizeof(DROPFILES) + (list.size() + 1) * sizeof(wchar_t);
    HGLOBAL memory = GlobalAlloc(GHND, size);
    DROPFILES *head = static_cast<DROPFILES *>(GlobalLock(memory));
    head->pFiles = sizeof(DROPFILES);
    head->fWide = TRUE;
    memcpy(head + 1, list.data(), list.size() * sizeof(wchar_t));
    GlobalUnlock(memory);
    return memory;
}

HGLOBAL text_memory(const std::wstring &text) {
    HGLOBAL memory = GlobalAlloc(GHND, (text.size() + 1) * sizeof(wchar_t));
    memcpy(GlobalLock(memory), text.data(), text.size() * sizeof(wchar_t));
    GlobalUnlock(memory);
    return memory;
}

// What a drag carries: files or text, whichever is not empty.
struct DragData final : IDataObject {
    std::wstring files;
    std::wstring text;

    HRESULT WINAPI QueryInterface(REFIID, void **) override { return E_NOINTERFACE; }
    ULONG WINAPI AddRef() override { return 1; }
    ULONG WINAPI Release() override { return 1; }
    HRESULT WINAPI GetData(FORMATETC *format, STGMEDIUM *medium) override {
        if (QueryGetData(format) != S_OK) {
            return DV_E_FORMATETC;
        }
        medium->tymed = TYMED_HGLOBAL;
        medium->hGlobal = format->cfFormat == CF_HDROP ? file_list(files) : text_memory(text);
        medium->pUnkForRelease = nullptr;
        return S_OK;
    }
    HRESULT WINAPI GetDataHere(FORMATETC *, STGMEDIUM *) override { return E_NOTIMPL; }
    HRESULT WINAPI QueryGetData(FORMATETC *format) override {
        const bool known = format->cfFormat == CF_HDROP
                               ? !files.empty()
                               : format->cfFormat == CF_UNICODETEXT && !text.empty();
        return known ? S_OK : DV_E_FORMATETC;
    }
    HRESULT WINAPI GetCanonicalFormatEtc(FORMATETC *, FORMATETC *) override { return E_NOTIMPL; }
    HRESULT WINAPI SetData(FORMATETC *, STGMEDIUM *, BOOL) override { return E_NOTIMPL; }
    HRESULT WINAPI EnumFormatEtc(DWORD, IEnumFORMATETC **) override { return E_NOTIMPL; }
    HRESULT WINAPI DAdvise(FORMATETC *, DWORD, IAdviseSink *, DWORD *) override {
        return E_NOTIMPL;
    }
    HRESULT WINAPI DUnadvise(DWORD) override { return E_NOTIMPL; }
    HRESULT WINAPI EnumDAdvise(IEnumSTATDATA **) override { return E_NOTIMPL; }
};

// Drags and drops as the system does, in the middle of `window`. Returns the effect.
DWORD drop_on(HWND window, DragData *data) {
    IDropTarget *target = static_cast<IDropTarget *>(GetPropW(window, L"OleDropTargetInterface"));
    if (!target) {
        return DROPEFFECT_NONE;
    }
    RECT rect;
    GetWindowRect(window, &rect);
    const POINTL point = {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    const DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK;
    DWORD effect = allowed;
    target->DragEnter(data, MK_LBUTTON, point, &effect);
    effect = allowed;
    target->DragOver(MK_LBUTTON, point, &effect);
    if (effect == DROPEFFECT_NONE) {
        target->DragLeave();
        return effect;
    }
    effect = allowed;
    target->Drop(data, 0, point, &effect);
    return effect;
}

std::string text_of(HWND pane) {
    char text[64] = "";
    SendMessageW(pane, k_get_text, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

TEST_F(DesktopTest, DroppedWebFilesAreOpened) {
    open_window();
    DragData data;
    data.files = std::wstring(L"C:\\other.txt\0C:\\dir with blanks\\Web.QVX\0", 40);
    for (HWND place : {window, pane}) {
        EXPECT_NE(drop_on(place, &data) & DROPEFFECT_COPY, 0U);
        EXPECT_EQ(drop_on(place, &data) & DROPEFFECT_MOVE, 0U) << "the original would be removed";
        EXPECT_TRUE(opened.empty()) << "opened while the source was waiting";
        EXPECT_TRUE(pump_until([this] { return !opened.empty(); }));
        EXPECT_EQ(opened[0], L"C:\\dir with blanks\\Web.QVX");
        opened.clear();
        pump();
        opened.clear();
    }
    SendMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(file_list(data.files)), 0);
    EXPECT_TRUE(pump_until([this] { return !opened.empty(); }));
}

TEST_F(DesktopTest, OtherFilesAndBusyTimesAreRefused) {
    open_window();
    DragData data;
    data.files = L"C:\\notes.txt";
    EXPECT_EQ(drop_on(window, &data), DWORD{DROPEFFECT_NONE});
    EXPECT_EQ(drop_on(pane, &data), DWORD{DROPEFFECT_NONE});
    data.files = L"C:\\web.qvx";
    EnableWindow(window, FALSE);
    EXPECT_EQ(drop_on(window, &data), DWORD{DROPEFFECT_NONE});
    SendMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(file_list(data.files)), 0);
    EnableWindow(window, TRUE);
    pump();
    EXPECT_TRUE(opened.empty());
}

TEST_F(DesktopTest, TextStillDropsIntoThePane) {
    open_window();
    DragData data;
    data.text = L"dropped words";
    EXPECT_NE(drop_on(pane, &data), DWORD{DROPEFFECT_NONE});
    EXPECT_EQ(text_of(pane), "dropped words");
    EXPECT_EQ(drop_on(window, &data), DWORD{DROPEFFECT_NONE});
}

TEST_F(DesktopTest, ClosedWindowsGiveTheirDropTargetsBack) {
    DragData data;
    data.files = L"C:\\web.qvx";
    for (int round = 0; round < 5; ++round) {  // more rounds than there are targets
        open_window();
        ASSERT_NE(drop_on(pane, &data), DWORD{DROPEFFECT_NONE});
        DestroyWindow(window);
    }
}

}  // namespace
