// The document against a plain string with a list of what it has been.
#include "pane/document.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Watched {
    Document document;
    uint32_t changes = 0;
    uint32_t last_kind = 0;
    std::string save_points;

    Watched() {
        const auto changed = [](void *owner, const Change &change) {
            Watched *self = static_cast<Watched *>(owner);
            ++self->changes;
            self->last_kind = change.kind;
        };
        const auto save_point = [](void *owner, bool reached) {
            static_cast<Watched *>(owner)->save_points += reached ? "+" : "-";
        };
        EXPECT_TRUE(document_init(&document, {this, changed, save_point}));
    }
    ~Watched() { document_free(&document); }
    Watched(const Watched &) = delete;
    Watched &operator=(const Watched &) = delete;

    std::string text() { return {document_bytes(&document), document_length(&document)}; }
    void insert(size_t at, const std::string &bytes) {
        EXPECT_TRUE(document_insert(&document, static_cast<uint32_t>(at), bytes.data(),
                                    static_cast<uint32_t>(bytes.size())));
    }
    void remove(size_t at, size_t length) {
        EXPECT_TRUE(
            document_remove(&document, static_cast<uint32_t>(at), static_cast<uint32_t>(length)));
    }
    // Texts that undoing everything comes through, the present one first.
    std::vector<std::string> history() {
        std::vector<std::string> texts = {text()};
        while (document_undo(&document) != k_nowhere) {
            texts.push_back(text());
        }
        for (size_t i = 1; i < texts.size(); ++i) {
            document_redo(&document);
        }
        return texts;
    }
};

std::vector<uint32_t> lines_of(const std::string &text) {
    std::vector<uint32_t> starts = {0};
    for (size_t i = 0; i < text.size(); ++i) {
        const bool pair = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if ((text[i] == '\r' && !pair) || text[i] == '\n') {
            starts.push_back(static_cast<uint32_t>(i + 1));
        }
    }
    return starts;
}

void expect_whole(Watched *watched, const std::string &text) {
    Document *document = &watched->document;
    ASSERT_EQ(watched->text(), text);
    ASSERT_EQ(document->styles.length, text.size());
    const std::vector<uint32_t> starts = lines_of(text);
    ASSERT_EQ(lines_count(&document->lines), starts.size());
    uint32_t rows = 0;
    for (uint32_t line = 0; line < starts.size(); ++line) {
        ASSERT_EQ(line_start(&document->lines, line), starts[line]);
        ASSERT_EQ(line_of(&document->lines, starts[line]), line);
        ASSERT_EQ(visual_top(&document->visual, line), rows);
        ASSERT_EQ(visual_find(&document->visual, rows), line);
        rows += visual_height(&document->visual, line);
    }
    ASSERT_EQ(document->visual.total, rows);
}

// Steps of several changes each, as groups, and everything that can be undone.
TEST(Document, RandomStepsAreUndoneAndRedone) {
    std::mt19937 random(1);
    const auto draw = [&](size_t limit) { return static_cast<size_t>(random()) % limit; };
    const std::vector<std::string> pieces = {
        "a", "some words", "\r\n", "\r", "\n", "\n\r\n\n", std::string(5000, 'x') + "\r\n"};
    Watched watched;
    std::vector<std::string> past = {""};
    std::vector<std::string> future;
    for (int step = 0; step < 4000; ++step) {
        std::string now = past.back();
        const size_t what = draw(10);
        if (what == 0 && past.size() > 1) {
            document_undo(&watched.document);
            future.push_back(now);
            past.pop_back();
        } else if (what == 1 && !future.empty()) {
            document_redo(&watched.document);
            past.push_back(future.back());
            future.pop_back();
        } else if (what > 1) {
            undo_begin_group(&watched.document.undo);
            for (size_t changes = 1 + draw(3); changes > 0; --changes) {
                const size_t at = draw(now.size() + 1);
                if (draw(2) == 0 || now.size() > 30000) {
                    const size_t length = draw(now.size() - at + 1);
                    watched.remove(at, length);
                    now.erase(at, length);
                } else {
                    const std::string &piece = pieces[draw(pieces.size())];
                    watched.insert(at, piece);
                    now.insert(at, piece);
                }
            }
            undo_end_group(&watched.document.undo);
            past.push_back(now);
            future.clear();
        }
        visual_set_height(&watched.document.visual,
                          static_cast<uint32_t>(draw(lines_count(&watched.document.lines))),
                          static_cast<uint32_t>(1 + draw(4)));
        ASSERT_NO_FATAL_FAILURE(expect_whole(&watched, past.back())) << "step " << step;
    }
}

