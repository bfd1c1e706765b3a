#include "file/web_writer.h"

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

bool is_special(char c) {
    return c == '<' || c == '&';
}

// Writes n bytes, escaping; what needs no escape goes in runs.
int write_bytes(const char *p, uint32_t n) {
    const char *end = p + n;
    int code = 0;
    while (p < end && code == 0) {
        const char *run = p;
        while (p < end && !is_special(*p)) {
            ++p;
        }
        code = byte_output_write(&writer.bytes, run, static_cast<uint32_t>(p - run));
        if (code == 0 && p < end) {
            code = web_write_escaped(*p++);
        }
    }
    return code;
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
    int code = write_string("\n<");
    if (code == 0) {
        code = write_string(web_tag_name(tag));
    }
    return code == 0 ? web_out_byte('>') : code;
}

int web_write_close_tag(int tag) {
    int code = write_string("</");
    if (code == 0) {
        code = write_string(web_tag_name(tag));
    }
    return code == 0 ? web_out_byte('>') : code;
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
