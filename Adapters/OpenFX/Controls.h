#pragma once

#include "Adapters/OpenFX/Control.h"
#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Host/Parameters/ParameterValues.h"

namespace Kerovane::OpenFX {

/// Defines the effect's parameters in groups, and a page with all of them. Throws Error if the
/// effect cannot be asked or the host refuses.
void DefineControls(OfxImageEffectHandle effect);

/// Returns the values of the instance's parameters at `time`. Throws Error if the host does not
/// tell them.
Host::ParameterValues ValuesAt(OfxImageEffectHandle effect, OfxTime time);

/// Returns whether cells of the instance's picture can be transparent holes at any time.
bool CanHaveHoles(OfxImageEffectHandle effect);

/// Returns the script names of the parameters that CanHaveHoles depends on.
std::vector<std::string> ControlsOfHoles();

} // namespace Kerovane::OpenFX
