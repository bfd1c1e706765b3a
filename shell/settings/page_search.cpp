// What find and replace start from.
#include "shell/settings/page.h"

#include "resources/resource.h"

namespace {

const CheckRow k_checks[] = {
    {CTL_SEARCH_CASE, offsetof(Settings, search_case)},
};

const TextRow k_texts[] = {
    {CTL_SEARCH_TEXT, offsetof(Settings, starg), k_search_max, L"",
     L"The text to search for has at most 48 characters. Letters with accents count as two or "
     L"three."},
    {CTL_REPLACE_TEXT, offsetof(Settings, srpl), k_search_max, L"",
     L"The replacement has at most 48 characters. Letters with accents count as two or three."},
};

}  // namespace

const SettingsPage k_search_page = {
    .name = L"SEARCHPAGE",
    .checks = k_checks,
    .texts = k_texts,
};
