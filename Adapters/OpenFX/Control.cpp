#include "Adapters/OpenFX/Control.h"

#include "Adapters/OpenFX/PropertySet.h"
#include "Adapters/OpenFX/Suites.h"
#include "Host/Parameters/ParameterMeaning.h"
#include "Host/Parameters/ParameterText.h"

#include <fmt/format.h>

#include <utility>

namespace Kerovane::OpenFX {

namespace {

Name TypeOf(const Host::Parameter& parameter) {
    switch (parameter.type()) {
    case PF_Param_POPUP:
        return kOfxParamTypeChoice;
    case PF_Param_CHECKBOX:
        return kOfxParamTypeBoolean;
    case PF_Param_SLIDER:
        return kOfxParamTypeInteger;
    default:
        return kOfxParamTypeDouble;
    }
}

/// Converts "size-random" to "sizeRandom".
std::string CamelCase(const std::string& typedName) {
    std::string name;
    bool isAfterHyphen = false;
    for (const char letter : typedName) {
        const bool isSmall = letter >= 'a' && letter <= 'z';
        if (letter != '-') {
            name += isAfterHyphen && isSmall ? static_cast<char>(letter - 'a' + 'A') : letter;
        }
        isAfterHyphen = letter == '-';
    }
    return name;
}

std::string HintOf(const Host::Parameter& parameter) {
    std::string hint(Host::MeaningOf(parameter));
    if (hint.empty()) {
        return hint;
    }
    if (parameter.isPercent()) {
        hint += "; 1 stands for 100 percent";
    }
    if (parameter.displayName() == "Use Alpha") {
        hint += "; an output without alpha shows holes as black";
    }
    return hint + ".";
}

} // namespace

Control::Control(Host::Parameter parameter)
    : mParameter(std::move(parameter)),
      mScriptName(CamelCase(Host::TypedName(mParameter.displayName()))),
      mType(TypeOf(mParameter)),
      mUnit(mParameter.isPercent() ? 100 : 1),
      mOffset(mParameter.type() == PF_Param_POPUP ? 1 : 0) {}

void Control::define(OfxParamSetHandle params, const std::string& group) const {
    OfxPropertySetHandle handle = nullptr;
    Require(HostSuites().parameters->paramDefine(params, mType, mScriptName.c_str(), &handle),
            "the parameter " + mScriptName);
    const PropertySet properties(handle);
    introduce(properties, group);
    int choice = 0;
    for (const std::string& name : mParameter.choices) {
        properties.set(kOfxParamPropChoiceOption, name, choice++);
    }
    if (mType == kOfxParamTypeDouble) {
        declareValues<double>(properties);
    } else {
        declareValues<int>(properties);
    }
    if (mParameter.isPercent()) {
        properties.offer(kOfxParamPropDoubleType, kOfxParamDoubleTypeScale);
    } else if (mParameter.type() == PF_Param_ANGLE) {
        properties.offer(kOfxParamPropDoubleType, kOfxParamDoubleTypeAngle);
    }
}

void Control::introduce(const PropertySet& properties, const std::string& group) const {
    properties.set(kOfxPropLabel, mParameter.displayName());
    properties.offer(kOfxPropShortLabel, mParameter.displayName());
    properties.offer(kOfxPropLongLabel, mParameter.displayName());
    properties.offer(kOfxParamPropScriptName, mScriptName);
    properties.offer(kOfxParamPropHint, HintOf(mParameter));
    if (!group.empty()) {
        properties.offer(kOfxParamPropParent, group);
    }
    if (!mParameter.canVaryOverTime()) {
        properties.offer(kOfxParamPropAnimates, 0);
    }
}

template <typename Value>
void Control::declareValues(const PropertySet& properties) const {
    const auto inHostsUnits = [this](double value) {
        return static_cast<Value>((value - mOffset) / mUnit);
    };
    properties.set(kOfxParamPropDefault, inHostsUnits(mParameter.defaultValue));
    if (mType == kOfxParamTypeChoice || mType == kOfxParamTypeBoolean) {
        return;
    }
    // An angle has no slider: show one turn.
    const bool isAngle = mParameter.type() == PF_Param_ANGLE;
    const Host::Interval shown = isAngle ? Host::Interval{0, 360} : mParameter.slider;
    properties.set(kOfxParamPropMin, inHostsUnits(mParameter.valid.min));
    properties.set(kOfxParamPropMax, inHostsUnits(mParameter.valid.max));
    properties.set(kOfxParamPropDisplayMin, inHostsUnits(shown.min));
    properties.set(kOfxParamPropDisplayMax, inHostsUnits(shown.max));
}

double Control::valueAt(OfxParamSetHandle params, OfxTime time) const {
    return readAt(handleIn(params), time);
}

std::vector<double> Control::valuesAtKeys(OfxParamSetHandle params) const {
    const OfxParamHandle handle = handleIn(params);
    unsigned int keys = 0;
    if (HostSuites().parameters->paramGetNumKeys(handle, &keys) != kOfxStatOK || keys == 0) {
        return {readAt(handle, 0)};
    }
    std::vector<double> values;
    for (unsigned int key = 0; key < keys; ++key) {
        OfxTime time = 0;
        Require(HostSuites().parameters->paramGetKeyTime(handle, key, &time),
                "a key of " + mScriptName);
        values.push_back(readAt(handle, time));
    }
    return values;
}

OfxParamHandle Control::handleIn(OfxParamSetHandle params) const {
    OfxParamHandle handle = nullptr;
    OfxPropertySetHandle properties = nullptr;
    Require(
        HostSuites().parameters->paramGetHandle(params, mScriptName.c_str(), &handle, &properties),
        "the parameter " + mScriptName);
    return handle;
}

double Control::readAt(OfxParamHandle handle, OfxTime time) const {
    const std::string request = "the value of " + mScriptName;
    double real = 0;
    int whole = 0;
    if (mType == kOfxParamTypeDouble) {
        Require(HostSuites().parameters->paramGetValueAtTime(handle, time, &real), request);
    } else {
        Require(HostSuites().parameters->paramGetValueAtTime(handle, time, &whole), request);
        real = whole;
    }
    return real * mUnit + mOffset;
}

} // namespace Kerovane::OpenFX
