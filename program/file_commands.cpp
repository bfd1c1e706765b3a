#include "program/file_commands.h"

#include "core/busy.h"
#include "core/errors.h"
#include "core/host_view.h"
#include "file/document.h"
#include "report/output.h"
#include "web/changed.h"
#include "web/trail.h"

namespace {

// A user who keeps another program's file keeps the changes too.
int finish_command(int code) {
    refresh_current_view();
    if (code != k_left_alone) {
        set_web_changed(false);
    }
    return code;
}

// Saving works however full the arena is: a pane whose text does not fit keeps it, and the web then
// still counts as changed, because that text is in no file.
int save_command(int (*save)()) {
    if (refused_while_busy()) {
        return k_output_in_use;
    }
    const bool stored = try_store_current_text();
    const int code = save();
    if (!stored) {
        set_web_changed(true);
        return code;
    }
    return finish_command(code);
}

}  // namespace

int doc_command_new() {
    if (refused_while_busy()) {
        return k_output_in_use;
    }
    store_current_text();
    const int code = doc_new();
    if (code != k_left_alone) {
        output_reset();
        trail_reset();
    }
    return finish_command(code);
}

int doc_command_open() {
    return doc_command_open_path("");
}

int doc_command_open_path(const char *path) {
    if (refused_while_busy()) {
        return k_output_in_use;
    }
    store_current_text();
    const int code = doc_open(path);
    if (code == 0) {
        trail_reset();
    }
    if (code != k_left_alone) {
        output_reset();
    }
    return finish_command(code);
}

int doc_command_save() {
    return save_command(doc_save);
}

int doc_command_save_as() {
    return save_command(doc_save_as);
}
