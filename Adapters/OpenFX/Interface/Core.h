#pragma once

#include "Adapters/OpenFX/Interface/Layout.h"

// The part of the OpenFX 1.4 and 1.5 interface used here, under its published names. Layouts and
// texts are exchanged with hosts, so they must match the published ones exactly.

namespace Kerovane::OpenFX {

using OfxStatus = int;
using OfxTime = double;

inline constexpr OfxStatus kOfxStatOK = 0;
inline constexpr OfxStatus kOfxStatFailed = 1;
inline constexpr OfxStatus kOfxStatErrMissingHostFeature = 4;
inline constexpr OfxStatus kOfxStatErrMemory = 8;
inline constexpr OfxStatus kOfxStatReplyDefault = 14;

/// Handles are pointers that only the host can interpret.
using OfxPropertySetHandle = struct OfxPropertySetStruct*;
using OfxImageEffectHandle = struct OfxImageEffectStruct*;
using OfxImageClipHandle = struct OfxImageClipHandleStruct*;
using OfxImageMemoryHandle = struct OfxImageMemoryStruct*;
using OfxParamSetHandle = struct OfxParamSetStruct*;
using OfxParamHandle = struct OfxParamStruct*;

struct OfxPointD {
    double x = 0;
    double y = 0;
};

struct OfxRangeD {
    double min = 0;
    double max = 0;
};

struct OfxRectI {
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
};

struct OfxRectD {
    double x1 = 0;
    double y1 = 0;
    double x2 = 0;
    double y2 = 0;
};

static_assert(sizeof(OfxPointD) == 16 && offsetof(OfxPointD, y) == 8);
static_assert(sizeof(OfxRangeD) == 16 && offsetof(OfxRangeD, max) == 8);
static_assert(sizeof(OfxRectI) == 16 && offsetof(OfxRectI, y1) == 4 &&
              offsetof(OfxRectI, x2) == 8 && offsetof(OfxRectI, y2) == 12);
static_assert(sizeof(OfxRectD) == 32 && offsetof(OfxRectD, y1) == 8 &&
              offsetof(OfxRectD, x2) == 16 && offsetof(OfxRectD, y2) == 24);

/// The host's side of the interface.
struct OfxHost {
    OfxPropertySetHandle host;
    const void* (*fetchSuite)(OfxPropertySetHandle host, const char* suiteName, int suiteVersion);
};

TESSELUNE_ASSERT_SLOT(OfxHost, 1, host);
TESSELUNE_ASSERT_SLOT(OfxHost, 2, fetchSuite);
static_assert(sizeof(OfxHost) == 2 * sizeof(void*));

/// The function through which a host performs all actions of a plug-in. `handle` is the effect or
/// its descriptor; null if the action concerns neither.
using OfxPluginEntryPoint = OfxStatus(const char* action, const void* handle,
                                      OfxPropertySetHandle inArgs, OfxPropertySetHandle outArgs);

struct OfxPlugin {
    const char* pluginApi;
    int apiVersion;
    const char* pluginIdentifier;
    unsigned int pluginVersionMajor;
    unsigned int pluginVersionMinor;
    void (*setHost)(OfxHost* host);
    OfxPluginEntryPoint* mainEntry;
};

static_assert(offsetof(OfxPlugin, pluginApi) == 0 && offsetof(OfxPlugin, apiVersion) == 8 &&
              offsetof(OfxPlugin, pluginIdentifier) == 16 &&
              offsetof(OfxPlugin, pluginVersionMajor) == 24 &&
              offsetof(OfxPlugin, pluginVersionMinor) == 28 && offsetof(OfxPlugin, setHost) == 32 &&
              offsetof(OfxPlugin, mainEntry) == 40 && sizeof(OfxPlugin) == 48);

using Name = const char*;

// clang-format off: a name and its text on one line
inline constexpr Name kOfxActionLoad = "OfxActionLoad";
inline constexpr Name kOfxActionUnload = "OfxActionUnload";
inline constexpr Name kOfxActionDescribe = "OfxActionDescribe";
inline constexpr Name kOfxActionCreateInstance = "OfxActionCreateInstance";
inline constexpr Name kOfxActionDestroyInstance = "OfxActionDestroyInstance";

inline constexpr Name kOfxPropLabel = "OfxPropLabel";
inline constexpr Name kOfxPropShortLabel = "OfxPropShortLabel";
inline constexpr Name kOfxPropLongLabel = "OfxPropLongLabel";
inline constexpr Name kOfxPropPluginDescription = "OfxPropPluginDescription";
inline constexpr Name kOfxPropVersion = "OfxPropVersion";
inline constexpr Name kOfxPropVersionLabel = "OfxPropVersionLabel";
inline constexpr Name kOfxPropIcon = "OfxPropIcon";
inline constexpr Name kOfxPropTime = "OfxPropTime";
// clang-format on

} // namespace Kerovane::OpenFX
