#include "web/words.h"

#include "core/names.h"

static struct Words { CharClass classes[256]; } words;

void char_classes_init() {
    for (int c = 0; c < 256; ++c) {
        const char ch = static_cast<char>(c);
        words.classes[c] = is_letter(ch)  ? k_class_letter
                           : is_digit(ch) ? k_class_digit
                                          : k_class_other;
    }
    words.classes[0] = k_class_end;
    words.classes[static_cast<uint8_t>('\'')] = k_class_quote;
    words.classes[static_cast<uint8_t>('"')] = k_class_quote;
    words.classes[static_cast<uint8_t>('_')] = k_class_underscore;
    words.classes[static_cast<uint8_t>('.')] = k_class_dot;
}

CharClass char_class(char ch) {
    return words.classes[static_cast<uint8_t>(ch)];
}

const char *next_word(const char **position, uint32_t *length) {
    const char *p = *position;
    while (char_class(*p) != k_class_letter) {
        if (char_class(*p) == k_class_end) {
            *position = p;
            return nullptr;
        }
        ++p;
    }
    const char *start = p;
    for (CharClass c = k_class_letter;
         c == k_class_letter || c == k_class_digit || c == k_class_underscore; c = char_class(*p)) {
        ++p;
    }
    *position = p;
    *length = static_cast<uint32_t>(p - start);
    return start;
}
