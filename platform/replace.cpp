// Replacing a file in one step (core/host_files.h has the contract).
//
// The next version is written into a file of its own beside the old one and takes its place when it
// is on the disk. Where that would lose something about the old file, or no file can be made beside
// it, the next version is written elsewhere first, the old bytes are kept in another file, and only
// then the new bytes go into the old file.
#include "core/host_files.h"
#include "platform/system.h"

#include <cerrno>
#include <cstring>

namespace {

enum class Way : uint8_t { beside, in_place, straight };

constexpr unsigned k_copies_max = 99;
constexpr size_t k_number_digits = 2;
static_assert(k_copies_max < 100);

static struct Replacement {
    FILE *file;  // the next version while it is written
    Way way;
    FileKind kind;
    char target[k_system_path_max];
    char next[k_system_path_max];  // where the next version is
    char kept[k_system_path_max];  // where the old bytes are; "" for nowhere
    char bytes[8192];
} replacement;

// Removing must not hide why something is removed.
void remove_quietly(const char *path) {
    const int reason = errno;
    system_remove(path);
    errno = reason;
}

bool close_written(FILE *file, bool good) {
    const int reason = errno;
    if (fclose(file) != 0) {
        return false;
    }
    errno = reason;
    return good;
}

long length_of(FILE *file) {
    const long length = fseek(file, 0, SEEK_END) == 0 ? ftell(file) : -1;
    return fseek(file, 0, SEEK_SET) == 0 ? length : -1;
}

// Copies the rest of a file and brings it to the disk.
bool copy_bytes(FILE *in, FILE *out) {
    for (;;) {
        const size_t n = fread(replacement.bytes, 1, sizeof replacement.bytes, in);
        if (n == 0) {
            return ferror(in) == 0 && fflush(out) == 0;
        }
        if (fwrite(replacement.bytes, 1, n, out) != n) {
            return false;
        }
    }
}

bool put_first(FILE *file, int byte) {
    return fseek(file, 0, SEEK_SET) == 0 && putc(byte, file) != EOF && system_to_disk(file);
}

// Between two versions a file begins with a NUL, which no web does: whoever finds it so knows that
// it is half written.
bool overwrite(FILE *in, FILE *out, long length) {
    const int first = length > 0 ? getc(in) : 0;
    return put_first(out, 0) && copy_bytes(in, out) && system_cut(out, length) &&
           system_to_disk(out) && (length == 0 || put_first(out, first));
}

// Writes one file's bytes over another's. `touched` becomes true when the other one may no longer
// be as it was.
bool copy_over(const char *from, const char *to, bool *touched) {
    FILE *in = file_open(from, "rb");
    FILE *out = in != nullptr ? file_open(to, "r+b") : nullptr;
    bool good = false;
    if (out != nullptr) {
        const long length = length_of(in);
        good = length >= 0 && system_make_room(out, length);
        *touched |= good;
        good = good && overwrite(in, out, length);
        good = close_written(out, good);
    }
    if (in != nullptr) {
        fclose(in);
    }
    return good;
}

// Copies the file at `from` into a new one that is open. The copy goes when that fails.
bool fill_copy(FILE *copy, const char *path, const char *from) {
    FILE *in = file_open(from, "rb");
    bool good = in != nullptr && copy_bytes(in, copy) && system_to_disk(copy);
    if (in != nullptr) {
        fclose(in);
    }
    good = close_written(copy, good);
    if (!good) {
        remove_quietly(path);
    }
    return good;
}

// PATH SUFFIX, PATH SUFFIX 2, ...; false when that is too long or there are too many.
bool numbered_path(char *to, const char *path, const char *suffix, unsigned number) {
    if (number > k_copies_max ||
        strlen(path) + strlen(suffix) + k_number_digits >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return false;
    }
    strcpy(to, path);
    strcat(to, suffix);
    char digits[] = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10), 0};
    if (number > 1) {
        strcat(to, number < 10 ? digits + 1 : digits);
    }
    return true;
}

