// Random operations on the engine and on a naive model of it; after each, everything that a user
// can see must be the same, and the arena sound.
#include "tests/engine/engine_test.h"

#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/trail.h"

#include <algorithm>
#include <cctype>
#include <random>

namespace {

std::string folded(std::string name) {
    for (char &c : name) {
        c = c == '_' ? ' ' : static_cast<char>(toupper(c));
    }
    return name;
}

struct ModelCell {
    std::string name;  // as it was first spelled
    std::string text;
    bool live;
};

// Cells are known by their folded names, whose order is here that of the cell list.
struct Model {
    std::map<std::string, ModelCell> cells = {{"HOME", {"home", "", true}}};
    std::string current = "HOME";
    Names trail;
    Names forward;
    bool changed = false;

    bool live(const std::string &key) const { return cells.contains(key) && cells.at(key).live; }
};

void push(Names *ring, const std::string &key) {
    bool full = ring->size() == 31;
    if (full) {
        ring->erase(ring->begin());
    }
    if (full || ring->empty() || ring->back() != key) {
        ring->push_back(key);
    }
}

std::string pop(Names *ring) {
    std::string key = ring->back();
    ring->pop_back();
    return key;
}

std::string pop_trail(Model *m) {
    push(&m->forward, m->current);
    return pop(&m->trail);
}

void go(Model *m, const std::string &key) {
    push(&m->trail, m->current);
    m->current = key;
}

void follow(Model *m, const std::string &name, const std::string &text_if_new) {
    std::string key = folded(name);
    if (!m->live(key)) {
        m->cells[key] = {m->cells.contains(key) ? m->cells[key].name : name, text_if_new, true};
    }
    m->forward.clear();
    go(m, key);
}

Names live_keys(const Model &m) {
    Names keys;
    for (const auto &[key, cell] : m.cells) {
        if (cell.live) {
            keys.push_back(key);
        }
    }
    return keys;
}

// The live cell before (after) the current one in the list, round its end.
std::string neighbour(const Model &m, bool after) {
    Names keys = live_keys(m);
    size_t at = static_cast<size_t>(std::find(keys.begin(), keys.end(), m.current) - keys.begin());
    return keys[(at + (after ? 1 : keys.size() - 1)) % keys.size()];
}

Names visible_state(const Model &m) {
    Names state = {"at " + m.cells.at(m.current).name, "pane " + m.cells.at(m.current).text,
                   m.changed ? "changed" : "unchanged"};
    auto add = [&](const Names &keys, const std::string &what, bool text) {
        for (const std::string &key : keys) {
            const ModelCell &cell = m.cells.at(key);
            state.push_back(what + cell.name + (text ? ": " + cell.text + "||" : ""));
        }
    };
    add(live_keys(m), "cell ", true);
    add(m.trail, "trail ", false);
    add(m.forward, "forward ", false);
    return state;
}

// One operation on both; `m` is the web as it is once the pane is stored.
void step(Model *m, std::mt19937 *random, uint32_t *lost) {
    static const char *const names[] = {
        "home", "Home", "a",    "A_b", "a b", "x_1",
        "X 1",  "beta", "BETA", "c1",  "c2",  "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn"};
    std::string name = names[(*random)() % std::size(names)];
    std::string key = folded(name);
    bool agree = (*random)() % 3 != 0;
    bool there = m->live(key);
    host().yes_no = {agree};
    host().ok_cancel = {agree};
    switch ((*random)() % 10) {
    case 0:
        m->cells[m->current].text = std::string((*random)() % 300, name[0]);
        type_text(m->cells[m->current].text);
        store_text_pane(agree ? 1 : 0);
        m->changed = true;
        break;
    case 1:
        go_to_name(name.c_str());
        if (there || agree) {
            follow(m, name, "");
        }
        break;
    case 2:
        new_cell(name.c_str());
        if (!there || agree) {
            follow(m, name, "");
            m->changed = m->changed || !there;
        }
        break;
    case 3:
        clone_cell(name.c_str());
        if (!there) {
            follow(m, name, m->cells[m->current].text);
            m->changed = true;
            ++*lost;  // the copy of the view state
        }
        break;
    case 4:
        delete_cell();
        if (m->current != "HOME" && agree) {
            std::string gone = m->current;
            m->current = neighbour(*m, false);
            m->cells[gone].live = false;
            std::erase(m->trail, gone);
            std::erase(m->forward, gone);
            m->changed = true;
        }
        break;
    case 5:
        (agree ? next_cell : previous_cell)();
        m->current = neighbour(*m, agree);
        break;
    case 6:
        back();
        if (!m->trail.empty()) {
            m->current = pop_trail(m);
        } else if (m->current != "HOME") {
            push(&m->forward, m->current);
            m->current = "HOME";
        }
        break;
    case 7:
        forward();
        if (!m->forward.empty()) {
            std::string to = pop(&m->forward);
            if (to != m->current) {
                go(m, to);
            }
        }
        break;
    case 8:
        if (Names keys = m->trail; !keys.empty()) {
            std::string to = keys[(*random)() % keys.size()];
            jump_to_trail_entry(m->cells[to].name.c_str());
            std::string popped;
            while (popped != to) {
                popped = pop_trail(m);
            }
            m->current = to;
        }
        break;
    default:
        go_to_cell(cell_lookup(name.c_str()));
        if (there && key != m->current) {
            go(m, key);
        }
        break;
    }
}

}  // namespace

TEST_F(EngineTest, RandomOperationsAgreeWithTheModel) {
    for (uint32_t seed = 1; seed < 7; ++seed) {
        start_program();
        lost_blocks = 0;
        Model model;
        std::mt19937 random(seed);
        for (int i = 0; i < 1000; ++i) {
            step(&model, &random, &lost_blocks);
            SCOPED_TRACE(testing::Message() << "after step " << i << " of seed " << seed);
            if (random() % 4 == 0) {
                store_text_pane_keep_flag();
            }
            // What was typed last may still be in the pane alone.
            if (!host().pane.modified) {
                ASSERT_EQ(visible_state(), visible_state(model));
            }
            ASSERT_EQ(host().pane.text, model.cells[model.current].text);
            ASSERT_EQ(check_engine(lost_blocks) + check_cell_list(), "");
            ASSERT_EQ(host().selected_item, cell_list_item(current_cell()));
        }
    }
}