TEST(Document, TypingAndDeletingAreStepsOfAUsersLength) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> rows = {
        // +at text inserts, -at length removes, s is a save point, ( and ) a group
        {"+0a +1b +2cde", {"abcde", ""}},
        {"+0a +0b", {"ba", "a", ""}},
        {"+0abcdef -5 1 -4 1 -4 0", {"abcd", "abcdef", ""}},
        {"+0abcdef -2 1 -2 2", {"abf", "abcdef", ""}},
        {"+0abcdef -3 3 -2 1", {"ab", "abcdef", ""}},
        {"+0abcdef -2 1 -2 3", {"ab", "abdef", "abcdef", ""}},
        {"+0a s +1b", {"ab", "a", ""}},
        {"+0a ( ) +1b", {"ab", "a", ""}},
        {"+0a ( +1b +2c ) +3d", {"abcd", "abc", "a", ""}},
    };
    for (const auto &[steps, texts] : rows) {
        Watched watched;
        for (size_t i = 0; i < steps.size(); ++i) {
            const auto at = static_cast<size_t>(i + 1 < steps.size() ? steps[i + 1] - '0' : 0);
            if (steps[i] == '+') {
                watched.insert(at, steps.substr(i + 2, steps.find(' ', i) - i - 2));
            } else if (steps[i] == '-' && steps[i + 3] != '0') {
                watched.remove(at, static_cast<size_t>(steps[i + 3] - '0'));
            } else if (steps[i] == 's' && steps[i - 1] == ' ') {
                document_set_save_point(&watched.document);
            } else if (steps[i] == '(') {
                undo_begin_group(&watched.document.undo);
            } else if (steps[i] == ')') {
                undo_end_group(&watched.document.undo);
            }
        }
        EXPECT_EQ(watched.history(), texts) << steps;
    }
}

TEST(Document, SaysWhenItsSavePointIsLeftAndReached) {
    Watched watched;
    watched.insert(0, "a");
    watched.insert(0, "b");
    document_set_save_point(&watched.document);
    document_undo(&watched.document);
    document_redo(&watched.document);
    document_undo(&watched.document);
    watched.insert(0, "c");  // the save point cannot be come to any more
    document_undo(&watched.document);
    EXPECT_EQ(watched.save_points, "-+-+-");
    undo_forget(&watched.document.undo);
    EXPECT_TRUE(undo_at_save_point(&watched.document.undo));
    EXPECT_EQ(document_undo(&watched.document), k_nowhere);
}

// What is not noted may be undone around: nothing is done that does not fit the text.
TEST(Document, ChangesThatAreNotNoted) {
    Watched watched;
    watched.insert(0, "words");
    watched.document.collecting = false;
    watched.remove(1, 4);
    watched.document.collecting = true;
    EXPECT_EQ(document_undo(&watched.document), k_nowhere);
    EXPECT_EQ(watched.text(), "w");
}

TEST(Document, ACaretGoesBehindWhatComesBack) {
    Watched watched;
    watched.insert(0, "abcdef");
    for (int i = 0; i < 3; ++i) {
        watched.remove(2, 1);  // as the Delete key does
    }
    EXPECT_EQ(document_undo(&watched.document), 5U);
    EXPECT_EQ(document_redo(&watched.document), 2U);
}

TEST(Document, StylesFollowTheTextAndAreVoidBehindAChange) {
    Watched watched;
    Document *document = &watched.document;
    watched.insert(0, "one two three");
    uint32_t from = 0;
    uint32_t to = 0;
    EXPECT_FALSE(document_style_next(document, 4, 0, &from, &to));
    EXPECT_TRUE(document_style_next(document, 3, 2, &from, &to));
    EXPECT_EQ(from * 100 + to, 407U);
    EXPECT_FALSE(document_style_next(document, 100, 0, &from, &to)) << "held to the text";
    EXPECT_EQ(document->end_styled, 13U);
    watched.insert(0, "a ");
    EXPECT_EQ(document->end_styled, 0U);
    EXPECT_EQ(document_style(document, 6) * 10 + document_style(document, 9), 20);
    document_style_next(document, 100, 0, &from, &to);
    watched.remove(14, 1);  // the last word is another one now
    EXPECT_EQ(document->end_styled, 13U);
}

// A long text may cost little more than itself and its styles.
TEST(Document, MemoryOfALongText) {
    std::string text;
    while (text.size() < 345000) {
        text += "a line of words\r\n";
    }
    Watched watched;
    watched.insert(0, text);
    for (size_t i = 0; i < 100; ++i) {
        watched.insert(i * 3000, "typed");
    }
    const Document &document = watched.document;
    const size_t all = document.text.capacity + document.styles.capacity +
                       document.lines.starts.capacity * 4 + document.visual.heights.capacity * 2 +
                       document.undo.done.size + document.undo.undone.size;
    EXPECT_LT(all, text.size() * 5 / 2 + 65536);
}

}  // namespace
