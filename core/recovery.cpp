#include "core/recovery.h"

#include "core/check.h"

#include <csetjmp>

// mingw's setjmp hands the frame to longjmp, which then unwinds every frame between through the
// system's tables. The jump must only restore registers, so it gets no frame.
#if defined(_WIN64) && defined(__MINGW32__)
#define TAKE_RECOVERY_POINT(context) _setjmp((context), nullptr)
#else
#define TAKE_RECOVERY_POINT(context) setjmp(context)
#endif

struct RecoveryPoint {
    jmp_buf context;
    RecoveryPoint *outer;
};

static struct Recovery { RecoveryPoint *innermost; } recovery;

int recovery_run(void (*body)(void *argument), void *argument) {
    RecoveryPoint point;
    point.outer = recovery.innermost;
    if (TAKE_RECOVERY_POINT(point.context) != 0) {
        return -1;
    }
    recovery.innermost = &point;
    body(argument);
    CHECK(recovery.innermost == &point);
    recovery.innermost = point.outer;
    return 0;
}

bool recovery_available() {
    return recovery.innermost != nullptr;
}

void recovery_jump() {
    CHECK(recovery_available());
    RecoveryPoint *point = recovery.innermost;
    recovery.innermost = point->outer;
    longjmp(point->context, -1);
}

void recovery_reset() {
    recovery.innermost = nullptr;
}
