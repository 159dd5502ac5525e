#include "Host/Command/ParameterListing.h"

#include "Host/Command/ParameterOptions.h"
#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterText.h"
#include "Host/Text/JsonNumber.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Kerovane::Host {

namespace {

using Json = nlohmann::ordered_json;
using Row = std::array<std::string, 7>;

std::string TableDefault(const Parameter& parameter) {
    return parameter.hasValue() ? FormatValue(parameter, parameter.defaultValue) : "";
}

/// What can be set, with the slider's reach where that is less.
std::string TableValues(const Parameter& parameter) {
    if (!parameter.hasValue()) {
        return "";
    }
    const Interval& slider = parameter.slider;
    std::string values = AcceptedValues(parameter);
    if (slider.min != parameter.valid.min || slider.max != parameter.valid.max) {
        values += fmt::format(", slider from {:g} to {:g}", slider.min, slider.max);
    }
    return values;
}

Row TableRow(std::size_t index, const Parameter& parameter, const std::string& option) {
    return {std::to_string(index),
            parameter.type() == PF_Param_LAYER ? "" : std::to_string(parameter.id()),
            std::string(TypeName(parameter)),
            parameter.displayName(),
            option.empty() ? "" : "--" + option,
            TableDefault(parameter),
            TableValues(parameter)};
}

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

Json InterpolationNames(const Parameter& parameter) {
    Json names = Json::array();
    for (const Interpolation interpolation : Interpolations(parameter)) {
        names.push_back(InterpolationName(interpolation));
    }
    return names;
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

std::string Text(const Json& json) {
    constexpr int kIndent = 2;
    return json.dump(kIndent, ' ', false, Json::error_handler_t::replace) + '\n';
}

std::string AnimationText(const Parameter& parameter) {
    std::string text;
    for (const Interpolation interpolation : Interpolations(parameter)) {
        text += text.empty() ? "" : ", ";
        text += InterpolationName(interpolation);
    }
    return text.empty() ? "none" : text;
}

} // namespace

std::string ParameterTable(const std::vector<Parameter>& parameters) {
    const std::vector<std::string> options = OptionNames(parameters);
    std::vector<Row> rows{{"Index", "Id", "Type", "Name", "Option", "Default", "Values"}};
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        rows.push_back(TableRow(index, parameters[index], options[index]));
    }
    std::string table;
    for (const Row& row : rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const auto widest = std::ranges::max(
                rows, {}, [column](const Row& other) { return other[column].size(); });
            line += fmt::format("{:{}}  ", row[column], widest[column].size());
        }
        line.erase(line.find_last_not_of(' ') + 1);
        table += line + '\n';
    }
    return table;
}

std::string ParameterJson(const std::vector<Parameter>& parameters) {
    const std::vector<std::string> options = OptionNames(parameters);
    Json list = Json::array();
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        list.push_back(Entry(index, parameters[index], options[index]));
    }
    return Text(Json{{"parameters", list}});
}

std::string ParameterJson(const std::vector<Parameter>& parameters, std::size_t index) {
    return Text(Entry(index, parameters[index], OptionNames(parameters)[index]));
}

std::string ParameterDescription(const std::vector<Parameter>& parameters, std::size_t index) {
    const Parameter& parameter = parameters[index];
    const Row row = TableRow(index, parameter, OptionNames(parameters)[index]);
    const auto& [place, id, type, name, option, standard, values] = row;
    const std::string_view unit = UnitName(parameter);
    return fmt::format("{}\n"
                       "  option      {}\n"
                       "  takes       {}\n"
                       "  default     {}\n"
                       "  unit        {}\n"
                       "  animation   {}\n"
                       "  type        {}, disk id {}, index {}\n",
                       name, option, values, standard, unit.empty() ? "none" : unit,
                       AnimationText(parameter), type, id, place);
}

} // namespace Kerovane::Host
