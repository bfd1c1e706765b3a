// What the fuzz targets share. libFuzzer, or replay.cpp with the saved corpus, calls the function
// below with an input; a target says what is done with it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

// Ends the program, as a crash, with the sentence when the condition does not hold.
void require(bool condition, const char *sentence);

// An input that is taken apart from its front.
using FuzzInput = std::string_view;
uint8_t next_byte(FuzzInput *input);        // 0 at the end
std::string next_string(FuzzInput *input);  // up to a zero byte, which goes too

// The target's own: the longest input that it takes, and what it does with one. The program has
// started; what is in the web afterwards goes, and no block may be left.
extern const size_t k_longest_input;
void run_target(FuzzInput input);
