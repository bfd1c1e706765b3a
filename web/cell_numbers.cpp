#include "web/cell_numbers.h"

#include "web/index.h"

#include <algorithm>
#include <cstring>

static struct CellNumbers {
    CellHandle cells[k_cell_number_max];
    uint32_t count;
} numbers;

void cell_numbers_rebuild() {
    memset(&numbers, 0, sizeof numbers);
    CellHandle cell = first_live_cell();
    while (cell != 0 && numbers.count < k_cell_number_max) {
        numbers.cells[numbers.count++] = cell;
        cell_set_numbered(cell, true);
        cell = next_live_cell(cell);
    }
}

int32_t cell_number_of(CellHandle cell) {
    CellHandle *end = numbers.cells + numbers.count;
    CellHandle *found = std::find(numbers.cells, end, cell);
    return found != end ? static_cast<int32_t>(found - numbers.cells) : -1;
}

CellHandle cell_by_number(int32_t number) {
    return number >= 0 && number < static_cast<int32_t>(k_cell_number_max) ? numbers.cells[number]
                                                                           : 0;
}
