// What the fuzz targets share. A target is the function that libFuzzer calls with an input; without
// libFuzzer, replay.cpp calls it with the files of the saved corpus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

// Ends the program, as a crash, with the sentence; where required, when the condition does not
// hold.
[[noreturn]] void fail(const std::string &sentence);
inline void require(bool condition, const char *sentence) {
    if (!condition) {
        fail(sentence);
    }
}

// The program has started and its log is empty.
void ensure_started();

// The whole arena is in order. Walks it in every 64th run only, but always in the first.
void require_order();

// An input that is taken apart from its front.
struct FuzzInput {
    const uint8_t *data;
    size_t size;
};

uint8_t next_byte(FuzzInput *input);        // 0 at the end
std::string next_string(FuzzInput *input);  // up to a zero byte, which goes too
std::string rest_of_input(FuzzInput *input);
