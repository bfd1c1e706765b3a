#include "cli/browse/browse.h"

#include "cli/browse/actions.h"
#include "cli/browse/screen.h"
#include "cli/browse/view.h"
#include "cli/browse/work.h"
#include "cli/cells/edited_text.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/web_file.h"
#include "core/host_view.h"
#include "file/web_reader.h"
#include "web/changed.h"
#include "web/options.h"

namespace {

// Of curses, for the colours that the web's option knows. The window's dark blue would be hard to
// read on black.
int link_colour() {
    switch (option_link_colour()) {
    case k_link_red:
        return 1;
    case k_link_green:
        return 2;
    case k_link_blue:
        return 6;
    default:
        return -1;
    }
}

void show_web_body() {
    cell_list_fill();
    refresh_current_view();
}

void show_web() {
    host_show_view(&k_browse_view);
    terminal_link_colour(link_colour());
    view_run(show_web_body);
    work_tell_kept();
    if (!web_read_was_whole()) {
        work_may_change();
    }
}

// False when the terminal has gone, or the program is to end.
bool work_until_left() {
    for (;;) {
        screen_draw();
        const Key key = terminal_key();
        if (key.code == k_key_hung_up || !act_on_key(key)) {
            return terminal_hung_up() == 0;
        }
    }
}

// On the terminal as it was before.
void name_kept_files() {
    host_name_file(work_file().c_str());
    work_name_kept();
    name_edited_file();
}

int end_hung_up() {
    if (web_changed()) {
        work_keep_unsaved();
    }
    name_kept_files();
    if (terminal_hung_up() != k_no_signal) {
        terminal_end_by(terminal_hung_up());
    }
    return k_exit_failed;
}

int misuse(const char *message) {
    host_message(message);
    return k_exit_failed;
}

}  // namespace

int command_browse(const CommandLine &line) {
    host_name_file(line.file.c_str());
    if (is_standard_stream(line.file.c_str())) {
        return misuse("a web in the terminal comes from a file");
    }
    if (!terminal_is_there()) {
        return misuse("standard input and output are no terminal");
    }
    const int status = work_open(line);
    if (status != k_exit_done) {
        return status;
    }
    if (!terminal_open()) {
        return misuse("this kind of terminal cannot show it (see TERM)");
    }
    show_web();
    const bool left = work_until_left();
    terminal_close();
    host_show_view(nullptr);
    if (!left) {
        return end_hung_up();
    }
    name_kept_files();
    return k_exit_done;
}
