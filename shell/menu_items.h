// Which items of the menus would do nothing now.
#pragma once

#include "shell/base/platform.h"

// WM_INITMENUPOPUP: greys those of a pop-up that is about to open and clears the others.
void grey_dead_items(HMENU popup);
