#include "Fuzz/CarelessHost.h"

#include "Fuzz/Oracle.h"
#include "Host/Session/Drawable.h"
#include "Tests/Support/ParamValue.h"

namespace Kerovane::Fuzz {

namespace {

/// The session's own callback, which CheckoutParam below calls first.
decltype(PF_InteractCallbacks::checkout_param) gCheckoutParam = nullptr;

/// The frame being rendered.
const FuzzedFrame* gFrame = nullptr;

/// Overwrites the value with the frame's, even if it is out of the parameter's range.
PF_Err CheckoutParam(PF_ProgPtr ref, PF_ParamIndex index, A_long time, A_long step, A_u_long scale,
                     PF_ParamDef* param) {
    const PF_Err error = gCheckoutParam(ref, index, time, step, scale, param);
    if (error == PF_Err_NONE) {
        const RawValue& value = gFrame->values.at(static_cast<std::size_t>(index));
        TestSupport::Overwrite(*param, value.whole, value.real);
    }
    return error;
}

} // namespace

CarelessHost::CarelessHost() : mSession(TESSELUNE_MODULE) {
    Host::CheckDrawable(0, 0);
    Expect(mSession.call(PF_Cmd_GLOBAL_SETUP) == PF_Err_NONE, "the effect can be set up");
    Expect(mSession.call(PF_Cmd_PARAMS_SETUP) == PF_Err_NONE, "the effect has parameters");
    Expect(mSession.parameters().size() == FuzzedFrame::kValues, "each has a value of the frame");
    gCheckoutParam = mSession.inData().inter.checkout_param;
    mSession.inData().inter.checkout_param = CheckoutParam;
}

CarelessHost::~CarelessHost() {
    mSession.call(PF_Cmd_GLOBAL_SETDOWN);
}

PF_Err CarelessHost::render(const FuzzedFrame& frame, const Host::World& input,
                            Host::World& output) {
    gFrame = &frame;
    PF_InData& records = mSession.inData();
    records.current_time = frame.time;
    records.time_scale = frame.timeScale;
    records.downsample_x = frame.downsampleX;
    records.downsample_y = frame.downsampleY;
    records.width = input.width();
    records.height = input.height();
    return mSession.render(input, output);
}

} // namespace Kerovane::Fuzz
