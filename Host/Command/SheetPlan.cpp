#include "Host/Command/SheetPlan.h"

#include "Host/Parameters/ParameterText.h"
#include "Host/Text/Error.h"
#include "Host/Text/NumberText.h"
#include "Host/Text/Split.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace Kerovane::Host {

namespace {

/// The cells along a row or a column: the values of one parameter, or frames.
using Axis = std::vector<SheetCell>;

/// An effect's parameters and the names of their options, both by index.
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

/// The parts of "8..64x8", eight values from 8 to 64.
struct RangeText {
    std::string_view first;
    std::string_view last;
    std::string_view count;

    /// Returns nothing if `text` is not a range.
    static std::optional<RangeText> of(std::string_view text) {
        constexpr std::string_view kTo = "..";
        const std::size_t to = text.find(kTo);
        if (to == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string_view rest = text.substr(to + kTo.size());
        const std::size_t times = rest.rfind('x');
        return RangeText{.first = text.substr(0, to),
                         .last = rest.substr(0, times),
                         .count = times != std::string_view::npos ? rest.substr(times + 1) : ""};
    }
};

/// Returns the evenly spaced values of a range. Rounds them if the parameter takes whole numbers
/// only, and then leaves out repeated values.
std::vector<double> ValuesBetween(const Parameter& parameter, const RangeText& range) {
    constexpr A_long kMost = 1000;
    if (!TypedChoices(parameter).empty()) {
        throw Error("takes a list of its choices and no range");
    }
    const A_long count = ParseWhole(range.count).value_or(0);
    if (count < 2 || count > kMost) {
        throw Error(fmt::format("takes ranges like 8..64x8, of 2 to {} values", kMost));
    }
    const double first = ParseValue(parameter, range.first);
    const double last = ParseValue(parameter, range.last);
    std::vector<double> values;
    for (A_long i = 0; i < count; ++i) {
        const double value = first + (last - first) * i / (count - 1);
        const double kept = parameter.takesWholeNumbers() ? std::round(value) : value;
        if (values.empty() || kept != values.back()) {
            values.push_back(kept);
        }
    }
    return values;
}

std::vector<double> ParseValues(const Parameter& parameter, std::string_view text) {
    const std::optional<RangeText> range = RangeText::of(text);
    return range ? ValuesBetween(parameter, *range) : std::vector{ParseValue(parameter, text)};
}

Axis ParseAxis(std::string_view text, const Options& options) {
    const std::size_t equals = text.find('=');
    const std::string_view option = text.substr(0, equals);
    const Parameter& parameter = options.parameter(option);
    const std::vector<std::string> choices = equals == std::string_view::npos
                                                 ? AllChoices(option, parameter)
                                                 : std::vector<std::string>();
    const std::vector<std::string_view> typed =
        choices.empty() ? Split(text.substr(equals + 1), ',')
                        : std::vector<std::string_view>(choices.begin(), choices.end());
    Axis axis;
    for (const std::string_view part : typed) {
        try {
            for (const double value : ParseValues(parameter, part)) {
                axis.push_back(
                    {.settings = {
                         {.id = parameter.id(),
                          .value = value,
                          .text = fmt::format("{} {}", option, FormatValue(parameter, value))}}});
            }
        } catch (const Error& error) {
            throw Error(fmt::format("--vary {} {}", option, error.what()));
        }
    }
    return axis;
}

Axis FrameAxis(const FrameList& frames) {
    Axis axis;
    for (const A_long frame : frames) {
        axis.push_back({.frame = frame});
    }
    return axis;
}

/// Returns the cells in rows of `columns`.
SheetPlan Wrapped(const Axis& cells, std::size_t columns) {
    SheetPlan rows;
    for (const SheetCell& cell : cells) {
        if (rows.empty() || rows.back().size() == columns) {
            rows.emplace_back();
        }
        rows.back().push_back(cell);
    }
    return rows;
}

SheetPlan Grid(const Axis& across, const Axis& down) {
    SheetPlan rows;
    for (const SheetCell& other : down) {
        rows.push_back(across);
        for (SheetCell& cell : rows.back()) {
            cell.settings.insert(cell.settings.end(), other.settings.begin(), other.settings.end());
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
    SheetPlan plan{axis("shape-type")};
    plan.front().emplace(plan.front().begin());
    plan.push_back(Grid(axis("transition-type"), axis("transition-progress=50")).front());
    plan.push_back(axis("transition-progress=15,30,45"));
    plan.push_back(axis("transition-progress=60,75,90"));
    return plan;
}

SheetPlan Variations(const SheetRequest& request, const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options) {
    const Options all{.parameters = parameters, .names = options};
    std::vector<Axis> axes;
    if (!request.frames.empty()) {
        axes.push_back(FrameAxis(request.frames));
    }
    for (const std::string& text : request.vary) {
        axes.push_back(ParseAxis(text, all));
    }
    if (axes.empty() || axes.size() > 2) {
        throw Error(fmt::format("--vary takes one parameter or two{}, not {}",
                                request.frames.empty() ? "" : ", or one beside --frames",
                                request.vary.size()));
    }
    if (axes.size() == 1) {
        return Wrapped(axes.front(), request.columns);
    }
    if (request.frames.empty() &&
        axes.front().front().settings.front().id == axes.back().front().settings.front().id) {
        throw Error(fmt::format("--vary {} and {}: two different parameters are needed",
                                request.vary.front(), request.vary.back()));
    }
    return Grid(axes.front(), axes.back());
}

} // namespace Kerovane::Host
