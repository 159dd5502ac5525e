#include "Plugins/Tesselune/Sources/ParamDefs.h"

namespace Kerovane::Tesselune {

namespace {

constexpr PF_Fixed kHundredPercent = 100 << 16;

PF_ParamDef OfType(PF_ParamType type) {
    PF_ParamDef param{};
    param.param_type = type;
    return param;
}

} // namespace

PF_ParamDef IntegerSlider(int value, const SliderRange& valid, const SliderRange& slider) {
    PF_ParamDef param = OfType(PF_Param_SLIDER);
    param.u.sd.value = value;
    param.u.sd.dephault = value;
    param.u.sd.valid_min = valid.min;
    param.u.sd.valid_max = valid.max;
    param.u.sd.slider_min = slider.min;
    param.u.sd.slider_max = slider.max;
    return param;
}

PF_ParamDef PercentSlider() {
    PF_ParamDef param = OfType(PF_Param_FIX_SLIDER);
    param.u.fd.valid_max = kHundredPercent;
    param.u.fd.slider_max = kHundredPercent;
    param.u.fd.precision = 1;
    param.u.fd.display_flags = PF_ValueDisplayFlag_PERCENT;
    return param;
}

PF_ParamDef RatioSlider() {
    PF_ParamDef param = OfType(PF_Param_FLOAT_SLIDER);
    param.u.fs_d.value = 1.0;
    param.u.fs_d.dephault = 1.0F;
    param.u.fs_d.valid_min = 0.01F;
    param.u.fs_d.valid_max = 10.0F;
    param.u.fs_d.slider_min = 0.01F;
    param.u.fs_d.slider_max = 10.0F;
    param.u.fs_d.precision = 1;
    param.u.fs_d.curve_tolerance = 0.05F;
    return param;
}

PF_ParamDef Popup(const char* choices, short count) {
    PF_ParamDef param = OfType(PF_Param_POPUP);
    param.u.pd.value = 1;
    param.u.pd.dephault = 1;
    param.u.pd.num_choices = count;
    param.u.pd.u.namesptr = choices;
    return param;
}

PF_ParamDef Angle() {
    return OfType(PF_Param_ANGLE);
}

PF_ParamDef Checkbox(const char* label) {
    PF_ParamDef param = OfType(PF_Param_CHECKBOX);
    param.u.bd.value = 1;
    param.u.bd.dephault = 1;
    param.u.bd.u.nameptr = label;
    return param;
}

PF_ParamDef GroupStart() {
    return OfType(PF_Param_GROUP_START);
}

PF_ParamDef GroupEnd() {
    return OfType(PF_Param_GROUP_END);
}

PF_ParamDef Supervised(PF_ParamDef param) {
    param.flags |= PF_ParamFlag_SUPERVISE;
    return param;
}

} // namespace Kerovane::Tesselune
