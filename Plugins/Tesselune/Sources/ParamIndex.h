#pragma once

namespace Kerovane::Tesselune {

/** Positions in the host's parameter list. Also the disk ids under which projects store values. */
enum ParamIndex {
    kParamInput, ///< the input layer, added by the host
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
