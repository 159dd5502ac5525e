#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

inline constexpr Name kOfxImageEffectSuite = "OfxImageEffectSuite";
inline constexpr Name kOfxImageEffectPluginApi = "OfxImageEffectPluginAPI";
inline constexpr int kOfxImageEffectPluginApiVersion = 1;

/// Functions for effects, their clips and the clips' images.
struct OfxImageEffectSuiteV1 {
    using Effect = OfxImageEffectHandle;
    using Properties = OfxPropertySetHandle;

    OfxStatus (*getPropertySet)(Effect imageEffect, Properties* propHandle);
    OfxStatus (*getParamSet)(Effect imageEffect, OfxParamSetHandle* paramSet);
    OfxStatus (*clipDefine)(Effect imageEffect, const char* name, Properties* propertySet);
    OfxStatus (*clipGetHandle)(Effect imageEffect, const char* name, OfxImageClipHandle* clip,
                               Properties* propertySet);
    OfxStatus (*clipGetPropertySet)(OfxImageClipHandle clip, Properties* propHandle);
    OfxStatus (*clipGetImage)(OfxImageClipHandle clip, OfxTime time, const OfxRectD* region,
                              Properties* imageHandle);
    OfxStatus (*clipReleaseImage)(Properties imageHandle);
    OfxStatus (*clipGetRegionOfDefinition)(OfxImageClipHandle clip, OfxTime time, OfxRectD* bounds);
    int (*abort)(Effect imageEffect);
    OfxStatus (*imageMemoryAlloc)(Effect instanceHandle, std::size_t nBytes,
                                  OfxImageMemoryHandle* memoryHandle);
    OfxStatus (*imageMemoryFree)(OfxImageMemoryHandle memoryHandle);
    OfxStatus (*imageMemoryLock)(OfxImageMemoryHandle memoryHandle, void** returnedPtr);
    OfxStatus (*imageMemoryUnlock)(OfxImageMemoryHandle memoryHandle);
};

TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 1, getPropertySet);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 2, getParamSet);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 3, clipDefine);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 4, clipGetHandle);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 5, clipGetPropertySet);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 6, clipGetImage);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 7, clipReleaseImage);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 8, clipGetRegionOfDefinition);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 9, abort);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 10, imageMemoryAlloc);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 11, imageMemoryFree);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 12, imageMemoryLock);
TESSELUNE_ASSERT_SLOT(OfxImageEffectSuiteV1, 13, imageMemoryUnlock);
static_assert(sizeof(OfxImageEffectSuiteV1) == 13 * sizeof(void*));

// clang-format off: a name and its text on one line
inline constexpr Name kOfxImageEffectActionDescribeInContext =
    "OfxImageEffectActionDescribeInContext";
inline constexpr Name kOfxImageEffectActionGetRegionOfDefinition =
    "OfxImageEffectActionGetRegionOfDefinition";
inline constexpr Name kOfxImageEffectActionGetRegionsOfInterest =
    "OfxImageEffectActionGetRegionsOfInterest";
inline constexpr Name kOfxImageEffectActionGetClipPreferences =
    "OfxImageEffectActionGetClipPreferences";
inline constexpr Name kOfxImageEffectActionRender = "OfxImageEffectActionRender";

inline constexpr Name kOfxImageEffectContextFilter = "OfxImageEffectContextFilter";
inline constexpr Name kOfxImageEffectContextGeneral = "OfxImageEffectContextGeneral";
inline constexpr Name kOfxImageEffectOutputClipName = "Output";
inline constexpr Name kOfxImageEffectSimpleSourceClipName = "Source";

inline constexpr Name kOfxBitDepthByte = "OfxBitDepthByte";
inline constexpr Name kOfxBitDepthShort = "OfxBitDepthShort";
inline constexpr Name kOfxBitDepthHalf = "OfxBitDepthHalf";
inline constexpr Name kOfxBitDepthFloat = "OfxBitDepthFloat";
inline constexpr Name kOfxImageComponentRGBA = "OfxImageComponentRGBA";
inline constexpr Name kOfxImageComponentRGB = "OfxImageComponentRGB";
inline constexpr Name kOfxImageOpaque = "OfxImageOpaque";
inline constexpr Name kOfxImagePreMultiplied = "OfxImageAlphaPremultiplied";
inline constexpr Name kOfxImageUnPreMultiplied = "OfxImageAlphaUnPremultiplied";
inline constexpr Name kOfxImageFieldNone = "OfxFieldNone";
inline constexpr Name kOfxImageFieldBoth = "OfxFieldBoth";
inline constexpr Name kOfxImageFieldDoubled = "OfxFieldDoubled";

