// What a file holds that reading would lose or change, as it is told to somebody who asks; for
// `qvx check`. Reading with an observer does the same to the web.
#pragma once

#include "file/read_finding.h"

#include <cstdint>

struct ReadNote {
    ReadFinding finding;
    int tag;           // WebTag; 0 where it does not matter
    uint32_t line;     // from 1
    const char *text;  // stands during the call
};

// Called while reading, when set, for each finding. Null takes the observer off.
using ReadObserver = void (*)(const ReadNote *note);
void web_read_observe(ReadObserver observer);
