// Whether the web has changes that no file has. Operations that change it set the flag, the
// document clears it.
#pragma once

bool web_changed();
void set_web_changed(bool changed);
