#include "core/errors.h"

#include "core/host_messages.h"

namespace {

// Indexed by the negated code.
constexpr const char *k_messages[] = {
    "NONESUCH",
    "OUT OF MEMORY",
    "NO SUCH METHOD EXISTS",
    "UNABLE TO OPEN WEB FILE",
    "UNABLE TO WRITE TO WEB FILE",
    "UNABLE TO READ FROM WEB FILE",
    "UNABLE TO OPEN INPUT FILE",
    "UNABLE TO OPEN OUTPUT FILE",
    "UNABLE TO READ FROM INPUT FILE",
    "UNABLE TO WRITE TO OUPUT FILE",
    "INPUT CELL NAME INVALID",
    "OUTPUT CELL NAME INVALID",
    "INPUT IN USE",
    "OUTPUT IN USE",
    "INPUT NOT OPEN",
    "OUTPUT NOT OPEN",
    "OPERATION ABORTED",
    "UNABLE TO FIND PRINTER",
    "PRINTER ERROR",
    "PRINTING CANCELED",
    "INTERNAL ERROR",
};
constexpr ErrorCode k_last_code =
    -static_cast<ErrorCode>(sizeof k_messages / sizeof k_messages[0]) + 1;

}  // namespace

const char *error_message(ErrorCode code) {
    return code <= 0 && code >= k_last_code ? k_messages[-code] : "Unexpected Error!";
}

void show_error(ErrorCode code) {
    show_status_message(error_message(code));
}

ErrorCode report_error(ErrorCode code) {
    if (code != 0) {
        show_error(code);
    }
    return code;
}
