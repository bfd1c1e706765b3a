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
};

static struct Tokens {
    ByteInput input;
    BlockHandle text;
    Name tag;
    Name entity;
    int tag_index;
    int sign;  // +1 opening, -1 closing
    uint32_t line;
    ReadObserver observer;
} tokens;

void clear(Name *name) {
    name->length = 0;
}

void append(Name *name, int c) {
    if (name->length < k_name_max) {
        name->text[name->length++] = static_cast<char>(c);
    }
}

void put_name(Name *name) {
    text_builder_put_run(name->text, name->length);
}

// Takes a line end, which the web keeps as CR LF however the file has it.
void take_line_end(ByteInput *in) {
    bool after_cr = in->last == '\r';
    text_builder_put_run(after_cr ? "\n" : "\r\n", after_cr ? 1 : 2);
    ++in->position;
    in->last = '\n';
    ++tokens.line;
}

// Takes plain text as far as the buffer has it: up to a tag, an entity or a NUL.
void take_plain() {
    ByteInput *in = &tokens.input;
    while (in->pending == 0 && in->position + 1 < in->count) {
        const uint8_t *start = in->bytes + in->position + 1;
        switch (*start) {
        case '\n':
            take_line_end(in);
            continue;
        case '<':
        case '&':
        case 0:
            return;
        default:
            break;
        }
        uint32_t n = run_before<'<', '&', '\n', 0>(start, in->count - in->position - 1);
        text_builder_put_run(reinterpret_cast<const char *>(start), n);
        in->position += n;
        in->last = start[n - 1];
    }
}

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
        tokens_report(ReadFinding::unknown_entity, tokens.entity.text);
        put_name(&tokens.entity);
    }
    return c;
}

// Reads a known tag that lies in the buffer as the program writes it. Every other tag is left to
// read_tag(), with nothing taken.
bool read_near_tag() {
    constexpr uint32_t k_longest = k_tag_name_max + 2;  // with '/' and '>'
    ByteInput *in = &tokens.input;
    uint32_t at = in->position + 1;
    if (at + k_longest > in->count) {
        return false;
    }
    bool closing = in->bytes[at] == '/';
    at += closing ? 1 : 0;
    uint64_t word;
    memcpy(&word, in->bytes + at, sizeof word);
    uint64_t ends = mark_bytes(word, '>');
    uint32_t length =
        ends != 0 ? static_cast<uint32_t>(std::countr_zero(ends)) / 8 : k_tag_name_max;
    if (length == 0 || in->bytes[at + length] != '>') {
        return false;
    }
    int tag = web_tag_find(tag_key_of_word(word, length));
    if (tag < 0) {
        return false;
    }
    tokens.tag_index = tag;
    tokens.sign = closing ? -1 : 1;
    in->position = at + length;
    in->last = '>';
    return true;
}

// Behind '<': true when a known tag, or the input, ended. The name of an unknown tag becomes text.
bool read_tag() {
    if (read_near_tag()) {
        return true;
    }
    clear(&tokens.tag);
    tokens.tag_index = 0;
    tokens.sign = 1;
    for (int c = web_in_byte(); c != '>'; c = web_in_byte()) {
        if (c == 0) {
            return true;
        }
        if (c == '/') {
            tokens.sign = -1;
        } else {
            append(&tokens.tag, c);
        }
    }
    tokens.tag.text[tokens.tag.length] = 0;
    int tag = web_tag_find(web_tag_key(tokens.tag.text));
    if (tag < 0) {
        tokens_report(ReadFinding::unknown_tag, tokens.tag.text);
        put_name(&tokens.tag);
        return false;
    }
    tokens.tag_index = tag;
    return true;
}

// The end of the input stands for the closing tag of the web.
int end_of_input() {
    tokens.tag_index = 0;
    tokens.sign = -1;
    return 0;
}

}  // namespace

void tokens_begin(FILE *file) {
    byte_input_bind(&tokens.input, file);
    tokens.text = 0;
    tokens.tag_index = 0;
    tokens.sign = 1;
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

bool tokens_ended() {
    return tokens.input.ended;
}

bool tokens_were_cut() {
    return tokens.input.failed;
}

bool tokens_observed() {
    return tokens.observer != nullptr;
}

void tokens_report(ReadFinding finding, const char *text) {
    if (tokens.observer != nullptr) {
        tokens.observer(finding, tokens.line, text);
    }
}

void web_read_observe(ReadObserver observer) {
    tokens.observer = observer;
}

bool web_read_was_cut() {
    return tokens_were_cut();
}

int web_in_byte() {
    int c = byte_input_next(&tokens.input);
    if (c == '\n') {
        ++tokens.line;
    }
    return c;
}

int web_next_token() {
    if (tokens.text == 0) {
        tokens.text = text_builder_start();
    } else {
        text_builder_restart();  // nobody took it
    }
    for (;;) {
        take_plain();
        int c = web_in_byte();
        switch (c) {
        case 0:
            return end_of_input();
        case '&':
            if (read_entity() == 0) {
                return end_of_input();
            }
            break;
        case '<':
            if (read_tag()) {
                return tokens.tag_index * tokens.sign;
            }
            break;
        default:
            text_builder_put(static_cast<char>(c));
            break;
        }
    }
}
