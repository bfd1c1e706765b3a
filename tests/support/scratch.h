// Where the native tests' files stand.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

// A folder of this process below the build's, gone when the process ends.
inline const std::filesystem::path &scratch_folder() {
    static std::filesystem::path folder;
    if (folder.empty()) {
        std::string name = TEST_SCRATCH "XXXXXX";
        folder = mkdtemp(name.data());
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::current_path("/", ignored);
            std::filesystem::remove_all(folder, ignored);
        });
    }
    return folder;
}
