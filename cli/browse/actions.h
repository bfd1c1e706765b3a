// What the user can do: a key, what it does, and its line in the help.
#pragma once

#include "cli/browse/terminal.h"

// Does what the key asks for. False when the user has left.
bool act_on_key(const Key &key);
