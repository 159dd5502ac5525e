#include "Host/Command/Commands.h"
#include "Host/Command/ParameterListing.h"
#include "Host/Command/ParameterOptions.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Parameters/OptionNames.h"
#include "Host/Parameters/ParameterSchema.h"

#include <memory>
#include <string>
#include <vector>

namespace Kerovane::Host {

namespace {

struct ParamsOptions {
    std::string name; ///< the parameter to list; empty: all parameters
    bool asJson = false;
};

std::string Listing(const ParamsOptions& options, const std::vector<Parameter>& parameters,
                    const std::vector<std::string>& names) {
    if (options.name.empty()) {
        return options.asJson ? ParameterSchema(parameters, names)
                              : ParameterTable(parameters, names);
    }
    const std::size_t index = IndexOfParameter(parameters, names, options.name);
    return options.asJson ? ParameterSchema(parameters, names, index)
                          : ParameterDescription(parameters, names, index);
}

void SetUp(CLI::App& command, CommandContext& context) {
    const auto options = std::make_shared<ParamsOptions>();
    command
        .add_option("NAME", options->name, "a single parameter, by option, shown name or disk id")
        ->type_name(kParameterType);
    command.add_flag("--json", options->asJson, "print JSON for programs");
    command.footer("Example:\n  tesselune params size");
    command.callback([options, &command, &context] {
        const std::vector<Parameter>& parameters = context.renderer().parameters();
        context.streams().print(Listing(*options, parameters, OptionNamesIn(command, parameters)));
    });
}

const CommandRegistration
    kParams({.name = "params", .description = "List the effect's parameters", .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
