// Files where the C library takes UTF-8, '/' separates folders and a rename replaces.
#include "platform/system.h"

#include "core/host_files.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

static_assert(k_system_path_max >= PATH_MAX);

const char k_path_separator = '/';

namespace {

constexpr const char *k_next_suffix = "-new.";
constexpr const char *k_old_suffix = "-old.";
constexpr const char *k_temporary_name = "quorvane";
constexpr unsigned k_links_max = 40;  // as many as the system follows itself
constexpr mode_t k_private = 0600;
constexpr mode_t k_permissions = 07777;

// Room for one path; what needs it is done with it before anything else does.
static char scratch[k_system_path_max];

bool copy_path(char *to, const char *from) {
    const size_t length = strlen(from);
    if (length >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return false;
    }
    memcpy(to, from, length + 1);
    return true;
}

// Bytes of a path's folder with its '/', 0 when it has none.
size_t folder_length(const char *path) {
    const char *slash = strrchr(path, '/');
    return slash != nullptr ? static_cast<size_t>(slash - path) + 1 : 0;
}

// Replaces the path of a link by what it names. False when that is too long.
bool follow_link(char *path) {
    const ssize_t n = readlink(path, scratch, sizeof scratch);
    if (n < 0) {
        return false;
    }
    const size_t folder = scratch[0] == '/' ? 0 : folder_length(path);
    const size_t length = static_cast<size_t>(n);
    if (folder + length >= k_system_path_max) {
        errno = ENAMETOOLONG;
        return false;
    }
    memcpy(path + folder, scratch, length);
    path[folder + length] = 0;
    return true;
}

// A link to nowhere leads to the place where the file would be made.
bool follow_links(char *path) {
    struct stat status;
    for (unsigned i = 0; i < k_links_max; ++i) {
        if (lstat(path, &status) != 0 || !S_ISLNK(status.st_mode)) {
            return true;
        }
        if (!follow_link(path)) {
            return false;
        }
    }
    errno = ELOOP;
    return false;
}

// Access lists and notes of the user's, which a new file would not have. What the system itself
// keeps about every file is none of these.
bool has_attributes(const char *path) {
    char names[1024];
    const ssize_t size = listxattr(path, names, sizeof names);
    if (size < 0) {
        return errno == ERANGE;
    }
    for (const char *name = names; name < names + size; name += strlen(name) + 1) {
        if (strncmp(name, "user.", 5) == 0 || strncmp(name, "system.posix_acl", 16) == 0) {
            return true;
        }
    }
    return false;
}

bool can_be_written(const char *path) {
    const int file = open(path, O_RDWR | O_CLOEXEC);
    if (file >= 0) {
        close(file);
    }
    return file >= 0;
}

// Gives an open file the owner and permissions of another; the permissions last, because the
// system takes some of them away from a file that changes its owner.
bool take_after(int file, const struct stat &model) {
    struct stat own;
    if (fstat(file, &own) != 0) {
        return false;
    }
    const bool same_owner = own.st_uid == model.st_uid && own.st_gid == model.st_gid;
    if (!same_owner && fchown(file, model.st_uid, model.st_gid) != 0) {
        return false;
    }
    return fchmod(file, model.st_mode & k_permissions) == 0;
}

FILE *stream_of(int file, const char *path) {
    FILE *stream = file >= 0 ? fdopen(file, "w+b") : nullptr;
    if (file >= 0 && stream == nullptr) {
        close(file);
        unlink(path);
    }
    return stream;
}

// The process that a next version belongs to, by what stands behind the suffix; 0 for no number.
pid_t maker_of(const char *digits) {
    char *end = nullptr;
    const long number = strtol(digits, &end, 10);
    const bool ends = *end == 0 || *end == '.';
    return *digits >= '1' && *digits <= '9' && ends ? static_cast<pid_t>(number) : 0;
}

bool is_left_over(pid_t maker) {
    return maker == getpid() || (maker > 0 && kill(maker, 0) != 0 && errno == ESRCH);
}

// The folder of a path, in `scratch`.
const char *folder_of(const char *path) {
    const size_t length = folder_length(path);
    memcpy(scratch, path, length);
    scratch[length] = 0;
    return length > 0 ? scratch : ".";
}

// Bytes of a file's name that leave room for a suffix with a number.
size_t stem_length(const char *name) {
    constexpr size_t k_stem_max = NAME_MAX - 20;
    const size_t length = strlen(name);
    return length < k_stem_max ? length : k_stem_max;
}

// Gives NAME-old.PROCESS the name NAME-old-PROCESS, over no other file.
void keep_copy(int folder, const char *name, size_t number_at) {
    char kept[NAME_MAX + 1];
    static_assert(sizeof dirent::d_name <= sizeof kept);
    strcpy(kept, name);
    kept[number_at - 1] = '-';
    if (linkat(folder, name, folder, kept, 0) == 0) {
        unlinkat(folder, name, 0);
    }
}

// Removes the files NAME SUFFIX PROCESS whose makers have ended, or keeps them.
void sweep_folder(const char *folder, const char *name, const char *suffix, bool keep) {
    DIR *entries = opendir(folder);
    if (entries == nullptr) {
        return;
    }
    const size_t name_length = stem_length(name);
    const size_t suffix_length = strlen(suffix);
    while (const dirent *entry = readdir(entries)) {
        const char *found = entry->d_name;
        if (strncmp(found, name, name_length) == 0 &&
            strncmp(found + name_length, suffix, suffix_length) == 0 &&
            is_left_over(maker_of(found + name_length + suffix_length))) {
            if (keep) {
                keep_copy(dirfd(entries), found, name_length + suffix_length);
            } else {
                unlinkat(dirfd(entries), found, 0);
            }
        }
    }
    closedir(entries);
}

// Makes a rename last through a power cut. Not every file system can.
void folder_to_disk(const char *path) {
    const int file = open(folder_of(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file >= 0) {
        fsync(file);
        close(file);
    }
}

}  // namespace

FILE *file_open(const char *path, const char *mode) {
    return fopen(path, mode);
}

const char *file_predecessor(const char *) {
    return "";
}

void file_each_cut_off(void (*)(const char *)) {}

// A rename needs no second step that another program could have to finish.
const char *file_successor(const char *) {
    return "";
}

bool file_move(const char *from, const char *to) {
    return rename(from, to) == 0;
}

FileKind system_look(const char *path, char *target) {
    struct stat status;
    if (*path == 0) {
        errno = ENOENT;
        return FileKind::refused;
    }
    if (!copy_path(target, path) || !follow_links(target)) {
        return FileKind::refused;
    }
    if (stat(target, &status) != 0) {
        return errno == ENOENT ? FileKind::missing : FileKind::refused;
    }
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return FileKind::refused;
    }
    if (!S_ISREG(status.st_mode)) {
        return FileKind::device;
    }
    if (!can_be_written(target)) {
        return FileKind::refused;
    }
    return status.st_nlink > 1 || has_attributes(target) ? FileKind::shared : FileKind::plain;
}

