#include "pane/clipboard.h"

#include "pane/block.h"
#include "pane/edit.h"
#include "pane/selection.h"
#include "pane/utf16.h"
#include "pane/view.h"

#include <cstdlib>

namespace {

// The text as a block of UTF-16; false without memory.
bool make_units(const Gap *text, uint32_t from, uint32_t to, Block *block) {
    const uint32_t length = utf16_length(text, from, to);
    *block = block_make((length + 1) * sizeof(wchar_t));
    wchar_t *units = static_cast<wchar_t *>(block->bytes);
    if (units == nullptr) {
        return false;
    }
    utf16_copy(text, from, to, units);
    units[length] = 0;
    block_done(*block);
    return true;
}

void put(const Pane *pane, const Gap *text, uint32_t from, uint32_t to) {
    if (OpenClipboard(pane->window) == 0) {
        return;
    }
    EmptyClipboard();
    Block block;
    if (make_units(text, from, to, &block) &&
        SetClipboardData(CF_UNICODETEXT, block.handle) == nullptr) {
        block_free(block);
    }
    CloseClipboard();
}

// Every CR LF, CR and LF as CR LF; `to` may be null to count only.
uint32_t copy_with_line_ends(const char *from, uint32_t length, char *to) {
    uint32_t written = 0;
    const auto add = [&](char c) {
        if (to != nullptr) {
            to[written] = c;
        }
        ++written;
    };
    for (uint32_t i = 0; i < length; ++i) {
        if (from[i] != '\r' && from[i] != '\n') {
            add(from[i]);
            continue;
        }
        add('\r');
        add('\n');
        i += from[i] == '\r' && i + 1 < length && from[i + 1] == '\n' ? 1 : 0;
    }
    return written;
}

void paste_bytes(Pane *pane, const char *bytes, uint32_t length) {
    const uint32_t size = copy_with_line_ends(bytes, length, nullptr);
    char *converted = static_cast<char *>(malloc(size + 1));
    if (converted != nullptr) {
        copy_with_line_ends(bytes, length, converted);
        edit_replace_selection(pane, converted, size);
    }
    free(converted);
}

void paste_units(Pane *pane, const wchar_t *units) {
    const uint32_t count = static_cast<uint32_t>(wcslen(units));
    const uint32_t size = utf8_length(units, count);
    char *bytes = static_cast<char *>(malloc(size + 1));
    if (bytes != nullptr) {
        utf8_copy(units, count, bytes);
        paste_bytes(pane, bytes, size);
    }
    free(bytes);
}

}  // namespace

void clipboard_copy(Pane *pane) {
    if (!selection_empty(pane)) {
        put(pane, pane_text(pane), selection_start(pane), selection_end(pane));
    }
}

void clipboard_cut(Pane *pane) {
    const bool empty = selection_empty(pane);
    clipboard_copy(pane);
    edit_clear_selection(pane);
    if (!empty) {
        view_show_caret(pane);
    }
    keep_x(pane);
}

void clipboard_paste(Pane *pane) {
    if (OpenClipboard(pane->window) == 0) {
        return;
    }
    const Block block = block_open(GetClipboardData(CF_UNICODETEXT));
    if (block.bytes != nullptr) {
        paste_units(pane, static_cast<const wchar_t *>(block.bytes));
        block_done(block);
    }
    CloseClipboard();
}

bool clipboard_has_text() {
    return IsClipboardFormatAvailable(CF_UNICODETEXT) != 0;
}

void clipboard_put(const Pane *pane, const char *bytes, uint32_t length) {
    const Gap text = text_of_bytes(bytes, length);
    put(pane, &text, 0, length);
}
