#include "tests/fuzz/fuzz_target.h"

#include "tests/engine/checker.h"
#include "tests/engine/recorder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

void fail(const std::string &sentence) {
    std::fprintf(stderr, "%s\n", sentence.c_str());
    abort();
}

void ensure_started() {
    static bool started;
    if (!started) {
        start_program();
        started = true;
    }
    host().log.clear();
}

void require_order() {
    static unsigned runs;
    if (runs++ % 64 == 0) {
        std::string fault = check_engine();
        require(fault.empty(), fault.c_str());
    }
}

uint8_t next_byte(FuzzInput *input) {
    if (input->size == 0) {
        return 0;
    }
    --input->size;
    return *input->data++;
}

std::string next_string(FuzzInput *input) {
    const char *bytes = reinterpret_cast<const char *>(input->data);
    const size_t length = strnlen(bytes, input->size);
    const size_t taken = length < input->size ? length + 1 : length;
    input->data += taken;
    input->size -= taken;
    return {bytes, length};
}

std::string rest_of_input(FuzzInput *input) {
    return std::string(reinterpret_cast<const char *>(input->data), input->size);
}
