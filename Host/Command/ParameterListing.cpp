#include "Host/Command/ParameterListing.h"

#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/ParameterMeaning.h"
#include "Host/Parameters/ParameterText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kColumns = 7;
using Row = std::array<std::string, kColumns>;
using Widths = std::array<std::size_t, kColumns>;

std::string TableDefault(const Parameter& parameter) {
    return parameter.hasValue() ? FormatValue(parameter, parameter.defaultValue) : "";
}

/// Returns the accepted values and, if the slider's range differs from them, that range.
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

std::string AnimationText(const Parameter& parameter) {
    const std::vector<std::string> names = InterpolationNames(parameter);
    return names.empty() ? "none" : fmt::format("{}", fmt::join(names, ", "));
}

/// Returns each column's width, including two spaces before the next column.
Widths WidthsOf(const std::vector<Row>& rows) {
    Widths widths{};
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < kColumns; ++column) {
            widths[column] = std::max(widths[column], row[column].size() + 2);
        }
    }
    return widths;
}

std::string TableLine(const Row& row, const Widths& widths) {
    std::string line;
    for (std::size_t column = 0; column < kColumns; ++column) {
        line += fmt::format("{:{}}", row[column], widths[column]);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

} // namespace

std::string ParameterTable(const std::vector<Parameter>& parameters,
                           const std::vector<std::string>& options) {
    std::vector<Row> rows{{"Index", "Id", "Type", "Name", "Option", "Default", "Values"}};
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        rows.push_back(TableRow(index, parameters[index], options[index]));
    }
    const Widths widths = WidthsOf(rows);
    const std::size_t nameColumn = widths[0] + widths[1] + widths[2];
    std::string table = TableLine(rows.front(), widths);
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        table += TableLine(rows[index + 1], widths);
        const std::string_view meaning = MeaningOf(parameters[index]);
        if (!meaning.empty()) {
            table += fmt::format("{:{}}{}\n", "", nameColumn, meaning);
        }
    }
    return table;
}

std::string ParameterDescription(const std::vector<Parameter>& parameters,
                                 const std::vector<std::string>& options, std::size_t index) {
    const Parameter& parameter = parameters[index];
    const Row row = TableRow(index, parameter, options[index]);
    const auto& [place, id, type, name, option, standard, values] = row;
    const std::string_view meaning = MeaningOf(parameter);
    const std::string_view unit = UnitOf(parameter);
    return fmt::format("{}\n"
                       "{}"
                       "  option      {}\n"
                       "  takes       {}\n"
                       "  default     {}\n"
                       "  unit        {}\n"
                       "  animation   {}\n"
                       "  type        {}, disk id {}, index {}\n",
                       name, meaning.empty() ? "" : fmt::format("  meaning     {}\n", meaning),
                       option, values, standard, unit.empty() ? "none" : unit,
                       AnimationText(parameter), type, id, place);
}

} // namespace Kerovane::Host
