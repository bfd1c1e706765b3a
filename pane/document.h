// A text with a style for each byte, its lines, and what can be undone.
//
// It knows no window. Whoever owns it is told of every change as soon as it is complete.
#pragma once

#include "pane/gap.h"
#include "pane/lines.h"
#include "pane/undo.h"
#include "pane/visual_lines.h"

// What a change was, in the bits that the interface has for it.
constexpr uint32_t k_change_insert = 0x1;
constexpr uint32_t k_change_remove = 0x2;
constexpr uint32_t k_change_user = 0x10;
constexpr uint32_t k_change_undo = 0x20;
constexpr uint32_t k_change_redo = 0x40;
constexpr uint32_t k_change_many_steps = 0x80;
constexpr uint32_t k_change_last_step = 0x100;
constexpr uint32_t k_change_many_lines = 0x1000;
constexpr uint32_t k_change_first_action = 0x2000;

struct Change {
    uint32_t kind;  // of the bits above
    uint32_t position;
    uint32_t length;
    uint32_t line;        // of the position: before what came in, after what went out
    int32_t lines_added;  // negative when lines have gone
    const char *bytes;    // that came in or went out, if they are known
};

// Called with `owner`. The document must not be changed meanwhile; changes are refused.
struct DocumentEvents {
    void *owner;
    void (*changed)(void *owner, const Change &change);
    void (*save_point)(void *owner, bool reached);
};

struct Document {
    Gap text;
    Gap styles;
    Lines lines;
    VisualLines visual;
    Undo undo;
    DocumentEvents events;
    uint32_t end_styled;  // styles in front of it are right
    uint32_t styling_at;  // where the next style goes
    bool collecting;      // changes can be undone
    bool changing;        // an event is under way
};

// False without memory; nothing is then left behind.
bool document_init(Document *document, const DocumentEvents &events);
void document_free(Document *document);

inline uint32_t document_length(const Document *document) {
    return document->text.length;
}

inline char document_byte(const Document *document, uint32_t at) {
    return at < document->text.length ? *gap_item(&document->text, at) : '\0';
}

inline uint8_t document_style(const Document *document, uint32_t at) {
    return at < document->styles.length ? static_cast<uint8_t>(*gap_item(&document->styles, at))
                                        : uint8_t{0};
}

// The whole text in one piece, with a NUL behind it, until the next change. Null without memory.
const char *document_bytes(Document *document);

// Where a line begins, and where its line end does; the text's end for a line too many.
uint32_t document_line_start(const Document *document, uint32_t line);
uint32_t document_line_end(const Document *document, uint32_t line);

// Change the text within its limits. False, and nothing changed, without memory or in an event.
bool document_insert(Document *document, uint32_t position, const char *bytes, uint32_t length);
bool document_remove(Document *document, uint32_t position, uint32_t length);

// Undo or redo one step. Returns where the caret belongs then; k_nowhere when there was none.
constexpr uint32_t k_nowhere = 0xFFFFFFFF;
uint32_t document_undo(Document *document);
uint32_t document_redo(Document *document);

void document_set_save_point(Document *document);

// Gives so many bytes a style, from where the styling has come to. Says from where to where the
// styles are others than before; false when none is.
bool document_style_next(Document *document, uint32_t length, uint8_t style, uint32_t *from,
                         uint32_t *to);
