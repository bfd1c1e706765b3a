#include "core/text.h"

#include "core/byte_runs.h"
#include "core/check.h"

#include <cstring>

// Callers use one reader and one builder at a time.
static struct Reader {
    BlockHandle block;
    uint32_t position;
} reader;

static struct Builder {
    BlockHandle head;
    BlockHandle tail;
} builder;

namespace {

void set_used(BlockHandle h, uint32_t count) {
    block_ptr(h)[k_block_count_at] = static_cast<uint8_t>(count);
}

// Appends as many of n bytes as the block has room for; returns how many.
inline uint32_t append_to_block(BlockHandle h, const char *bytes, uint32_t n) {
    const uint32_t used = block_used(h);  // never more than a block has room for
    const uint32_t room = k_text_block_chars - used;
    const uint32_t taken = n < room ? n : room;
    copy_short(text_block_chars(h) + used, bytes, taken);
    set_used(h, used + taken);
    return taken;
}

BlockHandle skip_empty(BlockHandle h) {
    while (h != 0 && block_used(h) == 0) {
        h = block_next(h);
    }
    return h;
}

void fill_chain(BlockHandle head, const char *bytes, uint32_t n) {
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        const uint32_t taken = append_to_block(h, bytes, n);
        bytes += taken;
        n -= taken;
    }
}

uint32_t chain_length(BlockHandle head) {
    uint32_t length = 0;
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        ++length;
    }
    return length;
}

// A place in a chain of characters, for comparisons. A first block that is empty counts as its
// zero first byte; later ones are skipped.
struct Place {
    BlockHandle block;
    uint32_t index;
    uint32_t count;
};

void enter_block(Place *place, BlockHandle block) {
    place->block = block;
    place->index = 0;
    place->count = block_used(block);
}

Place place_at_start(BlockHandle head) {
    Place place;
    enter_block(&place, head);
    if (place.count == 0) {
        place.count = 1;
    }
    return place;
}

void advance(Place *place, uint32_t n) {
    place->index += n;
    if (place->index >= place->count) {
        enter_block(place, skip_empty(block_next(place->block)));
    }
}

// Every byte, folded.
struct Folding {
    signed char of[256];
};

constexpr Folding make_folding() {
    Folding folding = {};
    for (int c = 0; c < 256; ++c) {
        folding.of[c] = static_cast<signed char>(fold_char(c));
    }
    return folding;
}

constexpr Folding k_folding = make_folding();

// Bytes 0x80 to 0xFF are negative, whatever `char` is, and become 0xFF80 to 0xFFFF: they sort last.
int folded_difference(char x, char y) {
    auto widen = [](char c) {
        return static_cast<uint16_t>(k_folding.of[static_cast<uint8_t>(c)]);
    };
    return static_cast<int>(widen(x)) - static_cast<int>(widen(y));
}

// The folded order of the first n characters of each.
int compare_run(const char *x, const char *y, uint32_t n) {
    for (uint32_t i = equal_run(x, y, n); i < n; i += equal_run(x + i, y + i, n - i)) {
        const int difference = folded_difference(x[i], y[i]);
        if (difference != 0) {
            return difference;
        }
        ++i;
    }
    return 0;
}

}  // namespace

BlockHandle text_alloc(uint32_t n) {
    const BlockHandle head = block_alloc(k_block_text);
    uint32_t more = n / k_text_block_chars;
    if (more == 0) {
        return head;
    }
    BlockHandle tail = head;
    for (; more > 0; --more) {
        chain_under_construction_set(head);
        const BlockHandle block = block_alloc(k_block_text);
        block_set_next(tail, block);
        tail = block;
    }
    chain_under_construction_set(0);
    return head;
}

uint32_t text_fill_block(BlockHandle h, const char *s, uint32_t i) {
    uint32_t used = block_used(h);
    char *chars = text_block_chars(h);
    while (used < k_text_block_chars && s[i] != 0) {
        chars[used++] = s[i++];
    }
    set_used(h, used);
    return i;
}

BlockHandle text_from_cstring(const char *s) {
    return text_from_bytes(s, static_cast<uint32_t>(strlen(s)));
}

BlockHandle text_from_bytes(const char *bytes, uint32_t n) {
    const BlockHandle head = text_alloc(n);
    fill_chain(head, bytes, n);
    return head;
}

uint32_t text_missing_blocks(BlockHandle head, uint32_t n) {
    const uint32_t needed = n / k_text_block_chars + 1;
    const uint32_t there = chain_length(head);
    return needed > there ? needed - there : 0;
}

// Counts again whenever an allocation took more than its one block: the offer to save and exit was
// made, and the pane was stored into this very chain.
void text_grow(BlockHandle head, uint32_t n) {
    for (uint32_t missing; (missing = text_missing_blocks(head, n)) > 0;) {
        bool alone = true;
        for (; missing > 0 && alone; --missing) {
            const uint32_t free_before = blocks_free();
            text_insert_block_after(head);
            alone = blocks_free() + 1U == free_before;
        }
    }
}

void text_assign(BlockHandle head, const char *bytes, uint32_t n) {
    BlockHandle last = head;
    for (uint32_t i = n / k_text_block_chars; i > 0; --i) {
        last = block_next(last);
        CHECK(last != 0);
    }
    chain_free(block_next(last));
    block_set_next(last, 0);
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        set_used(h, 0);
    }
    fill_chain(head, bytes, n);
}

uint32_t text_copy_block(char *d, BlockHandle h, uint32_t i, uint32_t m) {
    const uint32_t used = block_used(h);
    const uint32_t room = i < m ? m - i : 0;
    const uint32_t taken = used < room ? used : room;
    memcpy(d + i, text_block_chars(h), taken);
    return i + taken;
}

