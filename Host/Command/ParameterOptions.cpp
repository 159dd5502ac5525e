#include "Host/Command/ParameterOptions.h"

#include "Host/Error.h"
#include "Host/ParameterText.h"

#include <fmt/format.h>

#include <set>

namespace Kerovane::Host {

std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters) {
    std::set<std::string> taken{"",     "depth",   "downsample", "effect", "help",
                                "vary", "verbose", "version",    "width"};
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

ParameterValues ParameterOptions::values() const {
    ParameterValues values;
    for (const auto& [parameter, option] : mOptions) {
        if (option->empty()) {
            continue;
        }
        try {
            values.set(parameter->id(), ParseValue(*parameter, option->as<std::string>()));
        } catch (const Error& error) {
            throw Error(fmt::format("{} {}", option->get_name(), error.what()));
        }
    }
    return values;
}

} // namespace Kerovane::Host
