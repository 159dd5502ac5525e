#include "Host/Command/CompletionScript.h"

#include "Host/Command/Skeleton.h"
#include "Host/Command/Skeletons.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <map>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

namespace {

std::string Joined(const std::vector<std::string>& words) {
    return fmt::format("{}", fmt::join(words, " "));
}

/// Returns a text quoted as one word for a shell.
std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return quoted + "'";
}

std::vector<std::string> CommandNames(const CommandOutline& outline) {
    std::vector<std::string> names;
    for (const CommandOutline& command : outline.commands) {
        names.push_back(command.name);
    }
    return names;
}

/// Returns the options of a command and its subcommands that take a value, without duplicates.
std::map<std::string, OutlineOption> OptionsWithValues(const CommandOutline& outline) {
    std::map<std::string, OutlineOption> options;
    for (const OutlineOption& option : outline.options) {
        if (option.takesValue) {
            options.emplace(option.name, option);
        }
    }
    for (const CommandOutline& command : outline.commands) {
        options.merge(OptionsWithValues(command));
    }
    return options;
}

std::string BashBranch(std::string_view indent, const std::string& pattern,
                       const std::string& words, bool files) {
    return fmt::format("{}{}){}{} ;;\n", indent, pattern,
                       words.empty() ? "" : " words=" + Quoted(words), files ? " files=yes" : "");
}

/// Returns the case branch with the words that can follow a command if no option's value is
/// expected. `general` are the program's own options.
std::string BashCommand(const std::string& pattern, const CommandOutline& command,
                        const std::vector<OutlineOption>& general) {
    constexpr std::string_view kIndent = "                ";
    std::vector<std::string> words = CommandNames(command);
    bool files = false;
    for (const OutlineOption& argument : command.arguments) {
        words.insert(words.end(), argument.words.begin(), argument.words.end());
        files = files || argument.takesFile;
    }
    for (const std::vector<OutlineOption>& options : {command.options, general}) {
        for (const OutlineOption& option : options) {
            words.push_back(option.name);
        }
    }
    return BashBranch(kIndent, pattern, ' ' + Joined(words), files);
}

/// Returns an option's description for `_arguments`, in which brackets and colons must be escaped.
/// Leaves out a parameter's accepted values, which follow ";\n".
std::string ZshDescription(std::string_view text) {
    std::string escaped;
    for (const char character : text.substr(0, text.find(";\n"))) {
        if (std::string_view("[]:\\").find(character) != std::string_view::npos) {
            escaped += '\\';
        }
        escaped += character;
    }
    return escaped;
}

std::string ZshValue(const OutlineOption& option) {
    const std::string words = option.words.empty() ? "" : "(" + Joined(option.words) + ")";
    if (!option.takesFile || words.empty()) {
        return option.takesFile ? "_files" : words;
    }
    // Escapes the colons, because a plain one would end the description.
    return R"({_alternative "names\:name\:)" + words + R"(" "files\:file\:_files"})";
}

/// Returns the lines of an `_arguments` call that specify options and arguments.
std::string ZshArguments(std::string_view indent, const std::vector<OutlineOption>& options) {
    std::string arguments;
    for (const OutlineOption& option : options) {
        const bool argument = !option.name.starts_with("--");
        const std::string text =
            argument ? fmt::format(":{}:{}", option.name, ZshValue(option))
                     : fmt::format("{}{}[{}]{}", option.name, option.takesValue ? "=" : "",
                                   ZshDescription(option.description),
                                   option.takesValue ? ":value:" + ZshValue(option) : "");
        arguments += fmt::format("{}{} \\\n", indent, Quoted(text));
    }
    return arguments;
}

std::string ZshBranch(const CommandOutline& command, const std::vector<OutlineOption>& general) {
    constexpr std::string_view kIndent = "                        ";
    return fmt::format("                {})\n                    _arguments \\\n{}{}{}"
                       "                        && return\n                    ;;\n",
                       command.name, ZshArguments(kIndent, command.options),
                       ZshArguments(kIndent, general), ZshArguments(kIndent, command.arguments));
}

std::string BashCompletion(const CommandOutline& command) {
    std::string values;
    for (const auto& [name, option] : OptionsWithValues(command)) {
        values += BashBranch("        ", name, Joined(option.words), option.takesFile);
    }
    std::string options;
    for (const CommandOutline& subcommand : command.commands) {
        options += BashCommand(subcommand.name, subcommand, command.options);
    }
    options += BashCommand("*", command, {});
    return Fill(std::string(Skeletons::kCompletionBash),
                {{"COMMANDS", fmt::format("{}", fmt::join(CommandNames(command), " | "))},
                 {"VALUES", values},
                 {"OPTIONS", options}});
}

std::string ZshCompletion(const CommandOutline& command) {
    std::string commands;
    std::string branches;
    for (const CommandOutline& subcommand : command.commands) {
        commands +=
            fmt::format("        {}\n", Quoted(subcommand.name + ':' + subcommand.description));
        branches += ZshBranch(subcommand, command.options);
    }
    return Fill(std::string(Skeletons::kCompletionZsh),
                {{"COMMANDS", commands},
                 {"OPTIONS", ZshArguments("        ", command.options)},
                 {"ARGUMENTS", branches}});
}

} // namespace

std::string CompletionScript(std::string_view shell, const CommandOutline& command) {
    if (shell == "bash") {
        return BashCompletion(command);
    }
    if (shell == "zsh") {
        return ZshCompletion(command);
    }
    throw Error(fmt::format("completion is for bash or zsh, not '{}'", shell));
}

} // namespace Kerovane::Host
