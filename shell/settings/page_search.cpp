// What find and replace start from.
#include "shell/settings/page.h"

#include "resources/resource.h"

namespace {

const SettingRow k_checks[] = {
    {CTL_SEARCH_CASE, k_option_search_case},
};

const SettingRow k_texts[] = {
    {CTL_SEARCH_TEXT, k_option_starg},
    {CTL_REPLACE_TEXT, k_option_srpl},
};

}  // namespace

const SettingsPage k_search_page = {
    .name = L"SEARCHPAGE",
    .checks = k_checks,
    .texts = k_texts,
};
