// page.css and page.js, which the build makes into a source (embed_page.py), and their digests as a
// Content-Security-Policy spells them.
#pragma once

#include <string_view>

extern const std::string_view k_page_style;
extern const std::string_view k_page_style_digest;
extern const std::string_view k_page_script;
extern const std::string_view k_page_script_digest;
