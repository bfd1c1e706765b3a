#include "shell/cell_commands.h"

#include "core/busy.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "core/names.h"
#include "platform/windows/text_conversion.h"
#include "shell/cellname_box.h"
#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/trail.h"

static struct CellCommands {
    char name[k_cellname_max + 1];  // what the command under way works on
} commands;

namespace {

// Goes to the cell of that name or creates it, as a followed word does. Where the user is already
// there, the trail gets no entry.
void go_or_create(const char *name) {
    const CellHandle cell = cell_lookup(name);
    if (cell == 0 || cell != current_cell()) {
        go_to_name(name);
    }
}

void link_or_create() {
    if (cell_lookup(commands.name) != 0) {
        go_or_create(commands.name);
        show_status_message("Cell already exists, linking to it");
    } else {
        new_cell(commands.name);
    }
}

void ask_and_create() {
    if (ask_cellname(commands.name)) {
        link_or_create();
    }
}

// A name in the box that is free is taken; otherwise the user is asked for another.
void create_from_box() {
    const char *name = cellname_box_name();
    if (cellname_valid(name) && cell_lookup(name) == 0) {
        copy_characters(commands.name, name, k_cellname_max);
        link_or_create();
    } else {
        ask_and_create();
    }
}

// Leaves the selected word in commands.name. False when nothing is selected.
bool take_selected_name() {
    const char *text = selected_text();
    const bool selected = *text != 0;
    copy_characters(commands.name, text, k_read_name_max);
    selected_text_free();
    cellname_normalise(commands.name);
    return selected;
}

void create_from_selection() {
    if (!take_selected_name()) {
        ask_and_create();
    } else if (!cellname_valid(commands.name)) {
        show_status_message("Invalid Cellname");
    } else {
        link_or_create();
    }
}

void follow_selection() {
    if (!take_selected_name() || commands.name[0] == 0) {
        forward();
    } else if (!cellname_valid(commands.name)) {
        show_status_message("Invalid Cellname");
    } else {
        go_or_create(commands.name);
    }
}

// Goes to the cell named in the box or creates it; the name is valid and not the current one.
void go_to_box_name() {
    copy_characters(commands.name, cellname_box_name(), k_cellname_max);
    const CellHandle cell = cell_lookup(commands.name);
    if (cell == 0) {
        new_cell(commands.name);
    } else {
        go_or_create(commands.name);
    }
    cellname_box_show_current();
}

void follow_box() {
    if (cellname_box_is_current()) {
        forward();
    } else if (cellname_valid(cellname_box_name())) {
        go_to_box_name();
    } else {
        cellname_box_show_current();
    }
}

}  // namespace

NameSource new_name_source(PaneIndex active) {
    switch (active) {
    case k_pane_box:
        return NameSource::box;
    case k_pane_text:
    case k_pane_console:
        return NameSource::selection;
    case k_pane_list:
        return NameSource::dialog;
    default:
        return NameSource::none;
    }
}

NameSource follow_name_source(PaneIndex active) {
    const NameSource source = new_name_source(active);
    return source == NameSource::dialog ? NameSource::none : source;
}

void make_new_cell() {
    if (refused_while_busy()) {
        return;
    }
    switch (new_name_source(active_pane())) {
    case NameSource::box:
        create_from_box();
        break;
    case NameSource::selection:
        create_from_selection();
        break;
    case NameSource::dialog:
        ask_and_create();
        break;
    case NameSource::none:
        break;
    }
}

void follow() {
    switch (follow_name_source(active_pane())) {
    case NameSource::box:
        follow_box();
        break;
    case NameSource::selection:
        follow_selection();
        break;
    default:
        if (active_pane() == k_pane_list) {
            forward();
        }
        break;
    }
}

void enter_box_name() {
    if (!cellname_valid(cellname_box_name())) {
        show_status_message("Invalid cellname");
        cellname_box_show_current();
    } else if (!cellname_box_is_current()) {
        go_to_box_name();
    }
}
