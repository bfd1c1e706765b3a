// The fonts of the main window's controls.
#pragma once

#include "shell/base/platform.h"

// `tenths` is the size in tenths of a point; without `screen` a point is a pixel. The caller owns
// the font; one that a control of the main window has is left to the end of the process, as the
// control draws with it until then.
HFONT make_font(const wchar_t *face, int tenths, bool bold, bool screen);
