#include "Host/Command/SheetPlan.h"

#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"
#include "Host/Text/Split.h"

#include <fmt/format.h>

#include <algorithm>

namespace Kerovane::Host {

namespace {

/// All settings of one parameter that a row or a column goes through.
using Axis = std::vector<SheetSetting>;

/// An effect's parameters with the options that they have, both by index.
struct Options {
    const std::vector<Parameter>& parameters;
    const std::vector<std::string>& names;

    const Parameter& parameter(std::string_view name) const {
        const auto found = std::ranges::find(names, name);
        if (name.empty() || found == names.end()) {
            throw Error(fmt::format("--vary: the effect has no parameter '{}'", name));
        }
        return parameters[static_cast<std::size_t>(found - names.begin())];
    }
};

std::vector<std::string> AllChoices(std::string_view option, const Parameter& parameter) {
    std::vector<std::string> choices = TypedChoices(parameter);
    if (choices.empty()) {
        throw Error(fmt::format("--vary {0} needs values: --vary {0}={1},...", option,
                                FormatValue(parameter, parameter.defaultValue)));
    }
    return choices;
}

std::vector<std::string> Values(std::string_view list) {
    const std::vector<std::string_view> values = Split(list, ',');
    return {values.begin(), values.end()};
}

Axis ParseAxis(std::string_view text, const Options& options) {
    const std::size_t equals = text.find('=');
    const std::string_view option = text.substr(0, equals);
    const Parameter& parameter = options.parameter(option);
    const std::vector<std::string> values = equals == std::string_view::npos
                                                ? AllChoices(option, parameter)
                                                : Values(text.substr(equals + 1));
    Axis axis;
    for (const std::string& typed : values) {
        try {
            const double value = ParseValue(parameter, typed);
            axis.push_back({.id = parameter.id(),
                            .value = value,
                            .text = fmt::format("{} {}", option, FormatValue(parameter, value))});
        } catch (const Error& error) {
            throw Error(fmt::format("--vary {} {}", option, error.what()));
        }
    }
    return axis;
}

std::vector<SheetCell> Row(const Axis& across) {
    std::vector<SheetCell> cells;
    for (const SheetSetting& setting : across) {
        cells.push_back({setting});
    }
    return cells;
}

SheetPlan Grid(const Axis& across, const Axis& down) {
    SheetPlan rows;
    for (const SheetSetting& setting : down) {
        rows.push_back(Row(across));
        for (SheetCell& cell : rows.back()) {
            cell.push_back(setting);
        }
    }
    return rows;
}

} // namespace

SheetPlan Overview(const std::vector<Parameter>& parameters,
                   const std::vector<std::string>& options) {
    const auto axis = [&](std::string_view text) {
        return ParseAxis(text, {.parameters = parameters, .names = options});
    };
    SheetPlan plan{Row(axis("shape-type"))};
    plan.front().emplace(plan.front().begin());
    plan.push_back(Grid(axis("transition-type"), axis("transition-progress=50")).front());
    plan.push_back(Row(axis("transition-progress=15,30,45")));
    plan.push_back(Row(axis("transition-progress=60,75,90")));
    return plan;
}

SheetPlan Variations(const std::vector<std::string>& texts,
                     const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options) {
    if (texts.empty() || texts.size() > 2) {
        throw Error(fmt::format("--vary takes one parameter or two, not {}", texts.size()));
    }
    const Options all{.parameters = parameters, .names = options};
    const Axis across = ParseAxis(texts.front(), all);
    if (texts.size() == 1) {
        return {Row(across)};
    }
    const Axis down = ParseAxis(texts.back(), all);
    if (across.front().id == down.front().id) {
        throw Error(fmt::format("--vary {} and {}: two different parameters are needed",
                                texts.front(), texts.back()));
    }
    return Grid(across, down);
}

} // namespace Kerovane::Host
