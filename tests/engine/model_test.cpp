// Random operations on the engine and on a naive model of it; after each, everything that a user
// can see must be the same, and the arena sound.
#include "tests/engine/engine_test.h"
#include "tests/engine/report_model.h"

#include <random>

namespace {

// Names and texts are folded. The map's order is here that of the cell list.
struct Model {
    std::map<std::string, std::string> cells = {{"HOME", ""}};  // the live ones' texts
    std::string current = "HOME";
    Names trail;
    Names forward;
    bool changed = false;
};

void push(Names *ring, const std::string &name) {
    bool full = ring->size() == 31;
    if (full) {
        ring->erase(ring->begin());
    }
    if (full || ring->empty() || ring->back() != name) {
        ring->push_back(name);
    }
}

std::string pop(Names *ring) {
    std::string name = ring->back();
    ring->pop_back();
    return name;
}

std::string pop_trail(Model *m) {
    push(&m->forward, m->current);
    return pop(&m->trail);
}

void go(Model *m, const std::string &name) {
    push(&m->trail, m->current);
    m->current = name;
}

void follow(Model *m, const std::string &name) {
    m->cells.try_emplace(name);
    m->forward.clear();
    go(m, name);
}

// The cell before (after) the current one in the list, round its end.
std::string neighbour(const Model &m, bool after) {
    auto at = m.cells.find(m.current);
    if (after) {
        return ++at != m.cells.end() ? at->first : m.cells.begin()->first;
    }
    return at != m.cells.begin() ? (--at)->first : m.cells.rbegin()->first;
}

Names visible_state(const Model &m) {
    Names state = {"at " + m.current, "pane " + m.cells.at(m.current),
                   m.changed ? "changed" : "unchanged"};
    for (const auto &[name, text] : m.cells) {
        state.push_back("cell " + name + ": " + text + "||");
    }
    for (const std::string &name : m.trail) {
        state.push_back("trail " + name);
    }
    for (const std::string &name : m.forward) {
        state.push_back("forward " + name);
    }
    return state;
}

// One operation on both; `m` is the web as it is once the pane is stored.
void step(Model *m, std::mt19937 *random, uint32_t *lost) {
    static const char *const names[] = {"home", "a",    "A_b",  "a b", "x_1",
                                        "X 1",  "beta", "BETA", "c1",  "c2"};
    size_t pick = (*random)() % 12;
    std::string typed = pick < std::size(names) ? names[pick] : std::string(48, 'n');
    std::string name = model_fold(typed);
    bool agree = (*random)() % 3 != 0;
    bool there = m->cells.contains(name);
    host().yes_no = {agree};
    host().ok_cancel = {agree};
    switch ((*random)() % 10) {
    case 0:
        m->cells[m->current] = std::string((*random)() % 300, name[0]);
        type_text(m->cells[m->current]);
        store_text_pane(agree ? 1 : 0);
        m->changed = true;
        break;
    case 1:
        go_to_name(typed.c_str());
        if (there || agree) {
            follow(m, name);
        }
        break;
    case 2:
        new_cell(typed.c_str());
        if (!there || agree) {
            follow(m, name);
            m->changed = m->changed || !there;
        }
        break;
    case 3:
        clone_cell(typed.c_str());
        if (!there) {
            m->cells[name] = m->cells[m->current];
            follow(m, name);
            m->changed = true;
            ++*lost;  // the copy of the view state
        }
        break;
    case 4:
        delete_cell();
        if (m->current != "HOME" && agree) {
            std::string gone = m->current;
            m->current = neighbour(*m, false);
            m->cells.erase(gone);
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
        if (!m->trail.empty()) {
            std::string to = m->trail[(*random)() % m->trail.size()];
            CellHandle cell = cell_lookup(to.c_str());
            agree ? jump_to_trail_entry(name_string(cell).c_str()) : jump_to_trail_cell(cell);
            while (pop_trail(m) != to) {
            }
            m->current = to;
        }
        break;
    default: {
        CellHandle node = index_find(index_root(), typed.c_str());  // a deleted cell's, too
        agree ? static_cast<void>(go_to_cell(node)) : go_to_link(node);
        if (there && name != m->current) {
            (agree ? go : follow)(m, name);
        }
        break;
    }
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
                store_current_text();
            }
            if (random() % 4 == 0) {
                model.changed = false;
                set_web_changed(false);
            }
            ASSERT_EQ(host().pane.text, model.cells[model.current]);
            if (!host().pane.modified) {  // else what was typed last may be in the pane alone
                Names state = visible_state();
                for (std::string &line : state) {
                    size_t at = line.find(' ') + 1;
                    line = line.substr(0, at) + (at > 0 ? model_fold(line.substr(at)) : line);
                }
                ASSERT_EQ(state, visible_state(model));
            }
            ASSERT_EQ(check_engine(lost_blocks) + check_cell_list(), "");
            ASSERT_EQ(host().selected_item, cell_list_item(current_cell()));
        }
    }
}
