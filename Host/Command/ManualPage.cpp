#include "Host/Command/ManualPage.h"

#include "Host/Command/Skeleton.h"
#include "Host/Command/Skeletons.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace Kerovane::Host {

namespace {

/// `text` as it is, in a language where backslashes, hyphens and a line's first dot have a meaning.
std::string Verbatim(std::string_view text) {
    std::string escaped;
    bool lineStart = true;
    for (const char character : text) {
        if (lineStart && (character == '.' || character == '\'')) {
            escaped += "\\&";
        }
        lineStart = character == '\n';
        if (character == '\\') {
            escaped += "\\e";
        } else if (character == '-') {
            escaped += "\\-";
        } else {
            escaped += character;
        }
    }
    return escaped;
}

std::string Entries(const std::vector<OutlineOption>& options, bool parameters) {
    std::string entries;
    for (const OutlineOption& option : options) {
        if (option.isParameter == parameters) {
            entries += fmt::format(".TP\n.B {}\n{}\n", Verbatim(option.name),
                                   Verbatim(option.description));
        }
    }
    return entries;
}

std::string Synopsis(const CommandOutline& command, const CommandOutline& subcommand) {
    std::string arguments;
    for (const OutlineOption& argument : subcommand.arguments) {
        arguments += ' ' + argument.name;
    }
    return fmt::format(".B {} {}\n[OPTION]...{}\n.br\n", Verbatim(command.name),
                       Verbatim(subcommand.name), arguments);
}

std::string Section(const CommandOutline& command) {
    return fmt::format(".SS {}\n{}.\n{}{}", Verbatim(command.name), Verbatim(command.description),
                       Entries(command.arguments, false), Entries(command.options, false));
}

std::string Example(const CommandOutline& command) {
    return command.example.empty() ? ""
                                   : fmt::format(".PP\n.nf\n{}\n.fi\n", Verbatim(command.example));
}

/// The parameters are the same in every command that has them.
std::string Parameters(const CommandOutline& command) {
    const auto entries = [](const CommandOutline& one) { return Entries(one.options, true); };
    const auto renders = [&entries](const CommandOutline& one) { return !entries(one).empty(); };
    const auto found = std::ranges::find_if(command.commands, renders);
    return found != command.commands.end() ? entries(*found) : "";
}

} // namespace

std::string ManualPage(const CommandOutline& command, std::string_view version) {
    std::string synopsis;
    std::string sections;
    std::string examples;
    for (const CommandOutline& subcommand : command.commands) {
        synopsis += Synopsis(command, subcommand);
        sections += Section(subcommand);
        examples += Example(subcommand);
    }
    return Fill(std::string(Skeletons::kManual), {{"VERSION", std::string(version)},
                                                  {"SYNOPSIS", synopsis},
                                                  {"COMMANDS", sections},
                                                  {"PARAMETERS", Parameters(command)},
                                                  {"OPTIONS", Entries(command.options, false)},
                                                  {"EXAMPLES", examples},
                                                  {"MODULE", TESSELUNE_MODULE_PATH},
                                                  {"PRESETS", TESSELUNE_PRESET_PATH}});
}

} // namespace Kerovane::Host
