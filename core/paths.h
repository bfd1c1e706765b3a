// Paths as text; what a system does with them is in core/host_files.h.
#pragma once

// True for a character behind which a file's name can begin, on any system that a web comes from.
bool ends_folder(char c);
