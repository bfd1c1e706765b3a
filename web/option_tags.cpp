#include "web/option_tags.h"

#include "core/text.h"
#include "web/options.h"

#include <cstring>

namespace {

struct Word {
    char text[9];  // "": there are no more words
    uint8_t value;
};

using GetByte = uint8_t (*)();
using SetByte = void (*)(uint8_t);
using GetCount = int32_t (*)();
using SetCount = void (*)(int32_t);
using GetNumber = double (*)();
using SetNumber = void (*)(double);
using GetText = const char *(*)();
using SetText = void (*)(const char *);

// An option that is written as one of some words. `written` and `read` differ where an old file's
// word is understood but not kept. `otherwise` is written for a value that has no word.
constexpr uint32_t k_words = 4;
struct WordOption {
    int tag;
    GetByte get;
    SetByte set;
    Word written[k_words];
    Word read[k_words];
    const char *otherwise;
};

constexpr WordOption k_word_options[] = {
    {k_tag_isrc,
     option_isrc,
     set_option_isrc,
     {{"keyboard", 1}, {"cell", 2}, {"file", 3}},
     {{"keyboard", 1}, {"cell", 2}, {"file", 3}},
     ""},
    {k_tag_iecho, option_iecho, set_option_iecho, {{"no", 0}}, {{"yes", 1}, {"no", 0}}, "yes"},
    // A web saved with output to print comes back with output to the screen.
    {k_tag_odest,
     option_odest,
     set_option_odest,
     {{"screen", 1}, {"file", 2}, {"print", 3}},
     {{"print", 1}, {"screen", 1}, {"file", 2}},
     ""},
    {k_tag_onewl,
     option_onewl,
     set_option_onewl,
     {{"lf", 1}, {"cr", 2}, {"crlf", 3}},
     {{"lf", 1}, {"crlf", 3}, {"cr", 2}},
     ""},
    {k_tag_cdisp,
     option_cdisp,
     set_option_cdisp,
     {{"list", 1}, {"fmtlist", 2}, {"nolist", 3}},
     {{"list", 1}, {"fmtlist", 2}, {"nolist", 3}},
     ""},
    {k_tag_rtype,
     option_rtype,
     set_option_rtype,
     {{"fmt", 1}, {"inptr", 2}, {"outptr", 3}, {"trail", 4}},
     {{"fmt", 1}, {"inptr", 2}, {"outptr", 3}, {"trail", 4}},
     ""},
    {k_tag_rall, option_rall, set_option_rall, {{"no", 0}}, {{"yes", 1}, {"no", 0}}, "yes"},
    {k_tag_sout, option_sout, set_option_sout, {{"no", 0}}, {{"yes", 1}, {"no", 0}}, "yes"},
    {k_tag_nfmt,
     option_nfmt,
     set_option_nfmt,
     {{"fixed", 0}, {"exponent", 1}, {"general", 2}},
     {{"general", 2}, {"fixed", 0}, {"exponent", 1}},
     ""},
    {k_tag_nang,
     option_nang,
     set_option_nang,
     {{"degrees", 1}},
     {{"degrees", 1}, {"radians", 2}},
     "radians"},
    // Reading never turns plotting off.
    {k_tag_pltng, option_pltng, set_option_pltng, {{"off", 0}}, {{"on", 1}, {"off", 1}}, "on"},
};

// Counts: a smaller number than `least` is raised to it, a larger one than `most` cut.
struct CountOption {
    int tag;
    GetCount get;
    SetCount set;
    int32_t least;
    int32_t most;
};

// The one-byte counts keep the low eight bits.
template <GetByte get> int32_t widen() {
    return get();
}
template <SetByte set> void narrow(int32_t value) {
    set(static_cast<uint8_t>(value));
}

constexpr CountOption k_count_options[] = {
    {k_tag_citer, option_citer, set_option_citer, 1, INT16_MAX},
    {k_tag_scount, option_scount, set_option_scount, 1, INT16_MAX},
    {k_tag_ndec, widen<option_ndec>, narrow<set_option_ndec>, 0, k_decimals_max},
    {k_tag_xintrvls, widen<option_xintrvls>, narrow<set_option_xintrvls>, 1, INT16_MAX},
    {k_tag_yintrvls, widen<option_yintrvls>, narrow<set_option_yintrvls>, 1, INT16_MAX},
};

struct NumberOption {
    int tag;
    GetNumber get;
    SetNumber set;
};

constexpr NumberOption k_number_options[] = {
    {k_tag_xmax, option_xmax, set_option_xmax},
    {k_tag_xmin, option_xmin, set_option_xmin},
    {k_tag_ymax, option_ymax, set_option_ymax},
    {k_tag_ymin, option_ymin, set_option_ymin},
};

struct TextOption {
    int tag;
    GetText get;
    SetText set;
};

constexpr TextOption k_text_options[] = {
    {k_tag_iname, option_iname, set_option_iname},
    {k_tag_oname, option_oname, set_option_oname},
    {k_tag_cfmt, option_cfmt, set_option_cfmt},
    {k_tag_rfmt, option_rfmt, set_option_rfmt},
    {k_tag_starg, option_starg, set_option_starg},
    {k_tag_srpl, option_srpl, set_option_srpl},
    {k_tag_xycells, option_xycells, set_option_xycells},
};

constexpr int k_written_order[] = {
    k_tag_isrc,     k_tag_iname,    k_tag_iecho,   k_tag_odest, k_tag_oname, k_tag_onewl,
    k_tag_cfmt,     k_tag_citer,    k_tag_cdisp,   k_tag_rtype, k_tag_rfmt,  k_tag_rall,
    k_tag_starg,    k_tag_srpl,     k_tag_scount,  k_tag_sout,  k_tag_nfmt,  k_tag_ndec,
    k_tag_nang,     k_tag_pltng,    k_tag_xmax,    k_tag_xmin,  k_tag_ymax,  k_tag_ymin,
    k_tag_xintrvls, k_tag_yintrvls, k_tag_xycells,
};

constexpr uint32_t k_element_text_max = 4095;

static struct OptionTags {
    char text[k_element_text_max + 1];  // an element's text, or a count as it is written
} tags;

template <typename Row, uint32_t n> const Row *find_row(const Row (&rows)[n], int tag) {
    for (const Row &row : rows) {
        if (row.tag == tag) {
            return &row;
        }
    }
    return nullptr;
}

const char *word_of(const WordOption *option) {
    for (const Word &word : option->written) {
        if (word.text[0] != 0 && word.value == option->get()) {
            return word.text;
        }
    }
    return option->otherwise;
}

// The unsigned 16-bit value, in decimal.
const char *count_text(int32_t count) {
    uint32_t rest = static_cast<uint16_t>(count);
    char *p = tags.text + 8;
    *p = 0;
    do {
        *--p = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    return p;
}

void apply_word(const WordOption *option, BlockHandle text) {
    for (const Word &word : option->read) {
        if (word.text[0] != 0 && text_compare_cstring(text, word.text) == 0) {
            option->set(word.value);
            return;
        }
    }
}

void apply_count(const CountOption *option, const char *text) {
    int16_t count;
    if (int16_parse(text, &count) == 0) {
        option->set(count < option->least  ? option->least
                    : count > option->most ? option->most
                                           : count);
    }
}

void apply_number(const NumberOption *option, const char *text) {
    double number;
    number_parse(text, &number);
    option->set(number);
}

}  // namespace

uint32_t option_tag_count() {
    return sizeof k_written_order / sizeof k_written_order[0];
}

int option_tag_at(uint32_t i) {
    return k_written_order[i];
}

const char *option_value_text(int tag) {
    if (const WordOption *word = find_row(k_word_options, tag)) {
        return word_of(word);
    }
    if (const CountOption *count = find_row(k_count_options, tag)) {
        return count_text(count->get());
    }
    if (const NumberOption *number = find_row(k_number_options, tag)) {
        return option_number_text(number->get());
    }
    const TextOption *text = find_row(k_text_options, tag);
    return text != nullptr ? text->get() : "";
}

void option_apply_text(int tag, BlockHandle text) {
    if (const WordOption *word = find_row(k_word_options, tag)) {
        apply_word(word, text);
        return;
    }
    text_copy_out(tags.text, text, k_element_text_max);
    if (const CountOption *count = find_row(k_count_options, tag)) {
        apply_count(count, tags.text);
    } else if (const NumberOption *number = find_row(k_number_options, tag)) {
        apply_number(number, tags.text);
    } else if (const TextOption *option = find_row(k_text_options, tag)) {
        option->set(tags.text);
    }
}
