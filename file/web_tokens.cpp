#include "file/web_tokens.h"

#include "core/byte_runs.h"
#include "core/byte_stream.h"
#include "core/text.h"
#include "file/web_tags.h"

#include <cstring>

namespace {

constexpr uint32_t k_name_max = 31;  // characters of a tag's or an entity's name that count

struct Name {
    char text[k_name_max + 1];
    uint32_t length;
    bool cut;  // there was more
};

static struct Tokens {
    ByteInput input;
    BlockHandle text;
    Name tag;
    Name entity;
    int tag_index;
    int sign;      // +1 opening, -1 closing
    int opened;    // the opening tag passed last on the way to this one; 0 is none
    bool ran_out;  // the input ended, or a NUL came, where a tag or text was due
    bool tagged;   // the input had a tag that the web knows before it ran out
    bool lost;     // something of the input went nowhere
    uint32_t line;
    const ReadWatch *watch;
} tokens;

// Which tags end a token.
enum class Wanted : uint8_t { any_tag, closing_tag };

// Makes the token an empty text.
void begin_text() {
    if (tokens.text == 0) {
        tokens.text = text_builder_start();
    } else if (block_used(tokens.text) != 0) {
        text_builder_restart();  // nobody took it
    }
}

void clear(Name *name) {
    name->length = 0;
    name->cut = false;
}

void append(Name *name, int c) {
    if (name->length < k_name_max) {
        name->text[name->length++] = static_cast<char>(c);
    } else {
        name->cut = true;
    }
}

// A name that means nothing becomes text, as much of it as was kept.
void put_name(Name *name, ReadFinding finding, ReadFinding finding_when_cut) {
    tokens.lost |= name->cut;
    if (tokens.watch != nullptr) {
        tokens.watch->found(name->cut ? finding_when_cut : finding, name->text);
    }
    text_builder_put_run(name->text, name->length);
}

// ---- What lies in the buffer --------------------------------------------------------------------
// Nearly everything does. What does not, or is not spelled as the program spells it, is left to the
// functions that read byte by byte, with nothing taken.

// Each of these takes what begins at p, before the end of the buffer, and returns where it ends;
// null when nothing was taken.

// A line end, which the web keeps as CR LF however the file has it. There is a byte before it: the
// buffer's first one is always taken by web_in_byte().
const uint8_t *take_line_end(const uint8_t *p) {
    bool after_cr = p[-1] == '\r';
    text_builder_put_run(after_cr ? "\n" : "\r\n", after_cr ? 1 : 2);
    ++tokens.line;
    return p + 1;
}

// Plain text up to a tag, an entity, a line end or a NUL.
const uint8_t *take_plain(const uint8_t *p, const uint8_t *end) {
    uint32_t n = run_before<'<', '&', '\n', 0>(p, static_cast<uint32_t>(end - p));
    text_builder_put_run(reinterpret_cast<const char *>(p), n);
    return p + n;
}

const uint8_t *take_entity(const uint8_t *p, const uint8_t *end) {
    if (end - p >= 5 && memcmp(p, "&amp;", 5) == 0) {
        text_builder_put('&');
        return p + 5;
    }
    if (end - p >= 4 && memcmp(p, "&lt;", 4) == 0) {
        text_builder_put('<');
        return p + 4;
    }
    return nullptr;
}

// A known tag.
const uint8_t *take_tag(const uint8_t *p, const uint8_t *end) {
    constexpr ptrdiff_t k_longest = k_tag_name_max + 3;  // with '<', '/' and '>'
    if (end - p < k_longest || *p != '<') {
        return nullptr;
    }
    bool closing = p[1] == '/';
    const uint8_t *name = p + (closing ? 2 : 1);
    uint64_t word;
    memcpy(&word, name, sizeof word);
    uint32_t length;
    int tag = web_tag_find_written(word, &length);
    if (tag < 0) {
        return nullptr;
    }
    tokens.tag_index = tag;
    tokens.sign = closing ? -1 : 1;
    return name + length;
}

// An opening tag on a line of its own, when nothing stands before it. The line end would be all of
// its text, which is dropped like all text before an opening tag.
const uint8_t *take_line_of_tag(const uint8_t *p, const uint8_t *end) {
    if (end - p < 3 || p[2] == '/' || block_used(tokens.text) != 0) {
        return nullptr;
    }
    const uint8_t *behind = take_tag(p + 1, end);
    tokens.line += behind != nullptr ? 1 : 0;
    return behind;
}

void set_position(ByteInput *in, const uint8_t *p) {
    auto next = static_cast<uint32_t>(p - in->bytes);
    if (next != in->next) {
        in->next = next;
        in->last = p[-1];
    }
}

// Rare: an opening tag mostly has a line end alone before it, and nobody who listens.
[[gnu::noinline]] void pass_opening_tag() {
    if (tokens.watch != nullptr) {
        tokens.watch->opening(tokens.tag_index);
    }
    if (block_used(tokens.text) != 0) {
        tokens_drop_text();
        text_builder_restart();
    }
}

// True when the token ends with the tag that was taken; else it begins anew.
bool tag_is_wanted(Wanted wanted) {
    if (wanted == Wanted::any_tag || tokens.sign < 0 || tokens.tag_index == 0) {
        return true;
    }
    tokens.opened = tokens.tag_index;
    if (block_used(tokens.text) != 0 || tokens.watch != nullptr) {
        pass_opening_tag();
    }
    return false;
}

// The end of the input stands for the closing tag of the web. The tag before it is still at hand,
// and is 0 where there was none: the web's own would have ended the reading. What stands behind a
// NUL is not read.
bool end_of_input() {
    tokens.ran_out = true;
    tokens.lost |= !tokens.input.ended;
    tokens.tagged = tokens.tag_index != 0;
    tokens.tag_index = 0;
    tokens.sign = -1;
    return true;
}

// Takes what lies in the buffer, up to and with a tag that is wanted; true when it came to one.
bool take_near(ByteInput *in, Wanted wanted) {
    const uint8_t *p = in->bytes + in->next;
    const uint8_t *end = in->pending == 0 ? in->bytes + in->count : p;
    while (p < end) {
        const uint8_t *behind = nullptr;
        switch (*p) {
        case '<':
            behind = take_tag(p, end);
            if (behind != nullptr && tag_is_wanted(wanted)) {
                set_position(in, behind);
                return true;
            }
            break;
        case '\n':
            behind = wanted == Wanted::closing_tag ? take_line_of_tag(p, end) : nullptr;
            if (behind == nullptr) {
                behind = take_line_end(p);
            } else if (tag_is_wanted(wanted)) {
                set_position(in, behind);
                return true;
            }
            break;
        case '&':
            behind = take_entity(p, end);
            break;
        case 0:
            break;
        default:
            behind = take_plain(p, end);
            break;
        }
        if (behind == nullptr) {
            break;
        }
        p = behind;
    }
    set_position(in, p);
    return false;
}

// ---- Byte by byte -------------------------------------------------------------------------------

// Behind '&': the entity's character, or its name when it is unknown or not ended. Returns the last
// byte read, 0 at the end of the input.
int read_entity() {
    clear(&tokens.entity);
    int c = web_in_byte();
    for (; c != 0 && c != ';'; c = web_in_byte()) {
        append(&tokens.entity, c);
    }
    tokens.entity.text[tokens.entity.length] = 0;
    if (c != 0 && names_match(tokens.entity.text, "amp")) {
        text_builder_put('&');
    } else if (c != 0 && names_match(tokens.entity.text, "lt")) {
        text_builder_put('<');
    } else {
        put_name(&tokens.entity, ReadFinding::unknown_entity, ReadFinding::long_entity);
    }
    tokens.lost |= c == 0;
    return c;
}

// A tag that does not end is nothing.
bool drop_tag() {
    tokens.lost = true;
    tokens.tag.text[tokens.tag.length] = 0;
    if (tokens.watch != nullptr) {
        tokens.watch->found(ReadFinding::unended_tag, tokens.tag.text);
    }
    return end_of_input();
}

// Behind '<': true when a known tag, or the input, ended. The name of an unknown tag becomes text.
bool read_tag() {
    clear(&tokens.tag);
    int sign = 1;
    for (int c = web_in_byte(); c != '>'; c = web_in_byte()) {
        if (c == 0) {
            return drop_tag();
        }
        if (c == '/') {
            sign = -1;
        } else {
            append(&tokens.tag, c);
        }
    }
    tokens.tag.text[tokens.tag.length] = 0;
    int tag = web_tag_find(tokens.tag.text);
    if (tag < 0) {
        put_name(&tokens.tag, ReadFinding::unknown_tag, ReadFinding::long_tag);
        return false;
    }
    tokens.tag_index = tag;
    tokens.sign = sign;
    return true;
}

// Reads on with the next byte; true when a tag that is wanted, or the input, ended.
bool take_far(Wanted wanted) {
    int c = web_in_byte();
    switch (c) {
    case 0:
        return end_of_input();
    case '<':
        return read_tag() && tag_is_wanted(wanted);
    case '&':
        if (read_entity() == 0) {
            return end_of_input();
        }
        return false;
    default:
        text_builder_put(static_cast<char>(c));
        return false;
    }
}

void next_token(Wanted wanted) {
    begin_text();
    tokens.opened = 0;
    while (!take_near(&tokens.input, wanted) && !take_far(wanted)) {
    }
}

}  // namespace

