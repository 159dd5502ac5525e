#include "Host/Command/Commands.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PictureOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/ReadOption.h"
#include "Host/Command/RendererOptions.h"
#include "Host/Command/SheetInput.h"
#include "Host/Command/SheetPainter.h"
#include "Host/Command/SheetPlan.h"
#include "Host/Command/ShotTally.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Sheet/ContactSheet.h"
#include "Host/Shots/FrameList.h"
#include "Host/Text/Error.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

/// The values of the command's options.
struct SheetOptions {
    std::filesystem::path in;
    std::filesystem::path out;
    std::vector<std::string> vary; ///< empty: an overview
    A_long width = 320;            ///< of each picture, in pixels
    std::size_t columns = 8;       ///< pictures in a row before the next row begins
    std::string frames;            ///< empty: frame 0
    std::string rate;              ///< empty: FrameRate's default
    PictureOptions picture;
    PresetOptions preset;
    RendererOptions renderer;
    ParameterOptions parameters;

    void addTo(CLI::App& command);
};

void SheetOptions::addTo(CLI::App& command) {
    command.add_option("IN", in, "picture to read, or a sequence: shot.#.png")
        ->required()
        ->type_name(kFileType);
    command.add_option("OUT", out, "sheet to write, in the format of its extension")
        ->required()
        ->type_name(kFileType);
    command
        .add_option(
            "--vary", vary,
            "a parameter to vary; PARAMETER alone for all choices; 8..64x8 for eight values; "
            "twice for a grid; without --vary an overview")
        ->allow_extra_args(false)
        ->take_all()
        ->type_name(kVariationType);
    constexpr int kMinWidth = 16;
    command
        .add_option("--width", width, "width of each picture in pixels, at most that of IN [320]")
        ->check(CLI::Range(kMinWidth, World::kMaxSide).description(""))
        ->type_name("N");
    constexpr std::size_t kMostColumns = 1000;
    command.add_option("--columns", columns, "pictures in a row, if only one thing varies [8]")
        ->check(CLI::Range(std::size_t{1}, kMostColumns).description(""))
        ->type_name("N");
    command
        .add_option("--frames", frames,
                    "frames of the keys or the sequence to show: 0-48x6 or 1,5,9")
        ->type_name("LIST");
    command.add_option("--fps", rate, "frames a second: 25, 23.976 or 24000/1001 [24]")
        ->type_name("RATE");
    picture.addTo(command);
    preset.addLoadingTo(command);
    renderer.addTo(command);
    command.footer("Example:\n  tesselune sheet photo.jpg sheet.png --vary size=8,16,32 "
                   "--vary direction=0,45,90 \\\n      --transition-progress 50");
}

Label LabelOf(const SheetCell& cell) {
    if (cell.isOriginal()) {
        return {"original"};
    }
    Label label;
    if (cell.frame) {
        label.push_back(fmt::format("frame {}", *cell.frame));
    }
    for (const SheetSetting& setting : cell.settings) {
        label.push_back(setting.text);
    }
    return label;
}

/// Returns an empty sheet with a place for each cell of `plan`.
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

/// Returns `origin`, the input's metadata, with the sheet's size and without an offset.
OIIO::ImageSpec OriginOfSheet(OIIO::ImageSpec origin, const World& sheet) {
    origin.x = origin.y = origin.full_x = origin.full_y = 0;
    origin.width = origin.full_width = sheet.width();
    origin.height = origin.full_height = sheet.height();
    return origin;
}

FrameList FramesOf(const SheetOptions& options) {
    return options.frames.empty() ? FrameList()
                                  : ReadOption("--frames", options.frames, ParseFrames);
}

SheetPlan PlanOf(const SheetOptions& options, const std::vector<Parameter>& parameters,
                 const ParameterSettings& onLine) {
    const SheetRequest request{
        .vary = options.vary, .frames = FramesOf(options), .columns = options.columns};
    if (request.vary.empty() && request.frames.empty()) {
        return Overview(parameters, options.parameters.names());
    }
    SheetPlan plan = Variations(request, parameters, options.parameters.names());
    for (const SheetSetting& setting : plan.front().front().settings) {
        if (onLine.contains(setting.id)) {
            const std::string option = setting.text.substr(0, setting.text.find(' '));
            throw Error(fmt::format("--{0} is given and --vary {0} too", option));
        }
    }
    return plan;
}

/** Shows a sheet's progress on a terminal. */
class SheetProgress {
public:
    SheetProgress(const SheetPlan& plan, StandardStreams& streams)
        : mStreams(streams), mIsShown(streams.terminalColumns().has_value()) {
        for (const std::vector<SheetCell>& row : plan) {
            mCells += row.size();
        }
    }
    ~SheetProgress() { draw(""); }
    SheetProgress(const SheetProgress&) = delete;
    SheetProgress& operator=(const SheetProgress&) = delete;

    void cellEnded() { draw(fmt::format("{} of {} pictures", ++mEnded, mCells)); }

private:
    void draw(const std::string& text) {
        if (mIsShown) {
            mStreams.draw("\r\x1b[K" + text);
        }
    }

    StandardStreams& mStreams;
    bool mIsShown;
    std::size_t mCells = 0;
    std::size_t mEnded = 0;
};

void MakeSheet(const SheetOptions& options, CommandContext& context) {
    FrameRenderer& renderer = context.renderer();
    const ParameterSettings onLine = options.parameters.settings();
    const SheetPlan plan = PlanOf(options, renderer.parameters(), onLine);
    const Preset look = options.preset.load(renderer, onLine);
    const PictureWriter writer(options.out);
    const FrameRate rate =
        options.rate.empty() ? FrameRate() : ReadOption("--fps", options.rate, ParseFrameRate);
    ReadSetting reading;
    options.picture.set(reading);
    SheetInput inputs(options.in, reading, plan.front().front().frame);
    SheetPainter painter(renderer, options.renderer.choose(context, look.renderer), look.settings,
                         rate, options.picture.conversion());
    ContactSheet sheet = Layout(plan, inputs.last().first().world, options.width);
    {
        SheetProgress progress(plan, context.streams());
        for (std::size_t row = 0; row < plan.size(); ++row) {
            for (std::size_t column = 0; column < plan[row].size(); ++column) {
                const SheetCell& cell = plan[row][column];
                sheet.place(row, column, painter.paint(cell, inputs.of(cell).first().world));
                progress.cellEnded();
            }
        }
    }
    const Picture& picture = inputs.last();
    World page = sheet.world(picture.first().world.depth());
    const OIIO::ImageSpec origin = OriginOfSheet(picture.origin(), page);
    writer.write(PictureOf(std::move(page), origin, {.hasAlpha = false}));
    if (painter.nonFinitePixels() > 0) {
        context.streams().complain(NonFiniteText(painter.nonFinitePixels()));
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
