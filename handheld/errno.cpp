// Why the last call failed. The handheld's library keeps no such number, so that only platform/
// ever sets it.
#include <cerrno>

extern "C" int *_errno() {
    static int reason;
    return &reason;
}
