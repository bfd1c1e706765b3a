// `qvx check`: its findings, as lines for a reader or as a document for a program.
#include "cli/check.h"

#include "cli/commands.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

// The bytes of a file, fit for a terminal and for one line.
std::string printable(const std::string &bytes) {
    constexpr char k_hex[] = "0123456789abcdef";
    std::string shown;
    for (const char ch : bytes) {
        const auto byte = static_cast<unsigned char>(ch);
        if (byte < 0x20 || byte == 0x7F) {
            shown += {'\\', 'x', k_hex[byte >> 4], k_hex[byte & 15]};
        } else {
            shown += ch;
        }
    }
    return shown;
}

std::string as_text(const CheckedFile &file) {
    std::string lines;
    for (const Finding &finding : file.findings) {
        lines += file.name + ":";
        if (finding.line != 0) {
            lines += std::to_string(finding.line) + ":";
        }
        lines += " " + printable(finding.message) + "\n";
    }
    if (file.status == k_exit_done) {
        lines += file.name + ": " + std::to_string(file.cells) + " cells, " +
                 std::to_string(file.blocks_used) + " blocks used, " +
                 std::to_string(file.blocks_left) + " left\n";
    }
    return lines;
}

nlohmann::ordered_json as_json(const CheckedFile &file) {
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    for (const Finding &finding : file.findings) {
        nlohmann::ordered_json entry{{"kind", finding.kind}};
        if (finding.line != 0) {
            entry["line"] = finding.line;
        }
        entry["text"] = finding.text;
        entry["message"] = finding.message;
        findings.push_back(entry);
    }
    nlohmann::ordered_json document{
        {"file", file.name}, {"status", check_status(file)}, {"findings", findings}};
    if (file.status == k_exit_done) {
        document["cells"] = file.cells;
        document["blocks_used"] = file.blocks_used;
        document["blocks_left"] = file.blocks_left;
    }
    return document;
}

void print(const std::string &text) {
    host_print(text.data(), static_cast<uint32_t>(text.size()));
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
        // Names are bytes; what is no UTF-8 comes out as the replacement character.
        print(documents.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n");
    }
    return status;
}
