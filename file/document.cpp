#include "file/document.h"

#include "core/check.h"
#include "core/errors.h"
#include "core/host_files.h"
#include "core/host_messages.h"
#include "core/host_view.h"
#include "core/paths.h"
#include "core/recovery.h"
#include "core/strings.h"
#include "file/save.h"
#include "file/web_reader.h"
#include "web/cells.h"
#include "web/changed.h"
#include "web/trail.h"

#include <cstdio>
#include <cstring>
#include <string_view>

constexpr uint32_t k_title_name_max = 10;  // characters of the display name in the caption
constexpr uint32_t k_character_max = 4;    // bytes of a character in UTF-8
constexpr uint32_t k_title_name_bytes = k_title_name_max * k_character_max;
constexpr const char *k_home = "home";

// A question is a display name, or this, and the words around it.
constexpr char k_untitled[] = "(untitled)";
constexpr char k_save_changes[] = "Save current changes in ";
constexpr char k_question_mark[] = "?";
constexpr char k_damaged[] = " could not be read whole. Saving will keep the old file beside it.";
constexpr char k_title_between[] = " - ";
constexpr char k_title_untitled[] = "(Untitled)";

static struct Document {
    char current_path[k_path_max + 1];
    char display_name[k_path_max + 1];
    char save_path[k_path_max + 1];
    char open_path[k_path_max + 1];
    char name[k_path_max + 1];                     // the result of doc_display_name()
    char question[k_path_max + sizeof k_damaged];  // the longer of the two
    char title[k_title_name_bytes + 32];
    FILE *file;           // open only while a web is read
    bool keep_old;        // the file at the save path could not be read whole
    Fingerprint last;     // of the file at the save path as it was read or written last
    Fingerprint damaged;  // of a file that could not be read whole, wherever it is saved to
} document;

namespace {

static_assert(sizeof k_save_changes + k_path_max + sizeof k_question_mark - 1 <=
              sizeof document.question);
static_assert(sizeof k_untitled <= k_path_max);
static_assert(std::string_view(k_product_name).size() + sizeof k_title_between - 1 +
                  k_title_name_bytes <
              sizeof document.title);
static_assert(sizeof k_title_untitled - 1 <= k_title_name_bytes);

// Copies at most k_path_max characters.
void copy_path(char *to, const char *from) {
    copy_string(to, from, k_path_max);
}

// The bytes of at most ten whole characters.
uint32_t title_name_bytes(const char *name) {
    uint32_t characters = 0;
    uint32_t bytes = 0;
    for (; name[bytes] != 0 && bytes < k_title_name_bytes; ++bytes) {
        const bool begins_character = (name[bytes] & 0xC0) != 0x80;
        if (begins_character && ++characters > k_title_name_max) {
            break;
        }
    }
    return bytes;
}

void close_file() {
    if (document.file != nullptr) {
        fclose(document.file);
        document.file = nullptr;
    }
}

// Makes the web that the document keeps the one of this path.
void adopt_path(const char *path) {
    copy_path(document.save_path, path);
    doc_set_paths(document.save_path);
    doc_set_title(document.display_name);
}

void forget_file() {
    close_file();
    document.keep_old = false;
    document.last.known = false;
    document.damaged.known = false;
    document.current_path[0] = 0;
    document.display_name[0] = 0;
    document.save_path[0] = 0;
    doc_set_title("");
    set_web_changed(false);
}

// False when the user would rather keep what another program made of the file.
bool may_save_over() {
    return !web_file_changed(document.save_path, document.last) ||
           ask_no_yes("The file was changed by another program. Save over it?", k_product_name);
}

int save_to_path() {
    if (!may_save_over()) {
        return k_left_alone;
    }
    const int code = save_web_file(document.save_path, &document.keep_old, &document.last);
    set_web_changed(false);
    return code;
}

// The dialog did not ask about a file that was not there, but stands there now because a save to it
// had been cut off.
bool may_take_path(const char *path) {
    return finish_cut_off(path) != CutOffSave::finished ||
           ask_no_yes("An earlier save of this file was cut off. Save over it?", k_product_name);
}

int leave_alone() {
    show_status_message("Not Saved");
    return k_left_alone;
}

// Saves under a path that the user chooses, and says how it went.
int save_under_new_path() {
    finish_all_cut_off();
    copy_path(document.open_path, document.current_path);
    if (!ask_save_path(document.open_path, sizeof document.open_path, document.display_name)) {
        return k_cancelled;
    }
    // The path may be another spelling of the damaged file's.
    if (strcmp(document.open_path, document.save_path) != 0) {
        if (!may_take_path(document.open_path)) {
            return leave_alone();
        }
        document.keep_old = web_file_is(document.open_path, document.damaged);
        document.last.known = false;
    }
    adopt_path(document.open_path);
    const int code = save_to_path();
    show_status_message(code == 0 ? "Saved" : "Not Saved");
    return code;
}

// What another program writes while the file is read makes it another version.
void read_file(void *) {
    document.last = fingerprint_of(document.file);
    web_read(document.file);
    document.keep_old = !web_read_was_whole();
    document.damaged = document.last;
    document.damaged.known &= document.keep_old;
}

// A file that could not be read whole is lost to the next save, but for the copy that this keeps.
void warn_of_damage() {
    strcpy(document.question, document.display_name);
    strcat(document.question, k_damaged);
    show_warning(document.question, k_product_name);
}

// A web that does not fit is given back whole; the user is left with a new one.
int abandon_read() {
    web_read_recover();
    block_arena_recover();
    forget_file();
    web_reset(k_home);
    refresh_views();
    return report_error(k_out_of_memory);
}

// Copies a path without the quotes that a command line may have put around it. False when it is too
// long to be one.
bool copy_unquoted(char *to, const char *from) {
    uint32_t length = 0;
    for (; *from != 0; ++from) {
        if (*from == '"') {
            continue;
        }
        if (length == k_path_max) {
            return false;
        }
        to[length++] = *from;
    }
    to[length] = 0;
    return true;
}

int choose_path(const char *path) {
    if (path != nullptr && *path != 0) {
        return copy_unquoted(document.open_path, path) ? 0 : report_error(k_cannot_open_web);
    }
    finish_all_cut_off();
    copy_path(document.open_path, document.current_path);
    return ask_open_path(document.open_path, sizeof document.open_path) ? 0 : k_cancelled;
}

void store_body(void *) {
    store_current_text();
}

// Ends the program, or returns when a save that was asked for did not succeed.
void save_and_end(void *) {
    try_store_current_text();
    hide_text_caret();
    cell_list_clear();
    if (doc_save_if_changed() == 0) {
        end_program(0);
    }
    cell_list_fill();
}

}  // namespace

