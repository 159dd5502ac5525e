#pragma once

namespace Kerovane::Tesselune {

/** Places in the host's parameter list. The disk ids, by which projects store values, are equal. */
enum ParamIndex {
    kParamInput, ///< the host's own
    kParamShapeType,
    kParamSize,
    kParamRatio,
    kParamSizeRandom,
    kParamSizeLevel,
    kParamSizeRandomSeed,
    kParamDissolve,
    kParamDissolveRandomSeed,
    kParamTransitionType,
    kParamTransitionProgress,
    kParamFeather,
    kParamDirection,
    kParamGroupStart,
    kParamGroupEnd,
    kParamUseAlpha,
    kParamCount
};

static_assert(kParamCount == 16);

} // namespace Kerovane::Tesselune
