// Pieces of a line.
#pragma once

#include <cstddef>
#include <vector>

struct Span {
    size_t begin;  // bytes from the line's beginning
    size_t size;
};

// In their order, apart from each other.
using Spans = std::vector<Span>;
