// Lists of links and of cells by their links.
#include "cli/exit_status.h"
#include "cli/links/commands.h"
#include "cli/links/found_lines.h"
#include "cli/links/link_table.h"
#include "cli/print.h"
#include "cli/webs.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <set>

namespace {

int found_any(bool found) {
    return found ? k_exit_done : k_exit_refused;
}

bool same_line(const Link &a, const Link &b) {
    return a.place.cell == b.place.cell && a.place.line == b.place.line;
}

using LinkIterator = std::vector<Link>::const_iterator;

void print_line_json(const CommandLine &line, const Notes &notes, LinkIterator first,
                     LinkIterator end) {
    auto links = nlohmann::ordered_json::array();
    for (LinkIterator link = first; link != end; ++link) {
        links.push_back(notes[link->target].name);
    }
    print_json({{"file", line.file},
                {"cell", notes[first->place.cell].name},
                {"line", first->place.line},
                {"text", first->place.text},
                {"links", links}});
}

void print_line_of_links(const CommandLine &line, const Notes &notes, LinkIterator first,
                         LinkIterator end) {
    if (line.json) {
        print_line_json(line, notes, first, end);
        return;
    }
    Spans spans;
    std::for_each(first, end, [&spans](const Link &link) { spans.push_back(link.place.span); });
    print_found({"", notes[first->place.cell].name, first->place.line, first->place.text}, spans);
}

// Each line once, however many of the links stand in it.
void print_lines_of_links(const CommandLine &line, const Notes &notes,
                          const std::vector<Link> &links) {
    for (auto first = links.begin(); first != links.end();) {
        const auto end = std::find_if(
            first, links.end(), [first](const Link &link) { return !same_line(*first, link); });
        print_line_of_links(line, notes, first, end);
        first = end;
    }
}

void print_cells(const CommandLine &line, const std::string &file, const Notes &notes,
                 const std::set<size_t> &cells) {
    for (const size_t cell : cells) {
        print_listed(line, file, notes[cell].name);
    }
}

// Prints those links that are wanted, or the cell at one end of them.
int print_links(const CommandLine &line, const Notes &notes,
                const std::function<bool(const Link &link)> &wanted,
                const std::function<size_t(const Link &link)> &end) {
    LinkTable table = link_table(notes);
    std::erase_if(table.links, [&wanted](const Link &link) { return !wanted(link); });
    if (prints_cells_alone(line)) {
        std::set<size_t> cells;
        for (const Link &link : table.links) {
            cells.insert(end(link));
        }
        print_cells(line, line.file, notes, cells);
    } else {
        print_lines_of_links(line, notes, table.links);
    }
    return found_any(!table.links.empty());
}

int links_of(const CommandLine &line, const Notes &notes) {
    const size_t cell = line.some_cell ? note_index(notes, *line.some_cell) : notes.size();
    if (line.some_cell && cell == notes.size()) {
        return no_such_cell(*line.some_cell);
    }
    return print_links(
        line, notes, [&](const Link &link) { return !line.some_cell || link.place.cell == cell; },
        [](const Link &link) { return link.target; });
}

int backlinks_of(const CommandLine &line, const Notes &notes) {
    const size_t cell = note_index(notes, line.cell);
    if (cell == notes.size()) {
        return no_such_cell(line.cell);
    }
    return print_links(
        line, notes, [cell](const Link &link) { return link.target == cell; },
        [](const Link &link) { return link.place.cell; });
}

// Prints the cells that link to none, or that none links to, as the lists have it.
int print_unlinked(const CommandLine &line, const std::string &file, const Notes &notes,
                   const Targets &targets, bool home_too) {
    bool found = false;
    for (size_t i = 0; i < notes.size(); ++i) {
        if (targets[i].empty() && (home_too || !is_home(notes[i]))) {
            print_listed(line, file, notes[i].name);
            found = true;
        }
    }
    return found_any(found);
}

// ---- A shortest way -----------------------------------------------------------------------------

// The cells from `from` to `to`, both included; empty when no links lead there. Of several shortest
// ways the first by names.
std::vector<size_t> shortest_way(const Targets &targets, size_t from, size_t to) {
    const size_t nowhere = targets.size();
    std::vector<size_t> came_from(targets.size(), nowhere);
    std::vector<size_t> reached = {from};
    came_from[from] = from;
    for (size_t i = 0; i < reached.size() && came_from[to] == nowhere; ++i) {
        for (const size_t next : targets[reached[i]]) {
            if (came_from[next] == nowhere) {
                came_from[next] = reached[i];
                reached.push_back(next);
            }
        }
    }
    std::vector<size_t> way;
    for (size_t at = to; came_from[to] != nowhere; at = came_from[at]) {
        way.insert(way.begin(), at);
        if (at == from) {
            break;
        }
    }
    return way;
}

int print_way(const CommandLine &line, const Notes &notes) {
    const size_t from = note_index(notes, line.cell);
    const size_t to = note_index(notes, line.other_cell);
    if (from == notes.size() || to == notes.size()) {
        return no_such_cell(from == notes.size() ? line.cell : line.other_cell);
    }
    const std::vector<size_t> way = shortest_way(link_targets(notes), from, to);
    for (const size_t cell : way) {
        print_listed(line, line.file, notes[cell].name);
    }
    return found_any(!way.empty());
}

}  // namespace

int command_links(const CommandLine &line) {
    return read_web(
        line, [&line](const std::string &, const Notes &notes) { return links_of(line, notes); });
}

int command_backlinks(const CommandLine &line) {
    return read_web(line, [&line](const std::string &, const Notes &notes) {
        return backlinks_of(line, notes);
    });
}

int command_orphans(const CommandLine &line) {
    return read_webs(line, [&line](const std::string &file, const Notes &notes) {
        return print_unlinked(line, file, notes, reversed(link_targets(notes)), false);
    });
}

int command_deadends(const CommandLine &line) {
    return read_webs(line, [&line](const std::string &file, const Notes &notes) {
        return print_unlinked(line, file, notes, link_targets(notes), true);
    });
}

int command_path(const CommandLine &line) {
    return read_web(
        line, [&line](const std::string &, const Notes &notes) { return print_way(line, notes); });
}
