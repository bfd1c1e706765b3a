// `qvx check`: its findings, as lines for a reader or as a document for a program.
#include "cli/check.h"

#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/print.h"
#include "cli/shown.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

std::string count_of(uint32_t count, const char *thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string as_lines(const std::string &name, const std::vector<Finding> &findings) {
    std::string lines;
    for (const Finding &finding : findings) {
        lines += name + ":";
        if (finding.line != 0) {
            lines += std::to_string(finding.line) + ":";
        }
        lines += " " + printable(finding.message) + "\n";
    }
    return lines;
}

std::string as_text(const CheckedFile &file) {
    std::string lines = as_lines(file.name, file.findings) + as_lines(file.name, file.notes);
    if (file.status == k_exit_done) {
        lines += file.name + ": " + count_of(file.cells, "cell") + ", " +
                 count_of(file.blocks_used, "block") + " used, " +
                 std::to_string(file.blocks_left) + " left\n";
    }
    return lines;
}

nlohmann::ordered_json as_json(const std::vector<Finding> &findings) {
    nlohmann::ordered_json entries = nlohmann::ordered_json::array();
    for (const Finding &finding : findings) {
        nlohmann::ordered_json entry{{"kind", finding.kind}};
        if (finding.line != 0) {
            entry["line"] = finding.line;
        }
        entry["text"] = finding.text;
        entry["message"] = finding.message;
        entries.push_back(entry);
    }
    return entries;
}

nlohmann::ordered_json as_json(const CheckedFile &file) {
    nlohmann::ordered_json document{{"file", file.name},
                                    {"status", check_status(file)},
                                    {"whole", file.whole},
                                    {"findings", as_json(file.findings)},
                                    {"notes", as_json(file.notes)}};
    if (!file.error.empty()) {
        document["error"] = file.error;
    }
    if (!file.reason.empty()) {
        document["reason"] = file.reason;
    }
    if (file.status == k_exit_done) {
        document["cells"] = file.cells;
        document["blocks_used"] = file.blocks_used;
        document["blocks_left"] = file.blocks_left;
    }
    return document;
}

}  // namespace

// Reading has recovery points of its own and nothing else here takes blocks, so that this command
// may keep strings.
int command_check(const CommandLine &line) {
    int status = k_exit_done;
    nlohmann::ordered_json documents = nlohmann::ordered_json::array();
    for (const std::string &name : line.files) {
        CheckedFile file;
        check_file(name.c_str(), &file);
        status = std::max(status, check_status(file));
        if (line.json) {
            documents.push_back(as_json(file));
        } else {
            print(as_text(file));
        }
    }
    if (line.json) {
        print(json_text(documents, 2) + "\n");
    }
    return status;
}
