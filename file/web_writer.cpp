#include "file/web_writer.h"

#include "core/byte_runs.h"
#include "core/byte_stream.h"
#include "core/text.h"
#include "file/web_tags.h"
#include "web/cells.h"
#include "web/value.h"

#include <cstring>

namespace {

static struct Writer {
    ByteOutput bytes;
    char name[k_cellname_max + 1];
} writer;

int write_string(const char *s) {
    return byte_output_write(&writer.bytes, s, static_cast<uint32_t>(strlen(s)));
}

// Writes a tag in one piece.
int write_tag(const char *opening, int tag) {
    constexpr uint32_t k_opening = 2;
    char text[k_opening + k_tag_name_max + 1];
    const char *name = web_tag_name(tag);
    uint32_t length = static_cast<uint32_t>(strlen(name));
    memcpy(text, opening, k_opening);
    memcpy(text + k_opening, name, length);
    text[k_opening + length] = '>';
    return byte_output_write(&writer.bytes, text, k_opening + length + 1);
}

// Writes n bytes, escaping; what needs no escape goes in runs.
int write_bytes(const char *bytes, uint32_t n) {
    const uint8_t *p = reinterpret_cast<const uint8_t *>(bytes);
    uint32_t done = 0;
    for (;;) {
        uint32_t run = run_before<'<', '&'>(p + done, n - done);
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
        code = write_bytes(reinterpret_cast<const char *>(block_ptr(h)) + k_block_payload_at,
                           block_used(h));
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
    for (uint32_t i = 0; i < option_tag_count() && code == 0; ++i) {
        int tag = option_tag_at(i);
        code = write_string_element(tag, option_value_text(tag));
    }
    return code == 0 ? web_write_close_tag(k_tag_opts) : code;
}

int write_name(CellHandle cell) {
    text_copy_out(writer.name, cell_name(cell), k_cellname_max);
    return write_string_element(k_tag_cname, writer.name);
}

// Values that came from a file have their text at hand, so nothing is allocated here.
int write_value(CellHandle cell) {
    BlockHandle value = cell_value(cell);
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
    int code = write_options();
    for (CellHandle cell = live_from(index_first(index_root())); cell != 0 && code == 0;
         cell = live_from(index_next(cell))) {
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
