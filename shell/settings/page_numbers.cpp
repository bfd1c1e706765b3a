// How numbers are written.
#include "shell/settings/page.h"

#include "core/numbers.h"
#include "resources/resource.h"

namespace {

const ChoiceRow k_choices[] = {
    {CTL_NUMBERS_FIXED, offsetof(Settings, nfmt), k_number_fixed},
    {CTL_NUMBERS_EXPONENT, offsetof(Settings, nfmt), k_number_exponent},
    {CTL_NUMBERS_GENERAL, offsetof(Settings, nfmt), k_number_general},
    {CTL_NUMBERS_DEGREES, offsetof(Settings, nang), k_angle_degrees},
    {CTL_NUMBERS_RADIANS, offsetof(Settings, nang), k_angle_radians},
};

const NumberRow k_numbers[] = {
    {CTL_NUMBERS_DIGITS, offsetof(Settings, ndec), 0, k_decimals_max,
     L"The digits are a whole number from 0 to 8."},
};

}  // namespace

const SettingsPage k_numbers_page = {
    .name = L"NUMBERSPAGE",
    .choices = k_choices,
    .numbers = k_numbers,
};
