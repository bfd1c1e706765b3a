// The document: paths and titles, New, Open, Save and Save As in every state, start-up, and the
// ways out when memory runs short.
#include "tests/engine/engine_test.h"

using namespace std::string_literals;
using Document = EngineTest;

namespace {

constexpr const char *k_no_folder = "/no such folder/web.qvx";
constexpr const char *k_save_question = "ask_save_changes Save current changes in ";

constexpr const char *k_untitled = "Quorvane - (Untitled)|||unchanged";

// What the user sees of the document.
std::string document_state() {
    return host().title + "|" + doc_current_path() + "|" + doc_save_path() + "|" +
           (web_changed() ? "changed" : "unchanged");
}

// The caption has ten characters of the name.
std::string saved_as(const std::string &path) {
    const std::string title = std::string(doc_display_name(path.c_str())).substr(0, 10);
    return "Quorvane - " + title + "|" + path + "|" + path + "|unchanged";
}

// Opens a file of one cell, "a".
std::string open_saved_web() {
    std::string path = scratch_path("saved.qvx");
    write_file(path, cell_of("a", "from file") + "</eof>");
    EXPECT_EQ(doc_command_open_path(path.c_str()), 0);
    return path;
}

bool file_has(const std::string &path, const std::string &bytes) {
    return file_bytes(path).find(bytes) != std::string::npos;
}

// A file that takes more blocks than there are.
std::string too_large_web() {
    return cell_of("a", std::string(200000, 'a')) + cell_of("b", std::string(200000, 'b')) +
           "</eof>";
}

}  // namespace

TEST_F(Document, NamesAndTitlesComeFromThePath) {
    const std::string ten = "\xc3\xa9\xc3\xa9\xc3\xa9\xc3\xa9 6789\xc3\xa9";
    const std::string wide = "\xf0\x9f\x8c\xb1\xf0\x9f\x8c\xb1";
    struct {
        std::string path, name, title;
    } rows[] = {
        {"\\Docs\\plan.old.qvx", "plan", "plan"},
        {"C:notes", "notes", "notes"},
        {"", "", "(Untitled)"},
        {ten + "\xc3\xa9.qvx", ten + "\xc3\xa9", ten},
        {wide + "34567890x", wide + "34567890x", wide + "34567890"},
        {"n" + times(60, "\x80"), "n" + times(60, "\x80"), "n" + times(39, "\x80")},
        {"12345678\xff\x80\x80\x80z", "12345678\xff\x80\x80\x80z", "12345678\xff\x80\x80\x80z"},
    };
    for (const auto &row : rows) {
        doc_set_paths(row.path.c_str());
        EXPECT_EQ(doc_current_path(), row.path);
        EXPECT_EQ(doc_current_display_name(), row.name);
        doc_set_title(doc_current_display_name());
        EXPECT_EQ(host().title, "Quorvane - " + row.title);
    }
    doc_set_paths(std::string(k_path_max + 9, 'p').c_str());
    EXPECT_EQ(doc_current_path(), std::string(k_path_max, 'p'));
}

TEST_F(Document, StartUpTakesTheNamedFileOrANewWeb) {
    std::string path = scratch_path("start.qvx");
    write_file(path, cell_of("a", "t"));
    struct {
        std::string line, status;
    } rows[] = {
        {path, "The end of this file is missing"},
        {"\"" + path + "\"", "The end of this file is missing"},
        {path + "\"", "The end of this file is missing"},
        {"", ""},
        {k_no_folder, "UNABLE TO OPEN WEB FILE"},
        {path + std::string(k_path_max, 'x'), "UNABLE TO OPEN WEB FILE"},
        {"\"\"", "UNABLE TO OPEN WEB FILE"},
    };
    for (const auto &row : rows) {
        const bool opens = row.status.starts_with("The end");
        host().status = "";
        doc_start(row.line.c_str());
        EXPECT_EQ(host().status, row.status) << row.line;
        const Log log = take_log();
        EXPECT_EQ(count(log, "ask_open_path"), 0U);
        EXPECT_EQ(count(log, "configure_panes") + count(log, "show_cell_list"), 2U);
        EXPECT_EQ(count(log, "refresh_cellname_list"), opens ? 1U : 0U);
        EXPECT_EQ(host().resting, "Ready");
        EXPECT_EQ(document_state(), opens ? saved_as(path) : k_untitled) << row.line;
        EXPECT_EQ(cell_names(), opens ? (Names{"a", "home"}) : Names{"home"});
        EXPECT_EQ(current_name(), "home");
    }
}

