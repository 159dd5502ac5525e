#include "Host/Command/SheetCommand.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Session/Drawable.h"
#include "Host/Sheet/ContactSheet.h"
#include "Host/Text/Error.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Kerovane::Host {

namespace {

Label LabelOf(const SheetCell& cell) {
    if (cell.empty()) {
        return {"original"};
    }
    Label label;
    for (const SheetSetting& setting : cell) {
        label.push_back(setting.text);
    }
    return label;
}

/// An empty sheet with a place for each cell of `plan`.
ContactSheet Layout(const SheetPlan& plan, const World& input, A_long width) {
    std::vector<std::vector<Label>> labels;
    for (const std::vector<SheetCell>& row : plan) {
        labels.emplace_back();
        std::ranges::transform(row, std::back_inserter(labels.back()), LabelOf);
    }
    const A_long pictureWidth = std::min(width, input.width());
    const double height = static_cast<double>(input.height()) * pictureWidth / input.width();
    return {std::move(labels), pictureWidth, std::max(1, static_cast<int>(std::lround(height)))};
}

ParameterValues ValuesOf(const SheetCell& cell, ParameterValues values) {
    for (const SheetSetting& setting : cell) {
        values.set(setting.id, setting.value);
    }
    return values;
}

/// What is said of the picture is said of the sheet, which has a size of its own.
OIIO::ImageSpec OriginOfSheet(OIIO::ImageSpec origin, const World& sheet) {
    origin.x = origin.y = origin.full_x = origin.full_y = 0;
    origin.width = origin.full_width = sheet.width();
    origin.height = origin.full_height = sheet.height();
    return origin;
}

} // namespace

void SheetCommand::addTo(CLI::App& command) {
    command.add_option("IN", mIn, "picture to read")->required()->type_name("");
    command.add_option("OUT", mOut, "sheet to write, its format as its extension says")
        ->required()
        ->type_name("");
    command
        .add_option("--vary", mVary,
                    "NAME=VALUE,...: a parameter to vary, the whole effect where none is; NAME "
                    "alone for all choices; twice for a grid")
        ->allow_extra_args(false)
        ->type_name("");
    constexpr int kMinWidth = 16;
    command.add_option("--width", mWidth, "pixels across each picture, at most IN's own [320]")
        ->check(CLI::Range(kMinWidth, World::kMaxSide).description(""))
        ->type_name("");
    command.footer("Example:\n  tesselune sheet photo.jpg sheet.png --vary size=8,16,32 "
                   "--vary direction=0,45,90 \\\n      --transition-progress 50");
}

void SheetCommand::addParametersTo(CLI::App& command, const Effect& effect) {
    mParameters.addTo(command, effect.parameters());
}

void SheetCommand::run(Effect& effect) const {
    const ParameterValues fixed = mParameters.values();
    const SheetPlan plan = this->plan(effect, fixed);
    const PictureWriter writer(mOut);
    const Picture picture = ReadPicture(mIn);
    const World& input = picture.world;
    CheckDrawable(input.width(), input.height());
    ContactSheet sheet = Layout(plan, input, mWidth);
    World output(input.depth(), input.width(), input.height());
    for (std::size_t row = 0; row < plan.size(); ++row) {
        for (std::size_t column = 0; column < plan[row].size(); ++column) {
            const SheetCell& cell = plan[row][column];
            if (!cell.empty()) {
                effect.render({}, ValuesOf(cell, fixed), input, output);
            }
            sheet.place(row, column, cell.empty() ? input : output);
        }
    }
    const World page = sheet.world(input.depth());
    writer.write(page, OriginOfSheet(picture.origin, page));
}

SheetPlan SheetCommand::plan(const Effect& effect, const ParameterValues& fixed) const {
    if (mVary.empty()) {
        return Overview(effect.parameters(), mParameters.names());
    }
    SheetPlan plan = Variations(mVary, effect.parameters(), mParameters.names());
    for (const SheetSetting& setting : plan.front().front()) {
        if (fixed.at(setting.id, {})) {
            const std::string option = setting.text.substr(0, setting.text.find(' '));
            throw Error(fmt::format("--{0} is given and --vary {0} too", option));
        }
    }
    return plan;
}

} // namespace Kerovane::Host
