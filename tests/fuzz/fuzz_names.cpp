// Any two strings as names, texts and numbers, against naive models.
//
// The input: a byte each for number kind and digits; two strings, each ended by a zero.
#include "tests/fuzz/fuzz_target.h"

#include "tests/engine/report_model.h"

#include "core/names.h"
#include "core/numbers.h"
#include "core/text.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

int sign(int n) {
    return (n > 0) - (n < 0);
}

void check_names(const std::string &s) {
    size_t first = 0;
    while (first < s.size() && !model_letter(s[first])) {
        ++first;
    }
    std::string buffer = s;
    cellname_normalise(buffer.data());
    require(buffer.c_str() == s.substr(first, k_cellname_max), "a name is normalised wrongly");
    require(cellname_valid(s.c_str()) == (!s.empty() && model_letter(s[0])),
            "a name is judged wrongly");
}

void check_texts(const std::string &a, const std::string &b) {
    BlockHandle x = text_from_cstring(a.c_str());
    BlockHandle y = text_from_cstring(b.c_str());
    // char_traits compare bytes as unsigned: 0x80 and above last.
    const int order = sign(model_fold(a).compare(model_fold(b)));
    require(sign(text_compare(x, y)) == order, "two texts compare wrongly");
    require(sign(text_compare(y, x)) == -order, "two texts compare wrongly the other way");
    require(sign(text_compare_cstring(x, b.c_str())) == order, "a text and a string");
    BlockHandle copy = text_duplicate(x);
    require(a.empty() ? copy == 0 : text_equals_cstring(copy, a.c_str()), "a copy differs");
    require(text_equals_cstring(x, b.c_str()) == (a == b), "equality");
    chain_free(copy);
    chain_free(y);
    chain_free(x);
}

// strtod() without infinity, NaN, hexadecimal and infinite results.
double model_number(const std::string &s) {
    const size_t start = s.find_first_not_of(" \t\n\v\f\r");
    if (start == std::string::npos) {
        return 0;
    }
    const size_t end = s.find_first_not_of("0123456789+-.eE", start);
    const double value = strtod(s.substr(start, end - start).c_str(), nullptr);
    return std::isinf(value) ? std::copysign(DBL_MAX, value) : value;
}

void check_numbers(const std::string &s, uint8_t kind, uint8_t digits) {
    double value = 1;
    require(number_parse(s.c_str(), &value) == 0, "a number is refused");
    require(value == model_number(s), "a number reads wrongly");
    int16_t integer = 77;
    const long wide = strtol(s.c_str(), nullptr, 10);
    const bool fits = wide >= INT16_MIN && wide <= INT16_MAX;
    require(int16_parse(s.c_str(), &integer) == (fits ? 0 : -1), "an integer is judged wrongly");
    require(integer == (fits ? wide : 77), "an integer reads wrongly");

    char buffer[k_number_text_max + 1] = {0};
    const NumberFormat format = {kind, digits, 24, '.'};
    require(number_format(buffer, value, &format) == strlen(buffer), "a wrong length");
    const std::string expected = model_number_text(value, kind, digits);
    require(buffer == expected, "a number is written wrongly");
}

}  // namespace

const size_t k_longest_input = 4000;

void run_target(FuzzInput input) {
    const uint8_t kind = next_byte(&input) % 3;
    const uint8_t digits = next_byte(&input) % 19;
    const std::string s = next_string(&input);
    check_names(s);
    check_texts(s, next_string(&input));
    check_numbers(s, kind, digits);
}
