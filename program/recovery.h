// The program after it has run out of blocks.
#pragma once

// Brings the program back after recovery_run() returned -1: output, lists, staged cells and files
// are closed and given back, the views refreshed, "OUT OF MEMORY" shown.
void program_recover();
