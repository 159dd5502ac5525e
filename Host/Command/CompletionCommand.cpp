#include "Host/Command/CommandOutline.h"
#include "Host/Command/Commands.h"
#include "Host/Command/CompletionScript.h"
#include "Host/Command/ValueTypes.h"

#include <memory>
#include <string>

namespace Kerovane::Host {

void AddCompletionCommand(CLI::App& app, CommandContext& context) {
    CLI::App* command =
        app.add_subcommand("completion", "Print a script that completes the command in a shell");
    const auto shell = std::make_shared<std::string>();
    command->add_option("SHELL", *shell, "the shell that will run the script")
        ->required()
        ->type_name(ChoiceType({"bash", "zsh"}));
    command->footer("Example:\n  source <(tesselune completion bash)");
    command->callback([shell, &app, &context] {
        context.addAllParameters();
        context.streams().print(CompletionScript(*shell, Outline(app)));
    });
}

} // namespace Kerovane::Host