// True for a file into which a program was writing that was killed.
bool is_half_written(const char *path) {
    FILE *file = file_open(path, "rb");
    const bool half = file != nullptr && getc(file) == 0;
    if (file != nullptr) {
        fclose(file);
    }
    return half;
}

// Leaves the path of the copy in replacement.kept, "" when there is none.
bool keep_beside(const char *path, const char *suffix) {
    FILE *copy = nullptr;
    for (unsigned number = 1; copy == nullptr; ++number) {
        if (!numbered_path(replacement.kept, path, suffix, number)) {
            break;
        }
        copy = system_create(replacement.kept, path, false);
        if (copy == nullptr && errno != EEXIST) {
            break;
        }
    }
    if (copy != nullptr && fill_copy(copy, replacement.kept, path)) {
        return true;
    }
    replacement.kept[0] = 0;
    return false;
}

bool keep_elsewhere(const char *path) {
    FILE *copy = system_create_temporary(replacement.kept, true);
    if (copy != nullptr && fill_copy(copy, replacement.kept, path)) {
        return true;
    }
    replacement.kept[0] = 0;
    return false;
}

// The old bytes are put back when the new ones do not go in; their copy then stays, because nobody
// can be sure of a file that has just refused to be written.
bool write_in_place() {
    system_sweep_copies(replacement.target, is_half_written(replacement.target));
    if (!keep_beside(replacement.target, system_old_suffix()) &&
        !keep_elsewhere(replacement.target)) {
        return false;
    }
    bool touched = false;
    if (copy_over(replacement.next, replacement.target, &touched)) {
        remove_quietly(replacement.kept);
        replacement.kept[0] = 0;
        return true;
    }
    const int reason = errno;
    if (!touched) {
        system_remove(replacement.kept);
        replacement.kept[0] = 0;
    } else {
        copy_over(replacement.kept, replacement.target, &touched);
    }
    errno = reason;
    return false;
}

FILE *begin_beside() {
    system_sweep(replacement.target);
    if (!system_next_path(replacement.next, replacement.target)) {
        return nullptr;
    }
    const char *model = replacement.kind == FileKind::plain ? replacement.target : nullptr;
    return system_create(replacement.next, model, true);
}

FILE *begin_elsewhere() {
    replacement.way = Way::in_place;
    return system_create_temporary(replacement.next, false);
}

}  // namespace

FILE *file_replace_begin(const char *path) {
    replacement.kept[0] = 0;
    replacement.way = Way::beside;
    replacement.kind = system_look(path, replacement.target);
    switch (replacement.kind) {
    case FileKind::refused:
        replacement.file = nullptr;
        break;
    case FileKind::missing:
        replacement.file = begin_beside();
        break;
    case FileKind::plain:
        replacement.file = begin_beside();
        if (replacement.file == nullptr) {
            replacement.file = begin_elsewhere();
        }
        break;
    case FileKind::shared:
        replacement.file = begin_elsewhere();
        break;
    case FileKind::device:
        replacement.way = Way::straight;
        replacement.file = file_open(replacement.target, "wb");
        break;
    }
    return replacement.file;
}

bool file_replace_finish() {
    FILE *file = replacement.file;
    replacement.file = nullptr;
    const bool straight = replacement.way == Way::straight;
    bool good = fflush(file) == 0 && ferror(file) == 0 && (straight || system_to_disk(file));
    good = close_written(file, good);
    if (straight) {
        return good;
    }
    bool done = good && replacement.way == Way::beside &&
                system_put_over(replacement.next, replacement.target);
    if (done) {
        return true;
    }
    if (good && replacement.kind != FileKind::missing) {
        done = write_in_place();
    }
    remove_quietly(replacement.next);
    return done;
}

void file_replace_abandon() {
    if (replacement.file == nullptr) {
        return;
    }
    const int reason = errno;
    fclose(replacement.file);
    replacement.file = nullptr;
    if (replacement.way != Way::straight) {
        system_remove(replacement.next);
    }
    errno = reason;
}

const char *file_kept_path() {
    return replacement.kept;
}

bool file_keep(const char *path, const char *suffix) {
    return keep_beside(path, suffix);
}
