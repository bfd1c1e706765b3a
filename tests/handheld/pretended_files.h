// The handheld's files, pretended: what stands behind tests/handheld/include/windows.h.
#pragma once

#include <cstdint>
#include <string>

// What happens to the call that is due among those that look at, open, change or flush a file.
enum class Mishap : uint8_t {
    none,
    refused,        // it fails
    refused_after,  // and so do all behind it, as if the card had been taken out
    killed,         // the process ends
};

// From now on the call that finds `calls` others before it has the mishap. The folder for temporary
// files can be there or not.
void pretend_mishap(Mishap mishap, int calls, bool with_temporary_folder);

// True once it has happened, or when nothing can.
bool mishap_happened();

// Makes an empty root for the handheld's files, with folders "Notes" (the documents) and "Temp".
void pretend_empty_root();

// Where a handheld's path is on this machine.
std::string host_path(const std::wstring &name);

void set_attributes(const std::wstring &name, uint32_t attributes);
