#pragma once

#include "Adapters/OpenFX/Control.h"
#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Host/Parameters/ParameterValues.h"

namespace Kerovane::OpenFX {

/// Defines the effect's parameters in their groups, and a page of them all. Throws Error if the
/// effect can't be asked or the host refuses.
void DefineControls(OfxImageEffectHandle effect);

/// What the instance's parameters are set to at `time`. Throws Error if the host can't tell.
Host::ParameterValues ValuesAt(OfxImageEffectHandle effect, OfxTime time);

/// Whether cells can be missing from a picture of the instance, at any time, with nothing in their
/// place.
bool CanHaveHoles(OfxImageEffectHandle effect);

/// The script names of the parameters that CanHaveHoles looks at.
std::vector<std::string> ControlsOfHoles();

} // namespace Kerovane::OpenFX
