#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

inline constexpr Name kOfxPropertySuite = "OfxPropertySuite";

/// Reads and writes the named values of a property set. `index` counts a property's values from 0;
/// the functions that end in N access the first `count` values.
struct OfxPropertySuiteV1 {
    using Set = OfxPropertySetHandle;

    OfxStatus (*propSetPointer)(Set properties, const char* property, int index, void* value);
    OfxStatus (*propSetString)(Set properties, const char* property, int index, const char* value);
    OfxStatus (*propSetDouble)(Set properties, const char* property, int index, double value);
    OfxStatus (*propSetInt)(Set properties, const char* property, int index, int value);
    OfxStatus (*propSetPointerN)(Set properties, const char* property, int count,
                                 void* const* value);
    OfxStatus (*propSetStringN)(Set properties, const char* property, int count,
                                const char* const* value);
    OfxStatus (*propSetDoubleN)(Set properties, const char* property, int count,
                                const double* value);
    OfxStatus (*propSetIntN)(Set properties, const char* property, int count, const int* value);
    OfxStatus (*propGetPointer)(Set properties, const char* property, int index, void** value);
    OfxStatus (*propGetString)(Set properties, const char* property, int index, char** value);
    OfxStatus (*propGetDouble)(Set properties, const char* property, int index, double* value);
    OfxStatus (*propGetInt)(Set properties, const char* property, int index, int* value);
    OfxStatus (*propGetPointerN)(Set properties, const char* property, int count, void** value);
    OfxStatus (*propGetStringN)(Set properties, const char* property, int count, char** value);
    OfxStatus (*propGetDoubleN)(Set properties, const char* property, int count, double* value);
    OfxStatus (*propGetIntN)(Set properties, const char* property, int count, int* value);
    OfxStatus (*propReset)(Set properties, const char* property);
    OfxStatus (*propGetDimension)(Set properties, const char* property, int* count);
};

TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 1, propSetPointer);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 2, propSetString);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 3, propSetDouble);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 4, propSetInt);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 5, propSetPointerN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 6, propSetStringN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 7, propSetDoubleN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 8, propSetIntN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 9, propGetPointer);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 10, propGetString);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 11, propGetDouble);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 12, propGetInt);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 13, propGetPointerN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 14, propGetStringN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 15, propGetDoubleN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 16, propGetIntN);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 17, propReset);
TESSELUNE_ASSERT_SLOT(OfxPropertySuiteV1, 18, propGetDimension);
static_assert(sizeof(OfxPropertySuiteV1) == 18 * sizeof(void*));

} // namespace Kerovane::OpenFX
