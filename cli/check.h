// What opening a web file would lose, change or leave out of reach.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Finding {
    std::string kind;  // a word for machines
    uint32_t line;     // in the file, from 1; 0 when the finding belongs to no line
    std::string text;  // the tag, entity, name or text in question
    std::string message;
};

struct CheckedFile {
    std::string name;
    int status;                     // of reading; the counts hold only for k_exit_done
    bool refused;                   // for a name that is no cellname
    bool whole;                     // every word of the file is in the web
    std::string error;              // why it could not be read; "" when it could
    std::string reason;             // the system's, where it has one
    std::vector<Finding> findings;  // by lines
    std::vector<Finding> notes;     // of what opens unchanged but reaches a limit
    uint32_t cells;
    uint32_t blocks_used;
    uint32_t blocks_left;
};

// Reads the file as a web, and collects what there is to say.
void check_file(const char *name, CheckedFile *file);

// The file's exit status: what became of reading it, or 1 when there is a finding.
int check_status(const CheckedFile &file);
