#include "core/paths.h"

#include "core/host_files.h"

bool ends_folder(char c) {
    return c == '\\' || c == ':' || c == k_path_separator;
}
