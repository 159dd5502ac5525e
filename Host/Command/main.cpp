#include "Host/Command/AboutText.h"
#include "Host/Command/CommandOutline.h"
#include "Host/Command/CompletionScript.h"
#include "Host/Command/InstalledModule.h"
#include "Host/Command/LineParser.h"
#include "Host/Command/ManualPage.h"
#include "Host/Command/ParameterListing.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/RenderCommand.h"
#include "Host/Command/SheetCommand.h"
#include "Host/Command/StandardStreams.h"
#include "Host/Parameters/OptionNames.h"
#include "Host/Parameters/ParameterSchema.h"
#include "Host/Session/Effect.h"
#include "Host/Text/Error.h"
#include "Platform/Memory/FreedMemory.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace Kerovane::Host;

/// What has to be known before the effect is loaded, and so before its options are.
struct Setting {
    std::filesystem::path module = InstalledModule();
    bool verbose = false;

    void addTo(CLI::App& app) {
        app.add_option("--effect", module, "module of the effect [the installed one]")
            ->type_name("");
        app.add_flag("--verbose", verbose,
                     "tell the time of each stage, and what the effect and libraries print");
    }
};

/// `tesselune params [NAME]`
struct ParamsCommand {
    std::string name;
    bool asJson = false;

    void addTo(CLI::App& command) {
        command.add_option("NAME", name, "one of them, by option, shown name or disk id")
            ->type_name("");
        command.add_flag("--json", asJson, "for programs");
        command.footer("Example:\n  tesselune params size");
    }

    std::string text(const std::vector<Parameter>& parameters,
                     const std::vector<std::string>& options) const {
        if (name.empty()) {
            return asJson ? ParameterSchema(parameters, options)
                          : ParameterTable(parameters, options);
        }
        const std::size_t index = IndexOfParameter(parameters, options, name);
        return asJson ? ParameterSchema(parameters, options, index)
                      : ParameterDescription(parameters, options, index);
    }
};

Setting ReadSetting(int argc, char** argv) {
    Setting setting;
    CLI::App app;
    app.set_help_flag();
    app.allow_extras();
    setting.addTo(app);
    ParseLine(app, argc, argv);
    return setting;
}

/// Returns the exit status.
int Run(int argc, char** argv, StandardStreams& streams) {
    Setting setting = ReadSetting(argc, argv);
    if (setting.verbose) {
        streams.showOthers();
    }
    std::optional<Effect> effect;
    RenderCommand render;
    SheetCommand sheet;
    ParamsCommand params;

    CLI::App app("Breaks pictures into cells.", "tesselune");
    app.set_version_flag("--version", "tesselune " TESSELUNE_VERSION);
    app.fallthrough();
    app.footer("Example:\n  tesselune render photo.jpg cells.png --size 40\n\n"
               "tesselune COMMAND --help tells more.");
    setting.addTo(app);

    CLI::App& renderCommand =
        *app.add_subcommand("render", "Render a picture or a sequence through the effect");
    render.addTo(renderCommand);
    renderCommand.preparse_callback([&](std::size_t) {
        effect.emplace(setting.module);
        render.addParametersTo(renderCommand, *effect);
    });
    CLI::App& sheetCommand =
        *app.add_subcommand("sheet", "Show a picture under many settings on one page");
    sheet.addTo(sheetCommand);
    sheetCommand.preparse_callback([&](std::size_t) {
        effect.emplace(setting.module);
        sheet.addParametersTo(sheetCommand, *effect);
    });
    CLI::App& paramsCommand = *app.add_subcommand("params", "List the effect's parameters");
    params.addTo(paramsCommand);
    CLI::App& aboutCommand =
        *app.add_subcommand("about", "Tell the versions of the effect and of OpenGL");

    std::string shell;
    CLI::App& completionCommand =
        *app.add_subcommand("completion", "Print a script that completes the command in a shell");
    completionCommand.add_option("SHELL", shell, "bash or zsh")->required()->type_name("");
    completionCommand.footer("Example:\n  source <(tesselune completion bash)");
    CLI::App& manualCommand = *app.add_subcommand("manual", "Print the manual page");
    manualCommand.footer("Example:\n  tesselune manual | man -l -");

    try {
        ParseLine(app, argc, argv);
    } catch (const CLI::CallForHelp&) {
        streams.print(app.help());
        return 0;
    } catch (const CLI::CallForVersion&) {
        streams.print(app.version() + '\n');
        return 0;
    }

    if (renderCommand.parsed()) {
        return render.run(*effect, streams, setting.verbose);
    }
    if (sheetCommand.parsed()) {
        sheet.run(*effect);
        return 0;
    }
    if (paramsCommand.parsed()) {
        effect.emplace(setting.module);
        const std::vector<Parameter>& parameters = effect->parameters();
        streams.print(params.text(parameters, OptionNamesIn(app, parameters)));
        return 0;
    }
    if (aboutCommand.parsed()) {
        effect.emplace(setting.module);
        streams.print(AboutText(*effect));
        return 0;
    }
    const auto outline = [&] {
        effect.emplace(setting.module);
        render.addParametersTo(renderCommand, *effect);
        sheet.addParametersTo(sheetCommand, *effect);
        return Outline(app, effect->parameters());
    };
    if (completionCommand.parsed()) {
        streams.print(CompletionScript(shell, outline()));
        return 0;
    }
    if (manualCommand.parsed()) {
        streams.print(ManualPage(outline(), TESSELUNE_VERSION));
        return 0;
    }
    throw Error("a command is needed: render, sheet, params or about; see tesselune --help");
}

} // namespace

int main(int argc, char** argv) {
    Kerovane::Platform::KeepFreedMemory();
    StandardStreams streams;
    try {
        return Run(argc, argv, streams);
    } catch (const std::bad_alloc&) {
        streams.complain("out of memory");
    } catch (const std::exception& error) {
        streams.complain(error.what());
    }
    return 1;
}
