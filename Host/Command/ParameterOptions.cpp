#include "Host/Command/ParameterOptions.h"

#include "Host/Error.h"
#include "Host/ParameterText.h"

#include <fmt/format.h>

#include <set>

namespace Kerovane::Host {

std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters) {
    std::set<std::string> taken{"", "depth", "downsample", "effect", "help", "verbose", "version"};
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
        const std::string option = "--" + names[index];
        Given& given = mGiven[option];
        given.parameter = &parameter;
        command
            .add_option(option, given.text,
                        fmt::format("{} [{}]", AcceptedValues(parameter),
                                    FormatValue(parameter, parameter.defaultValue)))
            ->type_name("")
            ->group("Parameters of the effect");
    }
}

ParameterValues ParameterOptions::values() const {
    ParameterValues values;
    for (const auto& [option, given] : mGiven) {
        if (given.text.empty()) {
            continue;
        }
        try {
            values.set(given.parameter->id(), ParseValue(*given.parameter, given.text));
        } catch (const Error& error) {
            throw Error(fmt::format("{} {}", option, error.what()));
        }
    }
    return values;
}

} // namespace Kerovane::Host
