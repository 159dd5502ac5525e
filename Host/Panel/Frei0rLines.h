#pragma once

#include "Host/Panel/CommandLines.h"

#include <string>

namespace Kerovane::Host {

/// Lines for programs that have the effect through frei0r. Those that know no keys get the values
/// at `frame`.
std::string FfmpegLine(const LineSetting& setting, const Look& look, const Footage& footage,
                       A_long frame);
std::string MeltLine(const LineSetting& setting, const Look& look, const Footage& footage);
std::string GStreamerLine(const LineSetting& setting, const Look& look, const Footage& footage,
                          A_long frame);

} // namespace Kerovane::Host
