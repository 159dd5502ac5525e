#include "Host/Command/ParameterOptions.h"

#include "Host/Command/Subcommands.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/OptionNames.h"
#include "Host/Parameters/ParameterMeaning.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <set>
#include <string_view>
#include <utility>

namespace Kerovane::Host {

namespace {

/// Adds the long names of all options of `app` and its subcommands, except parameter options.
void CollectOwnOptions(const CLI::App& app, std::set<std::string>& names) {
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_group() != kParameterGroup) {
            names.insert(option->get_lnames().begin(), option->get_lnames().end());
        }
    }
    for (const CLI::App* command : CommandsOf(app)) {
        CollectOwnOptions(*command, names);
    }
}

std::string ValueType(const Parameter& parameter) {
    const std::vector<std::string> choices = TypedChoices(parameter);
    return choices.empty() ? "VALUE" : ChoiceType(choices);
}

/// Returns the help of a parameter's option: its meaning if known, its accepted values unless the
/// option's type lists them, and its default in brackets.
std::string HelpOf(const Parameter& parameter) {
    std::string help(MeaningOf(parameter));
    if (TypedChoices(parameter).empty()) {
        help += fmt::format("{}{}", help.empty() ? "" : ";\n", AcceptedValues(parameter));
    }
    return fmt::format("{}{}[{}]", help, help.empty() ? "" : " ",
                       FormatValue(parameter, parameter.defaultValue));
}

/// Parses an option's text. Throws Error for a single key, which is likely a mistake, such as a
/// ratio written as 1:2.
Keyframes ParseTyped(const Parameter& parameter, const std::string& text) {
    Keyframes keyframes = ParseKeyframes(parameter, text);
    if (keyframes.keys().size() == 1 && text.find(':') != std::string::npos) {
        throw Error(fmt::format("takes one value, or at least two keys FRAME:VALUE; '{}' is one "
                                "key, so give its value alone: {}",
                                text, FormatValue(parameter, keyframes.keys().front().value)));
    }
    return keyframes;
}

} // namespace

std::vector<std::string> OptionNamesIn(const CLI::App& command,
                                       const std::vector<Parameter>& parameters) {
    const CLI::App* line = &command;
    while (line->get_parent() != nullptr) {
        line = line->get_parent();
    }
    std::set<std::string> taken;
    CollectOwnOptions(*line, taken);
    return OptionNames(parameters, std::move(taken));
}

void ParameterOptions::addTo(CLI::App& command, const std::vector<Parameter>& parameters) {
    mNames = OptionNamesIn(command, parameters);
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        const Parameter& parameter = parameters[index];
        if (!parameter.hasValue()) {
            continue;
        }
        const std::string help = HelpOf(parameter);
        const CLI::Option* option = command.add_option("--" + mNames[index], help)
                                        ->type_name(ValueType(parameter))
                                        ->group(kParameterGroup);
        mOptions.push_back({.parameter = &parameter, .option = option});
    }
}

ParameterSettings ParameterOptions::settings() const {
    ParameterSettings settings;
    for (const auto& [parameter, option] : mOptions) {
        if (option->empty()) {
            continue;
        }
        try {
            settings.emplace(parameter->id(), ParseTyped(*parameter, option->as<std::string>()));
        } catch (const Error& error) {
            throw Error(fmt::format("{} {}", option->get_name(), error.what()));
        }
    }
    return settings;
}

} // namespace Kerovane::Host
