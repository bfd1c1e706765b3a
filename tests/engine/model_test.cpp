// Random operations on the engine and on a naive model of it; after each, everything that a user
// can see must be the same, and the arena sound.
#include "tests/engine/engine_test.h"

#include "web/cell_ops.h"
#include "web/cells.h"
#include "web/trail.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <random>

namespace {

constexpr size_t k_ring_max = 31;

std::string folded(std::string name) {
    for (char &c : name) {
        c = c == '_' ? ' ' : static_cast<char>(toupper(static_cast<unsigned char>(c)));
    }
    return name;
}

struct ModelCell {
    std::string name;  // as it was first spelled
    std::string text;
    bool live;
};

// Cells are known by their folded names. The map's order is that of unsigned bytes, which for the
// names used here is the order of the cell list.
struct Model {
    std::map<std::string, ModelCell> cells = {{"HOME", {"home", "", true}}};
    std::string current = "HOME";
    Names trail;
    Names forward;
    bool changed = false;

    bool live(const std::string &key) const { return cells.contains(key) && cells.at(key).live; }
};

void push(Names *ring, const std::string &key) {
    bool full = ring->size() == k_ring_max;
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

void follow(Model *m, const std::string &key) {
    m->forward.clear();
    push(&m->trail, m->current);
    m->current = key;
}

void create(Model *m, const std::string &name, const std::string &text) {
    std::string key = folded(name);
    m->cells.try_emplace(key, ModelCell{name, "", true});
    m->cells[key].text = text;
    m->cells[key].live = true;
    follow(m, key);
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

// The live cell `by` places on in the list, round its end.
std::string neighbour(const Model &m, size_t by) {
    Names keys = live_keys(m);
    size_t at = static_cast<size_t>(std::find(keys.begin(), keys.end(), m.current) - keys.begin());
    return keys[(at + by) % keys.size()];
}

Names visible_state(const Model &m) {
    const ModelCell &current = m.cells.at(m.current);
    Names state = {"at " + current.name, "pane " + current.text,
                   m.changed ? "changed" : "unchanged"};
    for (const std::string &key : live_keys(m)) {
        state.push_back("cell " + m.cells.at(key).name + ": " + m.cells.at(key).text + "||");
    }
    for (const std::string &key : m.trail) {
        state.push_back("trail " + m.cells.at(key).name);
    }
    for (const std::string &key : m.forward) {
        state.push_back("forward " + m.cells.at(key).name);
    }
    return state;
}

struct Dice {
    std::mt19937 random;

    uint32_t below(uint32_t n) { return static_cast<uint32_t>(random() % n); }

    std::string name() {
        static const Names names = {"home", "Home", "a",  "A_b", "a b", "a1", "x_1", "X 1",
                                    "beta", "BETA", "c1", "c2",  "c3",  "c4", "z",   "Zz"};
        std::string name = names[below(static_cast<uint32_t>(names.size()))];
        return below(12) == 0 ? std::string(36, name[0]) : name;
    }
};

// One operation on both; `m` is the web as it is once the pane is stored.
void step(Model *m, Dice *dice, uint32_t *lost) {
    std::string name = dice->name();
    std::string key = folded(name);
    bool agree = dice->below(3) != 0;
    host().yes_no = {agree};
    host().ok_cancel = {agree};
    switch (dice->below(14)) {
    case 0:
    case 1: {
        std::string text = std::string(dice->below(300), name[0]);
        type_text(text);
        store_text_pane(dice->below(2) == 0 ? 1 : 0);
        m->cells[m->current].text = text;
        m->changed = true;
        break;
    }
    case 2:
        go_to_name(name.c_str());
        if (m->live(key)) {
            follow(m, key);
        } else if (agree) {
            create(m, name, "");
        }
        break;
    case 3:
    case 4:
        new_cell(name.c_str());
        if (!m->live(key)) {
            create(m, name, "");
            m->changed = true;
        } else if (agree) {
            follow(m, key);
        }
        break;
    case 5:
        clone_cell(name.c_str());
        if (!m->live(key)) {
            create(m, name, m->cells[m->current].text);
            m->changed = true;
            ++*lost;  // the copy of the view state
        }
        break;
    case 6:
        delete_cell();
        if (m->current != "HOME" && agree) {
            std::string gone = m->current;
            m->current = neighbour(*m, live_keys(*m).size() - 1);
            m->cells[gone].live = false;
            std::erase(m->trail, gone);
            std::erase(m->forward, gone);
            m->changed = true;
        }
        break;
    case 7:
        previous_cell();
        m->current = neighbour(*m, live_keys(*m).size() - 1);
        break;
    case 8:
        next_cell();
        m->current = neighbour(*m, 1);
        break;
    case 9:
        (agree ? first_cell : last_cell)();
        m->current = agree ? live_keys(*m).front() : live_keys(*m).back();
        break;
    case 10:
        back();
        if (!m->trail.empty()) {
            m->current = pop_trail(m);
        } else if (m->current != "HOME") {
            push(&m->forward, m->current);
            m->current = "HOME";
        }
        break;
    case 11:
        forward();
        if (!m->forward.empty()) {
            std::string to = pop(&m->forward);
            if (to != m->current) {
                push(&m->trail, m->current);
                m->current = to;
            }
        }
        break;
    case 12: {
        jump_to_trail_entry(name.c_str());
        bool found = false;
        for (const std::string &entry : m->trail) {
            found = found || m->cells[entry].name == name;
        }
        if (found || name == "home") {
            std::string popped;
            while (!m->trail.empty() &&
                   (!found || popped.empty() || m->cells[popped].name != name)) {
                popped = pop_trail(m);
            }
            m->current = found ? popped : "HOME";
        }
        break;
    }
    default:
        go_to_cell(cell_lookup(name.c_str()));
        if (m->live(key) && key != m->current) {
            push(&m->trail, m->current);
            m->current = key;
        }
        break;
    }
}

}  // namespace

class RandomOperations : public EngineTest, public testing::WithParamInterface<uint32_t> {};

TEST_P(RandomOperations, AgreeWithTheModel) {
    Model model;
    Dice dice = {std::mt19937(GetParam())};
    for (int i = 0; i < 1000; ++i) {
        step(&model, &dice, &lost_blocks);
        // What was typed last may still be in the pane alone.
        if (dice.below(4) == 0) {
            store_text_pane_keep_flag();
        }
        Names state = visible_state();
        if (!host().pane.modified) {
            ASSERT_EQ(state, visible_state(model)) << "after step " << i;
        }
        ASSERT_EQ(host().pane.text, model.cells[model.current].text);
        ASSERT_EQ(check_engine(lost_blocks) + check_cell_list(), "") << "after step " << i;
        ASSERT_EQ(host().selected_item, cell_list_item(current_cell()));
        take_log();
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomOperations, testing::Range(1U, 7U));
