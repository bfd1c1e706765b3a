#include "shell/settings/settings.h"

#include "platform/windows/text_conversion.h"

#include <cwchar>

bool text_allowed(const wchar_t *text, uint32_t capacity, const wchar_t *forbidden) {
    return utf8_size(text) <= capacity && wcscspn(text, forbidden) == wcslen(text);
}

bool number_allowed(const wchar_t *text, int32_t least, int32_t most, int32_t *value) {
    while (*text == ' ') {
        ++text;
    }
    const wchar_t *first = text;
    int32_t number = 0;
    while (*text >= '0' && *text <= '9' && number <= most) {
        number = number * 10 + (*text++ - '0');
    }
    const bool any = text != first;
    while (*text == ' ') {
        ++text;
    }
    if (!any || *text != 0 || number < least || number > most) {
        return false;
    }
    *value = number;
    return true;
}
