#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Parameters/Renderer.h"

#include <optional>

namespace Kerovane::Adapters {

/// Returns the popup that chooses the renderer; it follows the effect's own parameters.
Host::Parameter RendererParameter();

/// Returns the renderer that `values` choose; nothing for "As configured".
std::optional<Host::Renderer> RendererIn(const Host::ParameterValues& values, Host::Time time);

} // namespace Kerovane::Adapters
