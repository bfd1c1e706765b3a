#include "tests/engine/report_model.h"

#include "tests/engine/engine_test.h"

#include "core/numbers.h"
#include "core/text.h"
#include "web/index.h"
#include "web/options.h"
#include "web/trail.h"

#include <algorithm>
#include <map>

namespace {

constexpr size_t k_seen = 4095;     // characters of a text that count
constexpr size_t k_numbered = 256;  // cells that links can name

struct ModelCell {
    std::string name, text;
};

struct ModelCells {
    std::vector<ModelCell> all;
    std::map<std::string, size_t> by_name;  // folded
};

ModelCells model_cells() {
    ModelCells cells;
    for (CellHandle c = first_live_cell(); c != 0; c = next_live_cell(c)) {
        cells.by_name[model_fold(name_string(c))] = cells.all.size();
        cells.all.push_back({name_string(c), text_string(cell_text(c)).substr(0, k_seen)});
    }
    return cells;
}

Names words_of(const std::string &text) {
    Names words;
    bool inside = false;
    for (char c : text) {
        bool goes_on = inside && ((c >= '0' && c <= '9') || c == '_');
        if (model_letter(c) && !inside) {
            words.emplace_back();
        }
        inside = model_letter(c) || goes_on;
        if (inside) {
            words.back().push_back(c);
        }
    }
    return words;
}

constexpr size_t k_no_cell = SIZE_MAX;

size_t find_cell(const ModelCells &cells, const std::string &name) {
    auto found = cells.by_name.find(model_fold(name));
    return found != cells.by_name.end() ? found->second : k_no_cell;
}

std::vector<size_t> out_pointers(const ModelCells &cells, size_t from) {
    std::vector<size_t> targets;
    for (const std::string &word : words_of(cells.all[from].text)) {
        size_t target = find_cell(cells, word);
        if (target < k_numbered) {
            targets.push_back(target);
        }
    }
    return targets;
}

std::string formatted(const ModelCell &cell) {
    std::string out;
    const std::string format = option_rfmt();
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '\\') {
            out += format[i];
        } else if (++i < format.size()) {
            char c = format[i];
            out += c == 'n'   ? "\r\n"
                   : c == 'N' ? cell.name.substr(0, k_seen)
                   : c == 'T' ? cell.text
                              : std::string(1, c);
        }
    }
    return out;
}

std::string report_of(const ModelCells &cells, size_t i) {
    std::string out = "\n" + cells.all[i].name.substr(0, k_seen);
    switch (option_rtype()) {
    case k_report_fmt:
        return formatted(cells.all[i]);
    case k_report_outptr:
        for (size_t target : out_pointers(cells, i)) {
            out += "\n    >" + cells.all[target].name.substr(0, k_seen);
        }
        return out;
    case k_report_inptr:
        for (size_t from = 0; from < cells.all.size(); ++from) {
            std::vector<size_t> targets = out_pointers(cells, from);
            if (std::find(targets.begin(), targets.end(), i) != targets.end()) {
                out += "\n    <" + cells.all[from].name.substr(0, k_seen);
            }
        }
        return out;
    default:
        return "";
    }
}

std::string trail_report() {
    std::string out = "\nTrail:";
    Names names = trail_names();
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        out += "\n    " + name->substr(0, k_seen);
    }
    return out;
}

std::vector<size_t> reported(const ModelCells &cells) {
    std::vector<size_t> chosen;
    if (option_rall() != 0) {
        for (size_t i = 0; i < cells.all.size(); ++i) {
            chosen.push_back(i);
        }
        return chosen;
    }
    for (const std::string &word : words_of(host().selected_text)) {
        size_t i = find_cell(cells, word.substr(0, 48));
        if (i != k_no_cell && chosen.size() < 64) {
            chosen.push_back(i);
        }
    }
    if (chosen.empty()) {
        chosen.push_back(find_cell(cells, current_name()));
    }
    return chosen;
}

}  // namespace

bool model_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string model_fold(const std::string &name) {
    std::string key;
    for (char c : name) {
        key.push_back(c == '_' ? ' ' : c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c);
    }
    return key;
}

std::string model_number_text(double value, uint8_t kind, int digits) {
    char text[500];
    const char *pattern = kind == 0 ? "%.*f" : kind == 1 ? "%.*e" : "%.*g";
    int length = snprintf(text, sizeof text, pattern, digits, value);
    for (; length > static_cast<int>(k_number_text_max); --digits) {
        length = snprintf(text, sizeof text, "%.*e", digits, value);
    }
    return text;
}

std::string model_stream(const std::string &characters) {
    std::string out;
    char quote = 0;
    for (size_t i = 0; i < characters.size(); ++i) {
        char c = characters[i];
        if (quote == 0 && c == '\\') {
            if (++i < characters.size()) {
                out += characters[i] == 'n' ? '\n' : characters[i];
            }
            continue;
        }
        if (quote == 0 && (c == '\'' || c == '"')) {
            quote = c;
        } else if (c == quote) {
            quote = 0;
        }
        out += c;
    }
    return out;
}

std::string model_newlines(const std::string &stream, uint8_t mode) {
    std::string out;
    for (size_t i = 0; i < stream.size(); ++i) {
        char c = stream[i];
        bool after_cr = i > 0 && stream[i - 1] == '\r';
        if (mode == k_newline_cr && c == '\n' && !after_cr) {
            out += '\r';
        } else if (!(mode == k_newline_lf && c == '\r') && !(mode == k_newline_cr && c == '\n')) {
            out += c;
        }
    }
    return out;
}

std::string model_report() {
    if (option_rtype() == k_report_trail) {
        return model_stream(trail_report());
    }
    std::string out;
    ModelCells cells = model_cells();
    for (size_t i : reported(cells)) {
        out += report_of(cells, i);
    }
    return model_stream(out);
}
