// The File menu, with the system's own file dialogs.
#include "platform/windows/text_conversion.h"
#include "shell/panes/styles.h"
#include "tests/shell/shell_test.h"
#include "web/cell_ops.h"
#include "web/options.h"

#include <dlgs.h>

#include "desktop/frame.h"

namespace {

std::wstring full_path(const wchar_t *name) {
    wchar_t path[MAX_PATH];
    GetFullPathNameW(name, MAX_PATH, path, nullptr);
    return path;
}

void answer_file(const char *title, const std::wstring &path, int button = IDOK) {
    answer_with(title, [path, button](HWND dialog) {
        HWND field =
            GetDlgItem(dialog, cmb13) ? GetDlgItem(dialog, cmb13) : GetDlgItem(dialog, edt1);
        SetWindowTextW(field, path.c_str());
        press_button(dialog, button);
    });
}

std::wstring current_directory() {
    wchar_t path[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, path);
    return path;
}

}  // namespace

struct FileCommands : ShellTest {};

TEST_F(FileCommands, SaveAsksForAPathOnceAndKeepsTheDirectory) {
    start();
    show_tab(1);
    type(text_pane(), "Hi");
    CreateDirectoryW(L"folder", nullptr);
    const std::wstring directory = current_directory();
    answer_file("Save", full_path(L"folder\\caf\u00E9"));
    command(CMD_FILE_SAVE);
    EXPECT_EQ(status_text(), "Saved");
    EXPECT_EQ(text_of(main_window()), "Quorvane - caf\xC3\xA9");
    EXPECT_EQ(current_directory(), directory);
    EXPECT_FALSE(web_changed());
    type(text_pane(), "!");
    command(CMD_FILE_SAVE);
    FILE *file = _wfopen(L"folder\\caf\u00E9.qvx", L"rb");
    ASSERT_TRUE(file);
    fseek(file, 0, SEEK_END);
    EXPECT_GT(ftell(file), 300);
    fclose(file);
    DeleteFileW(L"folder\\caf\u00E9.qvx");
    RemoveDirectoryW(L"folder");
}

TEST_F(FileCommands, OpenShowsTheOtherWeb) {
    start(web_of("Hi", cell_of("plan", "")));
    command(CMD_CELL_NEXT);
    show_tab(1);
    sci_text(console_pane(), SCI_SETTEXT, 0, "old output");
    write_file("other.qvx", web_of("other home"));
    answer_file("Open", full_path(L"other.qvx"));
    command(CMD_FILE_OPEN);
    EXPECT_EQ(text_of(main_window()), "Quorvane - other");
    EXPECT_EQ(item_count(), 1);
    EXPECT_EQ(pane_text(text_pane()), "other home");
    EXPECT_EQ(pane_text(console_pane()), "");
    EXPECT_EQ(current_view(), k_view_list);
    EXPECT_TRUE(has_focus(pane_window(k_pane_list)));
    command(CMD_BACK);
    EXPECT_EQ(current_name(), "home");
    DeleteFileA("other.qvx");
}

TEST_F(FileCommands, CancelledOpenKeepsEverything) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    answer("Save current changes in test?", IDNO);
    answer_file("Open", L"", IDCANCEL);
    command(CMD_FILE_OPEN);
    EXPECT_EQ(pane_text(text_pane()), "Oh Hi");
    EXPECT_EQ(current_view(), k_view_text);
    EXPECT_FALSE(web_changed());
}

TEST_F(FileCommands, NewAsksAboutChangesAndStartsAfresh) {
    start();
    set_option_zoom(6);
    set_option_link_colour(k_link_green);
    set_option_font_size(120);
    apply_pane_styles(text_pane());
    apply_pane_styles(console_pane());
    apply_zoom();
    show_tab(1);
    type(text_pane(), "words");
    answer("Save current changes in (untitled)?", IDNO);
    command(CMD_FILE_NEW);
    EXPECT_EQ(pane_text(text_pane()), "");
    EXPECT_EQ(sci(text_pane(), SCI_CANUNDO), 0);
    EXPECT_EQ(sci(text_pane(), SCI_GETZOOM), 0);
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETFORE, 2), RGB(197, 18, 27));
    EXPECT_EQ(sci(console_pane(), SCI_STYLEGETSIZE, 0), 9);
    EXPECT_EQ(current_view(), k_view_list);
}

