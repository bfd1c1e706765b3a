#include "cli/browse/ask.h"

#include "cli/browse/screen.h"
#include "cli/browse/terminal.h"
#include "pane/characters.h"

#include <cstring>

namespace {

constexpr size_t k_typed_max = 200;  // bytes

void take_back_character(std::string *typed) {
    while (!typed->empty()) {
        const bool begins = (typed->back() & 0xC0) != 0x80;
        typed->pop_back();
        if (begins) {
            break;
        }
    }
}

void append_character(std::string *typed, uint32_t code) {
    char bytes[4];
    const uint32_t size = encode_character(bytes, code);
    if (typed->size() + size <= k_typed_max) {
        typed->append(bytes, size);
    }
}

Key ask_key(const std::string &question) {
    screen_question(question);
    screen_draw();
    return terminal_key();
}

// The letter that a key stands for; 0 for none.
char answer_of(uint32_t code, const Answers &answers) {
    if (code == k_key_enter) {
        return answers.enter;
    }
    if (code == k_key_escape || code == ctrl('c') || code == k_key_hung_up) {
        return answers.escape;
    }
    const uint32_t lower = code >= 'A' && code <= 'Z' ? code + 32 : code;
    const bool known =
        lower > 0 && lower < 0x80 && strchr(answers.letters, static_cast<int>(lower)) != nullptr;
    return known ? static_cast<char>(lower) : char{0};
}

}  // namespace

char ask_letter(const std::string &question, const Answers &answers) {
    char answer = 0;
    while (answer == 0) {
        answer = answer_of(ask_key(question + " ").code, answers);
    }
    screen_question("");
    return answer;
}

bool ask_line(const std::string &label, std::string *typed) {
    for (;;) {
        const uint32_t code = ask_key(label + *typed).code;
        const bool escaped = code == k_key_escape || code == ctrl('c') || code == k_key_hung_up;
        if (escaped || code == k_key_enter) {
            screen_question("");
            return !escaped;
        }
        type_key(typed, code);
    }
}

bool type_key(std::string *typed, uint32_t code) {
    if (code == k_key_backspace) {
        take_back_character(typed);
    } else if (code == ctrl('u')) {
        typed->clear();
    } else if (code >= 0x20 && code < k_key_up && code != 0x7F) {
        append_character(typed, code);
    } else {
        return false;
    }
    return true;
}
