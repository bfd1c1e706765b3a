// A folder of files that is written whole or not at all.
#pragma once

#include <string>
#include <vector>

struct FolderFile {
    std::string name;
    std::string bytes;
};

// An exit status, after saying why the files cannot come into the folder: it holds something and
// `force` is not given, or a name of theirs is a folder's there.
int folder_is_free(const std::string &folder, const std::vector<FolderFile> &files, bool force);

// Writes the files into a fresh folder and moves that, or them, to where they belong. What else the
// folder holds stays; files of the same names are replaced. The folder is made where there is none.
int write_folder(const std::string &folder, const std::vector<FolderFile> &files);