// Properties of hosts and effects.
inline constexpr Name kOfxImageEffectPluginPropGrouping = "OfxImageEffectPluginPropGrouping";
inline constexpr Name kOfxImageEffectPluginPropSingleInstance =
    "OfxImageEffectPluginPropSingleInstance";
inline constexpr Name kOfxImageEffectPluginRenderThreadSafety =
    "OfxImageEffectPluginRenderThreadSafety";
inline constexpr Name kOfxImageEffectRenderFullySafe = "OfxImageEffectRenderFullySafe";
inline constexpr Name kOfxImageEffectPluginPropHostFrameThreading =
    "OfxImageEffectPluginPropHostFrameThreading";
inline constexpr Name kOfxImageEffectPluginPropFieldRenderTwiceAlways =
    "OfxImageEffectPluginPropFieldRenderTwiceAlways";
inline constexpr Name kOfxImageEffectPropSupportedContexts = "OfxImageEffectPropSupportedContexts";
inline constexpr Name kOfxImageEffectPropSupportedPixelDepths =
    "OfxImageEffectPropSupportedPixelDepths";
inline constexpr Name kOfxImageEffectPropSupportedComponents =
    "OfxImageEffectPropSupportedComponents";
inline constexpr Name kOfxImageEffectPropSupportsMultiResolution =
    "OfxImageEffectPropSupportsMultiResolution";
inline constexpr Name kOfxImageEffectPropSupportsTiles = "OfxImageEffectPropSupportsTiles";
inline constexpr Name kOfxImageEffectPropSupportsMultipleClipDepths =
    "OfxImageEffectPropMultipleClipDepths";
inline constexpr Name kOfxImageEffectPropSupportsMultipleClipPARs =
    "OfxImageEffectPropSupportsMultipleClipPARs";
inline constexpr Name kOfxImageEffectPropTemporalClipAccess =
    "OfxImageEffectPropTemporalClipAccess";
inline constexpr Name kOfxImageEffectPropClipPreferencesSlaveParam =
    "OfxImageEffectPropClipPreferencesSlaveParam";
inline constexpr Name kOfxImageEffectPropProjectSize = "OfxImageEffectPropProjectSize";
inline constexpr Name kOfxImageEffectPropProjectOffset = "OfxImageEffectPropProjectOffset";

// Properties of clips, images and the actions that concern them.
inline constexpr Name kOfxImageClipPropUnmappedComponents = "OfxImageClipPropUnmappedComponents";
inline constexpr Name kOfxImageClipPropFieldExtraction = "OfxImageClipPropFieldExtraction";
inline constexpr Name kOfxImageEffectPropComponents = "OfxImageEffectPropComponents";
inline constexpr Name kOfxImageEffectPropPixelDepth = "OfxImageEffectPropPixelDepth";
inline constexpr Name kOfxImageEffectPropPreMultiplication = "OfxImageEffectPropPreMultiplication";
inline constexpr Name kOfxImageEffectPropRenderScale = "OfxImageEffectPropRenderScale";
inline constexpr Name kOfxImageEffectPropRenderWindow = "OfxImageEffectPropRenderWindow";
inline constexpr Name kOfxImageEffectPropFieldToRender = "OfxImageEffectPropFieldToRender";
inline constexpr Name kOfxImageEffectPropRegionOfDefinition =
    "OfxImageEffectPropRegionOfDefinition";
inline constexpr Name kOfxImagePropData = "OfxImagePropData";
inline constexpr Name kOfxImagePropBounds = "OfxImagePropBounds";
inline constexpr Name kOfxImagePropRowBytes = "OfxImagePropRowBytes";
inline constexpr Name kOfxImagePropField = "OfxImagePropField";
inline constexpr Name kOfxImagePropPixelAspectRatio = "OfxImagePropPixelAspectRatio";
// clang-format on

} // namespace Kerovane::OpenFX
