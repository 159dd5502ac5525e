#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Parameters/Renderer.h"

#include <optional>

namespace Kerovane::Adapters {

/// The popup by which hosts choose the renderer, behind the effect's own parameters.
Host::Parameter RendererParameter();

/// What it is set to; nothing if that is as configured.
std::optional<Host::Renderer> RendererIn(const Host::ParameterValues& values, Host::Time time);

} // namespace Kerovane::Adapters
