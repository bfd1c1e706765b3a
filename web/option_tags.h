// How each option is spelled in a web file: its tag and, for enumerated ones, its words.
#pragma once

#include "core/block_arena.h"

#include <cstdint>

// Indexes of the web file's tags. The order is that of the tag table (file/web_tags.h).
enum WebTag : int {
    k_tag_eof = 0,
    k_tag_cell,
    k_tag_cname,
    k_tag_text,
    k_tag_val,
    k_tag_form,
    k_tag_script,
    k_tag_opts,
    k_tag_odest,
    k_tag_oname,
    k_tag_onewl,
    k_tag_isrc,
    k_tag_iname,
    k_tag_iecho,
    k_tag_cfmt,
    k_tag_citer,
    k_tag_cdisp,
    k_tag_rtype,
    k_tag_rfmt,
    k_tag_rall,
    k_tag_starg,
    k_tag_srpl,
    k_tag_scount,
    k_tag_sout,
    k_tag_nfmt,
    k_tag_ndec,
    k_tag_nang,
    k_tag_scrfont,
    k_tag_statwin,
    k_tag_pltng,
    k_tag_xmax,
    k_tag_xmin,
    k_tag_ymax,
    k_tag_ymin,
    k_tag_xintrvls,
    k_tag_yintrvls,
    k_tag_xycells,
    k_tag_count
};

// The option tags in the order in which they are written.
uint32_t option_tag_count();
int option_tag_at(uint32_t i);

// The option's value as the web file has it. The string stands until the next call.
const char *option_value_text(int tag);

// Sets the option from an element's text. Words are compared as cellnames are; a word that the
// option does not know, a number outside 16 bits and a tag that is no option change nothing.
void option_apply_text(int tag, BlockHandle text);
