#include "cli/command_table.h"

#include "cli/exchange/exchange_commands.h"
#include "cli/web_commands.h"

namespace {

const CommandGroup k_groups[] = {
    {"Webs and cells", k_web_commands},
    {"Out and in", k_exchange_commands},
};

}  // namespace

std::span<const CommandGroup> command_groups() {
    return k_groups;
}
