#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/Interface/MessageSuite.h"
#include "Adapters/OpenFX/Interface/ParameterSuite.h"
#include "Adapters/OpenFX/Interface/PropertySuite.h"

#include <string_view>

namespace Kerovane::OpenFX {

/// The host's function tables.
struct Suites {
    const OfxPropertySuiteV1* properties = nullptr;
    const OfxImageEffectSuiteV1* effects = nullptr;
    const OfxParameterSuiteV1* parameters = nullptr;
    const OfxMessageSuiteV1* messages = nullptr; ///< null if the host has none
};

/// Sets the host whose suites FetchSuites fetches; null for none. `host` must outlive the use of
/// the plug-in.
void SetHost(const OfxHost* host);

/// Fetches the host's suites. Returns whether all required ones exist.
bool FetchSuites();

/// Returns the suites of the last FetchSuites.
const Suites& HostSuites();

/// Throws Error if `status` is not kOfxStatOK. The message says that the host refused `request`.
void Require(OfxStatus status, std::string_view request);

} // namespace Kerovane::OpenFX
