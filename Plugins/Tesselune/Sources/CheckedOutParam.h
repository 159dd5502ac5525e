#pragma once

#include "AE_Effect.h"

namespace Kerovane::Tesselune {

/**
 * A parameter of the host at the frame's time. The constructor checks it out, the destructor checks
 * it in.
 */
class CheckedOutParam {
public:
    /**
     * `err` is shared by a sequence of checkouts and keeps their first error. Once it is set, later
     * parameters are not checked out, but every parameter is checked in.
     */
    CheckedOutParam(PF_InData* in_data, PF_ParamIndex index, PF_Err& err)
        : mInData(in_data), mErr(err) {
        if (mErr == PF_Err_NONE) {
            mErr = mInData->inter.checkout_param(mInData->effect_ref, index, mInData->current_time,
                                                 mInData->time_step, mInData->time_scale, &mParam);
        }
    }

    ~CheckedOutParam() {
        const PF_Err err = mInData->inter.checkin_param(mInData->effect_ref, &mParam);
        if (mErr == PF_Err_NONE) {
            mErr = err;
        }
    }

    CheckedOutParam(const CheckedOutParam&) = delete;
    CheckedOutParam& operator=(const CheckedOutParam&) = delete;

    /**
     * Returns the parameter as the host filled it in. Once `err` is set, returns a record in which
     * all fields are 0, whatever a failed checkout wrote.
     */
    const PF_ParamDef* operator->() const { return mErr == PF_Err_NONE ? &mParam : &kCleared; }

private:
    static constexpr PF_ParamDef kCleared{};

    PF_InData* mInData;
    PF_Err& mErr;
    PF_ParamDef mParam{};
};

} // namespace Kerovane::Tesselune
