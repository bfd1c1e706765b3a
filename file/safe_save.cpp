#include "file/safe_save.h"

#include "core/errors.h"
#include "core/host.h"
#include "core/strings.h"
#include "file/document.h"

#include <cstring>

namespace {

constexpr const char *k_web_end = "</eof>";
constexpr long k_web_end_bytes = 6;
constexpr size_t k_copy_buffer = 2048;

enum class Former : unsigned char {
    none,     // there was no file
    left,     // it could not be set aside, or it is cut short and the copy is not
    renamed,  // it is the copy now
    copied,
};

static struct SafeSave {
    char path[k_path_max + 1];
    char copy_path[k_path_max + 2];
    Former former;
    char bytes[k_copy_buffer];
} save;

// Copies the contents of a file over another one. False when that failed anywhere.
bool copy_contents(const char *from, const char *to) {
    FILE *in = file_open(from, "rb");
    FILE *out = in != nullptr ? file_open(to, "wb") : nullptr;
    bool good = out != nullptr;
    while (good) {
        size_t n = fread(save.bytes, 1, sizeof save.bytes, in);
        if (n == 0) {
            good = feof(in) != 0;
            break;
        }
        good = fwrite(save.bytes, 1, n, out) == n;
    }
    if (in != nullptr) {
        fclose(in);
    }
    if (out != nullptr && fclose(out) != 0) {
        good = false;
    }
    return good;
}

// A linked file is copied: renaming it would leave the link's other end behind. A device is left
// alone.
Former set_aside(const char *path, const char *copy) {
    FileKind kind = file_kind(path);
    if (kind == FileKind::missing) {
        return Former::none;
    }
    FileKind kind_of_copy = file_kind(copy);
    bool copy_is_ours = kind_of_copy != FileKind::other;
    bool copy_is_newer = kind_of_copy != FileKind::missing && !web_file_is_whole(path);
    if (kind == FileKind::other || !copy_is_ours || copy_is_newer) {
        return Former::left;
    }
    if (kind == FileKind::plain && file_rename(path, copy) == 0) {
        return Former::renamed;
    }
    if (copy_contents(path, copy)) {
        return Former::copied;
    }
    file_remove(copy);
    return Former::left;
}

}  // namespace

FILE *safe_save_open(const char *path) {
    copy_string(save.path, path, k_path_max);
    copy_path_of(save.path);
    save.former = set_aside(save.path, save.copy_path);
    FILE *file = file_open(save.path, "w+b");
    if (file == nullptr) {
        safe_save_undo();
    } else if (save.former == Former::renamed) {
        file_copy_attributes(save.copy_path, save.path);
    }
    return file;
}

int safe_save_close(FILE *file, int code, bool keep_copy) {
    if (fclose(file) != 0 && code == 0) {
        code = report_error(k_cannot_write_web);
    }
    copy_path_of(save.path);
    if (code == 0 && !keep_copy && file_kind(save.copy_path) != FileKind::other) {
        file_remove(save.copy_path);
    }
    return code;
}

void safe_save_undo() {
    copy_path_of(save.path);
    switch (save.former) {
    case Former::none:
        file_remove(save.path);
        break;
    case Former::left:
        break;
    case Former::renamed:
        file_rename(save.copy_path, save.path);
        break;
    case Former::copied:
        if (web_file_is_whole(save.path) || copy_contents(save.copy_path, save.path)) {
            file_remove(save.copy_path);
        }
        break;
    }
    save.former = Former::left;
}

bool web_file_is_whole(const char *path) {
    FileKind kind = file_kind(path);
    bool is_file = kind == FileKind::plain || kind == FileKind::linked;
    FILE *file = is_file ? file_open(path, "rb") : nullptr;
    if (file == nullptr) {
        return false;
    }
    char end[k_web_end_bytes] = {0};
    bool whole = fseek(file, -k_web_end_bytes, SEEK_END) == 0 &&
                 fread(end, 1, sizeof end, file) == sizeof end &&
                 memcmp(end, k_web_end, sizeof end) == 0;
    fclose(file);
    return whole;
}

const char *copy_path_of(const char *path) {
    uint32_t length = copy_string(save.copy_path, path, k_path_max);
    save.copy_path[length] = '~';
    save.copy_path[length + 1] = 0;
    return save.copy_path;
}

bool copy_is_better(const char *path) {
    return !web_file_is_whole(path) && web_file_is_whole(copy_path_of(path));
}
