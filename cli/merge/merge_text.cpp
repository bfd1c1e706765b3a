#include "cli/merge/merge_text.h"

#include "cli/line_diff.h"

#include <algorithm>

namespace {

// One side's lines and what it changed. `next` is the first change that has not been merged.
struct Side {
    Lines lines;
    std::vector<LineChange> changes;
    size_t next;
};

// The marks as lines; the strings stand as long as the merged lines do.
struct Marks {
    std::string ours;
    std::string between;
    std::string theirs;
};

struct Merging {
    Lines base;
    Side ours;
    Side theirs;
    Marks marks;
    Lines merged;
    std::vector<size_t> conflicts;
};

// Lines of the base that changes of one side or both take the place of.
struct Region {
    size_t from;
    size_t to;
    bool grows;  // some change in it puts in more lines than it takes away
};

bool grows(const LineChange &change) {
    return change.after_to - change.after_from > change.before_to - change.before_from;
}

// Two changes that only touch go together unless both put lines in where they do: nobody can tell
// which come first, or whether they are the same ones.
bool belongs_to(const Region &region, const LineChange &change) {
    return change.before_from < region.to ||
           (change.before_from == region.to && region.grows && grows(change));
}

bool has_next(const Side &side) {
    return side.next < side.changes.size();
}

const LineChange &next_of(const Side &side) {
    return side.changes[side.next];
}

// Where both begin at one line, what only puts lines in comes first.
bool comes_first(const Side &side, const Side &other) {
    if (!has_next(side) || !has_next(other)) {
        return has_next(side);
    }
    const LineChange &a = next_of(side);
    const LineChange &b = next_of(other);
    return a.before_from != b.before_from ? a.before_from < b.before_from
                                          : a.before_to <= b.before_to;
}

bool take_next(Side *side, Region *region) {
    if (!has_next(*side) || !belongs_to(*region, next_of(*side))) {
        return false;
    }
    region->to = std::max(region->to, next_of(*side).before_to);
    region->grows |= grows(next_of(*side));
    ++side->next;
    return true;
}

Region next_region(Merging *m) {
    Side *first = comes_first(m->ours, m->theirs) ? &m->ours : &m->theirs;
    const LineChange &change = next_of(*first);
    Region region = {change.before_from, change.before_to, grows(change)};
    ++first->next;
    while (take_next(&m->ours, &region) || take_next(&m->theirs, &region)) {
    }
    return region;
}

// What a side has in the region's place; its changes from `first` up to `next` lie in it.
Lines lines_in(const Side &side, size_t first, const Region &region) {
    const LineChange &front = side.changes[first];
    const LineChange &back = side.changes[side.next - 1];
    const size_t from = front.after_from - (front.before_from - region.from);
    const size_t to = back.after_to + (region.to - back.before_to);
    return {side.lines.begin() + static_cast<std::ptrdiff_t>(from),
            side.lines.begin() + static_cast<std::ptrdiff_t>(to)};
}

void append(Merging *m, const Lines &lines, size_t from, size_t to) {
    m->merged.insert(m->merged.end(), lines.begin() + static_cast<std::ptrdiff_t>(from),
                     lines.begin() + static_cast<std::ptrdiff_t>(to));
}

// The lines at either end that both have are no part of the conflict.
void append_conflict(Merging *m, const Lines &ours, const Lines &theirs) {
    const size_t shorter = std::min(ours.size(), theirs.size());
    size_t head = 0;
    while (head < shorter && ours[head] == theirs[head]) {
        ++head;
    }
    size_t tail = 0;
    while (tail < shorter - head &&
           ours[ours.size() - 1 - tail] == theirs[theirs.size() - 1 - tail]) {
        ++tail;
    }
    append(m, ours, 0, head);
    m->conflicts.push_back(m->merged.size() + 1);
    m->merged.emplace_back(m->marks.ours);
    append(m, ours, head, ours.size() - tail);
    m->merged.emplace_back(m->marks.between);
    append(m, theirs, head, theirs.size() - tail);
    m->merged.emplace_back(m->marks.theirs);
    append(m, ours, ours.size() - tail, ours.size());
}

// Returns where the base goes on.
size_t merge_region(Merging *m) {
    const size_t ours_first = m->ours.next;
    const size_t theirs_first = m->theirs.next;
    const Region region = next_region(m);
    const bool ours_changed = m->ours.next > ours_first;
    const bool theirs_changed = m->theirs.next > theirs_first;
    const Lines ours = ours_changed ? lines_in(m->ours, ours_first, region) : Lines();
    const Lines theirs = theirs_changed ? lines_in(m->theirs, theirs_first, region) : Lines();
    if (ours_changed && theirs_changed && ours != theirs) {
        append_conflict(m, ours, theirs);
    } else {
        append(m, ours_changed ? ours : theirs, 0, ours_changed ? ours.size() : theirs.size());
    }
    return region.to;
}

// Where the next region begins.
size_t next_change(const Merging &m) {
    return next_of(comes_first(m.ours, m.theirs) ? m.ours : m.theirs).before_from;
}

Side side_of(const Lines &base, const std::string &text) {
    const Lines lines = split_lines(text);
    return {lines, line_changes(base, lines), 0};
}

Marks marks_of(const SideLabels &labels) {
    return {"<<<<<<< " + labels.ours, "=======", ">>>>>>> " + labels.theirs};
}

}  // namespace

MergedText merge_texts(const std::string &base, const std::string &ours, const std::string &theirs,
                       const SideLabels &labels) {
    if (ours == theirs || theirs == base) {
        return {ours, {}};
    }
    if (ours == base) {
        return {theirs, {}};
    }
    Merging m;
    m.base = split_lines(base);
    m.ours = side_of(m.base, ours);
    m.theirs = side_of(m.base, theirs);
    m.marks = marks_of(labels);
    size_t at = 0;
    while (has_next(m.ours) || has_next(m.theirs)) {
        append(&m, m.base, at, next_change(m));
        at = merge_region(&m);
    }
    append(&m, m.base, at, m.base.size());
    return {join_lines(m.merged), m.conflicts};
}

std::string marked_versions(const std::string &ours, const std::string &theirs,
                            const SideLabels &labels) {
    const Marks marks = marks_of(labels);
    return join_lines({marks.ours, ours, marks.between, theirs, marks.theirs});
}
