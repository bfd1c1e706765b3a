// make_pages FOLDER: writes the pages that go with qvx into a folder, each under the name by which
// man or the shell looks for it.
#include "cli/pages/pages.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

struct Page {
    const char *name;
    std::string (*text)();
};

constexpr Page k_pages[] = {
    {"qvx.1", man_page},
    {"qvx.bash", bash_completion},
    {"_qvx", zsh_completion},
    {"qvx.fish", fish_completion},
};

bool write_page(const std::filesystem::path &folder, const Page &page) {
    std::ofstream file(folder / page.name, std::ios::binary | std::ios::trunc);
    file << page.text();
    file.close();
    return !file.fail();
}

}  // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        fputs("usage: make_pages FOLDER\n", stderr);
        return 2;
    }
    for (const Page &page : k_pages) {
        if (!write_page(argv[1], page)) {
            fprintf(stderr, "make_pages: %s/%s cannot be written\n", argv[1], page.name);
            return 2;
        }
    }
    return 0;
}
