// Command lines, with arguments separated by zero bytes: parsed as the command parses them, up to
// the point at which files would be opened.
#include "Fuzz/Oracle.h"
#include "Fuzz/SampleEffect.h"
#include "Fuzz/TextInput.h"
#include "Host/Command/LineParser.h"
#include "Host/Command/OutputOptions.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/PictureOptions.h"
#include "Host/Command/PresetOptions.h"
#include "Host/Command/SheetPlan.h"
#include "Host/Command/ShotOptions.h"

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

void CheckSettings(const ParameterOptions& options) {
    for (const auto& [id, keyframes] : options.settings()) {
        const Parameter* parameter = FindParameter(SampleEffect(), id);
        Expect(parameter != nullptr && parameter->accepts(keyframes.keys().front().value),
               "an option sets what its parameter accepts");
    }
}

/// Parses the options of render and sheet with the sample effect's. Throws Error if the line is
/// invalid, CLI::Success if it asks for help.
bool ReadLine(const std::vector<std::string>& words) {
    CLI::App app{"", "tesselune"};
    app.fallthrough();
    std::string in;
    std::string out;

    CLI::App& render = *app.add_subcommand("render", "");
    render.add_option("IN", in)->required();
    render.add_option("OUT", out)->required();
    ShotOptions shot;
    shot.addTo(render);
    PictureOptions picture;
    picture.addTo(render);
    picture.addOverscanTo(render);
    OutputOptions output;
    output.addTo(render);
    PresetOptions preset;
    preset.addTo(render);
    ParameterOptions renderParameters;
    renderParameters.addTo(render, SampleEffect());
    render.callback([&] {
        CheckSettings(renderParameters);
        shot.request(in, out);
        ShotSetting setting = shot.setting();
        picture.set(setting.reading);
        output.movie();
        CheckSettings(output.pictures(), OutputFormatOf("out.exr"));
        shot.rate();
    });

    CLI::App& sheet = *app.add_subcommand("sheet", "");
    std::vector<std::string> vary;
    sheet.add_option("--vary", vary)->allow_extra_args(false);
    ParameterOptions sheetParameters;
    sheetParameters.addTo(sheet, SampleEffect());
    sheet.callback([&] {
        CheckSettings(sheetParameters);
        if (!vary.empty()) {
            constexpr std::size_t kColumns = 8;
            const SheetPlan plan = Variations({.vary = vary, .frames = {}, .columns = kColumns},
                                              SampleEffect(), sheetParameters.names());
            Expect(!plan.empty() && !plan.front().empty(), "a sheet has a picture");
        }
    });

    std::vector<const char*> line(words.size());
    std::ranges::transform(words, line.begin(), &std::string::c_str);
    ParseLine(app, line);
    return true;
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    try {
        ReadOrError([&] { return ReadLine(Words(TextOf(data, size))); });
    } catch (const CLI::Success&) {
        return 0; // the line asks for help
    }
    return 0;
}
