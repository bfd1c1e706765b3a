// How numbers are written.
#include "shell/settings/page.h"

#include "core/numbers.h"
#include "resources/resource.h"

namespace {

const SettingRow k_choices[] = {
    {CTL_NUMBERS_FIXED, k_option_nfmt, k_number_fixed},
    {CTL_NUMBERS_EXPONENT, k_option_nfmt, k_number_exponent},
    {CTL_NUMBERS_GENERAL, k_option_nfmt, k_number_general},
    {CTL_NUMBERS_DEGREES, k_option_nang, k_angle_degrees},
    {CTL_NUMBERS_RADIANS, k_option_nang, k_angle_radians},
};

const SettingRow k_numbers[] = {
    {CTL_NUMBERS_DIGITS, k_option_ndec},
};

}  // namespace

const SettingsPage k_numbers_page = {
    .name = L"NUMBERSPAGE",
    .choices = k_choices,
    .numbers = k_numbers,
};
