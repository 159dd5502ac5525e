#pragma once

#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace Kerovane::Host {

/// Returns the suite through which an effect acquires all others. It is the same for all sessions.
SPBasicSuite& BasicSuite();

/// Returns the number of suite references acquired and not yet released.
int LiveSuiteReferences();

// The function tables of the suites, each defined in the file named after it.
extern const PF_ANSICallbacksSuite1 kAnsiSuite;
extern const PF_HandleSuite1 kHandleSuite;
extern const PF_iterateFloatSuite1 kIterateFloatSuite;
extern const PF_WorldSuite2 kWorldSuite;
extern const AEGP_MemorySuite1 kMemorySuite;
extern const AEGP_UtilitySuite5 kUtilitySuite5;
extern const AEGP_UtilitySuite6 kUtilitySuite6;

/// Return the number of handles and worlds that the suites gave out and that were not returned.
int LiveHandles();
int LiveMemoryHandles();
int LiveWorlds();

} // namespace Kerovane::Host
