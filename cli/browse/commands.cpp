#include "cli/browse/commands.h"

#include "cli/browse/browse.h"

namespace {

constexpr ArgumentRow k_file[] = {
    {"FILE", "The web file", &CommandLine::file, Takes::web},
};
constexpr OptionRow k_options[] = {k_force_option};

const CommandRow k_commands[] = {
    {"browse", "Read and edit a web in the terminal",
     "Shows the cells' texts with their links marked. Tab and Shift+Tab go from link to link, "
     "Enter "
     "or a click follows one, Backspace goes back, q leaves; ? shows all keys. A screen of 60 "
     "columns or more has the cell list at its left, on others l shows it.\n\n"
     "e edits a text in the same editor as the command edit does, and keeps what cannot be stored "
     "in a file, as that does. Nothing is written before w saves or "
     "q has asked. Other programs may write FILE meanwhile; a save is then refused, and the "
     "changes can be put into a file beside it.\n\n"
     "When the terminal goes, or the program is told to end, unsaved changes go into FILE.unsaved "
     "(FILE.unsaved2 and so on where that exists), in the folder of FILE, the home folder or the "
     "one for temporary files. FILE itself stays as it is.\n\n"
     "A web that cannot be read whole can only be looked at, unless --force is given.\n\n"
     "Control characters and bytes that are no UTF-8 are shown as \\xNN. With NO_COLOR links are "
     "underlined only.",
     k_file, k_options, command_browse},
};

}  // namespace

const std::span<const CommandRow> k_browse_commands = k_commands;
