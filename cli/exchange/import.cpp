#include "cli/exchange/import.h"

#include "cli/exchange/import_links.h"
#include "cli/exchange/import_names.h"
#include "cli/exchange/markdown_read.h"
#include "cli/exchange/paths.h"
#include "cli/exchange/web_options.h"
#include "cli/exit_status.h"
#include "cli/host_qvx.h"
#include "cli/print.h"
#include "cli/shown.h"
#include "cli/web_file.h"
#include "cli/webs.h"
#include "core/block_arena.h"
#include "core/errors.h"
#include "web/cells.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace fs = std::filesystem;

namespace {

int misuse(const char *message) {
    host_message(message);
    return k_exit_failed;
}

// ---- Notes --------------------------------------------------------------------------------------

std::string text_of(const LinkTargets &targets, const Source &source) {
    std::string text = with_crlf(source.front);
    text += text_of_markdown(source.bytes, [&targets, &source](std::string_view target, bool wiki) {
        return cell_of_link(targets, source, target, wiki);
    });
    return text;
}

Notes notes_of(const Sources &sources, bool markdown) {
    Notes notes;
    const LinkTargets targets = markdown ? link_targets_of(sources) : LinkTargets();
    for (const Source &source : sources) {
        Note *note = add_note(&notes, source.name);
        note->text = markdown ? text_of(targets, source) : with_crlf(source.bytes);
        for (const auto &[key, value] : source.fields) {
            if (key == "value") {
                note->value = value;
            } else if (key == "script") {
                note->script = value;
            }
        }
    }
    add_note(&notes, "home");  // unless there is one
    return notes;
}

Fields fields_of_home(const Sources &sources) {
    for (const Source &source : sources) {
        if (compare_names(source.name, "home") == 0) {
            return source.fields;
        }
    }
    return {};
}

// ---- The web ------------------------------------------------------------------------------------

size_t size_of(const Note &note) {
    return note.name.size() + note.text.size() + note.script.size() + note.value.size();
}

void say_what_does_not_fit(const Notes &notes) {
    size_t bytes = 0;
    const Note *largest = &notes.front();
    for (const Note &note : notes) {
        bytes += size_of(note);
        largest = size_of(note) > size_of(*largest) ? &note : largest;
    }
    const std::string room = std::to_string(size_t{k_block_count} * k_block_payload_size);
    host_message((std::string(error_message(k_out_of_memory)) + ": " +
                  std::to_string(notes.size()) + " cells with " + std::to_string(bytes) +
                  " bytes do not fit into a web, which has room for " + room + "; the largest is " +
                  printable(largest->name) + " with " + std::to_string(size_of(*largest)))
                     .c_str());
}

int make_web(const Notes &notes, const Fields &options) {
    web_reset("home");
    apply_option_fields(options);
    host_hold_messages(true);
    const int status = take_notes(notes);
    host_hold_messages(false);
    if (status == k_exit_memory) {
        say_what_does_not_fit(notes);
    }
    return status;
}

int claim(const CommandLine &line, const std::string &out) {
    if (line.force) {
        return web_lock(out.c_str(), false);
    }
    std::error_code error;
    if (!line.dry_run) {
        return web_claim(out.c_str());
    }
    if (!is_standard_stream(out.c_str()) && fs::exists(path_of(out), error)) {
        host_message("file exists");
        return k_exit_refused;
    }
    return k_exit_done;
}

int save(const CommandLine &line, const std::string &out) {
    int status = claim(line, out);
    if (status == k_exit_done && !line.dry_run) {
        status = web_save(out.c_str());
        if (status != k_exit_done && !line.force) {
            web_give_up(out.c_str());
        }
    }
    return status;
}

// ---- What is said -------------------------------------------------------------------------------

void print_source(const CommandLine &line, const Source &source, const Notes &notes) {
    const size_t bytes = find_note(notes, source.name)->text.size();
    const std::string pair = source.path + " -> " + source.name;
    if (line.json) {
        print_json({{"path", source.path}, {"cell", source.name}, {"bytes", bytes}});
    } else if (line.dry_run) {
        print_line(pair + " (" + std::to_string(bytes) + " bytes)");
    } else {
        print_line(pair);
    }
}

void print_sources(const CommandLine &line, const Sources &sources, const Notes &notes) {
    const bool to_web = is_standard_stream(line.files.back().c_str()) && !line.dry_run;
    for (const Source &source : sources) {
        const bool changed = source.name != source.wanted;
        if (to_web && changed) {
            say_of(source.path, "becomes " + printable(source.name));
        } else if (!to_web && (changed || line.json || line.dry_run)) {
            print_source(line, source, notes);
        }
    }
}

int add_sources(const CommandLine &line, Sources *sources) {
    int status = k_exit_done;
    for (size_t i = 0; i + 1 < line.files.size() && status == k_exit_done; ++i) {
        const std::string &path = line.files[i];
        status = line.from_markdown ? add_markdown_folder(path, sources)
                 : line.from_text   ? add_text_file(path, sources)
                                    : add_terms(path, sources);
    }
    return status;
}

}  // namespace

int command_import(const CommandLine &line) {
    if (!line.from_markdown && !line.from_text && !line.from_tsv) {
        return misuse("import: --markdown, --text or --tsv is required");
    }
    if (line.files.size() < 2) {
        return misuse("import: what to read and the web file to make are required");
    }
    if (line.from_markdown && line.files.size() > 2) {
        return misuse("import: --markdown takes one folder");
    }
    const auto streams = std::count(line.files.begin(), line.files.end() - 1, "-");
    if (line.from_markdown && streams > 0) {
        return misuse("import: - is no folder");
    }
    if (streams > 1) {
        return misuse("import: standard input can be read only once");
    }
    Sources sources;
    int status = add_sources(line, &sources);
    if (status != k_exit_done) {
        return status;
    }
    name_sources(&sources, line.from_markdown);
    const Notes notes = notes_of(sources, line.from_markdown);
    host_name_file(line.files.back().c_str());
    status = make_web(notes, fields_of_home(sources));
    if (status == k_exit_done) {
        status = save(line, line.files.back());
    }
    if (status == k_exit_done) {
        print_sources(line, sources, notes);
    }
    return status;
}