void tokens_begin(FILE *file) {
    byte_input_bind(&tokens.input, file);
    tokens.text = 0;
    tokens.tag_index = 0;
    tokens.sign = 1;
    tokens.ran_out = false;
    tokens.tagged = false;
    tokens.lost = false;
    tokens.line = 1;
}

void tokens_end() {
    chain_free(token_take());
    text_builder_reset();
    tokens.input.ended = true;
    tokens.input.file = nullptr;
}

BlockHandle token_text() {
    return tokens.text;
}

BlockHandle token_take() {
    BlockHandle text = tokens.text;
    tokens.text = 0;
    return text;
}

bool token_is_closing() {
    return tokens.sign < 0;
}

int token_opened() {
    return tokens.opened;
}

bool tokens_ended() {
    return tokens.input.ended;
}

bool tokens_ran_out() {
    return tokens.ran_out;
}

bool tokens_had_tag() {
    return tokens.tagged;
}

bool tokens_failed() {
    return tokens.input.failed;
}

void tokens_drop_text() {
    if (block_used(tokens.text) != 0) {
        tokens.lost |= !text_is_blank(tokens.text);
    }
}

void tokens_note_loss() {
    tokens.lost = true;
}

bool tokens_lost_something() {
    return tokens.lost;
}

uint32_t tokens_line() {
    return tokens.line;
}

void tokens_set_watch(const ReadWatch *watch) {
    tokens.watch = watch;
}

const ReadWatch *tokens_watch() {
    return tokens.watch;
}

int web_in_byte() {
    int c = byte_input_next(&tokens.input);
    if (c == '\n') {
        ++tokens.line;
    }
    return c;
}

int web_next_token() {
    next_token(Wanted::any_tag);
    return tokens.tag_index * tokens.sign;
}

int token_next_closing() {
    next_token(Wanted::closing_tag);
    return tokens.tag_index;
}
