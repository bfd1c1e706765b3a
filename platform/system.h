// What platform/replace.cpp needs of a system. platform/posix/, platform/windows/ and
// platform/handheld/ define it.
//
// Paths are UTF-8 and zero-terminated. A function that fails leaves the reason in errno. Their
// names are plain, so that a test can have the linker put its own before them.
#pragma once

#include <cstdint>
#include <cstdio>

// Bytes of the longest path, the terminating zero included. A longer one is refused, never cut.
constexpr uint32_t k_system_path_max = 4096;

enum class FileKind : uint8_t {
    refused,  // cannot be both read and written, or is a folder
    missing,
    plain,   // one name, and nothing about it that a new file could not have
    shared,  // has other names, or attributes that a new file would lack
    device,
};

extern "C" {

// What is at a path once links are followed; that place goes into `target` (k_system_path_max
// bytes).
FileKind system_look(const char *path, char *target);

// Makes a new file, open for reading and writing, that exists nowhere yet. Without a `model` (a
// path) it is as new files are. With one and `exactly` it has the owner and the rights of the file
// there before a byte goes in, or it is null; without `exactly` it may be private to this user
// instead. Null leaves nothing behind.
FILE *system_create(const char *path, const char *model, bool exactly);

// The same in the system's folder for temporary files, private to this user; its path goes into
// `path` (k_system_path_max bytes). Unless it `stays`, the next call for one that does not
// may remove it, once this program has ended or in this program itself.
FILE *system_create_temporary(char *path, bool stays);

// The path at which the next version of `target` is written. False when it would be too long.
bool system_next_path(char *next, const char *target);

// What the copy of an old version has behind the path, before a number.
const char *system_old_suffix();

// Removes next versions that killed programs left at their paths. The one of a program that still
// runs stays.
void system_sweep(const char *target);

// The same for copies of old versions. Those that are `needed` get a name under which they stay.
void system_sweep_copies(const char *target, bool needed);

// Brings what was written to the disk.
bool system_to_disk(FILE *file);

// Makes sure that the file can grow to `length` bytes. Its bytes and its length stay.
bool system_make_room(FILE *file, long length);

// Makes the file this long.
bool system_cut(FILE *file, long length);

// Puts one closed file in the place of another, or of none.
bool system_put_over(const char *next, const char *target);

bool system_remove(const char *path);

}  // extern "C"
