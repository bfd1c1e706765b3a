#include "cli/command_table.h"

#include "cli/browse/commands.h"
#include "cli/exchange/exchange_commands.h"
#include "cli/links/link_commands.h"
#include "cli/merge/merge_commands.h"
#include "cli/web_commands.h"

namespace {

const CommandGroup k_groups[] = {
    {"Webs and cells", k_web_commands},        {"Links and searching", k_link_commands},
    {"In the terminal", k_browse_commands},    {"Out and in", k_exchange_commands},
    {"Versions and repair", k_merge_commands},
};

}  // namespace

std::span<const CommandGroup> command_groups() {
    return k_groups;
}
