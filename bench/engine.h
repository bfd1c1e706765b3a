// The engine as the benchmarks use it: behind qvx's host, from web files.
#pragma once

#include <cstdio>

// What a program does before it opens its first web.
void engine_start();

// web_read() and web_write(); a failure ends the program.
void engine_read(FILE *file);
void engine_save(FILE *file);
