#pragma once

#include "Host/Command/CommandContext.h"

#include <CLI/App.hpp>

namespace Kerovane::Host {

// Each adds a command to the line's parser, which runs it once the line is parsed. The context
// outlives the parser.
void AddRenderCommand(CLI::App& app, CommandContext& context);
void AddSheetCommand(CLI::App& app, CommandContext& context);
void AddParamsCommand(CLI::App& app, CommandContext& context);
void AddAboutCommand(CLI::App& app, CommandContext& context);
void AddCompletionCommand(CLI::App& app, CommandContext& context);

} // namespace Kerovane::Host