TEST_F(Document, NewAsksOnceAndGoesOnWhateverTheAnswer) {
    std::string path = open_saved_web();
    type_text("typed");
    host().save_changes = {true};
    EXPECT_EQ(doc_command_new(), 0);
    EXPECT_TRUE(file_has(path, "<cname>home</cname>\n<text>typed</text>"));
    EXPECT_EQ(document_state(), k_untitled);
    EXPECT_EQ(cell_names(), Names{"home"});
    EXPECT_EQ(host().pane.text, "");

    for (const char *save_path : {"", k_no_folder}) {
        new_cell("b");
        host().save_changes = {true};
        host().save_paths = {save_path};
        take_log();
        EXPECT_EQ(doc_command_new(), 0);
        EXPECT_EQ(count(take_log(), k_save_question + "(untitled)?|Quorvane"s), 1U);
        EXPECT_EQ(document_state(), k_untitled);
        EXPECT_EQ(cell_names(), Names{"home"});
        EXPECT_EQ(trail_names(), Names());
    }
    take_log();
    EXPECT_EQ(doc_command_new(), 0);
    EXPECT_EQ(count(take_log(), k_save_question), 0U);
}

TEST_F(Document, OpenLeavesTheWebAloneUntilTheFileIsOpenAndThenReplacesIt) {
    new_cell("b");
    const std::string before = written_web();
    struct {
        const char *save_path;  // in the dialog of a save that was agreed to; null: No
        const char *open_path;
        int code;
        const char *status;
    } rows[] = {
        {"", k_no_folder, 1, ""},
        {k_no_folder, "never asked", -3, "Not Saved"},
        {nullptr, "", 1, ""},
        {nullptr, k_no_folder, -3, "UNABLE TO OPEN WEB FILE"},
    };
    for (const auto &row : rows) {
        set_web_changed(true);
        host().status = "";
        host().save_changes = {row.save_path != nullptr};
        host().save_paths = {row.save_path != nullptr ? row.save_path : ""};
        host().open_paths = {row.open_path};
        EXPECT_EQ(doc_command_open(), row.code) << row.open_path;
        EXPECT_EQ(host().status, row.status) << row.open_path;
        EXPECT_EQ(written_web(), before);
        EXPECT_EQ(trail_names(), Names{"home"});
        EXPECT_FALSE(web_changed()) << "after any File command";
    }
    const std::string path = scratch_path("open.qvx");
    write_file(path, "<odest>file</odest>" + cell_of("a", "t"));
    host().open_paths = {path};
    take_log();
    EXPECT_EQ(doc_command_open(), 0);
    EXPECT_EQ(count(take_log(), "ask_open_path "), 1U);
    EXPECT_EQ(document_state(), saved_as(path));
    EXPECT_EQ(cell_names(), (Names{"a", "home"}));
    EXPECT_EQ(trail_names(), Names());
    EXPECT_EQ(doc_command_open(), 1);
    EXPECT_EQ(count(take_log(), "ask_open_path " + path), 1U) << "begins with the web's own";
}

