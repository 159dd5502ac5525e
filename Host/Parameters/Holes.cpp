#include "Host/Parameters/Holes.h"

#include <algorithm>
#include <string_view>

namespace Kerovane::Host {

bool CanLeaveHoles(const std::vector<Parameter>& parameters, const ParameterSettings& settings) {
    const auto isEverSet = [&](std::string_view name) {
        const Parameter* parameter = FindParameter(parameters, name);
        if (parameter == nullptr) {
            return true;
        }
        const auto found = settings.find(parameter->id());
        return found == settings.end()
                   ? parameter->defaultValue != 0
                   : std::ranges::any_of(found->second.keys(),
                                         [](const Keyframe& key) { return key.value != 0; });
    };
    return isEverSet("Use Alpha") && (isEverSet("Dissolve") || isEverSet("Transition Progress"));
}

} // namespace Kerovane::Host
