#include "cli/links/pattern.h"

#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "core/names.h"
#include "core/text.h"

#include <algorithm>
#include <string>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

// Stands for the whole run.
static struct Pattern {
    pcre2_code *code;
    pcre2_match_data *found;
    pcre2_match_context *limits;
} pattern;

namespace {

// Steps that one line may take, a tenth of a second, and the memory for them in KiB.
constexpr uint32_t k_steps_max = 1000000;
constexpr uint32_t k_memory_max = 65536;

constexpr uint32_t k_unicode =
    PCRE2_UTF | PCRE2_UCP | PCRE2_MATCH_INVALID_UTF | PCRE2_NEVER_BACKSLASH_C;

// What has a meaning in an expression loses it. In names '_' is a blank.
std::string literal(const CommandLine &line) {
    std::string whole;
    for (const char ch : line.wanted) {
        const bool blank = ch == ' ' || ch == '_';
        const bool plain = is_letter(ch) || is_digit(ch) || static_cast<signed char>(ch) < 0;
        whole += line.in_names && blank ? std::string("[ _]")
                 : plain                ? std::string(1, ch)
                                        : std::string("\\") + ch;
    }
    return line.whole_words ? "(?<!\\w)" + whole + "(?!\\w)" : whole;
}

// A text of plain characters is the same bytes in any coding, which then need no look at first.
bool needs_unicode(const CommandLine &line) {
    return line.expression || line.whole_words ||
           std::any_of(line.wanted.begin(), line.wanted.end(),
                       [](char ch) { return static_cast<signed char>(ch) < 0; });
}

// A pattern that is no UTF-8 itself is one of bytes.
pcre2_code *compiled(const std::string &source, uint32_t options, pcre2_compile_context *context,
                     int *error, size_t *at) {
    const auto *bytes = reinterpret_cast<PCRE2_SPTR>(source.data());
    pcre2_code *code = pcre2_compile(bytes, source.size(), options, error, at, context);
    const bool bad_utf =
        code == nullptr && *error <= PCRE2_ERROR_UTF8_ERR1 && *error >= PCRE2_ERROR_UTF8_ERR21;
    return bad_utf ? pcre2_compile(bytes, source.size(), options & ~k_unicode, error, at, context)
                   : code;
}

int say_error(int error, size_t at) {
    PCRE2_UCHAR message[128];
    pcre2_get_error_message(error, message, sizeof message);
    host_message(("the expression is wrong at character " + std::to_string(at + 1) + ": " +
                  reinterpret_cast<const char *>(message))
                     .c_str());
    return k_exit_failed;
}

// The next character's beginning.
size_t step(std::string_view line, size_t at) {
    do {
        ++at;
    } while (at < line.size() && (static_cast<uint8_t>(line[at]) & 0xC0) == 0x80);
    return at;
}

void prepare_matching() {
    pattern.found = pcre2_match_data_create(1, nullptr);
    pattern.limits = pcre2_match_context_create(nullptr);
    pcre2_set_match_limit(pattern.limits, k_steps_max);
    pcre2_set_heap_limit(pattern.limits, k_memory_max);
}

}  // namespace

int pattern_compile(const CommandLine &line) {
    if (line.wanted.find_first_of("\r\n") != std::string::npos) {
        host_message("a line end never stands within a line");
        return k_exit_failed;
    }
    pcre2_compile_context *context = pcre2_compile_context_create(nullptr);
    pcre2_set_newline(context, PCRE2_NEWLINE_CRLF);
    if (line.whole_words && line.expression) {
        pcre2_set_compile_extra_options(context, PCRE2_EXTRA_MATCH_WORD);
    }
    int error = 0;
    size_t at = 0;
    const uint32_t options =
        (needs_unicode(line) ? k_unicode : 0) | (line.match_case ? 0 : PCRE2_CASELESS);
    pattern.code =
        compiled(line.expression ? line.wanted : literal(line), options, context, &error, &at);
    pcre2_compile_context_free(context);
    if (pattern.code == nullptr) {
        return say_error(error, at);
    }
    prepare_matching();
    return k_exit_done;
}

Matched pattern_find(std::string_view line, size_t from, Span *match) {
    const int result = pcre2_match(pattern.code, reinterpret_cast<PCRE2_SPTR>(line.data()),
                                   line.size(), from, 0, pattern.found, pattern.limits);
    if (result < 0) {
        return result == PCRE2_ERROR_NOMATCH ? Matched::no : Matched::gave_up;
    }
    const size_t *ends = pcre2_get_ovector_pointer(pattern.found);
    *match = {ends[0], ends[1] - ends[0]};
    return Matched::yes;
}

Matched pattern_find_all(std::string_view line, Spans *spans) {
    spans->clear();
    Matched any = Matched::no;
    Span match = {};
    for (size_t from = 0; from <= line.size();) {
        const Matched matched = pattern_find(line, from, &match);
        if (matched != Matched::yes) {
            return matched == Matched::gave_up ? matched : any;
        }
        any = Matched::yes;
        if (match.size > 0) {
            spans->push_back(match);
        }
        const size_t end = match.begin + match.size;
        from = match.size > 0 ? end : step(line, end);
    }
    return any;
}
