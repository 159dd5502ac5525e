#include "Host/Command/ParameterOptions.h"

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

constexpr const char* kGroup = "Parameters of the effect";

/// Adds the long names of the options that `app` and its commands have, but for parameters.
void CollectOwnOptions(const CLI::App& app, std::set<std::string>& names) {
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_group() != kGroup) {
            names.insert(option->get_lnames().begin(), option->get_lnames().end());
        }
    }
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        CollectOwnOptions(*command, names);
    }
}

/// What a parameter means, if that is known, on a line of its own, and what it takes.
std::string HelpOf(const Parameter& parameter) {
    const std::string_view meaning = MeaningOf(parameter);
    return fmt::format("{}{} [{}]", meaning.empty() ? "" : fmt::format("{};\n", meaning),
                       AcceptedValues(parameter), FormatValue(parameter, parameter.defaultValue));
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
        const CLI::Option* option =
            command.add_option("--" + mNames[index], help)->type_name("")->group(kGroup);
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
            settings.emplace(parameter->id(),
                             ParseKeyframes(*parameter, option->as<std::string>()));
        } catch (const Error& error) {
            throw Error(fmt::format("{} {}", option->get_name(), error.what()));
        }
    }
    return settings;
}

} // namespace Kerovane::Host
