// qvx: webs read, changed, reported and written from the command line.
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/parser.h"
#include "core/block_arena.h"
#include "core/recovery.h"
#include "platform/program.h"
#include "program/recovery.h"
#include "web/options.h"
#include "web/words.h"

#include <algorithm>
#include <exception>
#include <new>

// The command that was asked for and its exit status, outside of every frame that the arena's
// recovery may leave.
static struct Run {
    CommandLine line;
    const CommandRow *command = nullptr;
    int status = k_exit_done;
} run;

namespace {

// What the program does before it opens its first web.
void start_engine() {
    block_arena_allow_recovery(false);
    block_arena_init();
    option_defaults();
    char_classes_init();
    block_arena_allow_recovery(true);
}

void run_body(void *) {
    run.status = run.command->function(run.line);
}

int run_command() {
    start_engine();
    if (recovery_run(run_body, nullptr) < 0) {
        if (!run.line.file.empty()) {
            host_name_file(run.line.file.c_str());
        }
        program_recover();
        run.status = k_exit_memory;
    }
    return host_finish_output() ? run.status : std::max(run.status, k_exit_failed);
}

}  // namespace

int main(int argc, char **argv) {
    try {
        standard_streams_binary();
        int status = k_exit_done;
        run.command = parse_command_line(program_arguments(argc, argv), &run.line, &status);
        return run.command != nullptr ? run_command() : status;
    } catch (const std::bad_alloc &) {
        host_message("OUT OF MEMORY");
        return k_exit_memory;
    } catch (const std::exception &error) {
        host_message(error.what());
        return k_exit_failed;
    }
}
