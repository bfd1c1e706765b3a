// make_webs FOLDER: writes what is measured.
//
//     many.qvx, long.qvx    the two webs
//     long.names            the cellnames of long.qvx, one a line
//     long.texts            its texts, for tools that search lines
//     long.cells            for each line of long.texts the cell that it belongs to
#include "bench/engine.h"
#include "bench/webs.h"
#include "web/cell_text.h"
#include "web/cells.h"
#include "web/index.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

FILE *create(const std::string &path) {
    FILE *file = fopen(path.c_str(), "wb");
    if (file == nullptr) {
        perror(path.c_str());
        exit(2);
    }
    return file;
}

void close_whole(FILE *file, const std::string &path) {
    if (ferror(file) != 0 || fclose(file) != 0) {
        perror(path.c_str());
        exit(2);
    }
}

void write_web(const std::string &path, const GeneratedWeb &web) {
    web_reset("home");
    for (const GeneratedCell &generated : web) {
        CellHandle cell = cell_lookup(generated.name.c_str());
        if (cell == 0) {
            cell = cell_create(index_root_address(), generated.name.c_str());
        }
        cell_replace_text(cell, generated.text.data(),
                          static_cast<uint32_t>(generated.text.size()));
    }
    FILE *file = create(path);
    engine_save(file);
    close_whole(file, path);
}

void write_lines(const std::string &stem, const GeneratedWeb &web) {
    FILE *names = create(stem + ".names");
    FILE *texts = create(stem + ".texts");
    FILE *cells = create(stem + ".cells");
    for (const GeneratedCell &cell : web) {
        fprintf(names, "%s\n", cell.name.c_str());
        fprintf(texts, "%s\n", cell.text.c_str());
        for (auto i = std::count(cell.text.begin(), cell.text.end(), '\n'); i >= 0; --i) {
            fprintf(cells, "%s\n", cell.name.c_str());
        }
    }
    close_whole(names, stem + ".names");
    close_whole(texts, stem + ".texts");
    close_whole(cells, stem + ".cells");
}

}  // namespace

int main(int argc, char **argv) {
    if (argc != 2) {
        fputs("usage: make_webs FOLDER\n", stderr);
        return 2;
    }
    std::string folder = argv[1];
    engine_start();
    write_web(folder + "/many.qvx", make_many_cells());
    write_web(folder + "/long.qvx", make_long_texts());
    write_lines(folder + "/long", make_long_texts());
    return 0;
}
