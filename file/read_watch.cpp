#include "file/read_watch.h"

#include "core/names.h"
#include "core/text.h"
#include "file/web_reader.h"
#include "file/web_tags.h"
#include "file/web_tokens.h"
#include "web/record.h"

#include <cstring>

constexpr uint32_t k_text_max = 4095;  // characters of a text that a note has

static struct Watch {
    ReadObserver observer;
    int open;  // the element that waits for its closing tag; 0 is none
    uint32_t open_line;
    bool named;               // a cell has been begun
    bool given[k_tag_count];  // the fields of the cell so far, and the options of the web
    char text[k_text_max + 1];
} watch;

namespace {

void note(ReadFinding finding, int tag, uint32_t line, const char *text) {
    const ReadNote made = {finding, tag, line, text};
    watch.observer(&made);
}

void note_here(ReadFinding finding, const char *text) {
    note(finding, 0, tokens_line(), text);
}

void note_tag(ReadFinding finding, int tag, uint32_t line) {
    note(finding, tag, line, web_tag_name(tag));
}

// The token text as far as it goes into a note.
const char *taken_text() {
    text_copy_out(watch.text, token_text(), k_text_max);
    return watch.text;
}

bool is_field(int tag) {
    return tag == k_tag_text || tag == k_tag_val || tag == k_tag_script;
}

uint32_t line_ends_in(const char *s) {
    uint32_t count = 0;
    for (; *s != 0; ++s) {
        count += *s == '\n' ? 1U : 0U;
    }
    return count;
}

// The token text is dropped, at the line where it begins.
void note_dropped_text() {
    if (text_is_blank(token_text())) {
        return;
    }
    const char *text = taken_text();
    text += strspn(text, " \t\r\n");
    note(ReadFinding::text_outside, 0, tokens_line() - line_ends_in(text), text);
}

// An element ends here whose closing tag did not come.
void note_unclosed() {
    if (watch.open != 0) {
        note_tag(ReadFinding::unclosed_element, watch.open, watch.open_line);
        watch.open = 0;
    } else {
        note_dropped_text();
    }
}

void on_opening(int tag) {
    note_unclosed();
    if (!web_tag_groups(tag)) {
        watch.open = tag;
        watch.open_line = tokens_line();
    }
}

bool is_staged(BlockHandle name) {
    for (CellHandle cell = web_read_first_staged(); cell != 0; cell = node_right(cell)) {
        if (text_compare(cell_name(cell), name) == 0) {
            return true;
        }
    }
    return false;
}

void on_name() {
    const char *name = taken_text();
    memset(watch.given, 0, k_tag_odest);
    watch.named = true;
    if (!cellname_valid(name)) {
        note_here(ReadFinding::bad_name, name);
        return;
    }
    if (text_size(token_text()) > k_cellname_max) {
        note_here(ReadFinding::long_name, name);
    }
    if (strpbrk(name, "\r\n") != nullptr) {
        note_here(ReadFinding::line_end_in_name, name);
    }
    if (is_staged(token_text())) {
        note_here(ReadFinding::duplicate_name, name);
    }
}

void on_field(int tag) {
    if (!watch.named) {
        if (!text_is_blank(token_text())) {
            note_tag(ReadFinding::element_before_name, tag, tokens_line());
        }
        return;
    }
    if (watch.given[tag]) {
        note_tag(ReadFinding::field_given_again, tag, tokens_line());
    }
    watch.given[tag] = true;
}

void on_option(int tag) {
    if (watch.given[tag]) {
        note_tag(ReadFinding::option_given_again, tag, tokens_line());
    }
    watch.given[tag] = true;
    note(ReadFinding::option, tag, tokens_line(), taken_text());
}

// Blanks and line ends behind the end mark belong to no web and hurt none.
void on_bytes_after_end() {
    for (;;) {
        const int c = web_in_byte();
        if (c == 0 && tokens_ended()) {
            return;
        }
        if (c == 0 || strchr(" \t\r\n", c) == nullptr) {
            note_here(ReadFinding::bytes_after_end, "");
            return;
        }
    }
}

void on_end() {
    note_unclosed();
    if (!tokens_ran_out()) {
        on_bytes_after_end();
    } else if (!tokens_ended()) {
        note_here(ReadFinding::nul_byte, "");
    } else if (tokens_had_tag() && !tokens_failed()) {
        note_here(ReadFinding::no_end_mark, "");
    }
}

// An element may be closed by another one's tag, whose it then is.
void on_closing(int tag) {
    if (tag == k_tag_eof) {
        on_end();
        return;
    }
    if (web_tag_groups(tag)) {
        note_unclosed();
        return;
    }
    if (watch.open != 0 && web_tag_field(watch.open) != web_tag_field(tag)) {
        note_tag(ReadFinding::unclosed_element, watch.open, watch.open_line);
    }
    watch.open = 0;
    if (tag == k_tag_cname) {
        on_name();
    } else if (is_field(web_tag_field(tag))) {
        on_field(web_tag_field(tag));
    } else {
        on_option(tag);
    }
}

void on_begin() {
    watch.open = 0;
    watch.named = false;
    memset(watch.given, 0, sizeof watch.given);
}

constexpr ReadWatch k_watch = {note_here, on_begin, on_opening, on_closing};

}  // namespace

void web_read_observe(ReadObserver observer) {
    watch.observer = observer;
    tokens_set_watch(observer != nullptr ? &k_watch : nullptr);
}
