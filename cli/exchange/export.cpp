#include "cli/exchange/export.h"

#include "cli/exchange/file_names.h"
#include "cli/exchange/folder.h"
#include "cli/exchange/front_matter.h"
#include "cli/exchange/markdown_write.h"
#include "cli/exchange/page.h"
#include "cli/exchange/paths.h"
#include "cli/exchange/web_options.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/print.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "core/host_files.h"

#include <nlohmann/json.hpp>

#include <unordered_map>

namespace fs = std::filesystem;

namespace {

void print_written(const CommandLine &line, const std::string &file, const std::string *cell,
                   size_t bytes) {
    if (line.json) {
        nlohmann::ordered_json object = {{"file", file}, {"bytes", bytes}};
        if (cell != nullptr) {
            object["cell"] = *cell;
        }
        print_json(object);
    } else if (line.dry_run) {
        print_line((cell != nullptr ? *cell + " -> " : "") + file + " (" + std::to_string(bytes) +
                   " bytes)");
    }
}

// ---- A page -------------------------------------------------------------------------------------

std::string title_of(const std::string &file) {
    const std::string stem = is_standard_stream(file.c_str()) ? "" : stem_of_path(file);
    return stem.empty() ? "Notes" : stem;
}

// A file that is no page may be anything, a web for one.
bool is_page(const std::string &path) {
    FILE *file = file_open(path.c_str(), "rb");
    char bytes[16] = {0};
    if (file != nullptr) {
        const size_t count = fread(bytes, 1, sizeof bytes - 1, file);
        fclose(file);
        return count == 0 || compare_names(std::string(bytes), "<!DOCTYPE html>") == 0;
    }
    return true;
}

int page_may_go_to(const CommandLine &line, const std::string &out) {
    std::error_code error;
    if (same_file(line.file.c_str(), out.c_str())) {
        say_of(out, "is the web's own file");
        return k_exit_refused;
    }
    if (!line.force && fs::is_regular_file(path_of(out), error) && !is_page(out)) {
        say_of(out, "is no page: use --force to write over it");
        return k_exit_refused;
    }
    return k_exit_done;
}

int write_page(const std::string &out, const std::string &page) {
    host_name_file(out.c_str());
    FILE *file = file_replace_begin(out.c_str());
    if (file == nullptr) {
        host_file_message("cannot be written");
        return k_exit_failed;
    }
    if (fwrite(page.data(), 1, page.size(), file) != page.size() || !file_replace_finish()) {
        host_file_message("cannot be written");
        file_replace_abandon();
        return k_exit_failed;
    }
    return k_exit_done;
}

int export_page(const CommandLine &line, const std::string &out, const Notes &notes) {
    const std::string page = page_of(notes, title_of(line.file));
    if (is_standard_stream(out.c_str()) && !line.dry_run) {
        print(page);
        return k_exit_done;
    }
    int status = page_may_go_to(line, out);
    if (status == k_exit_done && !line.dry_run) {
        status = write_page(out, page);
    }
    if (status == k_exit_done) {
        print_written(line, out, nullptr, page.size());
    }
    return status;
}

// ---- A folder -----------------------------------------------------------------------------------

Fields fields_of(const Note &note, const std::string &stem, const Fields &options) {
    Fields fields;
    if (!stem_is_name(stem, note.name)) {
        fields.emplace_back("name", note.name);
    }
    if (!note.value.empty()) {
        fields.emplace_back("value", note.value);
    }
    if (!note.script.empty()) {
        fields.emplace_back("script", note.script);
    }
    if (compare_names(note.name, "home") == 0) {
        fields.insert(fields.end(), options.begin(), options.end());
    }
    return fields;
}

std::vector<FolderFile> markdown_files(const Notes &notes, const Fields &options) {
    const std::vector<std::string> stems = file_stems(notes);
    std::unordered_map<std::string, std::string> files_by_name;
    for (size_t i = 0; i < notes.size(); ++i) {
        files_by_name[folded_name(notes[i].name)] = stems[i] + ".md";
    }
    const FileOfWord file_of_word = [&files_by_name](std::string_view word) {
        const auto found = files_by_name.find(folded_name(word));
        return found == files_by_name.end() ? std::string() : found->second;
    };
    std::vector<FolderFile> files;
    files.reserve(notes.size());
    for (size_t i = 0; i < notes.size(); ++i) {
        files.push_back({stems[i] + ".md", front_matter_of(fields_of(notes[i], stems[i], options)) +
                                               markdown_of(notes[i].text, file_of_word)});
    }
    return files;
}

void print_files(const CommandLine &line, const Notes &notes,
                 const std::vector<FolderFile> &files) {
    for (size_t i = 0; i < files.size(); ++i) {
        if (line.json || line.dry_run) {
            print_written(line, files[i].name, &notes[i].name, files[i].bytes.size());
        } else if (files[i].name != notes[i].name + ".md") {
            print_line(notes[i].name + " -> " + files[i].name);
        }
    }
}

int export_folder(const CommandLine &line, const std::string &folder, const Notes &notes,
                  const Fields &options) {
    const std::vector<FolderFile> files = markdown_files(notes, options);
    int status = folder_is_free(folder, files, line.force);
    if (status == k_exit_done && !line.dry_run) {
        status = write_folder(folder, files);
    }
    if (status == k_exit_done) {
        print_files(line, notes, files);
    }
    return status;
}

}  // namespace

int command_export(const CommandLine &line) {
    if (!line.html && !line.markdown_folder) {
        host_message("export: --html OUT or --markdown DIR is required");
        return k_exit_failed;
    }
    if (line.markdown_folder && is_standard_stream(line.markdown_folder->c_str())) {
        host_message("export: - is no folder");
        return k_exit_failed;
    }
    const SavedOptions defaults = saved_options();
    const std::string folder = line.markdown_folder.value_or("");
    return read_web(line, [&line, &folder, &defaults](const std::string &, const Notes &notes) {
        return line.html ? export_page(line, *line.html, notes)
                         : export_folder(line, folder, notes, fields_of_options(defaults));
    });
}
