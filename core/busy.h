// While report output is being written, messages are pumped after every character, so any command
// may arrive in the middle of a report. Whatever changes the web, the trail, stored text or the
// output stream asks here first.
#pragma once

// Set by the output stream for as long as a report is under way.
void busy_set(bool busy);

bool is_busy();

// True while output is under way, after showing "OUTPUT IN USE", and while the offer to save and
// exit stands open: the caller then does nothing.
bool refused_while_busy();
