#include "Host/Parameters/ParameterSchema.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterMeaning.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Text/JsonNumber.h"
#include "Host/Text/JsonText.h"

namespace Kerovane::Host {

namespace {

using Json = nlohmann::ordered_json;

Json Range(const Interval& interval) {
    return {{"min", JsonNumber(interval.min)}, {"max", JsonNumber(interval.max)}};
}

Json Choices(const Parameter& parameter) {
    Json choices = Json::array();
    for (std::size_t choice = 0; choice < parameter.choices.size(); ++choice) {
        choices.push_back({{"value", choice + 1},
                           {"name", parameter.choices[choice]},
                           {"typed", TypedName(parameter.choices[choice])}});
    }
    return choices;
}

Json Entry(std::size_t index, const Parameter& parameter, const std::string& option) {
    Json entry{{"index", index}, {"type", TypeName(parameter)}, {"name", parameter.name}};
    if (parameter.type() != PF_Param_LAYER) {
        entry["id"] = parameter.id();
    }
    if (!parameter.hasValue()) {
        return entry;
    }
    entry["label"] = parameter.label;
    entry["meaning"] = MeaningOf(parameter);
    entry["option"] = option;
    entry["unit"] = UnitName(parameter);
    entry["default"] = JsonNumber(parameter.defaultValue);
    entry["valid"] = Range(parameter.valid);
    entry["slider"] = Range(parameter.slider);
    entry["precision"] = parameter.precision;
    entry["choices"] = Choices(parameter);
    entry["animatable"] = parameter.canVaryOverTime();
    entry["interpolations"] = InterpolationNames(parameter);
    return entry;
}

} // namespace

std::string ParameterSchema(const std::vector<Parameter>& parameters,
                            const std::vector<std::string>& options) {
    Json list = Json::array();
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        list.push_back(Entry(index, parameters[index], options[index]));
    }
    return JsonText(Json{{"parameters", list}});
}

std::string ParameterSchema(const std::vector<Parameter>& parameters,
                            const std::vector<std::string>& options, std::size_t index) {
    return JsonText(Entry(index, parameters[index], options[index]));
}

} // namespace Kerovane::Host
