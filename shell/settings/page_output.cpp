// Where reports go.
#include "shell/settings/page.h"

#include "resources/resource.h"

namespace {

const ChoiceRow k_choices[] = {
    {CTL_OUTPUT_CONSOLE, offsetof(Settings, odest), k_output_console},
    {CTL_OUTPUT_FILE, offsetof(Settings, odest), k_output_file},
    {CTL_OUTPUT_LF, offsetof(Settings, onewl), k_newline_lf},
    {CTL_OUTPUT_CR, offsetof(Settings, onewl), k_newline_cr},
    {CTL_OUTPUT_CRLF, offsetof(Settings, onewl), k_newline_crlf},
};

const TextRow k_texts[] = {
    {CTL_OUTPUT_NAME, offsetof(Settings, oname), k_oname_max, L"*?\"<>|\n\t",
     L"A file name has at most 48 characters and none of * ? \" < > |. Letters with accents count "
     L"as two or three."},
};

}  // namespace

const SettingsPage k_output_page = {
    .name = L"OUTPUTPAGE",
    .choices = k_choices,
    .texts = k_texts,
};