TEST_F(FileCommands, DroppedFileIsOpenedWhole) {
    start(web_of("Hi"));
    const std::wstring name = std::wstring(120, L'n') + L".qvx";
    write_file(to_8bit(name.c_str()), web_of("dropped"));
    open_dropped_file(full_path(name.c_str()).c_str());
    EXPECT_EQ(pane_text(text_pane()), "dropped");
    DeleteFileW(name.c_str());
    open_dropped_file((L"C:\\" + std::wstring(300, L'n') + L".qvx").c_str());
    EXPECT_EQ(status_text(), "UNABLE TO OPEN WEB FILE");
    EXPECT_EQ(pane_text(text_pane()), "dropped");
}

// Killed between the two steps in which this system replaces a file.
TEST_F(FileCommands, AMissingFileIsTakenFromTheSaveThatWasCutOff) {
    start();
    const std::string web = web_of("rescued");
    for (const bool whole : {true, false}) {
        DeleteFileA("cut.qvx");
        write_file("cut.qvx-new", whole ? web : web.substr(0, web.size() - 9));
        open_dropped_file(full_path(L"cut.qvx").c_str());
        EXPECT_EQ(pane_text(text_pane()), "rescued");
        EXPECT_EQ(status_text(), whole ? "Ready" : "UNABLE TO OPEN WEB FILE");
        EXPECT_EQ(GetFileAttributesA("cut.qvx-new") == INVALID_FILE_ATTRIBUTES, whole);
        command(CMD_FILE_SAVE);
    }
    EXPECT_EQ(stored_text("home"), "rescued");
    EXPECT_EQ(GetFileAttributesA("cut.qvx-new"), INVALID_FILE_ATTRIBUTES) << "swept by the save";
    DeleteFileA("cut.qvx");
}

TEST_F(FileCommands, AReadOnlyFileAndAHardLinkStayWhatTheyAre) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    const std::string before = file_bytes(path);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    command(CMD_FILE_SAVE);
    EXPECT_EQ(status_text(), "UNABLE TO OPEN WEB FILE");
    EXPECT_EQ(file_bytes(path), before);
    EXPECT_NE(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    command(CMD_FILE_SAVE);
    const std::string after = file_bytes(path);
    EXPECT_NE(after.find("Oh Hi"), std::string::npos);

    ASSERT_TRUE(CreateHardLinkA("other_name", path.c_str(), nullptr));
    type(text_pane(), "again ");
    command(CMD_FILE_SAVE);
    EXPECT_NE(file_bytes(path), after);
    EXPECT_EQ(file_bytes("other_name"), file_bytes(path));
    DeleteFileA("other_name");
}

TEST_F(FileCommands, AsksBeforeSavingOverAnotherProgramsChanges) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    const std::string theirs = web_of("theirs");
    write_file(path, theirs);
    answer_with("The file was changed by another program. Save over it?", [](HWND box) {
        EXPECT_TRUE(has_focus(GetDlgItem(box, IDNO)));
        press_button(box, IDNO);
    });
    command(CMD_FILE_SAVE);
    EXPECT_TRUE(web_changed());
    EXPECT_EQ(file_bytes(path), theirs);
    answer("Save current changes in test?", IDYES);
    answer("The file was changed by another program. Save over it?", IDNO);
    command(CMD_FILE_NEW);
    EXPECT_EQ(pane_text(text_pane()), "Oh Hi");
    EXPECT_EQ(current_view(), k_view_text);
    answer("The file was changed by another program. Save over it?", IDYES);
    command(CMD_FILE_SAVE);
    EXPECT_NE(file_bytes(path).find("Oh Hi"), std::string::npos);
}

TEST_F(FileCommands, OpeningOffersNoReadOnlyBox) {
    start();
    answer_with("Open", [](HWND dialog) {
        HWND box = GetDlgItem(dialog, chx1);
        EXPECT_TRUE(box == nullptr || !IsWindowVisible(box));
        press_button(dialog, IDCANCEL);
    });
    command(CMD_FILE_OPEN);
}
