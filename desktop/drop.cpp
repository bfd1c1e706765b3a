#include "desktop/drop.h"

#include "desktop/frame.h"

#include <ole2.h>

namespace {

constexpr int k_path_max = 1024;

// What dropping a file may do to the original: nothing.
constexpr DWORD k_effects = DROPEFFECT_COPY | DROPEFFECT_LINK;

// COM calls these objects; they live in a table, because there are never more of them than windows.
struct DropTarget final : IDropTarget {
    LONG references = 0;           // 0: free
    IDropTarget *inner = nullptr;  // the target that the window had before
    bool carries_web = false;      // the drag under way brings a web file

    HRESULT WINAPI QueryInterface(REFIID id, void **object) override;
    ULONG WINAPI AddRef() override;
    ULONG WINAPI Release() override;
    HRESULT WINAPI DragEnter(IDataObject *data, DWORD keys, POINTL point, DWORD *effect) override;
    HRESULT WINAPI DragOver(DWORD keys, POINTL point, DWORD *effect) override;
    HRESULT WINAPI DragLeave() override;
    HRESULT WINAPI Drop(IDataObject *data, DWORD keys, POINTL point, DWORD *effect) override;
};

}  // namespace

// Quorvane.exe runs no constructors, so the table must need none.
static constinit struct DropTargets { DropTarget table[4]; } targets;

static struct Drops {
    HWND main_window;
    wchar_t dragged[k_path_max];  // the web file of the drag under way; there is one at a time
    wchar_t arrived[k_path_max];  // that of WM_DROPFILES
    wchar_t to_open[k_path_max];  // by the message that is on its way
} drops;

namespace {

bool is_web_file(const wchar_t *path) {
    const int length = lstrlenW(path);
    return length > 4 && lstrcmpiW(path + length - 4, L".qvx") == 0;
}

// Puts the first web file (".qvx") of a drop into `path` (`size` units). False when there is none
// that fits.
bool first_web_file(HDROP files, wchar_t *path, UINT size) {
    const UINT count = DragQueryFileW(files, 0xFFFFFFFF, nullptr, 0);
    for (UINT index = 0; index < count; ++index) {
        const UINT length = DragQueryFileW(files, index, nullptr, 0);
        if (length < size && DragQueryFileW(files, index, path, size) != 0 && is_web_file(path)) {
            return true;
        }
    }
    return false;
}

bool web_file_in(IDataObject *data, wchar_t *path) {
    FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium = {};
    if (FAILED(data->GetData(&format, &medium))) {
        return false;
    }
    const bool found =
        first_web_file(static_cast<HDROP>(static_cast<void *>(medium.hGlobal)), path, k_path_max);
    ReleaseStgMedium(&medium);
    return found;
}

bool takes_files() {
    return drops.main_window != nullptr && IsWindowEnabled(drops.main_window) != 0;
}

// False when the main window takes no input now.
bool open_later(const wchar_t *path) {
    if (!takes_files()) {
        return false;
    }
    lstrcpynW(drops.to_open, path, k_path_max);
    return PostMessageW(drops.main_window, k_message_open_dropped, 0, 0) != 0;
}

}  // namespace

HRESULT WINAPI DropTarget::QueryInterface(REFIID id, void **object) {
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDropTarget)) {
        AddRef();
        *object = this;
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

ULONG WINAPI DropTarget::AddRef() {
    return static_cast<ULONG>(++references);
}

ULONG WINAPI DropTarget::Release() {
    if (--references == 0 && inner != nullptr) {
        inner->Release();
        inner = nullptr;
    }
    return static_cast<ULONG>(references);
}

HRESULT WINAPI DropTarget::DragEnter(IDataObject *data, DWORD keys, POINTL point, DWORD *effect) {
    carries_web = web_file_in(data, drops.dragged);
    if (!carries_web && inner != nullptr) {
        return inner->DragEnter(data, keys, point, effect);
    }
    return DragOver(keys, point, effect);
}

HRESULT WINAPI DropTarget::DragOver(DWORD keys, POINTL point, DWORD *effect) {
    if (!carries_web && inner != nullptr) {
        return inner->DragOver(keys, point, effect);
    }
    *effect &= carries_web && takes_files() ? k_effects : DWORD{DROPEFFECT_NONE};
    return S_OK;
}

HRESULT WINAPI DropTarget::DragLeave() {
    if (!carries_web && inner != nullptr) {
        return inner->DragLeave();
    }
    carries_web = false;
    return S_OK;
}

HRESULT WINAPI DropTarget::Drop(IDataObject *data, DWORD keys, POINTL point, DWORD *effect) {
    if (!carries_web && inner != nullptr) {
        return inner->Drop(data, keys, point, effect);
    }
    const bool taken = carries_web && open_later(drops.dragged);
    *effect &= taken ? k_effects : DWORD{DROPEFFECT_NONE};
    carries_web = false;
    return S_OK;
}

void drop_register(HWND window) {
    DropTarget *target = nullptr;
    for (DropTarget &candidate : targets.table) {
        if (candidate.references == 0) {
            target = &candidate;
        }
    }
    if (target == nullptr) {
        return;
    }
    // The system keeps a window's target in this property, and tells it in no other way.
    HANDLE property = GetPropW(window, L"OleDropTargetInterface");
    target->AddRef();
    if (property != nullptr) {
        target->inner = static_cast<IDropTarget *>(property);
        target->inner->AddRef();
        RevokeDragDrop(window);
    }
    if (FAILED(RegisterDragDrop(window, target)) && target->inner != nullptr) {
        RegisterDragDrop(window, target->inner);
    }
    target->Release();
}

void drop_start(HWND main_window) {
    OleInitialize(nullptr);
    drops.main_window = main_window;
    drop_register(main_window);
}

void drop_stop() {
    RevokeDragDrop(drops.main_window);
}

void drop_end() {
    drops.main_window = nullptr;
    OleUninitialize();
}

void drop_files_arrived(HDROP files) {
    if (first_web_file(files, drops.arrived, k_path_max)) {
        open_later(drops.arrived);
    }
    DragFinish(files);
}

void drop_open() {
    if (takes_files()) {
        open_dropped_file(drops.to_open);
    }
}
