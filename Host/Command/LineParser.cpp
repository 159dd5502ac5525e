#include "Host/Command/LineParser.h"

#include "Host/Command/Subcommands.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"
#include "Host/Text/WordList.h"

#include <fmt/format.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

namespace {

std::vector<std::string> CommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : CommandsOf(app)) {
        names.push_back(command->get_name());
    }
    return names;
}

/// Returns the names that are valid on the line: the options of the subcommands recognized so far,
/// and the subcommands.
std::vector<std::string> KnownNames(const CLI::App& app) {
    const std::vector<std::string> commands = CommandNames(app);
    std::vector<std::string> names;
    for (const CLI::App* part = &app; part != nullptr;) {
        for (const CLI::Option* option : part->get_options()) {
            for (const std::string& name : option->get_lnames()) {
                names.push_back("--" + name);
            }
        }
        const std::vector<CLI::App*> chosen = part->get_subcommands();
        part = chosen.empty() ? nullptr : chosen.front();
    }
    names.insert(names.end(), commands.begin(), commands.end());
    return names;
}

/// Returns the error text for the first argument that no option or subcommand takes.
std::string Unexpected(const CLI::App& app) {
    const std::string argument = app.remaining(true).front();
    const bool isOption = argument.starts_with('-');
    if (!isOption && !app.get_subcommands().empty()) {
        return fmt::format("unexpected argument '{}'; see tesselune --help", argument);
    }
    const std::string name = argument.substr(0, argument.find('='));
    return fmt::format("unknown {} '{}'{}; see tesselune --help", isOption ? "option" : "command",
                       name, Suggestion(name, KnownNames(app)));
}

} // namespace

void ParseLine(CLI::App& app, std::span<const char* const> line) {
    app.callback([&app] {
        if (app.get_subcommands().empty()) {
            throw Error(fmt::format("a command is needed: {}; see tesselune --help",
                                    WordList(CommandNames(app))));
        }
    });
    try {
        app.parse(static_cast<int>(line.size()), line.data());
    } catch (const CLI::Success&) {
        throw;
    } catch (const CLI::ExtrasError&) {
        throw Error(Unexpected(app));
    } catch (const CLI::ArgumentMismatch& mismatch) {
        const std::string text = mismatch.what();
        throw Error(fmt::format("{} takes one value", text.substr(0, text.find(':'))));
    } catch (const CLI::ParseError& error) {
        throw Error(error.what());
    }
}

} // namespace Kerovane::Host
