#include "cli/exchange/import_sources.h"

#include "cli/exchange/file_names.h"
#include "cli/exchange/paths.h"
#include "cli/exit_status.h"
#include "cli/note.h"
#include "core/names.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

void drop_byte_order_mark(std::string *bytes) {
    if (bytes->starts_with("\xEF\xBB\xBF")) {
        bytes->erase(0, 3);
    }
}

int read_text(const std::string &path, std::string *bytes) {
    const int status = read_file(path, bytes);
    drop_byte_order_mark(bytes);
    return status;
}

bool is_markdown(const fs::path &path) {
    const std::string suffix = caseless_stem(utf8_of(path.extension()));
    return suffix == ".md" || suffix == ".markdown";
}

// Files beside and in the folders below, the upper ones first.
std::vector<std::string> markdown_paths(const fs::path &folder, std::error_code *error) {
    std::vector<std::string> paths;
    for (auto entry = fs::recursive_directory_iterator(folder, *error);
         !*error && entry != fs::recursive_directory_iterator(); entry.increment(*error)) {
        std::error_code ignored;
        if (utf8_of(entry->path().filename()).starts_with('.')) {
            entry.disable_recursion_pending();
        } else if (is_markdown(entry->path()) && entry->is_regular_file(ignored)) {
            paths.push_back(utf8_of(entry->path().lexically_relative(folder)));
        }
    }
    std::sort(paths.begin(), paths.end(), [](const std::string &a, const std::string &b) {
        const auto depth_a = std::count(a.begin(), a.end(), '/');
        const auto depth_b = std::count(b.begin(), b.end(), '/');
        return depth_a != depth_b ? depth_a < depth_b : a < b;
    });
    return paths;
}

void take_front_matter(Source *source, std::string_view bytes) {
    FrontMatter front = read_front_matter(bytes);
    source->bytes = front.body;
    source->front = std::move(front.rest);
    source->fields = std::move(front.fields);
    for (const auto &[key, value] : source->fields) {
        if (key == "name" && cellname_valid(value.c_str())) {
            source->wanted = value;
            source->named = true;
        }
    }
}

int add_markdown_file(const std::string &folder, const std::string &path, Sources *sources) {
    std::string bytes;
    const int status = read_text(utf8_of(path_of(folder) / path_of(path)), &bytes);
    if (status == k_exit_done) {
        Source source;
        source.path = path;
        source.wanted = stem_of_path(path);
        take_front_matter(&source, bytes);
        sources->push_back(std::move(source));
    }
    return status;
}

}  // namespace

int add_markdown_folder(const std::string &folder, Sources *sources) {
    std::error_code error;
    const std::vector<std::string> paths = markdown_paths(path_of(folder), &error);
    if (error) {
        say_of(folder, "cannot be read", error);
        return k_exit_failed;
    }
    if (paths.empty()) {
        say_of(folder, "holds no Markdown files");
        return k_exit_refused;
    }
    int status = k_exit_done;
    for (size_t i = 0; i < paths.size() && status == k_exit_done; ++i) {
        status = add_markdown_file(folder, paths[i], sources);
    }
    return status;
}

int add_text_file(const std::string &path, Sources *sources) {
    Source source;
    source.path = path;
    source.wanted = stem_of_path(path);
    const int status = read_text(path, &source.bytes);
    sources->push_back(std::move(source));
    return status;
}

int add_terms(const std::string &path, Sources *sources) {
    std::string bytes;
    const int status = read_text(path, &bytes);
    const auto lines = lines_of(bytes);
    for (size_t i = 0; i < lines.size() && status == k_exit_done; ++i) {
        const size_t tab = lines[i].find('\t');
        const std::string place = path + ":" + std::to_string(i + 1);
        if (lines[i].empty()) {
            continue;
        }
        if (tab == std::string_view::npos) {
            say_of(place, "no TAB behind the term");
            return k_exit_refused;
        }
        Source source;
        source.path = place;
        source.wanted = lines[i].substr(0, tab);
        source.bytes = lines[i].substr(tab + 1);
        sources->push_back(std::move(source));
    }
    return status;
}
