// Walks everything that the arena holds and says what is wrong with it; called after test steps.
#pragma once

#include <cstdint>
#include <string>

// "" when every block is on exactly one chain or free, but for this many that belong to nothing on
// purpose; the index is in order with right parents; the rings and the cell numbers name live cells
// only; the current cell is live; the free count is the free chain's length. Otherwise a sentence.
// To be called between operations: what is still under construction counts as lost.
std::string check_engine(uint32_t lost_blocks = 0);
