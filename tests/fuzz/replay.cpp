// Runs a fuzz target over every file of the folders named, without libFuzzer. An input that fails
// ends the program as a crash behind its file's name.
#include "tests/fuzz/fuzz_target.h"

#include "tests/support/files.h"

#include <cstdio>
#include <filesystem>

int main(int argc, char **argv) {
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
            const std::string bytes = file_bytes(entry.path());
            std::printf("%s\n", entry.path().c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
            ++inputs;
        }
    }
    std::printf("%d inputs replayed\n", inputs);
    return inputs > 0 ? 0 : 1;
}