void doc_start(const char *command_line) {
    configure_panes();
    finish_all_cut_off();
    if (*command_line != 0 && doc_open(command_line) == 0) {
        refresh_cellname_list();
    } else {
        doc_new();
    }
    trail_reset();
    refresh_current_view();
    set_resting_status("Ready");
    show_cell_list();
}

int doc_new() {
    if (web_changed() && doc_confirm_save() && doc_save() == k_left_alone) {
        return k_left_alone;
    }
    forget_file();
    web_reset(k_home);
    refresh_views();
    return 0;
}

int doc_open(const char *path) {
    if (web_changed() && doc_confirm_save()) {
        const int code = doc_save();
        if (code != 0) {
            return code;
        }
    }
    const int code = choose_path(path);
    if (code != 0) {
        return code;
    }
    CHECK(document.file == nullptr);
    document.file = open_web_file(document.open_path, file_read_mode());
    if (document.file == nullptr) {
        return report_error(k_cannot_open_web);
    }
    adopt_path(document.open_path);
    set_web_changed(false);
    if (recovery_run(read_file, nullptr) < 0) {
        return abandon_read();
    }
    close_file();
    set_web_changed(false);
    refresh_views();
    if (document.keep_old) {
        warn_of_damage();
    }
    return 0;
}

int doc_save() {
    return document.save_path[0] != 0 ? save_to_path() : save_under_new_path();
}

int doc_save_as() {
    return save_under_new_path();
}

// What the user wanted saved and is not still counts as changed: the next quit asks again.
int doc_save_if_changed() {
    if (!web_changed() || !doc_confirm_save()) {
        return 0;
    }
    const int code = doc_save();
    if (code != 0) {
        set_web_changed(true);
    }
    return code;
}

bool doc_confirm_save() {
    const char *name = document.display_name[0] != 0 ? document.display_name : k_untitled;
    strcpy(document.question, k_save_changes);
    strcat(document.question, name);
    strcat(document.question, k_question_mark);
    return ask_save_changes(document.question, k_product_name);
}

void doc_set_paths(const char *path) {
    copy_path(document.current_path, path);
    copy_path(document.display_name, doc_display_name(document.current_path));
}

const char *doc_display_name(const char *path) {
    copy_path(document.name, path);
    char *p = document.name + strlen(document.name);
    while (p > document.name && !ends_folder(p[-1])) {
        if (*--p == '.') {
            *p = 0;
        }
    }
    return p;
}

void doc_set_title(const char *display_name) {
    strcpy(document.title, k_product_name);
    strcat(document.title, k_title_between);
    if (*display_name == 0) {
        strcat(document.title, k_title_untitled);
    } else {
        strncat(document.title, display_name, title_name_bytes(display_name));
    }
    set_window_title(document.title);
}

const char *doc_current_path() {
    return document.current_path;
}

const char *doc_save_path() {
    return document.save_path;
}

const char *doc_current_display_name() {
    return document.display_name;
}

bool try_store_current_text() {
    if (recovery_run(store_body, nullptr) == 0) {
        return true;
    }
    report_error(k_out_of_memory);
    return false;
}

// A half-read web must never go over its file, so while one is open nothing is saved.
void save_and_exit() {
    if (document.file != nullptr) {
        end_program(0);
    }
    if (recovery_run(save_and_end, nullptr) < 0) {
        cell_list_fill();
        report_error(k_out_of_memory);
    }
}

void document_recover() {
    close_file();
    save_web_file_recover();
}
