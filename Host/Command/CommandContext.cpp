#include "Host/Command/CommandContext.h"

#include "Host/Command/ValueTypes.h"
#include "Host/Session/InstalledFile.h"

#include <string_view>

namespace Kerovane::Host {

namespace {

EffectModules ForAllFrames(const std::filesystem::path& module) {
    return {.bits8 = module, .deeper = module};
}

} // namespace

CommandContext::CommandContext(std::span<const char* const> line, StandardStreams& streams)
    : mStreams(streams),
      mModules(WithFloatModule(InstalledFile(TESSELUNE_MODULE_PATH "/Tesselune.so"))) {
    constexpr std::string_view kAssignedEffect = "--effect=";
    for (std::size_t index = 1; index < line.size(); ++index) {
        const std::string_view word = line[index];
        if (word == "--verbose") {
            mVerbose = true;
        } else if (word == "--effect" && index + 1 < line.size()) {
            mModules = ForAllFrames(line[++index]);
            mHasForeignEffect = true;
        } else if (word.starts_with(kAssignedEffect)) {
            mModules = ForAllFrames(word.substr(kAssignedEffect.size()));
            mHasForeignEffect = true;
        }
    }
}

void CommandContext::addTo(CLI::App& app) {
    // CommandContext() has already read these options. They are added for the parser and the help.
    app.add_option("--effect", mModules.bits8, "module of the effect [the installed ones]")
        ->type_name(kFileType);
    app.add_flag("--verbose", mVerbose,
                 "print the time of each stage, and what the effect and libraries print");
}

std::vector<std::string> CommandContext::effectWords() const {
    return mHasForeignEffect ? std::vector<std::string>{"--effect", mModules.bits8.string()}
                             : std::vector<std::string>();
}

FrameRenderer& CommandContext::renderer() {
    if (!mRenderer) {
        mRenderer.emplace(mModules, mVerbose ? EffectOutput::Shown : EffectOutput::Dropped);
    }
    return *mRenderer;
}

void CommandContext::addParametersTo(CLI::App& command, ParameterOptions& options) {
    mParameterOptions.emplace_back(&command, &options);
    command.preparse_callback([this, &command, &options](std::size_t) {
        options.addTo(command, renderer().parameters());
    });
}

void CommandContext::addAllParameters() {
    for (const auto& [command, options] : mParameterOptions) {
        options->addTo(*command, renderer().parameters());
    }
}

} // namespace Kerovane::Host
