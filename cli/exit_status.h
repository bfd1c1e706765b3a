// The exit statuses of qvx.
#pragma once

constexpr int k_exit_done = 0;
constexpr int k_exit_refused = 1;  // nothing found, something found by a check, or refused
constexpr int k_exit_failed = 2;   // wrong usage, or a file that cannot be read or written
constexpr int k_exit_memory = 3;   // the web does not fit into the arena
constexpr int k_exit_fault = 4;    // qvx itself went wrong (core/check.h)
