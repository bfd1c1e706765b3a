#include "cli/links/graph.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/links/commands.h"
#include "cli/links/link_table.h"
#include "cli/print.h"
#include "cli/webs.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

constexpr OptionWord k_formats[] = {
    {"dot", k_graph_dot}, {"json", k_graph_json}, {"mermaid", k_graph_mermaid}, {"", 0}};

// The cells to draw, by their indices, and the links among them.
struct Graph {
    const Notes *notes;
    std::vector<size_t> cells;
    Targets targets;  // of every cell, without those that are not drawn
};

// How far each cell is from `from`, against the links' direction too; -1 for what is further away
// than `most`.
std::vector<int32_t> distances(const Targets &targets, size_t from, int32_t most) {
    const Targets sources = reversed(targets);
    std::vector<int32_t> far(targets.size(), -1);
    std::vector<size_t> reached = {from};
    far[from] = 0;
    for (size_t i = 0; i < reached.size(); ++i) {
        const size_t cell = reached[i];
        for (const Targets *ends : {&targets, &sources}) {
            for (const size_t next : (*ends)[cell]) {
                if (far[next] < 0 && far[cell] < most) {
                    far[next] = far[cell] + 1;
                    reached.push_back(next);
                }
            }
        }
    }
    return far;
}

Graph whole_graph(const Notes &notes) {
    Graph graph = {&notes, {}, link_targets(notes)};
    for (size_t i = 0; i < notes.size(); ++i) {
        graph.cells.push_back(i);
    }
    return graph;
}

void keep_near(Graph *graph, size_t cell, int32_t depth) {
    const std::vector<int32_t> far = distances(graph->targets, cell, depth);
    const auto away = [&far](size_t other) { return far[other] < 0; };
    std::erase_if(graph->cells, away);
    for (std::vector<size_t> &list : graph->targets) {
        std::erase_if(list, away);
    }
}

const std::string &name_of(const Graph &graph, size_t cell) {
    return (*graph.notes)[cell].name;
}

// ---- Formats ------------------------------------------------------------------------------------

bool is_control(char ch) {
    return static_cast<uint8_t>(ch) < 0x20;
}

// Quoted. Names in files made by others may hold control characters.
std::string dot_string(std::string_view name) {
    std::string quoted = "\"";
    for (const char ch : name) {
        if (ch == '"' || ch == '\\') {
            quoted += '\\';
        }
        quoted += is_control(ch) ? ' ' : ch;
    }
    return quoted + "\"";
}

void print_dot(const Graph &graph) {
    std::vector<std::string> names;
    for (const Note &note : *graph.notes) {
        names.push_back(dot_string(note.name));
    }
    print("digraph links {\n    node [shape=box];\n");
    for (const size_t cell : graph.cells) {
        print_line("    " + names[cell] + ";");
    }
    for (const size_t cell : graph.cells) {
        for (const size_t target : graph.targets[cell]) {
            print_line("    " + names[cell] + " -> " + names[target] + ";");
        }
    }
    print("}\n");
}

// Entities begin with '#' there, not with '&'.
std::string mermaid_string(std::string_view name) {
    constexpr std::string_view k_special = "\"#&<>`";
    std::string quoted = "\"";
    for (const char ch : name) {
        if (k_special.find(ch) != std::string_view::npos) {
            quoted += "#" + std::to_string(static_cast<uint8_t>(ch)) + ";";
        } else {
            quoted += is_control(ch) ? ' ' : ch;
        }
    }
    return quoted + "\"";
}

void print_mermaid(const Graph &graph) {
    print("flowchart LR\n");
    for (const size_t cell : graph.cells) {
        print_line("    c" + std::to_string(cell) + "[" + mermaid_string(name_of(graph, cell)) +
                   "]");
    }
    for (const size_t cell : graph.cells) {
        for (const size_t target : graph.targets[cell]) {
            print_line("    c" + std::to_string(cell) + " --> c" + std::to_string(target));
        }
    }
}

void print_graph_json(const Graph &graph) {
    for (const size_t cell : graph.cells) {
        auto links = nlohmann::ordered_json::array();
        for (const size_t target : graph.targets[cell]) {
            links.push_back(name_of(graph, target));
        }
        print_json({{"cell", name_of(graph, cell)}, {"links", links}});
    }
}

void print_graph(const CommandLine &line, const Graph &graph) {
    if (line.json || line.graph_format == k_graph_json) {
        print_graph_json(graph);
    } else if (line.graph_format == k_graph_mermaid) {
        print_mermaid(graph);
    } else {
        print_dot(graph);
    }
}

int graph_of(const CommandLine &line, const Notes &notes) {
    Graph graph = whole_graph(notes);
    if (line.some_cell) {
        const size_t cell = note_index(notes, *line.some_cell);
        if (cell == notes.size()) {
            return no_such_cell(*line.some_cell);
        }
        keep_near(&graph, cell, line.depth);
    }
    print_graph(line, graph);
    return k_exit_done;
}

}  // namespace

const OptionWord *graph_format_words() {
    return k_formats;
}

int command_graph(const CommandLine &line) {
    if (line.depth < 0) {
        host_message("--depth is less than 0");
        return k_exit_failed;
    }
    return read_web(
        line, [&line](const std::string &, const Notes &notes) { return graph_of(line, notes); });
}
