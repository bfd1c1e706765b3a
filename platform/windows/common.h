// What files have in common on the desktop and on the handheld; the system.cpp of each has the rest
// of platform/system.h.
#pragma once

#include "platform/system.h"

// UTF-16 units of the longest path, the terminating zero included.
constexpr uint32_t k_wide_path_max = k_system_path_max;

// What a next version has behind the path.
extern const char *const k_next_suffix;

enum WidePathSlot : uint32_t { k_wide_one, k_wide_other, k_wide_slots };

// A path in UTF-16, in the slot's own static buffer, which the next call overwrites. Null for a
// path that is too long, which is never cut.
const wchar_t *wide_path(const char *path, WidePathSlot slot = k_wide_one);

// Puts what the system wants before a path into a buffer of k_wide_path_max units, and returns its
// length. What of the path it stands for is skipped. Each system's own.
uint32_t wide_path_start(wchar_t *to, const char **path);

// `beside` when nothing is at the path and something is, or may be, there; else "".
const char *left_for(const char *path, const char *beside);

// Leaves the reason of the system's last error in errno. Always false.
bool fail_as_system();
