// Random changes of a text and of a naive model of it, which keeps every state that can be come
// back to; and changes that there is no memory for.
#include "pane/document.h"
#include "tests/pane/random_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// Counts down to the request for memory that is refused, and all behind it; negative: none is.
static long requests_left = -1;

extern "C" void *__real_realloc(void *memory, size_t size);
extern "C" void *__wrap_realloc(void *memory, size_t size) {
    requests_left -= requests_left > 0 ? 1 : 0;
    return requests_left == 0 ? nullptr : __real_realloc(memory, size);
}

namespace {

// A document, and what its owner knows of it from the events alone.
struct Watched {
    Document document;
    std::string text;
    std::string styles;
    int32_t lines = 1;
    bool modified = false;
};

void on_changed(void *owner, const Change &change) {
    Watched *watched = static_cast<Watched *>(owner);
    EXPECT_FALSE(document_insert(&watched->document, 0, "x", 1));
    EXPECT_FALSE(document_remove(&watched->document, 0, 0));
    EXPECT_EQ(document_undo(&watched->document), k_nowhere);
    watched->lines += change.lines_added;
    if ((change.kind & k_change_insert) != 0) {
        watched->text.insert(change.position, change.bytes, change.length);
        watched->styles.insert(change.position, change.length, '\0');
        return;
    }
    if (change.bytes != nullptr) {
        EXPECT_EQ(
            watched->text.compare(change.position, change.length, change.bytes, change.length), 0);
    }
    watched->text.erase(change.position, change.length);
    watched->styles.erase(change.position, change.length);
}

void on_save_point(void *owner, bool reached) {
    static_cast<Watched *>(owner)->modified = !reached;
}

bool init(Watched *watched) {
    return document_init(&watched->document, {watched, on_changed, on_save_point});
}

std::string bytes_of(const Gap *gap) {
    std::string bytes(gap->length, '\0');
    gap_copy(gap, 0, gap->length, bytes.data());
    return bytes;
}

std::vector<uint32_t> starts_of(const std::string &text) {
    std::vector<uint32_t> starts = {0};
    for (uint32_t at = 1; at <= text.size(); ++at) {
        const bool parted = text[at - 1] == '\r' && text[at] == '\n';
        if ((text[at - 1] == '\r' || text[at - 1] == '\n') && !parted) {
            starts.push_back(at);
        }
    }
    return starts;
}

void expect_sound(const Watched &watched, const std::string &text) {
    const Document *document = &watched.document;
    ASSERT_EQ(bytes_of(&document->text), text);
    ASSERT_EQ(watched.text, text);
    ASSERT_EQ(bytes_of(&document->styles), watched.styles);
    ASSERT_LE(document->end_styled, text.size());
    std::vector<uint32_t> starts = starts_of(text);
    ASSERT_EQ(lines_count(&document->lines), starts.size());
    ASSERT_EQ(watched.lines, static_cast<int32_t>(starts.size()));
    ASSERT_EQ(document->visual.heights.length, starts.size());
    starts.push_back(static_cast<uint32_t>(text.size()));
    for (uint32_t line = 0; line + 1 < starts.size(); ++line) {
        ASSERT_EQ(document_line_start(document, line), starts[line]);
        const std::string inside = text.substr(starts[line], starts[line + 1] - starts[line]);
        const size_t end = std::min(inside.find_first_of("\r\n"), inside.size());
        ASSERT_EQ(document_line_end(document, line), starts[line] + end);
        ASSERT_EQ(line_of(&document->lines, starts[line]), line);
    }
}

// ---- The model ----------------------------------------------------------------------------------

// The text behind a step, and the step's last change.
struct State {
    std::string text;
    bool removal;
    uint32_t position;
    uint32_t length;
    bool closed;
};

struct Model {
    std::vector<State> states = {{}};
    size_t now = 0;
    long saved = 0;  // the state that is saved; -1: none that can be come back to
    int depth = 0;
};

bool at_save_point(const Model &model) {
    return model.saved == static_cast<long>(model.now);
}

bool joins(const Model &model, const State &next) {
    const State &last = model.states[model.now];
    if (model.now == 0 || at_save_point(model) || last.closed || last.removal != next.removal) {
        return false;
    }
    if (!next.removal) {
        return next.position == last.position + last.length;
    }
    return next.length <= 2 &&
           (next.position == last.position || next.position + next.length == last.position);
}

void note(Model *model, const State &next) {
    const bool open = model->now > 0 && !model->states[model->now].closed;
    const bool joined = model->depth > 0 ? open : joins(*model, next);
    model->saved = model->saved > static_cast<long>(model->now) ? -1 : model->saved;
    if (joined && at_save_point(*model)) {
        model->saved = -1;  // within a step
    }
    model->now += joined ? 0 : 1;
    model->states.resize(model->now);
    model->states.push_back(next);
}

void close_step(Model *model) {
    model->states[model->now].closed = model->now > 0;
}

void forget(Model *model, const std::string &text) {
    const int depth = model->depth;
    *model = {};
    model->states[0].text = text;
    model->depth = depth;
}

// ---- Steps --------------------------------------------------------------------------------------

struct Session {
    Random random;
    Watched watched;
    Model model;
};

std::string now_text(const Session &session) {
    return session.model.states[session.model.now].text;
}

// As often as not where the last change was.
uint32_t pick_position(Session *session, size_t length) {
    const State &last = session->model.states[session->model.now];
    const uint32_t near = last.position + (last.removal ? 0 : last.length);
    return session->random(2) == 0 && near <= length ? near : session->random(length + 1);
}

void insert(Session *session) {
    std::string text = now_text(*session);
    const uint32_t at = pick_position(session, text.size());
    const bool large = session->random(300) == 0;
    const std::string bytes = random_text(&session->random, large ? 6000 : session->random(4));
    text.insert(at, bytes);
    const uint32_t length = static_cast<uint32_t>(bytes.size());
    ASSERT_TRUE(document_insert(&session->watched.document, at, bytes.data(), length));
    note(&session->model, {text, false, at, length, false});
}

void remove(Session *session) {
    std::string text = now_text(*session);
    uint32_t at = pick_position(session, text.size());
    uint32_t length = session->random(3);
    if (text.size() > 800 || session->random(8) == 0) {
        length = session->random(text.size() + 1);
    }
    at -= session->random(2) == 0 ? std::min(at, length) : 0;
    length = std::min(length, static_cast<uint32_t>(text.size()) - at);
    text.erase(at, length);
    ASSERT_TRUE(document_remove(&session->watched.document, at, length));
    note(&session->model, {text, true, at, length, false});
}

void undo_or_redo(Session *session, bool undo) {
    Model *model = &session->model;
    Document *document = &session->watched.document;
    const bool possible = undo ? model->now > 0 : model->now + 1 < model->states.size();
    const uint32_t caret = undo ? document_undo(document) : document_redo(document);
    ASSERT_EQ(caret != k_nowhere, possible);
    model->now = !possible ? model->now : undo ? model->now - 1 : model->now + 1;
    ASSERT_TRUE(!possible || caret <= now_text(*session).size());
}

void group(Session *session) {
    Model *model = &session->model;
    const bool begin = model->depth == 0 || (model->depth == 1 && session->random(3) == 0);
    if (begin ? model->depth++ == 0 : --model->depth == 0) {
        close_step(model);
    }
    Undo *undo = &session->watched.document.undo;
    begin ? undo_begin_group(undo) : undo_end_group(undo);
}

// What is done without being collected cannot be undone, so the owner forgets the rest as well; if
// an undo comes before that, it may do anything that leaves the text whole.
void change_uncollected(Session *session) {
    Document *document = &session->watched.document;
    document->collecting = false;
    insert(session);
    remove(session);
    document->collecting = true;
    if (session->random(2) == 0) {
        document_undo(document);
        document_redo(document);
        expect_sound(session->watched, session->watched.text);
    }
    undo_forget(&document->undo);
    on_save_point(&session->watched, true);
    forget(&session->model, session->watched.text);
}

// From where the last ones ended, or from anywhere in the text.
void style(Session *session) {
    Document *document = &session->watched.document;
    std::string *styles = &session->watched.styles;
    if (session->random(2) == 0) {
        document->styling_at = session->random(styles->size() + 1);
    }
    const size_t at = std::min<size_t>(document->styling_at, styles->size());
    const size_t count = std::min<size_t>(session->random(60), styles->size() - at);
    const std::string before = *styles;
    const char value = static_cast<char>(session->random(4));
    styles->replace(at, count, count, value);
    uint32_t from = 0;
    uint32_t to = 0;
    const uint32_t asked = static_cast<uint32_t>(count) + (at + count == before.size() ? 9 : 0);
    ASSERT_EQ(document_style_next(document, asked, static_cast<uint8_t>(value), &from, &to),
              before != *styles);
    ASSERT_EQ(before.substr(0, from) + styles->substr(from, to - from) + before.substr(to),
              *styles);
    ASSERT_EQ(document->end_styled, at + count);
}

void save(Session *session) {
    document_set_save_point(&session->watched.document);
    session->model.saved = static_cast<long>(session->model.now);
}

void step(Session *session) {
    const uint32_t kind = session->random(100);
    if (kind < 64) {
        kind < 34 || now_text(*session).empty() ? insert(session) : remove(session);
    } else if (kind < 85) {
        undo_or_redo(session, kind < 76);
    } else if (kind < 91) {
        group(session);
    } else if (kind < 97) {
        style(session);
    } else if (kind < 99) {
        save(session);
    } else {
        change_uncollected(session);
    }
}

void expect_as_model(Session *session) {
    Watched *watched = &session->watched;
    const Model &model = session->model;
    const std::string text = now_text(*session);
    expect_sound(*watched, text);
    ASSERT_EQ(undo_at_save_point(&watched->document.undo), at_save_point(model));
    ASSERT_EQ(watched->modified, !at_save_point(model));
    ASSERT_EQ(watched->document.undo.done.count > 0, model.now > 0);
    ASSERT_EQ(watched->document.undo.undone.count > 0, model.now + 1 < model.states.size());
    if (session->random(50) == 0) {
        ASSERT_STREQ(document_bytes(&watched->document), text.c_str());
    }
}

TEST(Document, IsAsItsModelAfterEveryStep) {
    for (uint32_t seed = 1; seed <= 5; ++seed) {
        Session session = {};
        session.random.engine.seed(seed);
        ASSERT_TRUE(init(&session.watched));
        for (uint32_t i = 0; i < 6000; ++i) {
            step(&session);
            expect_as_model(&session);
            ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", step " << i;
        }
        document_free(&session.watched.document);
    }
}

// ---- Without memory -----------------------------------------------------------------------------

// Undoes (redoes) all there is. A step that finds no memory on its way stays where it is.
void go_through_history(Watched *watched, bool undo) {
    uint32_t (*go)(Document *) = undo ? document_undo : document_redo;
    while (go(&watched->document) != k_nowhere) {
        expect_sound(*watched, watched->text);
    }
}

// Changes that together ask for memory for everything a document has. Those that are refused leave
// the text as it was.
void change_much(Watched *watched) {
    Document *document = &watched->document;
    for (const std::string &bytes : {std::string(3000, 'a'), std::string(3000, '\n')}) {
        const std::string before = watched->text;
        const bool came = document_insert(document, 0, bytes.data(), 3000);
        expect_sound(*watched, came ? bytes + before : before);
    }
    const std::string before = watched->text;
    const uint32_t length = std::min(5000U, document_length(document));
    const bool went = document_remove(document, 0, length);
    expect_sound(*watched, went ? before.substr(length) : before);
    document_bytes(document);
    go_through_history(watched, true);
    go_through_history(watched, false);
}

TEST(Document, WithoutMemoryTheTextStaysAsItWas) {
    bool passed = false;
    for (long refused = 1; !passed; ++refused) {
        ASSERT_LT(refused, 100);
        Watched watched = {};
        requests_left = refused;
        if (init(&watched)) {
            change_much(&watched);
        }
        passed = requests_left > 0;
        requests_left = -1;
        if (watched.document.text.memory == nullptr) {
            continue;
        }
        go_through_history(&watched, true);  // now there is memory, and nothing was lost
        EXPECT_EQ(watched.text, "") << refused;
        EXPECT_FALSE(watched.modified);
        document_free(&watched.document);
    }
}

// A long text may cost little more than itself and its styles.
TEST(Document, MemoryOfALongText) {
    const std::string row = "a line of words\r\n";
    Watched watched = {};
    ASSERT_TRUE(init(&watched));
    Document *document = &watched.document;
    std::string text;
    while (text.size() < 345000) {
        text += row;
    }
    document_insert(document, 0, text.data(), static_cast<uint32_t>(text.size()));
    for (uint32_t i = 0; i < 100; ++i) {
        document_insert(document, i * 3000, "typed", 5);
    }
    const size_t all = document->text.capacity + document->styles.capacity +
                       document->lines.starts.capacity * 4 + document->visual.heights.capacity * 2 +
                       document->undo.done.size + document->undo.undone.size;
    EXPECT_LT(all, text.size() * 5 / 2 + 65536);
    document_free(document);
}

}  // namespace