TEST_F(Document, AWebThatDoesNotFitIsGivenBackWhole) {
    std::string path = scratch_path("large.qvx");
    for (const std::string &file :
         {too_large_web(), "<rfmt>x</rfmt>" + too_large_web() + cell_of("home", "h"),
          "<cname>" + std::string(400000, 'n') + "</cname>", std::string(400000, 'x'),
          "<cname>a</cname><val>" + std::string(359900, '1') + "</val><script>ssss</script>"}) {
        write_file(path, file);
        new_cell("b");
        set_web_changed(false);
        take_log();
        EXPECT_EQ(doc_command_open_path(path.c_str()), -1);
        EXPECT_EQ(count(take_log(), "status OUT OF MEMORY"), 1U);
        EXPECT_EQ(document_state(), k_untitled);
        EXPECT_EQ(cell_names(), Names{"home"});
        EXPECT_LE(blocks_in_use(), 3) << "home, its name and its view";
        EXPECT_EQ(file_bytes(path), file);
        ASSERT_EQ(check_engine(), "");
        set_web_changed(true);
        host().save_changes = {true};
        EXPECT_EQ(run_until_end(save_and_exit), std::nullopt) << "no file is being read";
    }
    set_web_changed(false);
    doc_start(path.c_str());
    EXPECT_EQ(document_state(), k_untitled);
}

TEST_F(Document, SaveAndExitSavesWhatTheUserAgreesTo) {
    std::string path = scratch_path("exit.qvx");
    struct {
        bool changed, agreed;
        std::string save_path;
        bool ends, writes;
    } rows[] = {
        {false, false, "", true, false},         {true, false, "", true, false},
        {true, true, path, true, true},          {true, true, "", false, false},
        {true, true, k_no_folder, false, false},
    };
    for (const auto &row : rows) {
        start_program();
        write_file(path, "before");
        type_text("typed");
        set_web_changed(row.changed);
        host().save_changes = {row.agreed};
        host().save_paths = {row.save_path};
        std::optional<int> status = run_until_end(save_and_exit);
        EXPECT_EQ(status, row.ends ? std::optional(0) : std::nullopt) << row.save_path;
        EXPECT_EQ(file_has(path, "<text>typed</text>"), row.writes);
        EXPECT_EQ(count(host().log, k_save_question), row.changed ? 1U : 0U);
        EXPECT_TRUE(row.ends || web_changed()) << "what was not saved still counts as changed";
        EXPECT_EQ(host().items.empty(), row.ends);
    }
    start_program();
}

TEST_F(Document, TheOfferWhileAFileIsReadEndsWithoutSaving) {
    std::string path = scratch_path("offer.qvx");
    write_file(path, too_large_web());
    set_web_changed(true);
    host().save_changes = {false, true};
    host().ok_cancel = {false, false, true};
    EXPECT_EQ(run_until_end([&] { doc_command_open_path(path.c_str()); }), 0);
    EXPECT_EQ(count(host().log, "hide_text_caret"), 0U);
    EXPECT_EQ(file_bytes(path), too_large_web());
    start_program();
}

TEST_F(Document, AFullArenaLeavesEveryWayOut) {
    std::string path = open_saved_web();
    new_cell("b");
    leave_free_blocks(0);
    type_text(std::string(200, 't'));
    EXPECT_FALSE(run_command(go_home));
    EXPECT_TRUE(run_command([] { EXPECT_EQ(doc_command_save(), 0); }));
    EXPECT_TRUE(web_changed()) << "the typed text is in no file";
    EXPECT_TRUE(file_has(path, "<cname>b</cname></cell>"));
    type_text("");
    host().ok_cancel = {true};
    EXPECT_TRUE(run_command(delete_cell));
    EXPECT_EQ(cell_names(), (Names{"a", "home"}));
    leave_free_blocks(0);
    type_text(std::string(1000, 't'));
    take_log();
    host().save_changes = {true};
    EXPECT_EQ(run_until_end(save_and_exit), 0);
    EXPECT_EQ(count(take_log(), "status OUT OF MEMORY"), 1U);
    EXPECT_TRUE(file_has(path, "<text>from file</text>"));
    EXPECT_FALSE(file_has(path, "<cname>b</cname>"));
    start_program();
}
