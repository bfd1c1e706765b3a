// Texts three ways: what two sides made of one text, brought together line by line.
#pragma once

#include <string>
#include <vector>

// How the two sides are called in conflicts; each on one line.
struct SideLabels {
    std::string ours;
    std::string theirs;
};

struct MergedText {
    std::string text;
    std::vector<size_t> conflicts;  // the line of each one's first mark, from 1
};

// Lines that one side changed are taken from it, and what both did alike is taken once. Where both
// changed a line, or both put lines in at one place, the two versions stand one after the other
// between marks of seven characters:
//
//     <<<<<<< OURS
//     =======
//     >>>>>>> THEIRS
MergedText merge_texts(const std::string &base, const std::string &ours, const std::string &theirs,
                       const SideLabels &labels);

// The marks around two versions that cannot be parted into lines, as a text of its own.
std::string marked_versions(const std::string &ours, const std::string &theirs,
                            const SideLabels &labels);
