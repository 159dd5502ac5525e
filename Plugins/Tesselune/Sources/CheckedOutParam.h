#pragma once

#include "AE_Effect.h"

namespace Kerovane::Tesselune {

/** One of the host's parameters at the frame's time, checked out for the length of a scope. */
class CheckedOutParam {
public:
    /**
     * `err` is the first error of a row of fetches. Once it is set, nothing more is checked out,
     * but the check-in is made in every case.
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
     * The parameter as the host filled it in. Once `err` is set all fields are 0, whatever a failed
     * checkout left in the record.
     */
    const PF_ParamDef* operator->() const { return mErr == PF_Err_NONE ? &mParam : &kCleared; }

private:
    static constexpr PF_ParamDef kCleared{};

    PF_InData* mInData;
    PF_Err& mErr;
    PF_ParamDef mParam{};
};

} // namespace Kerovane::Tesselune
