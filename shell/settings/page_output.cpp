// Where reports go.
#include "shell/settings/page.h"

#include "resources/resource.h"

namespace {

const SettingRow k_choices[] = {
    {CTL_OUTPUT_CONSOLE, k_option_odest, k_output_console},
    {CTL_OUTPUT_CONSOLE, k_option_odest, k_output_print},  // that is where it goes
    {CTL_OUTPUT_FILE, k_option_odest, k_output_file},
    {CTL_OUTPUT_LF, k_option_onewl, k_newline_lf},
    {CTL_OUTPUT_CR, k_option_onewl, k_newline_cr},
    {CTL_OUTPUT_CRLF, k_option_onewl, k_newline_crlf},
};

const SettingRow k_texts[] = {
    {CTL_OUTPUT_NAME, k_option_oname},
};

}  // namespace

const SettingsPage k_output_page = {
    .name = L"OUTPUTPAGE",
    .choices = k_choices,
    .texts = k_texts,
    .forbidden = L"*?\"<>|\n\t",
};
