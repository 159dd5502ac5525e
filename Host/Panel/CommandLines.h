#pragma once

#include "Host/Panel/Footage.h"
#include "Host/Panel/Look.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kerovane::Host {

using Words = std::vector<std::string>;

/** What the command is told beside the look, whatever it renders. */
struct LineSetting {
    const std::vector<Parameter>& parameters;
    std::vector<std::string> options; ///< of the parameters, as OptionNames gives them
    Words footageWords{};             ///< "--fps", "25"
    std::string frames{};             ///< as --frames takes them; empty: all
};

/// "--size", "40": what isn't at its default, and the renderer.
Words LookWords(const LineSetting& setting, const Look& look);

/// The words behind the program's name that make a PNG of 8 bits of one frame.
Words StillWords(const LineSetting& setting, const Look& look, const Footage& footage,
                 A_long frame);

/// Those that render all of `footage`, under the name `input`, to `output`.
Words ShotWords(const LineSetting& setting, const Look& look, const Footage& footage,
                const std::string& input, const std::string& output);

/// A word as a shell takes it.
std::string Quoted(std::string_view word);

/// A line for a shell.
std::string ShellLine(const std::string& program, const Words& words);

/// Whether the look has the parameter as the effect declares it, at all times.
bool IsDefault(const Parameter& parameter, const Look& look);

/// The value that `parameter` has at `frame`.
double ValueAt(const Parameter& parameter, const Look& look, const Footage& footage, double frame);

} // namespace Kerovane::Host
