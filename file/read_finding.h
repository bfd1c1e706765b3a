// The kinds of what reading a file would lose or change, as the tokenizer tells them to its watch
// and the watch to its observer.
#pragma once

#include <cstdint>

enum class ReadFinding : uint8_t {
    // The text of a note of these is the tag's, entity's or cell's name.
    unknown_tag,
    unended_tag,
    long_tag,  // as of 32 characters; so are entities
    unknown_entity,
    long_entity,
    bad_name,
    long_name,
    line_end_in_name,
    duplicate_name,
    // The tag's name.
    unclosed_element,
    element_before_name,
    field_given_again,
    option_given_again,
    // The text itself.
    text_outside,
    // Nothing.
    no_end_mark,
    nul_byte,
    bytes_after_end,
    // No finding: an option's text, which is in force or not when reading has ended.
    option
};
