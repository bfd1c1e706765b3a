#include "tests/engine/report_model.h"

#include "tests/engine/engine_test.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace {

constexpr size_t k_seen = 4095;     // characters of a text that count
constexpr size_t k_numbered = 256;  // cells that links can name

struct ModelCell {
    std::string name, text;
};

// In index order; by_name has their places under the folded names.
struct ModelCells {
    std::vector<ModelCell> all;
    std::map<std::string, size_t> by_name;
};

ModelCells model_cells() {
    ModelCells cells;
    for (CellHandle c = first_live_cell(); c != 0; c = next_live_cell(c)) {
        cells.by_name[model_fold(name_string(c))] = cells.all.size();
        cells.all.push_back(
            {name_string(c).substr(0, k_seen), text_string(cell_text(c)).substr(0, k_seen)});
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

// The cells below `limit` that the words of a text name.
std::vector<size_t> named_by(const ModelCells &cells, const std::string &text, size_t longest,
                             size_t limit) {
    std::vector<size_t> named;
    for (const std::string &word : words_of(text)) {
        auto found = cells.by_name.find(model_fold(word.substr(0, longest)));
        if (found != cells.by_name.end() && found->second < limit) {
            named.push_back(found->second);
        }
    }
    return named;
}

std::vector<size_t> out_pointers(const ModelCells &cells, size_t from) {
    return named_by(cells, cells.all[from].text, k_seen, k_numbered);
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
                   : c == 'N' ? cell.name
                   : c == 'T' ? cell.text
                              : std::string(1, c);
        }
    }
    return out;
}

std::string report_of(const ModelCells &cells, size_t i) {
    const uint8_t type = option_rtype();
    if (type == k_report_fmt) {
        return formatted(cells.all[i]);
    }
    if (type != k_report_outptr && type != k_report_inptr) {
        return "";
    }
    std::string out = "\n" + cells.all[i].name;
    for (size_t target : out_pointers(cells, i)) {
        out += type == k_report_outptr ? "\n    >" + cells.all[target].name : "";
    }
    for (size_t from = 0; type == k_report_inptr && from < cells.all.size(); ++from) {
        std::vector<size_t> targets = out_pointers(cells, from);
        bool points = std::find(targets.begin(), targets.end(), i) != targets.end();
        out += points ? "\n    <" + cells.all[from].name : "";
    }
    return out;
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
    std::vector<size_t> chosen(cells.all.size());
    std::iota(chosen.begin(), chosen.end(), 0);
    if (option_rall() == 0) {
        chosen = named_by(cells, host().selected_text, 48, SIZE_MAX);
        chosen.resize(std::min<size_t>(chosen.size(), 64));
    }
    if (chosen.empty()) {
        chosen.push_back(cells.by_name.at(model_fold(current_name())));
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
