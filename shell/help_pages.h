// The help pages: texts from the string table, written to the console pane.
#pragma once

enum HelpPage : int {
    k_help_overview = 1,
    k_help_report_format = 2,
    k_help_more = 6,
};

// Writes a page to the console and shows it from its top. Refused while output is under way.
void show_help_page(HelpPage page);
