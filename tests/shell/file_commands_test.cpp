// The File menu, with the system's own file dialogs.
#include "desktop/frame.h"
#include "shell/panes/styles.h"
#include "tests/shell/shell_test.h"

#include <dlgs.h>

namespace {

struct FileCommands : ShellTest {
    static void answer_file(const char *title, const wchar_t *name) {
        const fs::path path = fs::absolute(name);  // before the dialog is in another folder
        answer_with(title, [path](HWND dialog) {
            HWND field = GetDlgItem(dialog, cmb13);
            SetWindowTextW(field ? field : GetDlgItem(dialog, edt1), path.c_str());
            press_button(dialog, IDOK);
        });
    }

    static void drop(const fs::path &file) { open_dropped_file(fs::absolute(file).c_str()); }

    bool file_has(const char *text) const {
        return file_bytes(path).find(text) != std::string::npos;
    }
};

TEST_F(FileCommands, SaveAsksForAPathOnceAndKeepsTheDirectory) {
    start();
    show_tab(1);
    type(text_pane(), "Hi");
    fs::create_directory("folder");
    const fs::path directory = fs::current_path();
    answer_file("Save", L"folder\\caf\u00E9");
    EXPECT_EQ(after(CMD_FILE_SAVE, status_text), "Saved");
    EXPECT_EQ(text_of(main_window()), "Quorvane - caf\xC3\xA9");
    EXPECT_EQ(fs::current_path(), directory);
    EXPECT_FALSE(web_changed());
    type(text_pane(), "!");
    command(CMD_FILE_SAVE);
    EXPECT_NE(file_bytes(L"folder\\caf\u00E9.qvx").find("<text>Hi!</text>"), std::string::npos);
}

TEST_F(FileCommands, SavingAsAnotherFileThatIsThereAsksFirst) {
    start(web_of("Hi"));
    write_file("other.qvx", "theirs");
    answer_file("Save As", L"other.qvx");
    answer("already exists", IDNO);
    answer("Save As", IDCANCEL);
    command(CMD_FILE_SAVE_AS);
    EXPECT_EQ(file_bytes("other.qvx"), "theirs");
}

TEST_F(FileCommands, OpenShowsTheOtherWeb) {
    start(web_of("Hi", cell_of("plan")));
    command(CMD_CELL_NEXT);
    show_tab(1);
    sci_text(console_pane(), SCI_SETTEXT, 0, "old output");
    write_file("other.qvx", web_of("other home"));
    answer_with("Open", [](HWND dialog) {
        HWND box = GetDlgItem(dialog, chx1);
        EXPECT_TRUE(box == nullptr || !IsWindowVisible(box))
            << "no file is opened for reading only";
        press_button(dialog, IDCANCEL);
    });
    EXPECT_EQ(after(CMD_FILE_OPEN, current_view), k_view_text);
    answer_file("Open", L"other.qvx");
    command(CMD_FILE_OPEN);
    EXPECT_EQ(text_of(main_window()), "Quorvane - other");
    EXPECT_EQ(item_count(), 1);
    EXPECT_EQ(words() + "|" + pane_text(console_pane()), "other home|");
    EXPECT_EQ(current_view(), k_view_list);
    EXPECT_TRUE(has_focus(pane_window(k_pane_list)));
    EXPECT_EQ(after(CMD_BACK, current_name), "home");
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
    EXPECT_EQ(after(CMD_FILE_NEW, words), "");
    EXPECT_EQ(sci(text_pane(), SCI_CANUNDO), 0);
    EXPECT_EQ(sci(text_pane(), SCI_GETZOOM), 0);
    EXPECT_EQ(sci(text_pane(), SCI_STYLEGETFORE, 2), RGB(197, 18, 27));
    EXPECT_EQ(sci(console_pane(), SCI_STYLEGETSIZE, 0), 9);
    EXPECT_EQ(current_view(), k_view_list);
}

TEST_F(FileCommands, DroppedFileIsOpenedWhole) {
    start(web_of("Hi"));
    const std::string name = std::string(120, 'n') + ".qvx";
    write_file(name, web_of("dropped"));
    drop(name);
    drop(std::string(300, 'n') + ".qvx");
    EXPECT_EQ(status_text() + words(), "UNABLE TO OPEN WEB FILEdropped");
}

// Killed between the two steps in which this system replaces a file.
TEST_F(FileCommands, AMissingFileIsTakenFromTheSaveThatWasCutOff) {
    start();
    const std::string web = web_of("rescued");
    for (const bool whole : {true, false}) {
        fs::remove("cut.qvx");
        write_file("cut.qvx-new", whole ? web : web.substr(0, web.size() - 9));
        drop("cut.qvx");
        EXPECT_EQ(words(), "rescued");
        EXPECT_EQ(status_text(), whole ? "Ready" : "UNABLE TO OPEN WEB FILE");
        EXPECT_NE(fs::exists("cut.qvx-new"), whole);
        command(CMD_FILE_SAVE);
    }
    EXPECT_EQ(stored_text("home"), "rescued");
    EXPECT_FALSE(fs::exists("cut.qvx-new")) << "swept by the save";
}

TEST_F(FileCommands, AReadOnlyFileAndAHardLinkStayWhatTheyAre) {
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    const std::string before = file_bytes(path);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(after(CMD_FILE_SAVE, status_text), "UNABLE TO OPEN WEB FILE");
    EXPECT_EQ(file_bytes(path), before);
    EXPECT_NE(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    command(CMD_FILE_SAVE);
    EXPECT_TRUE(file_has("<text>Oh Hi"));
    ASSERT_TRUE(CreateHardLinkA("other_name", path.c_str(), nullptr));
    type(text_pane(), "again ");
    command(CMD_FILE_SAVE);
    EXPECT_TRUE(file_has("Oh again Hi"));
    EXPECT_EQ(file_bytes("other_name"), file_bytes(path));
}

TEST_F(FileCommands, AsksBeforeSavingOverAnotherProgramsChanges) {
    constexpr const char *k_question = "The file was changed by another program. Save over it?";
    start_in_text(web_of("Hi"));
    type(text_pane(), "Oh ");
    const std::string theirs = web_of("theirs");
    write_file(path, theirs);
    answer_with(k_question, [](HWND box) {
        EXPECT_TRUE(has_focus(GetDlgItem(box, IDNO)));
        press_button(box, IDNO);
    });
    EXPECT_TRUE(after(CMD_FILE_SAVE, web_changed));
    EXPECT_EQ(file_bytes(path), theirs);
    answer("Save current changes in test?", IDYES);
    answer(k_question, IDNO);
    EXPECT_EQ(after(CMD_FILE_NEW, words), "Oh Hi");
    EXPECT_EQ(current_view(), k_view_text);
}

}  // namespace
