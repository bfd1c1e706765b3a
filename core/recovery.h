// Where the program goes on when the arena runs out of blocks.
//
// recovery_run() is the only place that takes a recovery point. Points nest: the innermost one is
// jumped to, and it is taken away before the jump lands, so a second failure goes to the next one
// out. The jump unwinds nothing.
#pragma once

// Runs body(argument) under a recovery point of its own. Returns 0 when the body came back by
// itself and -1 (the code of "OUT OF MEMORY") when it was abandoned. What the body allocated before
// stays allocated until whoever owns it gives it back.
int recovery_run(void (*body)(void *argument), void *argument);

// True while some recovery_run() is under way.
bool recovery_available();

// Abandons the body of the innermost recovery_run(). There must be one.
[[noreturn]] void recovery_jump();

// Forgets every recovery point; for tests, in which a program that has ended begins again.
void recovery_reset();
