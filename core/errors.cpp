#include "core/errors.h"

#include "core/host_messages.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

// From code 0 down, each ended by a zero: pointers to them would take half as much room again.
constexpr char k_messages[] = "NONESUCH\0"
                              "OUT OF MEMORY\0"
                              "NO SUCH METHOD EXISTS\0"
                              "UNABLE TO OPEN WEB FILE\0"
                              "UNABLE TO WRITE TO WEB FILE\0"
                              "UNABLE TO READ FROM WEB FILE\0"
                              "UNABLE TO OPEN INPUT FILE\0"
                              "UNABLE TO OPEN OUTPUT FILE\0"
                              "UNABLE TO READ FROM INPUT FILE\0"
                              "UNABLE TO WRITE TO OUPUT FILE\0"
                              "INPUT CELL NAME INVALID\0"
                              "OUTPUT CELL NAME INVALID\0"
                              "INPUT IN USE\0"
                              "OUTPUT IN USE\0"
                              "INPUT NOT OPEN\0"
                              "OUTPUT NOT OPEN\0"
                              "OPERATION ABORTED\0"
                              "UNABLE TO FIND PRINTER\0"
                              "PRINTER ERROR\0"
                              "PRINTING CANCELED\0"
                              "INTERNAL ERROR";
static_assert(1 - std::count(std::begin(k_messages), std::end(k_messages), 0) == k_internal_error);

}  // namespace

const char *error_message(ErrorCode code) {
    if (code > 0 || code < k_internal_error) {
        return "Unexpected Error!";
    }
    const char *message = k_messages;
    for (; code < 0; ++code) {
        message += strlen(message) + 1;
    }
    return message;
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
