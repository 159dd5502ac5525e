#include "FreedMemory.h"
#include "Host/Command/AboutText.h"
#include "Host/Command/CommandOutline.h"
#include "Host/Command/CompletionScript.h"
#include "Host/Command/InstalledModule.h"
#include "Host/Command/ManualPage.h"
#include "Host/Command/ParameterListing.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/RenderCommand.h"
#include "Host/Command/SheetCommand.h"
#include "Host/Command/StandardStreams.h"
#include "Host/Effect.h"
#include "Host/Error.h"
#include "Host/NearestNames.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <fmt/format.h>

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

/// The names of what may stand on the line once the given part of it is understood.
std::vector<std::string> KnownNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* part = &app; part != nullptr;) {
        for (const CLI::Option* option : part->get_options()) {
            for (const std::string& name : option->get_lnames()) {
                names.push_back("--" + name);
            }
        }
        const std::vector<CLI::App*> chosen = part->get_subcommands();
        part = chosen.empty() ? nullptr : chosen.front();
    }
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

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

    std::string text(const std::vector<Parameter>& parameters) const {
        if (name.empty()) {
            return asJson ? ParameterJson(parameters) : ParameterTable(parameters);
        }
        const std::size_t index = IndexOfParameter(parameters, name);
        return asJson ? ParameterJson(parameters, index) : ParameterDescription(parameters, index);
    }
};

/// What to say of the first argument that nothing on the line takes.
std::string Unexpected(const CLI::App& app) {
    const std::string argument = app.remaining(true).front();
    const bool isOption = argument.starts_with('-');
    if (!isOption && !app.get_subcommands().empty()) {
        return fmt::format("unexpected argument '{}'; see tesselune --help", argument);
    }
    const std::string name = argument.substr(0, argument.find('='));
    return fmt::format("unknown {} '{}'{}; see tesselune --help", isOption ? "option" : "command",
                       name, Suggestion(name, KnownNames(app)));
}

/// Parses the line. Throws Error where it is wrong, CLI::Success where help or version is asked
/// for.
void Parse(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success&) {
        throw;
    } catch (const CLI::ExtrasError&) {
        throw Error(Unexpected(app));
    } catch (const CLI::ArgumentMismatch& mismatch) {
        const std::string text = mismatch.what();
        throw Error(fmt::format("{} takes one value", text.substr(0, text.find(':'))));
    } catch (const CLI::ParseError& error) {
        throw Error(error.what());
    }
}

Setting ReadSetting(int argc, char** argv) {
    Setting setting;
    CLI::App app;
    app.set_help_flag();
    app.allow_extras();
    setting.addTo(app);
    Parse(app, argc, argv);
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
        Parse(app, argc, argv);
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
        streams.print(params.text(effect->parameters()));
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
