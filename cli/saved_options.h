// The options that a web file keeps, by the names of their tags and as the file writes them.
#pragma once

#include <string>
#include <vector>

struct SavedOption {
    std::string name;
    std::string value;

    bool operator==(const SavedOption &) const = default;
};

// Those of the web at hand, in the file's order.
using SavedOptions = std::vector<SavedOption>;
SavedOptions saved_options();

// Prints "option NAME: BEFORE -> AFTER" for each that differs.
void print_option_differences(const SavedOptions &before, const SavedOptions &after);

// The name as the file spells it; "" for none.
std::string option_name(const std::string &name);

// The value of the option of that name.
std::string option_value(const std::string &name);

// Sets the option of that name. False, with `fault`, when it does not know the value or would not
// come back from the file with it: nothing is clipped, cut or rounded.
bool put_option(const std::string &name, const std::string &value, std::string *fault);
