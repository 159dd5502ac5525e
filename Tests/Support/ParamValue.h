#pragma once

#include "AE_Effect.h"

namespace Kerovane::TestSupport {

/// Puts a value into a parameter past its range: `real` where it holds a real number, else `whole`.
inline void Overwrite(PF_ParamDef& param, A_long whole, PF_FpLong real) {
    switch (param.param_type) {
    case PF_Param_SLIDER:
        param.u.sd.value = whole;
        break;
    case PF_Param_FIX_SLIDER:
        param.u.fd.value = whole;
        break;
    case PF_Param_ANGLE:
        param.u.ad.value = whole;
        break;
    case PF_Param_CHECKBOX:
        param.u.bd.value = whole;
        break;
    case PF_Param_POPUP:
        param.u.pd.value = whole;
        break;
    case PF_Param_FLOAT_SLIDER:
        param.u.fs_d.value = real;
        break;
    default:
        break;
    }
}

} // namespace Kerovane::TestSupport
