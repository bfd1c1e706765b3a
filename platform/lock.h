// Keeps other programs that ask as well from changing a file at the same time. Reading needs no
// lock: a file is replaced in one step.
//
// One lock at a time. It ends with the program, however that ends.
#pragma once

#include <cstdint>
#include <string>

enum class LockResult : uint8_t {
    held,
    busy,     // somebody else has had it all the time
    missing,  // there is no file to lock
    failed    // errno says why
};

// Locks the file at a path, and makes sure that the path still names the file that it has locked.
// Waits for another holder, at most so long. What is no file of its own (a device) needs no lock
// and counts as held.
LockResult lock_file(const char *path, uint32_t milliseconds);

// Makes an empty file at a path that has none, and locks it. `busy` when there is something, or
// when somebody else was quicker to lock the file than the one that made it.
LockResult lock_new_file(const char *path);

void unlock_file();

// Who has it, after `busy`: "NAME (process NUMBER)", or "another program" where the system does not
// tell.
std::string lock_holder();
