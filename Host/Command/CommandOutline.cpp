#include "Host/Command/CommandOutline.h"

#include "Host/Command/ParameterOptions.h"
#include "Host/Parameters/ParameterText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace Kerovane::Host {

namespace {

constexpr std::array<std::string_view, 6> kFiles{"--effect",      "--json-log", "--preset",
                                                 "--save-preset", "IN",         "OUT"};

/// The words of the command's own options, which CLI11 checks and doesn't tell.
std::vector<std::string> WordsOf(std::string_view name) {
    if (name == "--depth") {
        return {"8", "16", "32"};
    }
    if (name == "--missing") {
        return {"error", "skip", "hold"};
    }
    if (name == "SHELL") {
        return {"bash", "zsh"};
    }
    return {};
}

/// The parameters' options as words, with `ending` behind those that have no choices.
std::vector<std::string> ParameterNames(const std::vector<Parameter>& parameters,
                                        const std::vector<std::string>& names,
                                        std::string_view ending) {
    std::vector<std::string> words;
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        if (parameters[index].hasValue()) {
            words.push_back(names[index]);
            words.back() += TypedChoices(parameters[index]).empty() ? ending : "";
        }
    }
    return words;
}

/// What stands under the heading in the text below a command's help.
std::string ExampleOf(const CLI::App& app) {
    constexpr std::string_view kHeading = "Example:\n";
    const std::string footer = app.get_footer();
    if (!footer.starts_with(kHeading)) {
        return "";
    }
    return footer.substr(kHeading.size(), footer.find("\n\n") - kHeading.size());
}

OutlineOption OutlineOf(const CLI::Option& option, const std::vector<Parameter>& parameters,
                        const std::vector<std::string>& names) {
    const bool positional = !option.nonpositional();
    OutlineOption outline{
        .name = positional ? option.get_name() : "--" + option.get_lnames().front(),
        .description = option.get_description(),
        .takesValue = option.get_items_expected_max() > 0,
    };
    outline.takesFile = std::ranges::find(kFiles, outline.name) != kFiles.end();
    const auto found = std::ranges::find(names, outline.name.substr(positional ? 0 : 2));
    outline.isParameter = !positional && found != names.end();
    if (outline.isParameter) {
        outline.words = TypedChoices(parameters[static_cast<std::size_t>(found - names.begin())]);
    } else if (outline.name == "--vary") {
        outline.words = ParameterNames(parameters, names, "=");
    } else if (outline.name == "NAME") {
        outline.words = ParameterNames(parameters, names, "");
    } else {
        outline.words = WordsOf(outline.name);
    }
    return outline;
}

} // namespace

CommandOutline Outline(const CLI::App& app, const std::vector<Parameter>& parameters) {
    CommandOutline outline{
        .name = app.get_name(), .description = app.get_description(), .example = ExampleOf(app)};
    const std::vector<std::string> names = OptionNamesIn(app, parameters);
    for (const CLI::Option* option : app.get_options()) {
        auto& list = option->nonpositional() ? outline.options : outline.arguments;
        list.push_back(OutlineOf(*option, parameters, names));
    }
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        outline.commands.push_back(Outline(*command, parameters));
        std::erase_if(outline.commands.back().options, [&outline](const OutlineOption& option) {
            return std::ranges::find(outline.options, option.name, &OutlineOption::name) !=
                   outline.options.end();
        });
    }
    return outline;
}

} // namespace Kerovane::Host
