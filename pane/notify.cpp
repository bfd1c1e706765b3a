#include "pane/notify.h"

static_assert(k_change_insert == SC_MOD_INSERTTEXT && k_change_remove == SC_MOD_DELETETEXT);
static_assert(k_change_user == SC_PERFORMED_USER && k_change_undo == SC_PERFORMED_UNDO);
static_assert(k_change_redo == SC_PERFORMED_REDO);
static_assert(k_change_many_steps == SC_MULTISTEPUNDOREDO);
static_assert(k_change_last_step == SC_LASTSTEPINUNDOREDO);
static_assert(k_change_many_lines == SC_MULTILINEUNDOREDO);
static_assert(k_change_first_action == SC_STARTACTION);

void notify(const Pane *pane, UINT code, SCNotification *event) {
    const int id = GetDlgCtrlID(pane->window);
    event->nmhdr.hwndFrom = pane->window;
    event->nmhdr.idFrom = static_cast<uptr_t>(id);
    event->nmhdr.code = code;
    SendMessageW(GetParent(pane->window), WM_NOTIFY, static_cast<WPARAM>(id),
                 reinterpret_cast<LPARAM>(event));
}

void notify_plain(const Pane *pane, UINT code) {
    SCNotification event = {};
    notify(pane, code, &event);
}

void notify_at(const Pane *pane, UINT code, uint32_t position, int modifiers) {
    SCNotification event = {};
    event.position = static_cast<Sci_Position>(position);
    event.modifiers = modifiers;
    notify(pane, code, &event);
}

void notify_command(const Pane *pane, WORD code) {
    const WORD id = static_cast<WORD>(GetDlgCtrlID(pane->window));
    SendMessageW(GetParent(pane->window), WM_COMMAND, MAKEWPARAM(id, code),
                 reinterpret_cast<LPARAM>(pane->window));
}

void notify_change(const Pane *pane, const Change &change) {
    if ((change.kind & pane->notify_mask & (k_change_insert | k_change_remove)) == 0) {
        return;
    }
    notify_command(pane, SCEN_CHANGE);
    SCNotification event = {};
    event.position = static_cast<Sci_Position>(change.position);
    event.modificationType = static_cast<int>(change.kind);
    event.text = change.bytes;
    event.length = static_cast<Sci_Position>(change.length);
    event.linesAdded = change.lines_added;
    notify(pane, SCN_MODIFIED, &event);
}

void need_styles(Pane *pane, uint32_t end) {
    if (pane->document.end_styled < end) {
        notify_at(pane, SCN_STYLENEEDED, end, 0);
    }
}
