#include "cli/pages/rows.h"

#include "cli/command_table.h"

std::vector<std::string> names_of(const OptionRow &row) {
    std::vector<std::string> names(1);
    for (const char *at = row.names; *at != 0; ++at) {
        if (*at == ',') {
            names.emplace_back();
        } else {
            names.back() += *at;
        }
    }
    return names;
}

bool takes_value(const OptionRow &row) {
    return row.placeholder != nullptr;
}

std::vector<std::string> words_of(const OptionRow &row) {
    std::vector<std::string> words;
    if (row.words != nullptr) {
        for (const OptionWord *word = row.words(); word->text[0] != 0; ++word) {
            words.emplace_back(word->text);
        }
    }
    return words;
}

bool is_list(const ArgumentRow &row) {
    return std::holds_alternative<std::vector<std::string> CommandLine::*>(row.target);
}

const char *kind_name(Takes takes) {
    switch (takes) {
    case Takes::web:
        return "web";
    case Takes::cell:
        return "cell";
    case Takes::path:
        return "path";
    case Takes::folder:
        return "folder";
    case Takes::text:
        break;
    }
    return "text";
}

int web_place(const CommandRow &row) {
    int place = 1;
    for (const ArgumentRow &argument : row.arguments) {
        if (argument.takes == Takes::web) {
            return place;
        }
        ++place;
    }
    return 1;
}

std::vector<const CommandRow *> all_commands() {
    std::vector<const CommandRow *> commands;
    for (const CommandGroup &group : command_groups()) {
        for (const CommandRow &row : group.commands) {
            commands.push_back(&row);
        }
    }
    return commands;
}

std::string joined(const std::vector<std::string> &words) {
    std::string text;
    for (const std::string &word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

std::string replaced(std::string_view text, std::string_view what, std::string_view with) {
    std::string result;
    size_t from = 0;
    for (size_t at = text.find(what); at != text.npos; at = text.find(what, from)) {
        result += text.substr(from, at - from);
        result += with;
        from = at + what.size();
    }
    result += text.substr(from);
    return result;
}

std::string quoted(std::string_view text) {
    return "'" + replaced(text, "'", "'\\''") + "'";
}

std::string fish_quoted(std::string_view text) {
    return "'" + replaced(replaced(text, "\\", "\\\\"), "'", "\\'") + "'";
}
