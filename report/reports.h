// Reports on the names, texts and links of cells.
#pragma once

#include "core/block_arena.h"
#include "core/errors.h"

// Runs the report that the options ask for, over the cells that they and the selection ask for.
// Returns 0, or k_output_in_use when output is under way; report_result() has the outcome. What
// went wrong has been shown.
int report_run();

// The code of the last report_run(): 0 or the first negative code.
ErrorCode report_result();

// The pieces of a report. Each returns 0 or the output stream's first negative code and stops there
// or when output is cancelled.
ErrorCode report_formatted_cell(const char *format, CellHandle cell);
ErrorCode report_out_pointers(CellHandle cell);
ErrorCode report_in_pointers(CellHandle cell);
ErrorCode report_trail();
ErrorCode report_all_cells();
ErrorCode report_selected_cells();
ErrorCode report_current_cell();
