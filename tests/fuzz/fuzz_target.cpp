#include "tests/fuzz/fuzz_target.h"

#include "tests/engine/engine_test.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static unsigned runs;
    if (size > k_longest_input) {
        return 0;
    }
    if (runs == 0) {
        start_program();
    }
    host().log.clear();
    run_target({reinterpret_cast<const char *>(data), size});
    if (runs++ % 64 == 0) {  // walking the whole arena takes its time
        const std::string fault = check_engine();
        require(fault.empty(), fault.c_str());
    }
    web_clear();
    require(blocks_in_use() == 0, "blocks are lost");
    return 0;
}

void require(bool condition, const char *sentence) {
    if (!condition) {
        std::fprintf(stderr, "%s\n", sentence);
        abort();
    }
}

uint8_t next_byte(FuzzInput *input) {
    const uint8_t byte = input->empty() ? 0 : static_cast<uint8_t>(input->front());
    input->remove_prefix(input->empty() ? 0 : 1);
    return byte;
}

std::string next_string(FuzzInput *input) {
    const std::string_view taken = input->substr(0, input->find('\0'));
    input->remove_prefix(std::min(taken.size() + 1, input->size()));
    return std::string(taken);
}