FILE *system_create(const char *path, const char *model, bool exactly) {
    struct stat status;
    if (model != nullptr && stat(model, &status) != 0) {
        return nullptr;
    }
    const mode_t mode =
        model != nullptr ? k_private : S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    const int file = open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file >= 0 && model != nullptr && !take_after(file, status) && exactly) {
        const int reason = errno;
        close(file);
        unlink(path);
        errno = reason;
        return nullptr;
    }
    return stream_of(file, path);
}

FILE *system_create_temporary(char *path, bool stays) {
    const char *folder = getenv("TMPDIR");
    if (folder == nullptr || *folder == 0) {
        folder = "/tmp";
    }
    if (!stays) {
        sweep_folder(folder, k_temporary_name, k_next_suffix, false);
    }
    const int length =
        stays ? snprintf(path, k_system_path_max, "%s/%s.XXXXXX", folder, k_temporary_name)
              : snprintf(path, k_system_path_max, "%s/%s%s%ld.XXXXXX", folder, k_temporary_name,
                         k_next_suffix, static_cast<long>(getpid()));
    if (length < 0 || length >= static_cast<int>(k_system_path_max)) {
        errno = ENAMETOOLONG;
        return nullptr;
    }
    return stream_of(mkostemp(path, O_CLOEXEC), path);
}

bool system_next_path(char *next, const char *target) {
    const size_t folder = folder_length(target);
    const size_t stem = folder + stem_length(target + folder);
    const int length = snprintf(next, k_system_path_max, "%.*s%s%ld", static_cast<int>(stem),
                                target, k_next_suffix, static_cast<long>(getpid()));
    if (length < 0 || length >= static_cast<int>(k_system_path_max)) {
        errno = ENAMETOOLONG;
        return false;
    }
    return true;
}

// With the maker in it, so that no name that a user gave is taken for one.
const char *system_old_suffix() {
    static char suffix[32];
    snprintf(suffix, sizeof suffix, "%s%ld", k_old_suffix, static_cast<long>(getpid()));
    return suffix;
}

void system_sweep(const char *target) {
    sweep_folder(folder_of(target), target + folder_length(target), k_next_suffix, false);
}

void system_sweep_copies(const char *target, bool needed) {
    sweep_folder(folder_of(target), target + folder_length(target), k_old_suffix, needed);
}

bool system_to_disk(FILE *file) {
    return fflush(file) == 0 && fsync(fileno(file)) == 0;
}

// File systems that cannot set room aside find out while they are written to.
bool system_make_room(FILE *file, long length) {
#ifdef FALLOC_FL_KEEP_SIZE
    return length == 0 || fallocate(fileno(file), FALLOC_FL_KEEP_SIZE, 0, length) == 0 ||
           errno == EOPNOTSUPP || errno == ENOSYS;
#else
    return file != nullptr && length >= 0;
#endif
}

bool system_cut(FILE *file, long length) {
    return fflush(file) == 0 && ftruncate(fileno(file), length) == 0;
}

bool system_put_over(const char *next, const char *target) {
    if (rename(next, target) != 0) {
        return false;
    }
    folder_to_disk(target);
    return true;
}

bool system_remove(const char *path) {
    return unlink(path) == 0;
}
