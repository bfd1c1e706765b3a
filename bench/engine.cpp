#include "bench/engine.h"

#include "cli/host_qvx.h"
#include "core/block_arena.h"
#include "file/web_reader.h"
#include "file/web_writer.h"
#include "web/options.h"
#include "web/words.h"

#include <cstdlib>

// Running out of blocks ends the program, since no recovery point is ever taken.
void engine_start() {
    block_arena_init();
    option_defaults();
    char_classes_init();
}

void engine_read(FILE *file) {
    if (web_read(file) < 0 || !web_read_was_whole()) {
        host_message("the web could not be read");
        exit(2);
    }
}

void engine_save(FILE *file) {
    if (web_write(file) < 0) {
        host_message("the web could not be written");
        exit(2);
    }
}
