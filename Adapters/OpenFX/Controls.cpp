#include "Adapters/OpenFX/Controls.h"

#include "Adapters/OpenFX/PropertySet.h"
#include "Adapters/OpenFX/Suites.h"
#include "Adapters/Shared/DeclaredParameters.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

namespace Kerovane::OpenFX {

namespace {

struct Group {
    Name scriptName;
    Name label;
    std::initializer_list<std::string_view> controls; ///< the script names of the group's controls
};

const Group kGroups[] = {
    {"cellsGroup", "Cells", {"shapeType", "size", "ratio"}},
    {"randomnessGroup", "Randomness", {"sizeRandom", "sizeLevel", "sizeRandomSeed"}},
    {"dissolveGroup", "Dissolve", {"dissolve", "dissolveRandomSeed"}},
    {"transitionGroup",
     "Transition",
     {"transitionType", "transitionProgress", "feather", "direction"}},
    {"outputGroup", "Output", {"useAlpha", "renderer"}},
};

std::string GroupOf(const Control& control) {
    for (const Group& group : kGroups) {
        if (std::ranges::find(group.controls, control.scriptName()) != group.controls.end()) {
            return group.scriptName;
        }
    }
    return "";
}

/// Returns the controls in the effect's order. They live until the process ends. Throws Error if
/// the effect cannot be asked; the next call tries again.
const std::vector<Control>& DeclaredControls() {
    static const std::vector<Control>& kControls = []() -> const std::vector<Control>& {
        std::vector<Control> controls;
        for (const Host::Parameter& parameter : Adapters::DeclaredParameters()) {
            if (parameter.hasValue()) {
                controls.emplace_back(parameter);
            }
        }
        return *new std::vector<Control>(std::move(controls));
    }();
    return kControls;
}

OfxParamSetHandle ParamsOf(OfxImageEffectHandle effect) {
    OfxParamSetHandle params = nullptr;
    Require(HostSuites().effects->getParamSet(effect, &params), "the parameters");
    return params;
}

PropertySet Define(OfxParamSetHandle params, Name type, Name name, Name label) {
    OfxPropertySetHandle handle = nullptr;
    Require(HostSuites().parameters->paramDefine(params, type, name, &handle), name);
    const PropertySet properties(handle);
    properties.set(kOfxPropLabel, label);
    return properties;
}

/// Returns whether `test` holds at any key of the control with that script name.
template <typename Test>
bool EverHolds(OfxParamSetHandle params, std::string_view name, Test test) {
    const auto control = std::ranges::find(DeclaredControls(), name, &Control::scriptName);
    return control != DeclaredControls().end() &&
           std::ranges::any_of(control->valuesAtKeys(params), test);
}

} // namespace

void DefineControls(OfxImageEffectHandle effect) {
    const OfxParamSetHandle params = ParamsOf(effect);
    for (const Group& group : kGroups) {
        Define(params, kOfxParamTypeGroup, group.scriptName, group.label);
    }
    for (const Control& control : DeclaredControls()) {
        control.define(params, GroupOf(control));
    }
    const PropertySet page = Define(params, kOfxParamTypePage, "controls", "Controls");
    int place = 0;
    for (const Control& control : DeclaredControls()) {
        page.offer(kOfxParamPropPageChild, control.scriptName(), place++);
    }
}

Host::ParameterValues ValuesAt(OfxImageEffectHandle effect, OfxTime time) {
    const OfxParamSetHandle params = ParamsOf(effect);
    Host::ParameterValues values;
    for (const Control& control : DeclaredControls()) {
        values.set(control.id(), control.valueAt(params, time));
    }
    return values;
}

bool CanHaveHoles(OfxImageEffectHandle effect) {
    const OfxParamSetHandle params = ParamsOf(effect);
    const auto isOn = [](double value) { return value > 0; };
    const auto isZero = [](double value) { return value == 0; };
    const auto isRadialOut = [](double value) { return value == 3; };
    return EverHolds(params, "useAlpha", isOn) &&
           (EverHolds(params, "dissolve", isOn) || EverHolds(params, "transitionProgress", isOn) ||
            (EverHolds(params, "transitionType", isRadialOut) &&
             EverHolds(params, "feather", isZero)));
}

std::vector<std::string> ControlsOfHoles() {
    return {"useAlpha", "dissolve", "transitionProgress", "transitionType", "feather"};
}

} // namespace Kerovane::OpenFX
