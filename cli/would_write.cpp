#include "cli/would_write.h"

#include "cli/differences.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/saved_options.h"
#include "cli/web_file.h"

namespace {

// What was wrong with a file that is going to be replaced is of no interest.
bool load_quietly(const std::string &name) {
    if (!web_is_there(name.c_str())) {
        return false;
    }
    host_hold_messages(true);
    const int status = web_load(name.c_str());
    host_hold_messages(false);
    return status == k_exit_done;
}

}  // namespace

void print_what_writing_changes(const std::string &target) {
    const Notes after = notes_of_web();
    const SavedOptions options = saved_options();
    if (!load_quietly(target)) {
        print_differences({}, after);
        return;
    }
    print_differences(notes_of_web(), after);
    print_option_differences(saved_options(), options);
}
