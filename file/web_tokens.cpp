#include "file/web_tokens.h"

#include "core/byte_runs.h"
#include "core/byte_stream.h"
#include "core/text.h"
#include "file/web_tags.h"

static struct Tokens {
    ByteInput input;
    BlockHandle text;
    bool line_end_held;  // the text is CR LF, which is not in its block yet
    char name[k_markup_name_max + 1 + k_word_size];  // of the tag or entity; with room for a word
    uint32_t name_length;                            // k_markup_name_max + 1 stands for more
    int tag_index;
    int sign;      // +1 opening, -1 closing
    int opened;    // the opening tag passed last on the way to this one; 0 is none
    bool ran_out;  // the input ended, or a NUL came, where a tag or text was due
    bool tagged;   // the input had a tag that the web knows before it ran out
    bool lost;     // something of the input went nowhere
    uint32_t line;
    const ReadWatch *watch;
} tokens;

namespace {

// Where in the input the tokenizer is. Behind a tag that the web knows, and at the end, the token
// is complete.
enum class State : uint8_t { text, entity, tag, behind_tag, at_end };

// Makes the token an empty text.
void begin_text() {
    if (tokens.text == 0) {
        tokens.text = text_builder_start();
    } else if (block_used(tokens.text) != 0) {
        text_builder_restart();  // nobody took it
    }
    tokens.line_end_held = false;
}

void put_held_line_end() {
    if (tokens.line_end_held) {
        tokens.line_end_held = false;
        text_builder_put_run("\r\n", 2);
    }
}

void put_text(const char *bytes, uint32_t n) {
    put_held_line_end();
    text_builder_put_run(bytes, n);
}

// Appends n bytes (at least one), behind which those of a word can be read.
inline void append_to_name(const char *bytes, uint32_t n) {
    uint32_t length = tokens.name_length;
    for (uint32_t i = 0; i < n && length + i < k_markup_name_max; i += k_word_size) {
        store(tokens.name + length + i, load<Word>(bytes + i));
    }
    length += n;
    tokens.name_length = length <= k_markup_name_max ? length : k_markup_name_max + 1;
}

uint32_t kept_of_name() {
    return tokens.name_length < k_markup_name_max ? tokens.name_length : k_markup_name_max;
}

uint64_t name_read() {
    return name_word_folded(tokens.name, tokens.name_length);
}

void tell(ReadFinding finding) {
    if (tokens.watch != nullptr) {
        tokens.name[kept_of_name()] = 0;
        tokens.watch->found(finding, tokens.name);
    }
}

// A name that means nothing becomes text, as much of it as was kept.
void put_name(ReadFinding finding, ReadFinding finding_when_cut) {
    const bool cut = tokens.name_length > k_markup_name_max;
    tokens.lost |= cut;
    tell(cut ? finding_when_cut : finding);
    put_text(tokens.name, kept_of_name());
}

// The end of the input stands for the closing tag of the web. The tag before it is still at hand,
// and is 0 where there was none: the web's own would have ended the reading. What stands behind a
// NUL is not read.
State end_input() {
    tokens.ran_out = true;
    tokens.lost |= !tokens.input.ended;
    tokens.tagged = tokens.tag_index != 0;
    tokens.tag_index = 0;
    tokens.sign = -1;
    return State::at_end;
}

State end_input_in_entity() {
    put_name(ReadFinding::unknown_entity, ReadFinding::long_entity);
    tokens.lost = true;
    return end_input();
}

// A tag that does not end is nothing.
State end_input_in_tag() {
    tokens.lost = true;
    tell(ReadFinding::unended_tag);
    return end_input();
}

State end_entity() {
    const uint64_t name = name_read();
    if (name == name_word("amp")) {
        put_text("&", 1);
    } else if (name == name_word("lt")) {
        put_text("<", 1);
    } else {
        put_name(ReadFinding::unknown_entity, ReadFinding::long_entity);
    }
    return State::text;
}

State end_tag() {
    const int tag = web_tag_find(name_read());
    if (tag < 0) {
        put_name(ReadFinding::unknown_tag, ReadFinding::long_tag);
        return State::text;
    }
    tokens.tag_index = tag;
    return State::behind_tag;
}

// ---- The states ---------------------------------------------------------------------------------
// Each takes bytes up to one that leads to another state, which it returns, with the place behind.
// Bytes without a case of their own are kept, in runs; so is a line end, which is CR LF in the web
// however the file has it. 0 is the end of the input; one also stands at the buffer's end, so that
// runs end there. Where the runs end changes nothing.

// Where to go on behind a 0; null when the input ends with it. The 0 at the buffer's end does not
// count when there is more behind it.
const uint8_t *pass_zero(const uint8_t *p) {
    ByteInput *in = &tokens.input;
    in->next = static_cast<uint32_t>(p - in->bytes);
    if (in->next == in->end) {
        return byte_input_fill(in) ? in->bytes + in->next : nullptr;
    }
    ++in->next;
    return nullptr;
}

constexpr char k_line_end[2 + k_word_size] = {'\r', '\n'};

// A line end before an opening tag is dropped with all such text, and mostly is all of it: it is
// put when something else follows.
void put_line_end(bool after_cr) {
    ++tokens.line;
    if (!after_cr && block_used(tokens.text) == 0 && !tokens.line_end_held) {
        tokens.line_end_held = true;
    } else {
        put_text(after_cr ? k_line_end + 1 : k_line_end, after_cr ? 1 : 2);
    }
}

void append_line_end_to_name(bool after_cr) {
    ++tokens.line;
    append_to_name(after_cr ? k_line_end + 1 : k_line_end, after_cr ? 1 : 2);
}

// Takes what is at p: a byte without a case of its own, and more such ones.
inline const uint8_t *append_run_to_name(const uint8_t *p) {
    const uint32_t n = 1 + run_of_letters(p + 1);
    append_to_name(reinterpret_cast<const char *>(p), n);
    return p + n;
}

const uint8_t *put_run(const uint8_t *p) {
    const uint32_t n = run_to<'<', '&', '\n', 0>(p);
    put_text(reinterpret_cast<const char *>(p), n);
    return p + n;
}

State read_text(const uint8_t **at) {
    for (const uint8_t *p = *at;;) {
        switch (*p) {
        case '<':
            tokens.name_length = 0;
            tokens.sign = 1;
            *at = p + 1;
            return State::tag;
        case '&':
            tokens.name_length = 0;
            *at = p + 1;
            return State::entity;
        case '\n':
            put_line_end(p[-1] == '\r');
            ++p;
            break;
        case 0:
            p = pass_zero(p);
            if (p == nullptr) {
                return end_input();
            }
            break;
        default:
            p = put_run(p);
            break;
        }
    }
}

State read_entity(const uint8_t **at) {
    for (const uint8_t *p = *at;;) {
        switch (*p) {
        case ';':
            *at = p + 1;
            return end_entity();
        case '\n':
            append_line_end_to_name(p[-1] == '\r');
            ++p;
            break;
        case 0:
            p = pass_zero(p);
            if (p == nullptr) {
                return end_input_in_entity();
            }
            break;
        default:
            p = append_run_to_name(p);
            break;
        }
    }
}

State read_tag(const uint8_t **at) {
    for (const uint8_t *p = *at;;) {
        switch (*p) {
        case '>':
            *at = p + 1;
            return end_tag();
        case '/':
            tokens.sign = -1;
            ++p;
            break;
        case '\n':
            append_line_end_to_name(p[-1] == '\r');
            ++p;
            break;
        case 0:
            p = pass_zero(p);
            if (p == nullptr) {
                return end_input_in_tag();
            }
            break;
        default:
            p = append_run_to_name(p);
            break;
        }
    }
}

// Reads on to the tag, or the end of the input, that ends the token.
void read_token() {
    begin_text();
    ByteInput *in = &tokens.input;
    const uint8_t *p = in->bytes + in->next;
    for (State state = State::text;;) {
        switch (state) {
        case State::text:
            state = read_text(&p);
            break;
        case State::entity:
            state = read_entity(&p);
            break;
        case State::tag:
            state = read_tag(&p);
            break;
        case State::behind_tag:
            in->next = static_cast<uint32_t>(p - in->bytes);
            return;
        case State::at_end:
            return;
        }
    }
}

}  // namespace

