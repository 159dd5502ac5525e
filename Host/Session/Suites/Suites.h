#pragma once

#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace Kerovane::Host {

/// The suite from which an effect acquires all others. The same for every session.
SPBasicSuite& BasicSuite();

/// References to suites that were acquired and not released.
int LiveSuiteReferences();

// The tables behind the names, each defined in the file that is named after it.
extern const PF_ANSICallbacksSuite1 kAnsiSuite;
extern const PF_HandleSuite1 kHandleSuite;
extern const PF_iterateFloatSuite1 kIterateFloatSuite;
extern const PF_WorldSuite2 kWorldSuite;
extern const AEGP_MemorySuite1 kMemorySuite;
extern const AEGP_UtilitySuite5 kUtilitySuite5;
extern const AEGP_UtilitySuite6 kUtilitySuite6;

/// What the tables gave out and has not come back.
int LiveHandles();
int LiveMemoryHandles();
int LiveWorlds();

} // namespace Kerovane::Host
