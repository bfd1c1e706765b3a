#include "cli/merge/damaged_web.h"

#include "cli/merge/web_scanner.h"
#include "core/names.h"
#include "file/web_tags.h"

#include <algorithm>

namespace {

struct Record {
    Note note;
    size_t line;  // of the name
};

struct Salvage {
    WebScanner scanner;
    int open;        // the element that waits for its closing tag; 0 is none
    size_t open_at;  // and where it begins
    bool in_cell;    // the last record takes fields
    bool had_tag;
    bool ended;  // by an end mark
    std::vector<Record> records;
    std::vector<std::string> found;  // what belongs to no cell
    SalvagedWeb web;
};

bool is_blank(std::string_view text) {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string trimmed(const std::string &text) {
    const size_t from = text.find_first_not_of(" \t\r\n");
    return from == std::string::npos
               ? ""
               : text.substr(from, text.find_last_not_of(" \t\r\n") + 1 - from);
}

// The writer puts a line end before each opening tag.
std::string without_last_line_end(std::string text) {
    if (text.ends_with("\r\n")) {
        text.resize(text.size() - 2);
    }
    return text;
}

std::string tag_in_brackets(int tag) {
    return std::string("<") + web_tag_name(tag) + ">";
}

void add_damage(Salvage *s, const char *kind, size_t at, std::string text, std::string message) {
    const std::string cell = s->in_cell ? s->records.back().note.name : "";
    s->web.damages.push_back(
        {kind, line_of(s->scanner, at), cell, std::move(text), std::move(message)});
}

// Texts that have lost their cell.
void put_to_found(Salvage *s, const char *kind, size_t at, const std::string &text,
                  const std::string &what) {
    add_damage(s, kind, at, text, what + " is kept in lost_and_found");
    s->found.push_back("Line " + std::to_string(line_of(s->scanner, at)) + ", " + what + ":\r\n" +
                       text);
}

void take_stray(Salvage *s, const ScannedTag &next) {
    if (!is_blank(next.text)) {
        const size_t begin = next.text.find_first_not_of(" \t\r\n");
        const auto lines = std::count(next.text.begin(),
                                      next.text.begin() + static_cast<std::ptrdiff_t>(begin), '\n');
        const size_t line = line_of(s->scanner, next.text_at) + static_cast<size_t>(lines) - 1;
        put_to_found(s, "text_outside", s->scanner.line_starts[line], trimmed(next.text),
                     "text outside of the elements");
    }
}

void begin_record(Salvage *s, size_t at, const std::string &name) {
    s->records.push_back({{name, "", "", ""}, line_of(s->scanner, at)});
    s->in_cell = true;
}

std::string *field_of(Note *note, int tag) {
    return tag == k_tag_text ? &note->text : tag == k_tag_val ? &note->value : &note->script;
}

void take_name(Salvage *s, size_t at, const std::string &name) {
    begin_record(s, at, name);
    if (name.empty() || !is_letter(name[0])) {
        s->records.back().note.name = "cell_" + name;
        add_damage(s, "bad_name", at, name, "\"" + name + "\" is no cellname");
    }
}

// A name that nothing ends where it should runs on into what follows; its line tells most of it.
void take_unclosed_name(Salvage *s, size_t at, const std::string &text) {
    const std::string line = text.substr(0, text.find_first_of("\r\n"));
    take_name(s, at, line.substr(0, k_cellname_max));
    if (s->records.back().note.name != text) {
        put_to_found(s, "unclosed_element", at, text, "a <cname> that is not closed");
    }
}

void take_field(Salvage *s, int tag, size_t at, const std::string &text) {
    if (!s->in_cell) {
        if (is_blank(text)) {
            return;
        }
        begin_record(s, at, "unnamed");
        add_damage(s, "element_before_name", at, text,
                   tag_in_brackets(tag) + " stands in no cell; it gets one");
    }
    std::string *field = field_of(&s->records.back().note, tag);
    if (is_blank(text) && !is_blank(*field)) {
        return;
    }
    if (!is_blank(*field) && *field != text) {
        put_to_found(s, "field_given_again", at, *field,
                     "an earlier " + tag_in_brackets(tag) + " of " + s->records.back().note.name);
    }
    *field = text;
}

// Behind an end mark only what was not given before it.
void take_option(Salvage *s, int tag, size_t at, const std::string &text) {
    const bool given = std::any_of(s->web.options.begin(), s->web.options.end(),
                                   [tag](const auto &option) { return option.first == tag; });
    if (s->ended && given) {
        add_damage(s, "option_given_again", at, text,
                   tag_in_brackets(tag) + " behind the end mark is left out");
    } else {
        s->web.options.emplace_back(tag, text);
    }
}

void take_element(Salvage *s, int tag, size_t at, const std::string &text) {
    if (tag == k_tag_cname) {
        take_name(s, at, text);
    } else if (tag == k_tag_text || tag == k_tag_val || tag == k_tag_script) {
        take_field(s, tag, at, text);
    } else {
        take_option(s, tag, at, text);
    }
}

void take_unclosed(Salvage *s, int tag, size_t at, const std::string &text) {
    if (tag == k_tag_cname) {
        take_unclosed_name(s, at, trimmed(text));
    } else {
        take_element(s, tag, at, text);
    }
}

// An element whose closing tag did not come goes on to the next tag. At the end of the file only
// texts are taken so: part of a name or a number is another one.
void close_unclosed(Salvage *s, const ScannedTag &next, bool at_end) {
    const int tag = s->open;
    s->open = 0;
    if (is_blank(next.text)) {
        return;
    }
    const bool is_text = tag == k_tag_text || tag == k_tag_script;
    if (at_end && !is_text) {
        put_to_found(s, "unclosed_element", s->open_at, next.text,
                     "part of a " + tag_in_brackets(tag));
        return;
    }
    take_unclosed(s, tag, s->open_at,
                  is_text ? without_last_line_end(next.text) : trimmed(next.text));
    add_damage(s, "unclosed_element", s->open_at, next.text,
               tag_in_brackets(tag) + " is not closed; what follows is kept up to the next tag");
}

void close_or_drop(Salvage *s, const ScannedTag &next, bool at_end) {
    if (s->open != 0) {
        close_unclosed(s, next, at_end);
    } else {
        take_stray(s, next);
    }
}

void take_opening(Salvage *s, const ScannedTag &next, size_t at) {
    close_or_drop(s, next, false);
    if (!web_tag_groups(next.tag)) {
        s->open = web_tag_field(next.tag);
        s->open_at = at;
    } else if (next.tag == k_tag_cell && s->scanner.suspicious) {
        s->in_cell = false;
    }
}

// The tag that an element began with says more than the one that ends it.
void take_closing(Salvage *s, const ScannedTag &next) {
    const int opened = s->open;
    const int tag = web_tag_field(next.tag);
    const bool mistaken = opened != 0 && opened != tag && !is_blank(next.text);
    s->open = 0;
    if (!mistaken) {
        take_element(s, tag, opened != 0 ? s->open_at : next.text_at, next.text);
    } else {
        take_unclosed(s, opened, s->open_at, next.text);
        add_damage(s, "unclosed_element", s->open_at, next.text,
                   tag_in_brackets(opened) + " is closed by another one's tag");
    }
}

// What the scanner noted since the last tag stands before what is found out now.
void take_spoilt(Salvage *s) {
    for (const Spoilt &spoilt : s->scanner.spoilt) {
        add_damage(s, spoilt.kind, spoilt.at, spoilt.text, spoilt.message);
    }
    s->scanner.spoilt.clear();
}

// True when reading goes on behind the end mark, where nothing should be.
bool take_end_mark(Salvage *s, const ScannedTag &next) {
    close_or_drop(s, next, false);
    const bool more = !is_blank(s->scanner.bytes.substr(s->scanner.at));
    if (more && !s->ended) {
        add_damage(s, "bytes_after_end", s->scanner.at, "", "something stands behind the end mark");
    }
    s->ended = true;
    s->in_cell = false;
    return more;
}

// One tag. False when the web has ended.
bool take_tag(Salvage *s, const ScannedTag &next, size_t at) {
    s->had_tag = true;
    if (next.tag == k_tag_eof) {
        return take_end_mark(s, next);
    }
    if (!next.closing) {
        take_opening(s, next, at);
    } else if (web_tag_groups(next.tag)) {
        close_or_drop(s, next, false);
        s->in_cell &= !s->scanner.suspicious;
    } else {
        take_closing(s, next);
    }
    return true;
}

void take_all(Salvage *s) {
    ScannedTag next;
    for (;;) {
        const bool any = scan_tag(&s->scanner, &next);
        take_spoilt(s);
        if (!any) {
            break;
        }
        // An opening tag is where its text will begin, but for its own few bytes.
        if (!take_tag(s, next, s->scanner.at - 1)) {
            return;
        }
    }
    close_or_drop(s, next, true);
    if (s->had_tag && !s->ended) {
        s->in_cell = false;
        add_damage(s, "no_end_mark", s->scanner.at, "", "the end of the file is missing");
    }
}

// ---- The cells ----------------------------------------------------------------------------------

// The name, or the first one like it with a number that is not taken.
std::string free_name(const Notes &notes, const std::string &name) {
    std::string candidate = name;
    for (int i = 2; find_note(notes, candidate) != nullptr; ++i) {
        const std::string number = "_" + std::to_string(i);
        candidate = name.substr(0, k_cellname_max - number.size()) + number;
    }
    return candidate;
}

bool is_empty(const Note &note) {
    return is_blank(note.text) && is_blank(note.script) && is_blank(note.value);
}

bool holds_the_same(const Note &a, const Note &b) {
    return a.text == b.text && a.script == b.script && a.value == b.value;
}

void fill(Note *to, Note from) {
    to->text = std::move(from.text);
    to->script = std::move(from.script);
    to->value = std::move(from.value);
}

void take_record(Salvage *s, Record record) {
    Note *there = find_note(&s->web.notes, record.note.name);
    if (there != nullptr && (is_empty(record.note) || holds_the_same(*there, record.note))) {
        return;
    }
    if (there == nullptr || is_empty(*there)) {
        there = there != nullptr ? there : add_note(&s->web.notes, record.note.name);
    } else {
        const std::string name = free_name(s->web.notes, record.note.name);
        s->web.damages.push_back({"duplicate_name", record.line, record.note.name, "",
                                  "appears again; what it has there is kept as " + name});
        there = add_note(&s->web.notes, name);
    }
    fill(there, std::move(record.note));
}

void take_found(Salvage *s) {
    if (s->found.empty()) {
        return;
    }
    std::string text;
    for (const std::string &piece : s->found) {
        text += (text.empty() ? "" : "\r\n\r\n") + piece;
    }
    const std::string name = free_name(s->web.notes, "lost_and_found");
    add_note(&s->web.notes, name)->text = text;
}

Salvage read_bytes(std::string_view bytes, bool suspicious) {
    Salvage s = {};
    s.scanner = web_scanner(bytes, suspicious);
    take_all(&s);
    return s;
}

}  // namespace

SalvagedWeb salvage(std::string_view bytes) {
    Salvage s = read_bytes(bytes, false);
    if (!s.web.damages.empty()) {
        s = read_bytes(bytes, true);
    }
    for (Record &record : s.records) {
        take_record(&s, std::move(record));
    }
    add_note(&s.web.notes, "home");
    take_found(&s);
    std::stable_sort(s.web.damages.begin(), s.web.damages.end(),
                     [](const Damage &a, const Damage &b) { return a.line < b.line; });
    return std::move(s.web);
}
