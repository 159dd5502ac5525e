#include "Host/Parameters/OptionNames.h"

#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"
#include "Host/Text/NearestNames.h"

#include <fmt/format.h>

#include <utility>

namespace Kerovane::Host {

std::vector<std::string> OptionNames(const std::vector<Parameter>& parameters,
                                     std::set<std::string> taken) {
    taken.insert("");
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

std::size_t IndexOfParameter(const std::vector<Parameter>& parameters,
                             const std::vector<std::string>& options, std::string_view name) {
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

} // namespace Kerovane::Host
