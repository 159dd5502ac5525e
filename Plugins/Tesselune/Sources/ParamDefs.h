#pragma once

#include "AE_Effect.h"

namespace Kerovane::Tesselune {

// Build the records for the host's add_param. The caller adds the name and the disk id.

/// Limits for typed values, or the ends of the slider.
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

/// Returns `param` with the flag that makes the host report its changes to the effect.
PF_ParamDef Supervised(PF_ParamDef param);

} // namespace Kerovane::Tesselune
