#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/Interface/MessageSuite.h"
#include "Adapters/OpenFX/Interface/ParameterSuite.h"
#include "Adapters/OpenFX/Interface/PropertySuite.h"

#include <string_view>

namespace Kerovane::OpenFX {

/// The function tables that the host lends.
struct Suites {
    const OfxPropertySuiteV1* properties = nullptr;
    const OfxImageEffectSuiteV1* effects = nullptr;
    const OfxParameterSuiteV1* parameters = nullptr;
    const OfxMessageSuiteV1* messages = nullptr; ///< null if the host has none
};

/// Whose suites are fetched next. `host` outlives the plug-in's use; null for none.
void SetHost(const OfxHost* host);

/// Fetches the host's suites, and tells whether all that are needed are there.
bool FetchSuites();

/// Those of the last FetchSuites.
const Suites& HostSuites();

/// Throws Error if `status` is not kOfxStatOK, saying that the host refused `request`.
void Require(OfxStatus status, std::string_view request);

} // namespace Kerovane::OpenFX
