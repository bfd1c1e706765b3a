// What is made of the table of commands when the program is built: its man page, and how three
// shells complete its command lines.
#pragma once

#include <string>

std::string man_page();
std::string bash_completion();
std::string zsh_completion();
std::string fish_completion();
