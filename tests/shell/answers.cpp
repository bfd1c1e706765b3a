#include "tests/shell/answers.h"

#include "platform/windows/text_conversion.h"

#include <deque>
#include <utility>

namespace {

struct Answer {
    std::string text;
    std::function<void(HWND)> act;
};

std::deque<Answer> answers;
std::string unexpected;
std::string standing_text;  // "": there is no standing answer
int standing_button;
UINT_PTR timer;
HWND answered;  // it may take a while to go

std::string texts_of(HWND dialog) {
    wchar_t text[512];
    GetWindowTextW(dialog, text, 512);
    std::string all = to_8bit(text);
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        GetWindowTextW(child, text, 512);
        all += std::string("|") + to_8bit(text);
    }
    return all;
}

BOOL CALLBACK find_dialog(HWND window, LPARAM found) {
    const bool is_one =
        class_of(window) == L"#32770" && IsWindowVisible(window) && IsWindowEnabled(window);
    *reinterpret_cast<HWND *>(found) = is_one ? window : nullptr;
    return !is_one;
}

// The box that appears when output takes long goes by itself.
bool is_cancel_box(const std::string &texts) {
    return texts.find("Cancel Printing") != std::string::npos;
}

// Runs from the dialog's own message loop.
void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
    if (!IsWindow(answered)) {
        answered = nullptr;
    }
    HWND dialog = open_dialog();
    if (!dialog || dialog == answered) {
        return;
    }
    const std::string texts = texts_of(dialog);
    if (is_cancel_box(texts) && (answers.empty() || !is_cancel_box(answers.front().text))) {
        return;
    }
    answered = dialog;
    if (!standing_text.empty() && texts.find(standing_text) != std::string::npos) {
        press_button(dialog, standing_button);
    } else if (answers.empty() || texts.find(answers.front().text) == std::string::npos) {
        unexpected += texts + "\n";
        press_button(dialog, GetDlgItem(dialog, IDCANCEL) ? IDCANCEL : IDOK);
    } else {
        const auto act = std::exchange(answers.front().act, nullptr);
        answers.pop_front();
        act(dialog);
    }
}

}  // namespace

void answer(const std::string &text, int button) {
    answer_with(text, [button](HWND dialog) { press_button(dialog, button); });
}

void answer_with(const std::string &text, std::function<void(HWND)> act) {
    answers.push_back({text, std::move(act)});
}

void answer_always(const std::string &text, int button) {
    standing_text = text;
    standing_button = button;
}

bool all_asked() {
    return std::exchange(answers, {}).empty();
}

void press_button(HWND dialog, int button) {
    HWND control = GetDlgItem(dialog, button);
    PostMessageW(control ? control : dialog, control ? BM_CLICK : WM_COMMAND,
                 control ? 0 : static_cast<WPARAM>(button), 0);
}

std::string unexpected_dialogs() {
    return std::exchange(unexpected, "");
}

void answers_begin() {
    answers.clear();
    unexpected.clear();
    standing_text.clear();
    answered = nullptr;
    timer = SetTimer(nullptr, 0, 10, look);
}

void answers_end() {
    KillTimer(nullptr, timer);
}

HWND open_dialog() {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), find_dialog, reinterpret_cast<LPARAM>(&dialog));
    return dialog;
}

std::vector<HWND> controls_of(HWND window) {
    std::vector<HWND> controls;
    const auto add = [](HWND control, LPARAM list) -> BOOL {
        reinterpret_cast<std::vector<HWND> *>(list)->push_back(control);
        return TRUE;
    };
    EnumChildWindows(window, add, reinterpret_cast<LPARAM>(&controls));
    return controls;
}

std::wstring class_of(HWND window) {
    wchar_t name[32] = L"";
    GetClassNameW(window, name, 32);
    return name;
}
