#pragma once

#include "AE_Effect.h"

namespace Kerovane::Tesselune {

// Records of the effect's kinds of parameters, for add_param: all but the name and the disk id.

/// What can be typed, or what the slider reaches.
struct SliderRange {
    int min;
    int max;
};

PF_ParamDef IntegerSlider(int value, const SliderRange& valid, const SliderRange& slider);

/// 0 to 100 percent with one decimal, 0 by default.
PF_ParamDef PercentSlider();

/// A proportion: 0.01 to 10, 1 by default.
PF_ParamDef RatioSlider();

/// `choices` are separated by '|' and must outlive the host; the first is the default.
PF_ParamDef Popup(const char* choices, short count);

/// Degrees, 0 by default.
PF_ParamDef Angle();

/// On by default, with `label` beside the box.
PF_ParamDef Checkbox(const char* label);

PF_ParamDef GroupStart();
PF_ParamDef GroupEnd();

/// The same parameter with its changes reported to the effect.
PF_ParamDef Supervised(PF_ParamDef param);

} // namespace Kerovane::Tesselune
