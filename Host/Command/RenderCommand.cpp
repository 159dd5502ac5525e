#include "Host/Command/Commands.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/RendererOptions.h"
#include "Host/Command/ShotOptions.h"
#include "Host/Command/ShotReport.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Shots/Interruption.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <csignal>
#include <filesystem>
#include <memory>

namespace Kerovane::Host {

namespace {

/// What the line asks for.
struct RenderOptions {
    std::filesystem::path in;
    std::filesystem::path out;
    A_long downsample = 1;
    std::filesystem::path jsonLog; ///< empty: none
    bool quiet = false;
    ShotOptions shot;
    RendererOptions renderer;
    PresetOptions preset;
    ParameterOptions parameters;

    void addTo(CLI::App& command);
};

void RenderOptions::addTo(CLI::App& command) {
    constexpr int kMaxDownsample = 64;
    command
        .add_option("IN", in,
                    "picture to read, or sequence: shot.#.png, shot.%04d.exr, 'shot.$F4.exr'")
        ->required()
        ->type_name(kFileType);
    command.add_option("OUT", out, "picture or sequence to write, as its extension says")
        ->required()
        ->type_name(kFileType);
    shot.addTo(command);
    command
        .add_option("--downsample", downsample,
                    "IN is a preview, reduced so many times: pixels in parameters follow [1]")
        ->check(CLI::Range(1, kMaxDownsample).description(""))
        ->type_name("N");
    renderer.addTo(command);
    preset.addTo(command);
    command.add_flag("--quiet", quiet, "show failures only")->group("Progress");
    command.add_option("--json-log", jsonLog, "a line of JSON for each frame; - is the output")
        ->type_name(kFileType)
        ->group("Progress");
    command.footer("A parameter takes one value, or keys FRAME:VALUE with linear, hold, smooth, "
                   "ease-in, ease-out or ease-in-out behind them.\n\nExamples:\n"
                   "  tesselune render photo.jpg cells.png --shape-type triangle --size 40\n"
                   "  tesselune render shot.#.exr out.#.exr --frames 1001-1050 \\\n"
                   "      --transition-progress \"1001:0:smooth 1050:100\"");
}

/// A single picture is frame 0, and what fails with it fails as a whole.
Shot SinglePicture(const ShotRequest& request) {
    Shot shot;
    shot.frames.push_back({.number = 0, .input = request.input, .output = request.output});
    return shot;
}

void TellMissing(const Shot& shot, MissingFrames missing, StandardStreams& streams) {
    if (!shot.missing.empty()) {
        streams.complain(fmt::format("missing frames {}: {}",
                                     missing == MissingFrames::Hold ? "held" : "skipped",
                                     FormatFrames(shot.missing)));
    }
}

/// Targets that can't be written at all are told of before anything is rendered.
void CheckTarget(const Shot& shot) {
    if (!shot.frames.empty()) {
        PictureWriter(shot.frames.front().output);
    }
}

void CheckTimes(const Shot& shot, FrameRate rate) {
    if (!shot.frames.empty()) {
        rate.timeOf(shot.frames.front().number);
        rate.timeOf(shot.frames.back().number);
    }
}

/// Ignores SIGXFSZ and SIGPIPE: writing then fails with an error code instead of ending the
/// process.
void LetWritingFail() {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

int Render(const RenderOptions& options, CommandContext& context) {
    FrameRenderer& renderer = context.renderer();
    Preset preset = options.preset.load(renderer);
    ParameterSettings settings = options.parameters.settings();
    settings.merge(preset.settings); // adds what isn't there
    const ShotRequest request = options.shot.request(options.in, options.out);
    const FrameRate rate = options.shot.rate();
    const Rendering rendering = AsksForShot(request) ? Rendering::Shot : Rendering::Picture;
    const Shot shot = rendering == Rendering::Shot ? PlanShot(request) : SinglePicture(request);
    CheckTimes(shot, rate);
    CheckTarget(shot);
    preset.renderer = options.renderer.choose(context, preset.renderer);

    const Verbosity verbosity = context.isVerbose() ? Verbosity::Verbose
                                : options.quiet     ? Verbosity::Quiet
                                                    : Verbosity::Normal;
    ShotReport report(rendering, shot.frames.size(), verbosity, options.jsonLog, *preset.renderer,
                      context.streams());
    options.preset.save(renderer, {.settings = settings, .renderer = preset.renderer});
    TellMissing(shot, request.missing, context.streams());

    LetWritingFail();
    const Interruption interruption;
    const ShotDrawing drawing{.renderer = renderer,
                              .with = *preset.renderer,
                              .values = ValuesOverTime(settings, rate),
                              .rate = rate,
                              .downsample = options.downsample};
    const auto ended = [&report](const ShotFrame& frame, const FrameReport& frameReport) {
        report.frameEnded(frame, frameReport);
    };
    RenderShot(shot.frames, options.shot.setting(), drawing, ended, Interruption::requested());
    return report.finish();
}

void SetUp(CLI::App& command, CommandContext& context) {
    const auto options = std::make_shared<RenderOptions>();
    options->addTo(command);
    context.addParametersTo(command, options->parameters);
    command.callback([options, &context] { context.exitStatus = Render(*options, context); });
}

const CommandRegistration
    kRender({.name = "render",
             .description = "Render a picture or a sequence through the effect",
             .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
