#include "file/save.h"

#include "core/errors.h"
#include "core/host_files.h"
#include "core/host_messages.h"
#include "file/web_writer.h"

#include <cstring>

constexpr const char *k_web_end = "</eof>";
constexpr long k_web_end_bytes = 6;

// FNV-1a.
constexpr uint32_t k_checksum_start = 2166136261U;
constexpr uint32_t k_checksum_factor = 16777619U;

constexpr Fingerprint k_no_version = {false, 0, k_checksum_start};

static struct Save {
    char message[512];
    uint8_t bytes[2048];
} save;

namespace {

// A web file that ends in its end mark was written whole.
bool is_whole(FILE *file) {
    char end[k_web_end_bytes];
    return fseek(file, -k_web_end_bytes, SEEK_END) == 0 &&
           fread(end, 1, sizeof end, file) == sizeof end && memcmp(end, k_web_end, sizeof end) == 0;
}

// Gives a path that has no file the one at `from`, unless that is "".
CutOffSave take_place(const char *from, const char *path, bool whole_only) {
    if (*from == 0) {
        return CutOffSave::none;
    }
    FILE *file = file_open(from, "rb");
    if (file == nullptr) {
        return CutOffSave::stuck;
    }
    const bool fits = !whole_only || is_whole(file);
    fclose(file);
    if (!fits) {
        return CutOffSave::none;
    }
    return file_move(from, path) ? CutOffSave::finished : CutOffSave::stuck;
}

void finish_found(const char *path) {
    finish_cut_off(path);
}

Fingerprint fingerprint_at(const char *path) {
    FILE *file = file_open(path, "rb");
    if (file == nullptr) {
        return k_no_version;
    }
    Fingerprint print = fingerprint_of(file);
    fclose(file);
    return print;
}

bool is_same(const Fingerprint &a, const Fingerprint &b) {
    return a.length == b.length && a.checksum == b.checksum;
}

// Says that `what`, which is kept in a file of its own, is there. A path that does not fit is shown
// from its end, where the name is.
void say_kept(const char *what) {
    const char *path = file_kept_path();
    const size_t length = strlen(path);
    const size_t before = strlen(what);
    const size_t room = sizeof save.message - before - 1;
    const char *shown = length > room ? path + (length - room) : path;
    memcpy(save.message, what, before);
    strcpy(save.message + before, shown);
    show_warning(save.message, k_product_name);
}

// The copy is made last, so that a save that fails before leaves none.
bool keep_as_bad(const char *path, bool *keep_old) {
    if (*keep_old && !file_keep(path, ".bad")) {
        return false;
    }
    *keep_old = false;
    return true;
}

int finish() {
    if (file_replace_finish()) {
        return 0;
    }
    const int code = report_error(k_cannot_write_web);
    if (*file_kept_path() != 0) {
        say_kept("The file as it was is kept in ");
    }
    return code;
}

}  // namespace

FILE *open_web_file(const char *path, const char *mode) {
    FILE *file = file_open(path, mode);
    if (file != nullptr) {
        return file;
    }
    finish_cut_off(path);
    return file_open(path, mode);
}

// The old file was the user's, so that it counts even when its end mark is missing.
CutOffSave finish_cut_off(const char *path) {
    const CutOffSave result = take_place(file_successor(path), path, true);
    return result != CutOffSave::none ? result : take_place(file_predecessor(path), path, false);
}

void finish_all_cut_off() {
    file_each_cut_off(finish_found);
}

Fingerprint fingerprint_of(FILE *file) {
    Fingerprint print = k_no_version;
    if (fflush(file) != 0 || fseek(file, 0, SEEK_SET) != 0) {
        return print;
    }
    for (;;) {
        const size_t n = fread(save.bytes, 1, sizeof save.bytes, file);
        for (size_t i = 0; i < n; ++i) {
            print.checksum = (print.checksum ^ save.bytes[i]) * k_checksum_factor;
        }
        print.length += static_cast<uint32_t>(n);
        if (n == 0) {
            break;
        }
    }
    print.known = ferror(file) == 0;
    clearerr(file);  // of a device that can only be written
    fseek(file, 0, SEEK_SET);
    return print;
}

bool web_file_is(const char *path, const Fingerprint &version) {
    const Fingerprint now = version.known ? fingerprint_at(path) : k_no_version;
    return now.known && is_same(now, version);
}

bool web_file_changed(const char *path, const Fingerprint &last) {
    const Fingerprint now = last.known ? fingerprint_at(path) : k_no_version;
    return now.known && !is_same(now, last);
}

int save_web_file(const char *path, bool *keep_old, Fingerprint *written) {
    const bool stuck = finish_cut_off(path) == CutOffSave::stuck;
    FILE *file = !stuck ? file_replace_begin(path) : nullptr;
    if (file == nullptr) {
        return report_error(k_cannot_open_web);
    }
    int code = web_write(file);
    if (code < 0) {
        file_replace_abandon();
        return code;
    }
    const Fingerprint print = fingerprint_of(file);
    if (!keep_as_bad(path, keep_old)) {
        file_replace_abandon();
        return report_error(k_cannot_open_web);
    }
    code = finish();
    if (code == 0) {
        *written = print;
    }
    return code;
}

void save_web_file_recover() {
    file_replace_abandon();
}
