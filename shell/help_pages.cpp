#include "shell/help_pages.h"

#include "core/busy.h"
#include "platform/windows/text_conversion.h"
#include "report/output.h"
#include "resources/resource.h"
#include "shell/base/handles.h"
#include "shell/panes/scintilla.h"
#include "shell/views.h"
#include "web/options.h"

#include <cstdint>

namespace {

constexpr uint32_t k_page_strings = 12;

struct Page {
    HelpPage page;
    uint8_t strings[k_page_strings];  // in order; 0 ends them
};

constexpr Page k_pages[] = {
    {k_help_overview,
     {STR_HELP_PROGRAM, STR_HELP_CELL, STR_HELP_NAME, STR_HELP_UNIQUE, STR_HELP_TEXT,
      STR_HELP_PANES, STR_HELP_CELL_LIST, STR_HELP_CONSOLE, STR_HELP_LINKS, STR_HELP_DOUBLE_CLICK,
      STR_HELP_REPORTS, STR_HELP_SETTINGS}},
    {k_help_report_format,
     {STR_HELP_FORMAT, STR_HELP_SUBSTITUTION, STR_HELP_SEQUENCES, STR_HELP_SEQUENCE_NEWLINE,
      STR_HELP_SEQUENCE_TEXT, STR_HELP_SEQUENCE_NAME, STR_HELP_SEQUENCE_OTHER}},
    {k_help_more, {STR_HELP_WRITE_TO, STR_HELP_CONTACT, STR_HELP_READ_AT, STR_HELP_SITE}},
};

ErrorCode write_string(UINT id) {
    wchar_t text[k_conversion_units];
    LoadStringW(program_instance(), id, text, static_cast<int>(k_conversion_units));
    return output_string(to_8bit(text));
}

void write_page(const Page &page) {
    ErrorCode code = 0;
    for (uint32_t i = 0; i < k_page_strings && page.strings[i] != 0 && code == 0; ++i) {
        code = write_string(page.strings[i]);
    }
    output_close();
}

}  // namespace

// The console gets the page whatever destination the reports have.
void show_help_page(HelpPage page) {
    if (refused_while_busy()) {
        return;
    }
    const uint8_t destination = option_odest();
    set_option_odest(k_output_console);
    output_clear_stop();
    for (const Page &candidate : k_pages) {
        if (candidate.page == page) {
            write_page(candidate);
        }
    }
    output_clear_stop();
    set_option_odest(destination);
    sci(console_pane(), SCI_GOTOPOS, 0);
    show_console();
}
