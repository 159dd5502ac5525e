#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

inline constexpr Name kOfxMessageSuite = "OfxMessageSuite";
inline constexpr Name kOfxMessageError = "OfxMessageError";

/// Shows messages to the user. `handle` is the effect's or null; `format` is a printf format.
struct OfxMessageSuiteV1 {
    OfxStatus (*message)(void* handle, const char* messageType, const char* messageId,
                         const char* format, ...);
};

TESSELUNE_ASSERT_SLOT(OfxMessageSuiteV1, 1, message);
static_assert(sizeof(OfxMessageSuiteV1) == sizeof(void*));

} // namespace Kerovane::OpenFX
