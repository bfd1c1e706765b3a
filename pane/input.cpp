#include "pane/input.h"

#include "pane/edit.h"
#include "pane/layout.h"
#include "pane/utf16.h"

#include <cstdlib>
#include <imm.h>

namespace {

bool is_high(wchar_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

bool is_low(wchar_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

void type_units(Pane *pane, const wchar_t *units, uint32_t count) {
    const uint32_t size = utf8_length(units, count);
    char *bytes = static_cast<char *>(malloc(size + 1));
    if (bytes != nullptr) {
        utf8_copy(units, count, bytes);
        edit_type(pane, bytes, size);
    }
    free(bytes);
}

void take_result(Pane *pane, HIMC method) {
    const LONG size = ImmGetCompositionStringW(method, GCS_RESULTSTR, nullptr, 0);
    if (size <= 0) {
        return;
    }
    wchar_t *units = static_cast<wchar_t *>(malloc(static_cast<size_t>(size)));
    if (units != nullptr) {
        ImmGetCompositionStringW(method, GCS_RESULTSTR, units, static_cast<DWORD>(size));
        type_units(pane, units, static_cast<uint32_t>(size) / sizeof(wchar_t));
    }
    free(units);
}

}  // namespace

// Keys that have done something send their character as well.
void input_character(Pane *pane, wchar_t unit) {
    const wchar_t pair[2] = {pane->high_surrogate, unit};
    pane->high_surrogate = is_high(unit) ? unit : L'\0';
    if (is_high(unit) || ((unit < ' ' || unit == 0x7F) && pane->key_consumed)) {
        return;
    }
    if (is_low(unit) && pair[0] != 0) {
        type_units(pane, pair, 2);
    } else {
        type_units(pane, &unit, 1);
    }
}

void input_place_composition(Pane *pane) {
    HIMC method = ImmGetContext(pane->window);
    if (method != nullptr) {
        const int row = static_cast<int>(layout_row_of(pane, pane->caret) - pane->view.top);
        COMPOSITIONFORM place = {};
        place.dwStyle = CFS_POINT;
        place.ptCurrentPos = {layout_x_of(pane, pane->caret), row * pane->look.line_height};
        ImmSetCompositionWindow(method, &place);
        ImmReleaseContext(pane->window, method);
    }
}

bool input_take_result(Pane *pane, LPARAM what) {
    if ((what & GCS_RESULTSTR) == 0) {
        return false;
    }
    HIMC method = ImmGetContext(pane->window);
    if (method != nullptr) {
        take_result(pane, method);
        ImmReleaseContext(pane->window, method);
    }
    return true;
}
