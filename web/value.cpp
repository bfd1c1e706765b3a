#include "web/value.h"

#include "core/check.h"
#include "core/numbers.h"
#include "core/text.h"

#include <cstring>

constexpr uint32_t k_state_at = k_block_payload_at + 0;
constexpr uint32_t k_flags_at = k_block_payload_at + 1;
constexpr uint32_t k_text_at = k_block_payload_at + 2;
constexpr uint32_t k_number_at = k_block_payload_at + 4;

constexpr const char *k_nan_mark = "{NAN}";

// The copy of a value that is being made; recovery gives it back.
static struct ValueStatics { BlockHandle under_construction; } values;

namespace {

void set_state(BlockHandle value, uint8_t state) {
    block_ptr(value)[k_state_at] = state;
}

void set_flags(BlockHandle value, uint8_t flags) {
    block_ptr(value)[k_flags_at] = flags;
}

void set_text_field(BlockHandle value, BlockHandle text) {
    block_set16(value, k_text_at, text);
}

// IEEE doubles are stored little-endian; the platforms' doubles have the byte order of their
// integers.
void set_number(BlockHandle value, double number) {
    uint64_t bits;
    memcpy(&bits, &number, sizeof bits);
    block_set32(value, k_number_at, static_cast<uint32_t>(bits));
    block_set32(value, k_number_at + 4, static_cast<uint32_t>(bits >> 32));
}

// Any third character counts.
bool has_nan_mark(const char *text) {
    return text[0] == '{' && text[1] == 'N' && text[3] == 'N' && text[4] == '}';
}

}  // namespace

BlockHandle val_new() {
    const BlockHandle value = block_alloc(k_block_text);
    set_state(value, k_value_empty);
    set_flags(value, 0);
    set_text_field(value, 0);
    set_number(value, number_zero());
    return value;
}

void val_free(BlockHandle value) {
    while (value != 0) {
        const BlockHandle next = block_next(value);
        chain_free(val_text(value));
        block_free(value);
        value = next;
    }
}

BlockHandle val_copy(BlockHandle value) {
    CHECK(values.under_construction == 0);
    BlockHandle tail = 0;
    for (BlockHandle from = value; from != 0; from = block_next(from)) {
        const BlockHandle to = val_new();
        if (tail == 0) {
            values.under_construction = to;
        } else {
            block_set_next(tail, to);
        }
        tail = to;
        set_state(to, val_state(from));
        set_flags(to, val_flags(from));
        set_number(to, val_number(from));
        set_text_field(to, text_duplicate(val_text(from)));
    }
    const BlockHandle copy = values.under_construction;
    values.under_construction = 0;
    return copy;
}

void val_set_text(BlockHandle value, BlockHandle text) {
    CHECK(value != 0);
    chain_free(val_text(value));
    set_text_field(value, text);
    set_state(value, k_value_text);
    set_flags(value, val_flags(value) & static_cast<uint8_t>(~k_value_in_step));
}

void val_make_text(BlockHandle value) {
    CHECK(value != 0);
    switch (val_state(value)) {
    case k_value_empty:
        set_state(value, k_value_text);
        return;
    case k_value_number:
        break;
    default:
        return;
    }
    if ((val_flags(value) & k_value_in_step) == 0) {
        char buffer[k_number_text_max + 1] = {0};
        number_format(buffer, val_number(value), number_format_in_force());
        const BlockHandle text =
            text_from_cstring((val_flags(value) & k_value_nan) != 0 ? k_nan_mark : buffer);
        chain_free(val_text(value));
        set_text_field(value, text);
        set_flags(value, val_flags(value) | k_value_in_step);
    }
    set_state(value, k_value_text);
}

void val_make_number(BlockHandle value) {
    switch (val_state(value)) {
    case k_value_empty:
        set_state(value, k_value_number);
        return;
    case k_value_text:
        break;
    default:
        return;
    }
    if ((val_flags(value) & k_value_in_step) == 0) {
        char buffer[k_number_text_max + 1] = {0};
        text_copy_out(buffer, val_text(value), k_number_text_max);
        if (has_nan_mark(buffer)) {
            set_flags(value, k_value_in_step | k_value_nan);
        } else {
            double number;
            number_parse(buffer, &number);
            set_number(value, number);
            set_flags(value, k_value_in_step);
        }
    }
    set_state(value, k_value_number);
}

int val_text_class(BlockHandle text) {
    return text_size(text) == 0 ? 0 : 2;
}

BlockHandle val_from_text(BlockHandle text) {
    chain_park(text);
    const BlockHandle value = val_new();
    chain_unpark();
    val_set_text(value, text);
    if (val_text_class(text) == 0) {
        set_state(value, k_value_empty);
    } else {
        val_make_number(value);
    }
    return value;
}

uint8_t val_state(BlockHandle value) {
    return block_ptr(value)[k_state_at];
}

uint8_t val_flags(BlockHandle value) {
    return block_ptr(value)[k_flags_at];
}

BlockHandle val_text(BlockHandle value) {
    return block_get16(value, k_text_at);
}

double val_number(BlockHandle value) {
    uint64_t bits = block_get32(value, k_number_at) |
                    static_cast<uint64_t>(block_get32(value, k_number_at + 4)) << 32;
    double number;
    memcpy(&number, &bits, sizeof number);
    return number;
}

void val_recover() {
    val_free(values.under_construction);
    values.under_construction = 0;
}
