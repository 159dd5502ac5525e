// The command's line, its arguments separated by zeros: parsed as the command does it, up to where
// files would be opened.
#include "Fuzz/Oracle.h"
#include "Fuzz/SampleEffect.h"
#include "Fuzz/TextInput.h"
#include "Host/Command/LineParser.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/RenderCommand.h"
#include "Host/Command/SheetCommand.h"
#include "Host/Command/SheetPlan.h"
#include "Host/Parameters/FrameRate.h"
#include "Host/Shots/FrameList.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace Kerovane::Fuzz {

namespace {

using namespace Kerovane::Host;

std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words{"tesselune"};
    while (!text.empty()) {
        const auto [word, rest] = SplitInTwo(text, '\0');
        words.emplace_back(word);
        text = rest;
    }
    return words;
}

/// The command's two subcommands with the options of the sample effect.
class Line {
public:
    Line() {
        mApp.fallthrough();
        mRender.addTo(mRenderCommand);
        mRenderParameters.addTo(mRenderCommand, SampleEffect());
        mSheet.addTo(mSheetCommand);
        mSheetParameters.addTo(mSheetCommand, SampleEffect());
    }

    /// Throws Error where the line asks for what can't be, CLI::Success where it asks for help.
    bool read(const std::vector<std::string>& words) {
        std::vector<const char*> arguments(words.size());
        std::ranges::transform(words, arguments.begin(), &std::string::c_str);
        ParseLine(mApp, static_cast<int>(arguments.size()), arguments.data());
        if (mRenderCommand.parsed()) {
            checkSettings(mRenderParameters.settings());
            readShot();
        }
        if (mSheetCommand.parsed()) {
            checkSettings(mSheetParameters.settings());
            readVariations();
        }
        return true;
    }

private:
    static void checkSettings(const ParameterSettings& settings) {
        for (const auto& [id, keyframes] : settings) {
            const Parameter* parameter = FindParameter(SampleEffect(), id);
            Expect(parameter != nullptr && parameter->accepts(keyframes.keys().front().value),
                   "an option sets what its parameter accepts");
        }
    }

    void readShot() {
        readOption("--frames", ParseFrames);
        readOption("--chunk", ParseChunk);
        readOption("--fps", ParseFrameRate);
    }

    template <typename Parse>
    void readOption(const char* name, Parse parse) {
        const CLI::Option* option = mRenderCommand.get_option(name);
        if (!option->empty()) {
            parse(option->as<std::string>());
        }
    }

    void readVariations() {
        const CLI::Option* vary = mSheetCommand.get_option("--vary");
        if (!vary->empty()) {
            const SheetPlan plan =
                Variations(vary->results(), SampleEffect(), mSheetParameters.names());
            Expect(!plan.empty() && !plan.front().empty(), "a sheet has a picture");
        }
    }

    CLI::App mApp{"", "tesselune"};
    CLI::App& mRenderCommand = *mApp.add_subcommand("render", "");
    CLI::App& mSheetCommand = *mApp.add_subcommand("sheet", "");
    RenderCommand mRender;
    SheetCommand mSheet;
    ParameterOptions mRenderParameters;
    ParameterOptions mSheetParameters;
};

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    try {
        Line line;
        ReadOrError([&] { return line.read(Words(TextOf(data, size))); });
    } catch (const CLI::Success&) {
        return 0; // help is asked for
    }
    return 0;
}
