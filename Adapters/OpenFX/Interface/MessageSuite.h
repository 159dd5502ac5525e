#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

inline constexpr Name kOfxMessageSuite = "OfxMessageSuite";
inline constexpr Name kOfxMessageError = "OfxMessageError";

/// Tells the user something. `handle` is the effect's, or null; `format` is printf's.
struct OfxMessageSuiteV1 {
    OfxStatus (*message)(void* handle, const char* messageType, const char* messageId,
                         const char* format, ...);
};

TESSELUNE_ASSERT_SLOT(OfxMessageSuiteV1, 1, message);
static_assert(sizeof(OfxMessageSuiteV1) == sizeof(void*));

} // namespace Kerovane::OpenFX
