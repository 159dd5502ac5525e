#include "Host/Command/CommandContext.h"
#include "Host/Command/Commands.h"
#include "Host/Command/LineParser.h"
#include "Host/Command/StandardStreams.h"
#include "Platform/Memory/FreedMemory.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstddef>
#include <exception>
#include <new>
#include <span>

namespace {

using namespace Kerovane::Host;

/// Runs the command line. Returns the process's exit status.
int Run(std::span<const char* const> line, StandardStreams& streams) {
    CommandContext context(line, streams);
    if (context.isVerbose()) {
        streams.showOthers();
    }
    CLI::App app("Breaks pictures into cells.", "tesselune");
    app.option_defaults()->take_last(); // the last value counts if an option is repeated
    app.set_version_flag("--version", "tesselune " TESSELUNE_VERSION);
    app.fallthrough();
    app.get_formatter()->label("REQUIRED", "");
    app.footer("Example:\n  tesselune render photo.jpg cells.png --size 40\n\n"
               "tesselune COMMAND --help tells more.");
    context.addTo(app);
    for (const Command& command : RegisteredCommands()) {
        command.setUp(*app.add_subcommand(command.name, command.description), context);
    }
    try {
        ParseLine(app, line);
    } catch (const CLI::CallForHelp&) {
        streams.print(app.help());
    } catch (const CLI::CallForVersion&) {
        streams.print(app.version() + '\n');
    }
    return context.exitStatus;
}

} // namespace

int main(int argc, char** argv) {
    Kerovane::Platform::KeepFreedMemory();
    StandardStreams streams;
    try {
        return Run({argv, static_cast<std::size_t>(argc)}, streams);
    } catch (const std::bad_alloc&) {
        streams.complain("out of memory");
    } catch (const std::exception& error) {
        streams.complain(error.what());
    }
    return 1;
}
