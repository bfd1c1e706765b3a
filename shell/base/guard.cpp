#include "shell/base/guard.h"

#include "core/recovery.h"
#include "program/recovery.h"

bool run_guarded(void (*body)(void *argument), void *argument) {
    if (recovery_run(body, argument) == 0) {
        return true;
    }
    program_recover();
    return false;
}