void tokens_begin(FILE *file) {
    byte_input_bind(&tokens.input, file);
    tokens.text = 0;
    tokens.tag_index = 0;
    tokens.ran_out = false;
    tokens.tagged = false;
    tokens.lost = false;
    tokens.line = 1;
}

void tokens_end() {
    chain_free(token_take());
    text_builder_reset();
    tokens.input.next = tokens.input.end;
    tokens.input.ended = true;
    tokens.input.file = nullptr;
}

BlockHandle token_text() {
    return tokens.text;
}

BlockHandle token_take() {
    const BlockHandle text = tokens.text;
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
    const int c = byte_input_next(&tokens.input);
    if (c == '\n') {
        ++tokens.line;
    }
    return c;
}

int web_next_token() {
    tokens.opened = 0;
    read_token();
    put_held_line_end();
    return tokens.tag_index * tokens.sign;
}

int token_next_closing() {
    tokens.opened = 0;
    for (;;) {
        read_token();
        if (tokens.sign < 0 || tokens.tag_index == 0) {
            put_held_line_end();
            return tokens.tag_index;
        }
        tokens.opened = tokens.tag_index;
        if (tokens.watch != nullptr) {
            tokens.watch->opening(tokens.tag_index);
        }
        tokens_drop_text();
    }
}
