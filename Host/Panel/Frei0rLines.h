#pragma once

#include "Host/Panel/CommandLines.h"

#include <string>

namespace Kerovane::Host {

/// Return shell lines that apply the look with other programs, through the effect interface frei0r.
/// Programs without keyframes get the values at `frame`.
std::string FfmpegLine(const LineSetting& setting, const Look& look, const Footage& footage,
                       A_long frame);
std::string MeltLine(const LineSetting& setting, const Look& look, const Footage& footage);
std::string GStreamerLine(const LineSetting& setting, const Look& look, const Footage& footage,
                          A_long frame);

} // namespace Kerovane::Host
