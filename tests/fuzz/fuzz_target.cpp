#include "tests/fuzz/fuzz_target.h"

#include "tests/engine/checker.h"
#include "tests/engine/recorder.h"

#include <cstdio>
#include <cstdlib>

void require(bool condition, const std::string &sentence) {
    if (!condition) {
        std::fprintf(stderr, "%s\n", sentence.c_str());
        abort();
    }
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
    if (runs++ % 16 == 0) {
        std::string fault = check_engine();
        require(fault.empty(), fault);
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
    std::string s;
    for (uint8_t c = next_byte(input); c != 0; c = next_byte(input)) {
        s.push_back(static_cast<char>(c));
    }
    return s;
}

std::string rest_of_input(FuzzInput *input) {
    return std::string(reinterpret_cast<const char *>(input->data), input->size);
}
