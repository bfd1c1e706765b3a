// A page of the settings sheet as data: which control stands for which field of the draft, and what
// the user may enter.
//
// Fields are offsets into Settings. A page fills its controls when it is first shown and takes them
// back whenever it is left. A text that still stands as it was shown keeps its bytes, whether they
// can be shown or not.
#pragma once

#include "shell/platform.h"
#include "shell/settings/settings.h"

#include <cstddef>
#include <span>

// A radio button: marked when the byte has this value.
struct ChoiceRow {
    int control;
    size_t field;
    uint8_t value;
};

// A check box for a flag.
struct CheckRow {
    int control;
    size_t field;
};

struct TextRow {
    int control;
    size_t field;
    uint32_t capacity;         // bytes
    const wchar_t *forbidden;  // characters
    const wchar_t *allowed;    // told when the entry is refused
};

struct NumberRow {
    int control;
    size_t field;
    int32_t least;
    int32_t most;
    const wchar_t *allowed;
};

struct SettingsPage {
    const wchar_t *name;  // of the template
    std::span<const ChoiceRow> choices = {};
    std::span<const CheckRow> checks = {};
    std::span<const TextRow> texts = {};
    std::span<const NumberRow> numbers = {};
    // Prepares what the tables do not cover; may be null.
    void (*prepare)(HWND page) = nullptr;
    // Answers a message that the tables do not cover; may be null.
    INT_PTR (*handle)(HWND page, UINT message, WPARAM wparam, LPARAM lparam) = nullptr;
};

// An entry that is not allowed.
struct Refusal {
    int control;
    const wchar_t *allowed;
};

void page_fill(const SettingsPage *page, HWND window, const Settings *draft);

// Takes the controls into the draft. False at the first entry that is not allowed; the draft then
// keeps what it had for it and for what follows it.
bool page_take(const SettingsPage *page, HWND window, Settings *draft, Refusal *refusal);

// Tells the user what the entry may be, in a box over `owner`, and goes to it.
void page_refuse(HWND owner, HWND window, const Refusal *refusal);

// The pages in the order of their tabs.
extern const SettingsPage k_report_page;
extern const SettingsPage k_output_page;
extern const SettingsPage k_links_page;
extern const SettingsPage k_numbers_page;
extern const SettingsPage k_pane_page;
extern const SettingsPage k_search_page;
