// A command of qvx that shows the web while the user works on it installs its view here; what the
// engine asks of a view (core/host_messages.h, core/host_view.h) then comes to it. Without one,
// cli/host_qvx.cpp and cli/no_view.cpp do what a program without a view does.
//
// The functions are called in the midst of the engine's work: none may leave by a jump while it
// holds anything.
#pragma once

#include "core/host_view.h"

struct HostView {
    void (*message)(const char *text);

    // By the answers that core/host_messages.h has. ask_save() is true only for Yes.
    bool (*ask_yes_no)(const char *text);
    bool (*ask_no_yes)(const char *text);
    bool (*ask_ok)(const char *text);
    bool (*ask_save)(const char *text);
    bool (*ask_cellname)(char *name);

    void (*store_text)();
    void (*show_current)();

    void (*list_fill)();
    void (*list_add)(CellHandle cell);
    void (*list_select_current)();
    void (*list_clear)();
    void (*list_remove)(ListItem item);

    void (*console_clear)();
    void (*console_insert)(uint32_t position, const char *bytes, uint32_t count);
    void (*output_ended)();

    // Gives the terminal back before the program ends at once.
    void (*leave)();
};

// Null for none.
void host_show_view(const HostView *view);
const HostView *host_view();
