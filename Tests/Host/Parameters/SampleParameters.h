#pragma once

#include "Host/Parameters/Parameter.h"

namespace Kerovane::Host {

inline Parameter Slider() {
    PF_ParamDef def{};
    def.param_type = PF_Param_SLIDER;
    def.u.sd = {.value = 5,
                .value_str = "",
                .value_desc = "",
                .valid_min = -5,
                .valid_max = 3000,
                .slider_min = 0,
                .slider_max = 500,
                .dephault = 10};
    return MakeParameter(def);
}

inline Parameter FloatSlider() {
    PF_ParamDef def{};
    def.param_type = PF_Param_FLOAT_SLIDER;
    def.u.fs_d.valid_min = def.u.fs_d.slider_min = 0.1F;
    def.u.fs_d.valid_max = def.u.fs_d.slider_max = 10;
    def.u.fs_d.dephault = 0.7F;
    return MakeParameter(def);
}

inline Parameter Percentage() {
    PF_ParamDef def{};
    def.param_type = PF_Param_FIX_SLIDER;
    def.u.fd.valid_max = def.u.fd.slider_max = 100 << 16;
    def.u.fd.display_flags = PF_ValueDisplayFlag_PERCENT;
    return MakeParameter(def);
}

inline Parameter Angle() {
    PF_ParamDef def{};
    def.param_type = PF_Param_ANGLE;
    return MakeParameter(def);
}

inline Parameter Checkbox() {
    PF_ParamDef def{};
    def.param_type = PF_Param_CHECKBOX;
    def.u.bd.dephault = 1;
    def.u.bd.u.nameptr = "Use Alpha";
    return MakeParameter(def);
}

inline Parameter Popup() {
    PF_ParamDef def{};
    def.param_type = PF_Param_POPUP;
    def.u.pd.num_choices = 3;
    def.u.pd.dephault = 1;
    def.u.pd.u.namesptr = "Linear|Radial In|Radial Out";
    return MakeParameter(def);
}

inline Parameter Seed() {
    Parameter seed = Slider();
    seed.name = "Random Seed";
    return seed;
}

} // namespace Kerovane::Host
