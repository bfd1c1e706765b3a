#include "cli/note.h"

#include "cli/shown.h"
#include "core/names.h"
#include "core/text.h"
#include "web/index.h"
#include "web/value.h"

#include <algorithm>

namespace {

Note note_of(CellHandle cell) {
    const BlockHandle value = cell_value(cell);
    // A value that was read from a file has its text at hand.
    return {text_bytes(cell_name(cell)), text_bytes(cell_text(cell)), text_bytes(cell_script(cell)),
            value != 0 ? text_bytes(val_text(value)) : ""};
}

// Where the name is, or belongs.
template <typename Range> auto place_of(Range &notes, std::string_view name) {
    return std::lower_bound(notes.begin(), notes.end(), name,
                            [](const Note &note, std::string_view wanted) {
                                return compare_names(note.name, wanted) < 0;
                            });
}

template <typename Range> auto found_in(Range &notes, std::string_view name) {
    const auto at = place_of(notes, name);
    return at != notes.end() && compare_names(at->name, name) == 0 ? &*at : nullptr;
}

}  // namespace

Notes notes_of_web() {
    Notes notes;
    for (CellHandle cell = first_live_cell(); cell != 0; cell = next_live_cell(cell)) {
        notes.push_back(note_of(cell));
    }
    return notes;
}

int compare_names(std::string_view a, std::string_view b) {
    const size_t shared = std::min(a.size(), b.size());
    for (size_t i = 0; i < shared; ++i) {
        const auto left = static_cast<uint8_t>(fold_char(a[i]));
        const auto right = static_cast<uint8_t>(fold_char(b[i]));
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

std::string folded_name(std::string_view name) {
    std::string folded(name);
    for (char &ch : folded) {
        ch = static_cast<char>(fold_char(ch));
    }
    return folded;
}

const Note *find_note(const Notes &notes, std::string_view name) {
    return found_in(notes, name);
}

Note *find_note(Notes *notes, std::string_view name) {
    return found_in(*notes, name);
}

Note *add_note(Notes *notes, std::string name) {
    const auto at = place_of(*notes, name);
    if (at != notes->end() && compare_names(at->name, name) == 0) {
        return nullptr;
    }
    return &*notes->insert(at, Note{std::move(name), "", "", ""});
}

bool is_good_name(const std::string &name) {
    return cellname_valid(name.c_str()) && name.size() <= k_cellname_max &&
           name.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

std::string with_crlf(std::string_view bytes) {
    std::string whole;
    whole.reserve(bytes.size());
    size_t begin = 0;
    for (size_t end; (end = bytes.find('\n', begin)) != std::string_view::npos; begin = end + 1) {
        const bool alone = end == 0 || bytes[end - 1] != '\r';
        whole.append(bytes, begin, end - begin).append(alone ? "\r\n" : "\n");
    }
    return whole.append(bytes, begin);
}

std::string with_lf(std::string_view bytes) {
    std::string shorter;
    shorter.reserve(bytes.size());
    size_t begin = 0;
    for (size_t at; (at = bytes.find("\r\n", begin)) != std::string_view::npos; begin = at + 1) {
        shorter.append(bytes, begin, at - begin);
    }
    return shorter.append(bytes, begin);
}

std::vector<std::string_view> lines_of(std::string_view text) {
    std::vector<std::string_view> lines;
    for (size_t begin = 0; begin < text.size();) {
        const size_t end = std::min(text.find('\n', begin), text.size());
        const bool crlf = end < text.size() && end > begin && text[end - 1] == '\r';
        lines.push_back(text.substr(begin, end - begin - (crlf ? 1 : 0)));
        begin = end + 1;
    }
    return lines;
}
