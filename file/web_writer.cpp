#include "file/web_writer.h"

#include "core/byte_runs.h"
#include "core/byte_stream.h"
#include "core/check.h"
#include "core/text.h"
#include "file/web_tags.h"
#include "file/written_names.h"
#include "web/cells.h"
#include "web/index.h"
#include "web/option_text.h"
#include "web/value.h"

#include <cstring>

static struct Writer { ByteOutput bytes; } writer;

namespace {

int write_string(const char *s) {
    return byte_output_write(&writer.bytes, s, static_cast<uint32_t>(strlen(s)));
}

// A tag as it stands in the file, made once for each, with two places for "\n<" or "</".
struct TagText {
    char text[15];
    uint8_t length;
};
static_assert(2 + k_tag_name_max + 1 <= sizeof(TagText::text));

struct TagTexts {
    TagText of[k_tag_count];
};

constexpr TagTexts make_tags() {
    TagTexts tags = {};
    for (int tag = 0; tag < k_tag_count; ++tag) {
        TagText *made = &tags.of[tag];
        made->length = 2;
        for (const char *p = web_tag_name(tag); *p != 0; ++p) {
            made->text[made->length++] = *p;
        }
        made->text[made->length++] = '>';
    }
    return tags;
}

constexpr TagTexts k_tags = make_tags();

int write_tag(const char (&before)[3], int tag) {
    CHECK(tag >= 0 && tag < k_tag_count);
    const TagText *text = &k_tags.of[tag];
    char whole[16];
    static_assert(sizeof *text == sizeof whole);
    memcpy(whole, text, sizeof whole);
    memcpy(whole, before, 2);
    return byte_output_write_short(&writer.bytes, whole, text->length);
}

// Writes n bytes, escaping; what needs no escape goes in runs.
int write_bytes(const char *bytes, uint32_t n) {
    const uint8_t *p = reinterpret_cast<const uint8_t *>(bytes);
    uint32_t done = 0;
    for (;;) {
        const uint32_t run = run_before<'<', '&'>(p + done, n - done);
        int code = byte_output_write(&writer.bytes, bytes + done, run);
        done += run;
        if (code < 0 || done == n) {
            return code;
        }
        code = web_write_escaped(bytes[done++]);
        if (code < 0) {
            return code;
        }
    }
}

int write_text(BlockHandle text) {
    int code = 0;
    for (BlockHandle h = text; h != 0 && code == 0; h = block_next(h)) {
        code = write_bytes(text_block_chars(h), block_used(h));
    }
    return code;
}

// An element with a text, or nothing for an empty one.
int write_text_element(int tag, BlockHandle text) {
    if (text_size(text) == 0) {
        return 0;
    }
    int code = web_write_open_tag(tag);
    if (code == 0) {
        code = write_text(text);
    }
    return code == 0 ? web_write_close_tag(tag) : code;
}

int write_string_element(int tag, const char *s) {
    int code = web_write_open_tag(tag);
    if (code == 0) {
        code = write_bytes(s, static_cast<uint32_t>(strlen(s)));
    }
    return code == 0 ? web_write_close_tag(tag) : code;
}

int write_options() {
    int code = web_write_open_tag(k_tag_opts);
    for (uint32_t id = 0; id < k_saved_option_count && code == 0; ++id) {
        code =
            write_string_element(k_option_tags[id], option_value_text(static_cast<OptionId>(id)));
    }
    return code == 0 ? web_write_close_tag(k_tag_opts) : code;
}

int write_name(CellHandle cell) {
    const char *shorter = written_name(cell);
    if (shorter != nullptr) {
        return write_string_element(k_tag_cname, shorter);
    }
    int code = web_write_open_tag(k_tag_cname);
    if (code == 0) {
        code = write_text(cell_name(cell));
    }
    return code == 0 ? web_write_close_tag(k_tag_cname) : code;
}

// Values that came from a file have their text at hand, so nothing is allocated here.
int write_value(CellHandle cell) {
    const BlockHandle value = cell_value(cell);
    if (value == 0) {
        return 0;
    }
    val_make_text(value);
    return write_text_element(k_tag_val, val_text(value));
}

int write_cell(CellHandle cell) {
    int code = web_write_open_tag(k_tag_cell);
    if (code == 0) {
        code = write_name(cell);
    }
    if (code == 0) {
        code = write_text_element(k_tag_text, cell_text(cell));
    }
    if (code == 0) {
        code = write_value(cell);
    }
    if (code == 0) {
        code = write_text_element(k_tag_script, cell_script(cell));
    }
    return code == 0 ? web_write_close_tag(k_tag_cell) : code;
}

}  // namespace

int web_write(FILE *file) {
    byte_output_bind(&writer.bytes, file);
    written_names_begin();
    int code = write_options();
    for (CellHandle cell = first_live_cell(); cell != 0 && code == 0; cell = next_live_cell(cell)) {
        code = write_cell(cell);
    }
    if (code == 0) {
        code = web_write_close_tag(k_tag_eof);
    }
    return code == 0 ? web_out_flush() : code;
}

int web_write_open_tag(int tag) {
    return write_tag("\n<", tag);
}

int web_write_close_tag(int tag) {
    return write_tag("</", tag);
}

int web_write_escaped(char c) {
    switch (c) {
    case '<':
        return write_string("&lt;");
    case '&':
        return write_string("&amp;");
    default:
        return web_out_byte(static_cast<uint8_t>(c));
    }
}

int web_out_byte(uint8_t byte) {
    return byte_output_put(&writer.bytes, byte);
}

int web_out_flush() {
    return byte_output_flush(&writer.bytes);
}
