#include "Host/Command/TypedChoices.h"

#include "Host/Parameters/ParameterText.h"

namespace Kerovane::Host {

std::vector<std::string> TypedChoices(const Parameter& parameter) {
    if (parameter.type() == PF_Param_CHECKBOX) {
        return {"true", "false"};
    }
    std::vector<std::string> choices;
    for (const std::string& choice : parameter.choices) {
        choices.push_back(TypedName(choice));
    }
    return choices;
}

} // namespace Kerovane::Host
