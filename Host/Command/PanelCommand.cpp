#include "Host/Command/Commands.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PictureOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/RendererOptions.h"
#include "Host/Command/ShippedPresets.h"
#include "Host/Command/ShotOptions.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Panel/HttpServer.h"
#include "Host/Panel/Invitation.h"
#include "Host/Panel/PanelService.h"
#include "Host/Parameters/ParameterSchema.h"
#include "Host/Shots/Interruption.h"
#include "Host/Text/Error.h"
#include "Host/Video/OpenMovie.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

namespace Kerovane::Host {

namespace {

/// The values of the command's options.
struct PanelOptions {
    std::filesystem::path in;
    std::uint16_t port = 0;
    bool noOpen = false;
    std::filesystem::path outputFolder; ///< empty: the page cannot write files
    ShotOptions shot;
    PictureOptions picture;
    PresetOptions preset;
    RendererOptions renderer;
    ParameterOptions parameters;

    void addTo(CLI::App& command);
};

void PanelOptions::addTo(CLI::App& command) {
    command.add_option("IN", in, "picture, movie or sequence to try the effect on: shot.#.png")
        ->required()
        ->type_name(kFileType);
    constexpr int kMostPort = 65535;
    command.add_option("--port", port, "port to listen on, on this machine only [a free one]")
        ->check(CLI::Range(0, kMostPort).description(""))
        ->type_name("N");
    command.add_flag("--no-open", noOpen, "print the address, and do not open a browser");
    command
        .add_option("--output-folder", outputFolder,
                    "folder that the page may write to; without it the page writes no files")
        ->type_name(kFileType);
    shot.addFootageTo(command);
    picture.addTo(command);
    preset.addLoadingTo(command);
    renderer.addTo(command);
    command.footer("The address that is printed leads to the page, on this machine or through a "
                   "tunnel; whoever knows it can use the panel. Ctrl-C ends it.\n\nExamples:\n"
                   "  tesselune panel photo.jpg\n"
                   "  tesselune panel clip.mp4 --output-folder renders --port 8080 --no-open");
}

std::vector<NamedPreset> PresetsToChoose(const FrameRenderer& renderer) {
    std::vector<NamedPreset> presets;
    for (const ShippedPreset& shipped : ShippedPresets()) {
        presets.push_back({.name = shipped.name, .preset = ReadPreset(shipped.file, renderer)});
    }
    return presets;
}

FootageRequest FootageOf(const PanelOptions& options) {
    const ShotRequest shot = options.shot.request(options.in, {});
    FootageRequest request{.input = shot.input,
                           .frames = shot.frames,
                           .missing = shot.missing,
                           .conversion = options.picture.conversion()};
    options.picture.set(request.reading);
    if (request.conversion) {
        request.reading.depth = Depth::Float32; // converting 8-bit colour would lose levels
    }
    if (options.shot.hasRate()) {
        request.rate = options.shot.rate();
    }
    return request;
}

std::vector<std::string> FootageWords(const PanelOptions& options) {
    std::vector<std::string> words = options.shot.footageWords();
    std::ranges::move(options.picture.words(), std::back_inserter(words));
    return words;
}

PanelSetup SetupOf(const PanelOptions& options, CommandContext& context) {
    FrameRenderer& renderer = context.renderer();
    const Preset look = options.preset.load(renderer, options.parameters.settings());
    std::shared_ptr<Footage> footage = OpenFootage(FootageOf(options));
    const std::string given = options.picture.givenForPictures();
    if (footage->kind() == FootageKind::Movie && !given.empty()) {
        throw Error(
            fmt::format("{} is for pictures, and '{}' is none", given, options.in.string()));
    }
    const Renderer with = options.renderer.choose(context, look.renderer);
    return {.renderer = renderer,
            .line = {.parameters = renderer.parameters(),
                     .options = options.parameters.names(),
                     .footageWords = FootageWords(options),
                     .frames = options.shot.frames()},
            .footage = std::move(footage),
            .look = LookOf(look.settings, with),
            .presets =
                context.hasForeignEffect() ? std::vector<NamedPreset>() : PresetsToChoose(renderer),
            .program = std::filesystem::read_symlink("/proc/self/exe").string(),
            .programVersion = "tesselune " TESSELUNE_VERSION,
            .programWords = context.effectWords(),
            .outputFolder = options.outputFolder};
}

/// Opens `address` in the browser. Prints the reason and returns null if that fails.
std::unique_ptr<Invitation> Invite(const std::string& address, StandardStreams& streams) {
    try {
        return std::make_unique<Invitation>(address);
    } catch (const Error& error) {
        streams.complain(
            fmt::format("cannot open the browser, so open the address yourself: {}", error.what()));
        return nullptr;
    }
}

void Serve(const PanelOptions& options, CommandContext& context) {
    if (options.in == kStandardStream) {
        throw Error("a panel goes to and fro in its input, which a pipe doesn't allow");
    }
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
    const AccessToken token;
    PanelSession session(SetupOf(options, context));
    PanelService service(
        token, session,
        ParameterSchema(context.renderer().parameters(), options.parameters.names()));
    HttpServer server(options.port, service);
    const std::string address = fmt::format("http://127.0.0.1:{}/{}/", server.port(), token.text());
    const Interruption interruption;
    context.streams().print(address + '\n');
    const std::unique_ptr<Invitation> invitation =
        !options.noOpen && HasDesktop() ? Invite(address, context.streams()) : nullptr;
    server.run(Interruption::requested());
}

void SetUp(CLI::App& command, CommandContext& context) {
    const auto options = std::make_shared<PanelOptions>();
    options->addTo(command);
    context.addParametersTo(command, options->parameters);
    command.callback([options, &context] { Serve(*options, context); });
}

const CommandRegistration kPanel({.name = "panel",
                                  .description = "Try the effect interactively, in the browser",
                                  .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
