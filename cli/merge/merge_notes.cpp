#include "cli/merge/merge_notes.h"

#include <algorithm>

namespace {

struct Merging {
    const SideLabels *labels;
    MergedNotes result;
};

void note_conflict(Merging *m, const std::string &cell, const std::string &message) {
    m->result.conflicts.push_back({cell, message});
}

std::string merge_field(Merging *m, const std::string &cell, const char *field,
                        const std::string &base, const std::string &ours,
                        const std::string &theirs) {
    MergedText merged = merge_texts(base, ours, theirs, *m->labels);
    for (const size_t line : merged.conflicts) {
        note_conflict(m, cell, "conflict in line " + std::to_string(line) + " of the " + field);
    }
    return std::move(merged.text);
}

const std::string &changed_side(const std::string &base, const std::string &ours,
                                const std::string &theirs) {
    return ours == base ? theirs : ours;
}

// Marks are no value, so the text has them; a value that is there is kept in place of none.
void mark_values(Merging *m, Note *note, const std::string &ours, const std::string &theirs) {
    const SideLabels labels = {m->labels->ours + " (value)", m->labels->theirs + " (value)"};
    note->text += note->text.empty() || note->text.ends_with("\r\n") ? "" : "\r\n";
    note->text += marked_versions(ours, theirs, labels);
    note->value = ours.empty() ? theirs : ours;
    note_conflict(m, note->name,
                  "conflict of values, " + note->value +
                      " stays; both are marked at the end of the text");
}

void merge_both(Merging *m, const Note &base, const Note &ours, const Note &theirs) {
    Note note;
    note.name = changed_side(base.name, ours.name, theirs.name);
    note.text = merge_field(m, note.name, "text", base.text, ours.text, theirs.text);
    note.script = merge_field(m, note.name, "script", base.script, ours.script, theirs.script);
    note.value = changed_side(base.value, ours.value, theirs.value);
    if (ours.value != base.value && theirs.value != base.value && ours.value != theirs.value) {
        mark_values(m, &note, ours.value, theirs.value);
    }
    m->result.notes.push_back(std::move(note));
}

// The spelling of its name is no part of what a cell holds.
bool holds_the_same(const Note &a, const Note &b) {
    return a.text == b.text && a.script == b.script && a.value == b.value;
}

void merge_deleted(Merging *m, const Note *base, const Note &left, bool ours_deleted) {
    if (base != nullptr && holds_the_same(*base, left)) {
        return;
    }
    if (base != nullptr) {
        const std::string &deleting = ours_deleted ? m->labels->ours : m->labels->theirs;
        const std::string &changing = ours_deleted ? m->labels->theirs : m->labels->ours;
        note_conflict(m, left.name,
                      "deleted in " + deleting + " and changed in " + changing + ", which stays");
    }
    m->result.notes.push_back(left);
}

void merge_cell(Merging *m, const Note *base, const Note *ours, const Note *theirs) {
    if (ours != nullptr && theirs != nullptr) {
        const Note added = {ours->name, "", "", ""};
        merge_both(m, base != nullptr ? *base : added, *ours, *theirs);
    } else if (ours != nullptr || theirs != nullptr) {
        merge_deleted(m, base, ours != nullptr ? *ours : *theirs, ours == nullptr);
    }
}

bool sorts_before(std::string_view a, std::string_view b) {
    return compare_names(a, b) < 0;
}

// Each cell of the two sides once, in the web's order.
std::vector<std::string_view> names_of(const Notes &ours, const Notes &theirs) {
    std::vector<std::string_view> names;
    for (const Notes *notes : {&ours, &theirs}) {
        for (const Note &note : *notes) {
            names.push_back(note.name);
        }
    }
    std::inplace_merge(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(ours.size()),
                       names.end(), sorts_before);
    const auto same = [](std::string_view a, std::string_view b) {
        return compare_names(a, b) == 0;
    };
    names.erase(std::unique(names.begin(), names.end(), same), names.end());
    return names;
}

}  // namespace

MergedNotes merge_notes(const Notes &base, const Notes &ours, const Notes &theirs,
                        const SideLabels &labels) {
    Merging m = {&labels, {}};
    for (const std::string_view name : names_of(ours, theirs)) {
        merge_cell(&m, find_note(base, name), find_note(ours, name), find_note(theirs, name));
    }
    return std::move(m.result);
}
