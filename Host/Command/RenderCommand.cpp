#include "Host/Command/Commands.h"
#include "Host/Command/MovieJob.h"
#include "Host/Command/OutputOptions.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PictureOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/RendererOptions.h"
#include "Host/Command/ShotOptions.h"
#include "Host/Command/ShotReport.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Parameters/Holes.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Shots/Interruption.h"
#include "Host/Shots/SequencePattern.h"
#include "Host/Video/MovieFiles.h"
#include "Host/Video/OpenMovie.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <csignal>
#include <filesystem>
#include <memory>
#include <system_error>

namespace Kerovane::Host {

namespace {

/// The values of the command's options.
struct RenderOptions {
    std::filesystem::path in;
    std::filesystem::path out;
    A_long downsample = 1;
    std::filesystem::path jsonLog; ///< empty: no log
    bool makeFolders = false;
    bool quiet = false;
    ShotOptions shot;
    RendererOptions renderer;
    PictureOptions picture;
    OutputOptions output;
    PresetOptions preset;
    ParameterOptions parameters;

    void addTo(CLI::App& command);
};

void RenderOptions::addTo(CLI::App& command) {
    constexpr int kMaxDownsample = 64;
    command
        .add_option("IN", in,
                    "movie, picture or sequence to read: shot.#.png, shot.%04d.exr; - is a pipe")
        ->required()
        ->type_name(kFileType);
    command.add_option("OUT", out, "file or sequence to write, in the format of its extension")
        ->required()
        ->type_name(kFileType);
    command.add_flag("--mkdir", makeFolders, "create missing folders of OUT");
    shot.addTo(command);
    picture.addTo(command);
    picture.addOverscanTo(command);
    output.addTo(command);
    command
        .add_option("--downsample", downsample,
                    "IN is a preview scaled down by N; parameters are for full size [1]")
        ->check(CLI::Range(1, kMaxDownsample).description(""))
        ->type_name("N");
    renderer.addTo(command);
    preset.addTo(command);
    command.add_flag("--quiet", quiet, "show failures only")->group("Progress");
    command
        .add_option("--json-log", jsonLog, "a line of JSON for each frame; - is standard output")
        ->type_name(kFileType)
        ->group("Progress");
    command.footer(
        "A parameter takes one value, or keys FRAME:VALUE with linear, hold, smooth, "
        "ease-in, ease-out or ease-in-out after the value; 2.5s is a time instead of a "
        "frame.\n\nExamples:\n"
        "  tesselune render clip.mp4 cells.mp4 --size 40 --transition-progress \"0:0 48:100\"\n"
        "  tesselune render photo.jpg cells.png --shape-type triangle --size 40\n"
        "  tesselune render shot.#.exr out.#.exr --frames 1001-1050 \\\n"
        "      --transition-progress \"1001:0:smooth 1050:100\"");
}

/// Returns a shot of one picture, as frame 0.
Shot SinglePicture(const ShotRequest& request) {
    Shot shot;
    shot.frames.push_back({.number = 0, .input = request.input, .output = request.output});
    CheckNotInPlace(shot.frames);
    return shot;
}

void TellMissing(const Shot& shot, MissingFrames missing, StandardStreams& streams) {
    if (!shot.missing.empty()) {
        streams.complain(fmt::format("missing frames {}: {}",
                                     missing == MissingFrames::Hold ? "held" : "skipped",
                                     FormatFrames(shot.missing)));
    }
}

/// Throws Error if the format of the outputs, or their settings, are not supported. Called before
/// anything is rendered.
void CheckTarget(const Shot& shot, const PictureSettings& settings) {
    if (!shot.frames.empty()) {
        PictureWriter(shot.frames.front().output, settings);
    }
}

/// Creates the folder of `file` if it does not exist and `make` is true. Throws Error if there is
/// no folder in the end.
void CheckFolderOf(const std::filesystem::path& file, bool make) {
    const std::filesystem::path folder = file.parent_path();
    std::error_code error; // a folder that cannot be examined counts as absent
    if (folder.empty() || std::filesystem::is_directory(folder, error)) {
        return;
    }
    if (!make) {
        throw Error(fmt::format("cannot write '{}': there is no folder '{}', which --mkdir makes",
                                file.string(), folder.string()));
    }
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw Error(fmt::format("--mkdir: cannot make '{}': {}", folder.string(), error.message()));
    }
}

/// Throws Error if `file`, the only output, exists already. Called if --no-clobber was given.
void CheckNew(const std::filesystem::path& file) {
    std::error_code error; // a file that cannot be examined counts as absent
    if (std::filesystem::exists(file, error)) {
        throw Error(fmt::format("'{}' is there already, and --no-clobber keeps it", file.string()));
    }
}

/// Calls CheckFolderOf for each folder that frames are written to.
void CheckFolders(const Shot& shot, bool make) {
    std::filesystem::path last;
    for (const ShotFrame& frame : shot.frames) {
        if (frame.output.parent_path() != last) {
            last = frame.output.parent_path();
            CheckFolderOf(frame.output, make);
        }
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
void IgnoreWriteSignals() {
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

Verbosity VerbosityOf(const RenderOptions& options, const CommandContext& context) {
    return context.isVerbose() ? Verbosity::Verbose
           : options.quiet     ? Verbosity::Quiet
                               : Verbosity::Normal;
}

ShotDrawing DrawingOf(const RenderOptions& options, FrameRenderer& renderer, const Preset& look,
                      FrameRate rate, const SecondsOfFrame& secondsOf = {}) {
    return {.renderer = renderer,
            .with = *look.renderer,
            .values = ValuesOverTime(look.settings, rate, secondsOf),
            .rate = rate,
            .downsample = options.downsample};
}

constexpr const char* kProgram = "tesselune " TESSELUNE_VERSION;

/// Returns the settings that do not depend on the look: on the parameters and the renderer.
ShotSetting SettingOf(const RenderOptions& options) {
    ShotSetting setting = options.shot.setting();
    options.picture.set(setting.reading);
    setting.conversion = options.picture.conversion();
    setting.pictures.files = options.output.pictures();
    return setting;
}

void AddLook(const Preset& look, const FrameRenderer& renderer, PictureSettings& files) {
    files.canLeaveHoles = CanLeaveHoles(renderer.parameters(), look.settings);
    files.record = {.program = kProgram,
                    .settings = FormatRecord(renderer.parameters(), renderer.version(), look)};
}

FrameEnded TellTo(ShotReport& report) {
    return [&report](const ShotFrame& frame, const FrameReport& frameReport) {
        report.frameEnded(frame, frameReport);
    };
}

int RenderPictures(const RenderOptions& options, CommandContext& context) {
    FrameRenderer& renderer = context.renderer();
    Preset look = options.preset.load(renderer, options.parameters.settings());
    const ShotRequest request = options.shot.request(options.in, options.out);
    const FrameRate rate = options.shot.rate();
    const Rendering rendering = AsksForShot(request) ? Rendering::Shot : Rendering::Picture;
    const Shot shot = rendering == Rendering::Shot ? PlanShot(request) : SinglePicture(request);
    CheckTimes(shot, rate);
    CheckFolders(shot, options.makeFolders);
    if (rendering == Rendering::Picture && options.shot.keepsExisting()) {
        CheckNew(options.out);
    }
    ShotSetting setting = SettingOf(options);
    CheckTarget(shot, setting.pictures.files);
    look.renderer = options.renderer.choose(context, look.renderer);

    ShotReport report(rendering, shot.frames.size(), VerbosityOf(options, context), options.jsonLog,
                      *look.renderer, context.streams());
    options.preset.save(renderer, look);
    TellMissing(shot, request.missing, context.streams());

    IgnoreWriteSignals();
    const Interruption interruption;
    AddLook(look, renderer, setting.pictures.files);
    RenderShot(shot.frames, setting, DrawingOf(options, renderer, look, rate), TellTo(report),
               Interruption::requested());
    return report.finish("the same command with --resume does the rest");
}

int RenderMovie(const RenderOptions& options, MovieRequest request, CommandContext& context) {
    constexpr int kPartOfTheInput = 2;
    FrameRenderer& renderer = context.renderer();
    Preset look = options.preset.load(renderer, options.parameters.settings());
    look.renderer = options.renderer.choose(context, look.renderer);
    const ShotSetting setting = SettingOf(options);
    request.pictures = setting.pictures;
    AddLook(look, renderer, request.pictures.files);
    request.settings.alpha = request.pictures.files.canLeaveHoles;
    IgnoreWriteSignals();
    const Interruption interruption;
    MovieJob job(request, context.streams());
    CheckTimes(job.shot(), job.rate());

    StandardStreams& streams = context.streams();
    const Verbosity verbosity = VerbosityOf(options, context);
    ShotReport report(Rendering::Shot, job.framesExpected(), verbosity, options.jsonLog,
                      *look.renderer, streams);
    options.preset.save(renderer, look);
    TellMissing(job.shot(), request.shot.missing, streams);
    const auto tell = [&](const std::vector<std::string>& lines) {
        for (const std::string& line : lines) {
            streams.complain(line);
        }
    };
    if (verbosity != Verbosity::Quiet) {
        tell(job.notes());
    }
    const ShotDrawing drawing = DrawingOf(options, renderer, look, job.rate(), job.secondsOf());
    if (drawing.with == Renderer::Software && AreConstant(look.settings) &&
        !setting.reading.depth) {
        job.drawAsStored(drawing);
    }
    RenderFrames(job.source(), job.sink(), setting, drawing, TellTo(report),
                 Interruption::requested());
    const bool isInterrupted = job.hasMore();
    if (!isInterrupted) {
        report.endHere();
    }
    const std::vector<std::string> lines = job.finish(isInterrupted);
    const int status = report.finish(
        request.toMovie ? "a movie starts anew" : "the same command with --resume does the rest");
    tell(lines);
    const std::vector<std::string> losses =
        isInterrupted ? std::vector<std::string>() : job.losses();
    tell(losses);
    return losses.empty() ? status : kPartOfTheInput;
}

/// Throws Error if an option was given that does not apply to the kind of input or output.
void CheckOptions(const RenderOptions& options, const MovieRequest& request) {
    const auto check = [](const std::string& given, const char* use,
                          const std::filesystem::path& file) {
        if (!given.empty()) {
            throw Error(fmt::format("{} is for {}, and '{}' is none", given, use, file.string()));
        }
    };
    if (request.toMovie) {
        check(options.output.givenForPictures(), "pictures", options.out);
    } else {
        check(options.output.givenForMovies(), "movies", options.out);
    }
    if (request.fromMovie) {
        check(options.picture.givenForPictures(), "pictures", options.in);
    }
}

int Render(const RenderOptions& options, CommandContext& context) {
    MovieRequest request;
    request.shot = options.shot.request(options.in, options.out);
    const bool isGif = options.out.extension() == ".gif"; // may be one picture or a movie
    const bool isOnePicture = !AsksForShot(request.shot) && !IsMovieFile(options.in, !isGif);
    request.toMovie =
        options.output.namesContainer() || (IsMovieName(options.out) && !(isGif && isOnePicture));
    const bool isPlayed =
        request.toMovie ||
        (IsAnimated(options.in) && (request.shot.frames || SequencePattern::parse(options.out)));
    request.fromMovie = IsMovieFile(options.in, !isPlayed);
    CheckOptions(options, request);
    if (request.toMovie) {
        request.settings = options.output.movie();
    }
    if (!request.fromMovie && !request.toMovie) {
        return RenderPictures(options, context);
    }
    if (options.out == kStandardStream && options.jsonLog == kStandardStream) {
        throw Error("--json-log - and the output - can't both be standard output");
    }
    if (options.shot.hasRate()) {
        request.rate = options.shot.rate();
    }
    if (options.out != kStandardStream) {
        CheckFolderOf(options.out, options.makeFolders);
        if (request.toMovie && options.shot.keepsExisting()) {
            CheckNew(options.out);
        }
    }
    return RenderMovie(options, request, context);
}

void SetUp(CLI::App& command, CommandContext& context) {
    const auto options = std::make_shared<RenderOptions>();
    options->addTo(command);
    context.addParametersTo(command, options->parameters);
    command.callback([options, &context] { context.exitStatus = Render(*options, context); });
}

const CommandRegistration
    kRender({.name = "render",
             .description = "Render a movie, a sequence or a picture through the effect",
             .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