uint32_t text_copy_out(char *d, BlockHandle head, uint32_t m) {
    uint32_t count = 0;
    for (BlockHandle h = head; h != 0 && count < m; h = block_next(h)) {
        count = text_copy_block(d, h, count, m);
    }
    d[count] = 0;
    return count;
}

uint16_t text_length(BlockHandle head) {
    return static_cast<uint16_t>(text_size(head));
}

uint32_t text_size(BlockHandle head) {
    uint32_t size = 0;
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        size += block_used(h);
    }
    return size;
}

bool text_is_blank(BlockHandle head) {
    for (BlockHandle h = head; h != 0; h = block_next(h)) {
        const char *chars = text_block_chars(h);
        for (uint32_t i = 0, used = block_used(h); i < used; ++i) {
            const char c = chars[i];
            if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
                return false;
            }
        }
    }
    return true;
}

BlockHandle text_substring(BlockHandle head, uint32_t from, uint32_t to) {
    const uint32_t length = text_size(head);
    const uint32_t last = length < to ? length : to;
    const uint32_t first = from == 0 ? 1 : from;
    if (length == 0 || last < first) {
        return 0;
    }
    const BlockHandle result = text_alloc(last - first + 1);
    BlockHandle target = result;
    uint32_t before = 0;  // characters in the blocks passed
    for (BlockHandle h = head; h != 0 && before < last; h = block_next(h)) {
        const uint32_t used = block_used(h);
        uint32_t start = first - 1 > before ? first - 1 - before : 0;
        const uint32_t end = last - before < used ? last - before : used;
        while (start < end) {
            start += append_to_block(target, text_block_chars(h) + start, end - start);
            if (start < end) {
                target = block_next(target);
            }
        }
        before += used;
    }
    return result;
}

BlockHandle text_duplicate(BlockHandle head) {
    return text_substring(head, 1, text_size(head));
}

BlockHandle text_insert_block_after(BlockHandle h) {
    CHECK(h != 0);
    const BlockHandle block = block_alloc(k_block_text);
    block_set_next(block, block_next(h));
    block_set_next(h, block);
    return block;
}

void text_reader_start(BlockHandle head) {
    reader.block = head;
    reader.position = 0;
}

int text_reader_next() {
    if (reader.block == 0) {
        return k_reader_past_end;
    }
    if (reader.position >= block_used(reader.block)) {
        reader.block = skip_empty(block_next(reader.block));
        reader.position = 0;
        if (reader.block == 0) {
            return k_reader_end;
        }
    }
    const int ch = static_cast<signed char>(text_block_chars(reader.block)[reader.position++]);
    return ch != 0 ? ch : k_reader_end;
}

BlockHandle text_builder_start() {
    builder.head = text_alloc(1);
    builder.tail = builder.head;
    return builder.head;
}

void text_builder_restart() {
    CHECK(builder.head != 0);
    chain_free(block_next(builder.head));
    block_set_next(builder.head, 0);
    set_used(builder.head, 0);
    text_block_chars(builder.head)[0] = 0;  // an empty text compares by it
    builder.tail = builder.head;
}

void text_builder_put(char ch) {
    text_builder_put_run(&ch, 1);
}

void text_builder_put_run(const char *bytes, uint32_t n) {
    CHECK(builder.tail != 0);
    uint32_t taken = append_to_block(builder.tail, bytes, n);
    while (taken < n) {
        taken += chain_extend(&builder.tail, k_block_text, bytes + taken, n - taken);
    }
}

void text_builder_reset() {
    builder.head = 0;
    builder.tail = 0;
}

// Most names end in their first block and differ there.
int text_compare(BlockHandle a, BlockHandle b) {
    if (a == 0 || b == 0) {
        return a != 0 ? 1 : b == 0 ? 0 : -1;
    }
    Place x = place_at_start(a);
    Place y = place_at_start(b);
    for (;;) {
        const uint32_t rest_of_x = x.count - x.index;
        const uint32_t rest_of_y = y.count - y.index;
        const uint32_t n = rest_of_x < rest_of_y ? rest_of_x : rest_of_y;
        const int difference = compare_run(text_block_chars(x.block) + x.index,
                                           text_block_chars(y.block) + y.index, n);
        if (difference != 0) {
            return difference;
        }
        advance(&x, n);
        advance(&y, n);
        if (x.block == 0 || y.block == 0) {
            return x.block != 0 ? 1 : y.block == 0 ? 0 : -1;
        }
    }
}

int text_compare_cstring(BlockHandle a, const char *s) {
    if (a == 0) {
        return *s == 0 ? 0 : -1;
    }
    Place x = place_at_start(a);
    while (x.block != 0 && *s != 0) {
        const char *chars = text_block_chars(x.block);
        uint32_t n = 0;
        for (; n < x.count && s[n] != 0; ++n) {
            const int difference = folded_difference(chars[n], s[n]);
            if (difference != 0) {
                return difference;
            }
        }
        s += n;
        advance(&x, n);
    }
    if (x.block != 0 && text_block_chars(x.block)[x.index] != 0) {
        return 1;
    }
    return *s == 0 ? 0 : -1;
}

bool text_equals_cstring(BlockHandle a, const char *s) {
    for (BlockHandle h = a; h != 0; h = block_next(h)) {
        const uint32_t used = block_used(h);
        if (strncmp(text_block_chars(h), s, used) != 0) {
            return false;
        }
        s += used;
    }
    return *s == 0;
}
