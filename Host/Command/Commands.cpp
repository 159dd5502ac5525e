#include "Host/Command/Commands.h"

#include <algorithm>
#include <utility>

namespace Kerovane::Host {

namespace {

std::vector<Command>& Registry() {
    // A local variable, because other files may register before this file's globals exist.
    static std::vector<Command> registry;
    return registry;
}

} // namespace

CommandRegistration::CommandRegistration(Command command) {
    Registry().push_back(std::move(command));
}

std::vector<Command> RegisteredCommands() {
    std::vector<Command> commands = Registry();
    std::ranges::sort(commands, {}, &Command::name);
    return commands;
}

} // namespace Kerovane::Host
