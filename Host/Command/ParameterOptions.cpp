#include "Host/Command/ParameterOptions.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"

#include <fmt/format.h>

#include <set>

namespace Kerovane::Host {

namespace {

/// The commands' own options: a parameter has the same option in all of them.
std::set<std::string> OwnOptions() {
    return {"",        "chunk",  "depth",   "downsample", "effect",
            "fps",     "frames", "help",    "json-log",   "max-frames-in-flight",
            "missing", "preset", "quiet",   "resume",     "save-preset",
            "threads", "vary",   "verbose", "version",    "width"};
}

} // namespace

std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters) {
    std::set<std::string> taken = OwnOptions();
    std::vector<std::string> names;
    for (const Parameter& parameter : parameters) {
        std::string name = parameter.hasValue() ? TypedName(parameter.displayName()) : "";
        if (parameter.hasValue() && !taken.insert(name).second) {
            name += fmt::format("{}{}", name.empty() ? "parameter-" : "-", parameter.id());
            taken.insert(name);
        }
        names.push_back(std::move(name));
    }
    return names;
}

std::size_t IndexOfParameter(const std::vector<Parameter>& parameters, std::string_view name) {
    const std::vector<std::string> options = OptionNames(parameters);
    std::vector<std::string> names;
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        const Parameter& parameter = parameters[index];
        if (!parameter.hasValue()) {
            continue;
        }
        if (name == options[index] || name == parameter.displayName() ||
            name == std::to_string(parameter.id())) {
            return index;
        }
        names.push_back(options[index]);
    }
    throw Error(fmt::format("no parameter '{}'{}", name, Suggestion(TypedName(name), names)));
}

void ParameterOptions::addTo(CLI::App& command, const std::vector<Parameter>& parameters) {
    const std::vector<std::string> names = OptionNames(parameters);
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        const Parameter& parameter = parameters[index];
        if (!parameter.hasValue()) {
            continue;
        }
        const std::string description = fmt::format("{} [{}]", AcceptedValues(parameter),
                                                    FormatValue(parameter, parameter.defaultValue));
        const CLI::Option* option = command.add_option("--" + names[index], description)
                                        ->type_name("")
                                        ->group("Parameters of the effect");
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
