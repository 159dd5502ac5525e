#include "Host/Command/Commands.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/RendererOptions.h"
#include "Host/Command/SheetPlan.h"
#include "Host/Command/ShotTally.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Sheet/ContactSheet.h"
#include "Host/Text/Error.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace Kerovane::Host {

namespace {

/// What the line asks for.
struct SheetOptions {
    std::filesystem::path in;
    std::filesystem::path out;
    std::vector<std::string> vary; ///< empty: an overview
    A_long width = 320;            ///< of a cell's picture, in pixels
    std::size_t columns = 8;       ///< of a row that goes on in the next
    PresetOptions preset;
    RendererOptions renderer;
    ParameterOptions parameters;

    void addTo(CLI::App& command);
};

void SheetOptions::addTo(CLI::App& command) {
    command.add_option("IN", in, "picture to read")->required()->type_name(kFileType);
    command.add_option("OUT", out, "sheet to write, its format as its extension says")
        ->required()
        ->type_name(kFileType);
    command
        .add_option("--vary", vary,
                    "a parameter to vary, the whole effect if there is none; PARAMETER alone for "
                    "all choices; 8..64x8 for eight values; twice for a grid")
        ->allow_extra_args(false)
        ->take_all()
        ->type_name(kVariationType);
    constexpr int kMinWidth = 16;
    command.add_option("--width", width, "pixels across each picture, at most IN's own [320]")
        ->check(CLI::Range(kMinWidth, World::kMaxSide).description(""))
        ->type_name("N");
    constexpr std::size_t kMostColumns = 1000;
    command
        .add_option("--columns", columns, "pictures in a row, if one parameter varies alone [8]")
        ->check(CLI::Range(std::size_t{1}, kMostColumns).description(""))
        ->type_name("N");
    preset.addLoadingTo(command);
    renderer.addTo(command);
    command.footer("Example:\n  tesselune sheet photo.jpg sheet.png --vary size=8,16,32 "
                   "--vary direction=0,45,90 \\\n      --transition-progress 50");
}

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

SheetPlan PlanOf(const SheetOptions& options, const std::vector<Parameter>& parameters,
                 const ParameterSettings& onLine) {
    if (options.vary.empty()) {
        return Overview(parameters, options.parameters.names());
    }
    SheetPlan plan =
        Variations(options.vary, parameters, options.parameters.names(), options.columns);
    for (const SheetSetting& setting : plan.front().front()) {
        if (onLine.contains(setting.id)) {
            const std::string option = setting.text.substr(0, setting.text.find(' '));
            throw Error(fmt::format("--{0} is given and --vary {0} too", option));
        }
    }
    return plan;
}

void MakeSheet(const SheetOptions& options, CommandContext& context) {
    FrameRenderer& renderer = context.renderer();
    const ParameterSettings onLine = options.parameters.settings();
    const SheetPlan plan = PlanOf(options, renderer.parameters(), onLine);
    const Preset look = options.preset.load(renderer, onLine);
    const ParameterValues fixed = ValuesOverTime(look.settings, FrameRate());
    const PictureWriter writer(options.out);
    const Picture picture = ReadPicture(options.in);
    const World& input = picture.world;
    const Renderer with = options.renderer.choose(context, look.renderer);
    ContactSheet sheet = Layout(plan, input, options.width);
    World output(input.depth(), input.width(), input.height());
    std::size_t nonFinitePixels = 0; // the same in every cell
    for (std::size_t row = 0; row < plan.size(); ++row) {
        for (std::size_t column = 0; column < plan[row].size(); ++column) {
            const SheetCell& cell = plan[row][column];
            if (!cell.empty()) {
                nonFinitePixels =
                    renderer.render({}, ValuesOf(cell, fixed), ViewOf(input), ViewOf(output), with);
            }
            sheet.place(row, column, cell.empty() ? input : output);
        }
    }
    const World page = sheet.world(input.depth());
    writer.write(page, OriginOfSheet(picture.origin, page));
    for (const std::string& loss : picture.losses) {
        context.streams().complain(loss);
    }
    if (!picture.others.isEmpty()) {
        context.streams().complain(LossOf(picture.others));
    }
    if (nonFinitePixels > 0) {
        context.streams().complain(NonFiniteText(nonFinitePixels));
    }
}

void SetUp(CLI::App& command, CommandContext& context) {
    const auto options = std::make_shared<SheetOptions>();
    options->addTo(command);
    context.addParametersTo(command, options->parameters);
    command.callback([options, &context] { MakeSheet(*options, context); });
}

const CommandRegistration kSheet({.name = "sheet",
                                  .description = "Show a picture under many settings on one page",
                                  .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
