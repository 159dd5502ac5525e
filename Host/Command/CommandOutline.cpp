#include "Host/Command/CommandOutline.h"

#include "Host/Command/ParameterOptions.h"
#include "Host/Command/ShippedPresets.h"
#include "Host/Command/Subcommands.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Text/Split.h"

#include <algorithm>
#include <string_view>

namespace Kerovane::Host {

namespace {

std::vector<std::string> ChoicesOf(std::string_view type) {
    if (type.find(kBetweenChoices) == std::string_view::npos) {
        return {};
    }
    const std::vector<std::string_view> choices = Split(type, kBetweenChoices);
    return {choices.begin(), choices.end()};
}

/// Returns the parameter options of a command. Appends `behindOthers` to each option that has no
/// fixed list of values.
std::vector<std::string> ParameterWords(const CLI::App& command, std::string_view behindOthers) {
    std::vector<std::string> words;
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_group() == kParameterGroup) {
            words.push_back(option->get_lnames().front());
            words.back() += ChoicesOf(option->get_type_name()).empty() ? behindOthers : "";
        }
    }
    return words;
}

/// Returns ParameterWords() of the program's first subcommand that has parameter options; an empty
/// list if none has.
std::vector<std::string> AllParameterWords(const CLI::App& command, std::string_view behindOthers) {
    const CLI::App* program = command.get_parent() != nullptr ? command.get_parent() : &command;
    for (const CLI::App* other : CommandsOf(*program)) {
        if (std::vector<std::string> words = ParameterWords(*other, behindOthers); !words.empty()) {
            return words;
        }
    }
    return {};
}

OutlineOption OutlineOf(const CLI::Option& option, const CLI::App& command) {
    const std::string type = option.get_type_name();
    return {.name = option.nonpositional() ? "--" + option.get_lnames().front() : option.get_name(),
            .description = option.get_description(),
            .takesValue = option.get_items_expected_max() > 0,
            .takesFile = type == kFileType || type == kPresetType,
            .words = type == kParameterType   ? AllParameterWords(command, "")
                     : type == kVariationType ? AllParameterWords(command, "=")
                     : type == kPresetType    ? ShippedPresetNames()
                                              : ChoicesOf(type)};
}

} // namespace

CommandOutline Outline(const CLI::App& app) {
    CommandOutline outline{.name = app.get_name(), .description = app.get_description()};
    for (const CLI::Option* option : app.get_options()) {
        auto& list = option->nonpositional() ? outline.options : outline.arguments;
        list.push_back(OutlineOf(*option, app));
    }
    for (const CLI::App* command : CommandsOf(app)) {
        outline.commands.push_back(Outline(*command));
        std::erase_if(outline.commands.back().options, [&outline](const OutlineOption& option) {
            return std::ranges::find(outline.options, option.name, &OutlineOption::name) !=
                   outline.options.end();
        });
    }
    return outline;
}

} // namespace Kerovane::Host
