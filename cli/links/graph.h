// What a web's links can be drawn from.
#pragma once

#include "web/options.h"

#include <cstdint>

enum GraphFormat : uint8_t { k_graph_dot = 0, k_graph_json = 1, k_graph_mermaid = 2 };

const OptionWord *graph_format_words();
