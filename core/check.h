// CHECK(condition): what a caller owes. It stays on in every build and costs a comparison. One that
// does not hold is a fault of the program, which then ends through its host before it can do harm.
//
// For callers only: what comes from a file or a user is never checked this way but answered with an
// error code (core/errors.h), and running out of blocks is no fault (core/recovery.h). The
// condition changes nothing.
#pragma once

#include "core/host_messages.h"

#define CHECK_QUOTE(what) #what
#define CHECK_LINE(line) CHECK_QUOTE(line)

// One text a check, such as "text.cpp:41: n == 0", and one call with it keep the program small.
#define CHECK(condition)                                                                           \
    do {                                                                                           \
        if (!(condition)) [[unlikely]] {                                                           \
            check_failed(__FILE_NAME__ ":" CHECK_LINE(__LINE__) ": " #condition);                  \
        }                                                                                          \
    } while (false)
