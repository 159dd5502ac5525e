#pragma once

#include "AE_Effect.h"

namespace Kerovane::TestSupport {

/// Writes a value to a parameter without checking its range: `real` if the parameter is a float,
/// else `whole`.
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
