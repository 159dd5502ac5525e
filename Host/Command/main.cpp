#include "Host/Command/AboutText.h"
#include "Host/Command/InstalledModule.h"
#include "Host/Command/ParameterListing.h"
#include "Host/Command/RenderCommand.h"
#include "Host/Command/StandardOutput.h"
#include "Host/Effect.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace Kerovane::Host;

/// What has to be known before the effect is loaded, and so before its options are.
struct Setting {
    std::filesystem::path module = InstalledModule();
    bool verbose = false;

    void addTo(CLI::App& app) {
        app.add_option("--effect", module, "module of the effect [the installed one]")
            ->type_name("");
        app.add_flag("--verbose", verbose, "pass the effect's own report on to standard error");
    }
};

Setting ReadSetting(int argc, char** argv) {
    Setting setting;
    CLI::App app;
    app.set_help_flag();
    app.allow_extras();
    setting.addTo(app);
    app.parse(argc, argv);
    return setting;
}

void Run(int argc, char** argv) {
    Setting setting = ReadSetting(argc, argv);
    StandardOutput output(setting.verbose ? StandardOutput::Others::StandardError
                                          : StandardOutput::Others::Nowhere);
    std::optional<Effect> effect;
    RenderCommand render;
    bool asJson = false;

    CLI::App app("Breaks pictures into cells.", "tesselune");
    app.set_version_flag("--version", "tesselune " TESSELUNE_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.footer("Example:\n  tesselune render photo.jpg cells.png --size 40\n\n"
               "tesselune COMMAND --help tells more.");
    setting.addTo(app);

    CLI::App& renderCommand = *app.add_subcommand("render", "Render a picture through the effect");
    render.addTo(renderCommand);
    renderCommand.preparse_callback([&](std::size_t) {
        effect.emplace(setting.module);
        render.addParametersTo(renderCommand, *effect);
    });
    CLI::App& paramsCommand = *app.add_subcommand("params", "List the effect's parameters");
    paramsCommand.add_flag("--json", asJson, "for programs");
    CLI::App& aboutCommand =
        *app.add_subcommand("about", "Tell the effect's and the OpenGL driver's version");

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return output.print(app.help());
    } catch (const CLI::CallForVersion&) {
        return output.print(app.version() + '\n');
    }

    if (renderCommand.parsed()) {
        render.run(*effect);
        return;
    }
    effect.emplace(setting.module);
    if (paramsCommand.parsed()) {
        output.print(asJson ? ParameterJson(effect->parameters())
                            : ParameterTable(effect->parameters()));
    } else if (aboutCommand.parsed()) {
        output.print(AboutText(*effect));
    }
}

int Fail(std::string message) {
    for (char& character : message) {
        if (static_cast<unsigned char>(character) < ' ') {
            character = ' ';
        }
    }
    std::fprintf(stderr, "tesselune: %s\n", message.c_str());
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        Run(argc, argv);
        return 0;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
