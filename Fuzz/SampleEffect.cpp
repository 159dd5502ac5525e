#include "Fuzz/SampleEffect.h"

#include "Tests/Host/Parameters/SampleParameters.h"

#include <string>
#include <utility>

namespace Kerovane::Fuzz {

namespace {

using Host::Parameter;

Parameter InputLayer() {
    Parameter layer;
    layer.definition.param_type = PF_Param_LAYER;
    return layer;
}

Parameter Constant(Parameter parameter) {
    parameter.definition.flags |= PF_ParamFlag_CANNOT_TIME_VARY;
    return parameter;
}

std::vector<Parameter> MakeParameters() {
    std::vector<Parameter> parameters{InputLayer()};
    const auto add = [&parameters](const char* name, Parameter parameter) {
        parameter.name = name;
        parameter.definition.uu.id = static_cast<A_long>(parameters.size());
        parameters.push_back(std::move(parameter));
    };
    add("Size", Host::Slider());
    add("Ratio", Host::FloatSlider());
    add("Dissolve", Host::Percentage());
    add("Direction", Host::Angle());
    add("Transition Type", Host::Popup());
    add("Use Alpha", Host::Checkbox());
    add("Size Random Seed", Host::Seed());
    add("Quality", Constant(Host::Slider()));
    return parameters;
}

} // namespace

const std::vector<Parameter>& SampleEffect() {
    static const std::vector<Parameter> kParameters = MakeParameters();
    return kParameters;
}

} // namespace Kerovane::Fuzz
