#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

inline constexpr Name kOfxParameterSuite = "OfxParameterSuite";

/// Functions for parameters. Values are variable arguments: an int or a double to set one, a
/// pointer to either to get one.
struct OfxParameterSuiteV1 {
    using ParamSet = OfxParamSetHandle;
    using Param = OfxParamHandle;
    using Properties = OfxPropertySetHandle;

    OfxStatus (*paramDefine)(ParamSet paramSet, const char* paramType, const char* name,
                             Properties* propertySet);
    OfxStatus (*paramGetHandle)(ParamSet paramSet, const char* name, Param* param,
                                Properties* propertySet);
    OfxStatus (*paramSetGetPropertySet)(ParamSet paramSet, Properties* propHandle);
    OfxStatus (*paramGetPropertySet)(Param param, Properties* propHandle);
    OfxStatus (*paramGetValue)(Param paramHandle, ...);
    OfxStatus (*paramGetValueAtTime)(Param paramHandle, OfxTime time, ...);
    OfxStatus (*paramGetDerivative)(Param paramHandle, OfxTime time, ...);
    OfxStatus (*paramGetIntegral)(Param paramHandle, OfxTime time1, OfxTime time2, ...);
    OfxStatus (*paramSetValue)(Param paramHandle, ...);
    OfxStatus (*paramSetValueAtTime)(Param paramHandle, OfxTime time, ...);
    OfxStatus (*paramGetNumKeys)(Param paramHandle, unsigned int* numberOfKeys);
    OfxStatus (*paramGetKeyTime)(Param paramHandle, unsigned int nthKey, OfxTime* time);
    OfxStatus (*paramGetKeyIndex)(Param paramHandle, OfxTime time, int direction, int* index);
    OfxStatus (*paramDeleteKey)(Param paramHandle, OfxTime time);
    OfxStatus (*paramDeleteAllKeys)(Param paramHandle);
    OfxStatus (*paramCopy)(Param paramTo, Param paramFrom, OfxTime dstOffset,
                           const OfxRangeD* frameRange);
    OfxStatus (*paramEditBegin)(ParamSet paramSet, const char* name);
    OfxStatus (*paramEditEnd)(ParamSet paramSet);
};

TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 1, paramDefine);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 2, paramGetHandle);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 3, paramSetGetPropertySet);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 4, paramGetPropertySet);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 5, paramGetValue);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 6, paramGetValueAtTime);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 7, paramGetDerivative);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 8, paramGetIntegral);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 9, paramSetValue);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 10, paramSetValueAtTime);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 11, paramGetNumKeys);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 12, paramGetKeyTime);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 13, paramGetKeyIndex);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 14, paramDeleteKey);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 15, paramDeleteAllKeys);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 16, paramCopy);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 17, paramEditBegin);
TESSELUNE_ASSERT_SLOT(OfxParameterSuiteV1, 18, paramEditEnd);
static_assert(sizeof(OfxParameterSuiteV1) == 18 * sizeof(void*));

// clang-format off: a name and its text on one line
inline constexpr Name kOfxParamTypeInteger = "OfxParamTypeInteger";
inline constexpr Name kOfxParamTypeDouble = "OfxParamTypeDouble";
inline constexpr Name kOfxParamTypeBoolean = "OfxParamTypeBoolean";
inline constexpr Name kOfxParamTypeChoice = "OfxParamTypeChoice";
inline constexpr Name kOfxParamTypeGroup = "OfxParamTypeGroup";
inline constexpr Name kOfxParamTypePage = "OfxParamTypePage";

inline constexpr Name kOfxParamPropScriptName = "OfxParamPropScriptName";
inline constexpr Name kOfxParamPropHint = "OfxParamPropHint";
inline constexpr Name kOfxParamPropParent = "OfxParamPropParent";
inline constexpr Name kOfxParamPropPageChild = "OfxParamPropPageChild";
inline constexpr Name kOfxParamPropDefault = "OfxParamPropDefault";
inline constexpr Name kOfxParamPropMin = "OfxParamPropMin";
inline constexpr Name kOfxParamPropMax = "OfxParamPropMax";
inline constexpr Name kOfxParamPropDisplayMin = "OfxParamPropDisplayMin";
inline constexpr Name kOfxParamPropDisplayMax = "OfxParamPropDisplayMax";
inline constexpr Name kOfxParamPropAnimates = "OfxParamPropAnimates";
inline constexpr Name kOfxParamPropChoiceOption = "OfxParamPropChoiceOption";
inline constexpr Name kOfxParamPropDoubleType = "OfxParamPropDoubleType";
inline constexpr Name kOfxParamDoubleTypeScale = "OfxParamDoubleTypeScale";
inline constexpr Name kOfxParamDoubleTypeAngle = "OfxParamDoubleTypeAngle";
// clang-format on

} // namespace Kerovane::OpenFX
