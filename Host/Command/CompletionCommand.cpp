#include "Host/Command/CommandOutline.h"
#include "Host/Command/Commands.h"
#include "Host/Command/CompletionScript.h"
#include "Host/Command/ValueTypes.h"

#include <memory>
#include <string>

namespace Kerovane::Host {

namespace {

void SetUp(CLI::App& command, CommandContext& context) {
    const auto shell = std::make_shared<std::string>();
    command.add_option("SHELL", *shell, "the shell that will run the script")
        ->required()
        ->type_name(ChoiceType({"bash", "zsh"}));
    command.footer("Example:\n  source <(tesselune completion bash)");
    command.callback([shell, &command, &context] {
        context.addAllParameters();
        context.streams().print(CompletionScript(*shell, Outline(*command.get_parent())));
    });
}

const CommandRegistration
    kCompletion({.name = "completion",
                 .description = "Print a script that completes the command in a shell",
                 .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
