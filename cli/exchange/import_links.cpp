#include "cli/exchange/import_links.h"

#include "cli/exchange/file_names.h"
#include "cli/exchange/import_names.h"

#include <algorithm>

namespace {

std::string_view folder_of(std::string_view path) {
    const size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

// A path from the top with "." and ".." followed. Links hold any bytes, which the system's paths
// may not.
std::string path_from_top(std::string_view folder, std::string_view target) {
    const std::string both = std::string(folder) + "/" + std::string(target);
    std::string path;
    for (size_t begin = 0; begin < both.size();) {
        const size_t end = std::min(both.find('/', begin), both.size());
        const std::string_view part = std::string_view(both).substr(begin, end - begin);
        begin = end + 1;
        if (part == "..") {
            path = folder_of(path);
        } else if (!part.empty() && part != ".") {
            path += path.empty() ? "" : "/";
            path += part;
        }
    }
    return path;
}

std::string key_of(std::string_view path) {
    std::string small = caseless_stem(std::string(path));
    for (const std::string_view suffix : {".md", ".markdown"}) {
        if (small.ends_with(suffix)) {
            small.resize(small.size() - suffix.size());
            break;
        }
    }
    return small;
}

const Source *found_in(const std::unordered_map<std::string, const Source *> &sources,
                       std::string_view path) {
    const auto found = sources.find(key_of(path));
    return found == sources.end() ? nullptr : found->second;
}

const Source *source_of_link(const LinkTargets &targets, const Source &from,
                             std::string_view target, bool wiki) {
    const std::string_view folder =
        target.starts_with('/') ? std::string_view() : folder_of(from.path);
    const Source *source = found_in(targets.by_path, path_from_top(folder, target));
    if (source == nullptr && wiki) {
        source = found_in(targets.by_path, path_from_top("", target));
    }
    return source == nullptr && wiki ? found_in(targets.by_stem, target) : source;
}

}  // namespace

LinkTargets link_targets_of(const Sources &sources) {
    LinkTargets targets;
    for (const Source &source : sources) {
        targets.by_path.emplace(key_of(source.path), &source);
        targets.by_stem.emplace(key_of(source.path.substr(source.path.rfind('/') + 1)), &source);
    }
    return targets;
}

std::optional<std::string> cell_of_link(const LinkTargets &targets, const Source &from,
                                        std::string_view target, bool wiki) {
    if (target.empty()) {
        return {};
    }
    const Source *source = source_of_link(targets, from, target, wiki);
    if (source != nullptr) {
        return source->name;
    }
    return wiki ? std::optional(cellname_near(target, true)) : std::nullopt;
}
