#pragma once

#include "Host/Panel/Footage.h"
#include "Host/Panel/Look.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

using Words = std::vector<std::string>;

/** What a command line needs besides the look: names of options, and words about the input. */
struct LineSetting {
    const std::vector<Parameter>& parameters;
    std::vector<std::string> options; ///< names of the parameters' options, from OptionNames
    Words footageWords{};             ///< options about the input: "--fps", "25"
    std::string frames{};             ///< the value of --frames; empty: all frames
};

/// Returns the option of the renderer, and the options of all parameters that are not at their
/// default: "--renderer", "software", "--size", "40".
Words LookWords(const LineSetting& setting, const Look& look);

/// Returns the arguments that render one frame to an 8-bit PNG.
Words StillWords(const LineSetting& setting, const Look& look, const Footage& footage,
                 A_long frame);

/// Returns the arguments that render all of `footage` to `output`. `input` is the argument that
/// names the footage.
Words ShotWords(const LineSetting& setting, const Look& look, const Footage& footage,
                const std::string& input, const std::string& output);

/// Returns a word for a shell, in quotes if it needs them.
std::string Quoted(std::string_view word);

/// Returns a line for a shell: `program`, followed by the quoted `words`.
std::string ShellLine(const std::string& program, const Words& words);

/// Returns whether the parameter has its default at all times.
bool IsDefault(const Parameter& parameter, const Look& look);

/// Returns the value of `parameter` at `frame`.
double ValueAt(const Parameter& parameter, const Look& look, const Footage& footage, double frame);

} // namespace Kerovane::Host
