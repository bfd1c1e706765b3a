#include "cli/links/found_lines.h"

#include "cli/print.h"

#include <nlohmann/json.hpp>

#include <string>

namespace {

std::string field(std::string_view text, Colour colour) {
    return coloured(shown(text), colour) + coloured(":", Colour::cyan);
}

std::string with_spans(std::string_view text, const Spans &spans) {
    std::string whole;
    size_t done = 0;
    for (const Span &span : spans) {
        whole += shown(text.substr(done, span.begin - done)) +
                 coloured(shown(text.substr(span.begin, span.size)), Colour::red);
        done = span.begin + span.size;
    }
    return whole.append(shown(text.substr(done))) += '\n';
}

}  // namespace

std::string_view file_shown(const CommandLine &line, std::string_view file) {
    return line.files.size() > 1 ? file : std::string_view();
}

bool prints_cells_alone(const CommandLine &line) {
    return line.only_cells || (line.zero && !line.json);
}

void print_file(std::string_view file) {
    if (!file.empty()) {
        print(field(file, Colour::magenta));
    }
}

void print_found(const FoundLine &found, const Spans &spans) {
    std::string whole = found.file.empty() ? "" : field(found.file, Colour::magenta);
    whole += field(found.cell, Colour::magenta) + field(std::to_string(found.line), Colour::green);
    print(whole += with_spans(found.text, spans));
}

void print_marked(std::string_view text, const Spans &spans) {
    print(with_spans(text, spans));
}

void print_listed(const CommandLine &line, std::string_view file, std::string_view name) {
    if (line.json) {
        print_json({{"file", file}, {"cell", name}});
        return;
    }
    print_file(file_shown(line, file));
    print_name(name, line.zero);
}

void print_counted(const CommandLine &line, std::string_view file, const char *key,
                   std::string_view name, size_t count) {
    if (line.json) {
        print_json({{"file", file}, {key, name}, {"count", count}});
        return;
    }
    print_file(file_shown(line, file));
    print(field(name, Colour::magenta) + std::to_string(count) + "\n");
}
