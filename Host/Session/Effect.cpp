#include "Host/Session/Effect.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <string_view>

namespace Kerovane::Host {

namespace {

std::string_view ErrorName(PF_Err error) {
    switch (error) {
    case PF_Err_OUT_OF_MEMORY:
        return "out of memory";
    case PF_Err_INTERNAL_STRUCT_DAMAGED:
        return "internal structure damaged";
    case PF_Err_INVALID_INDEX:
        return "invalid index";
    case PF_Err_UNRECOGNIZED_PARAM_TYPE:
        return "unrecognised parameter type";
    case PF_Err_INVALID_CALLBACK:
        return "invalid callback";
    case PF_Err_BAD_CALLBACK_PARAM:
        return "bad callback parameter";
    case PF_Interrupt_CANCEL:
        return "interrupted";
    default:
        return "unknown";
    }
}

std::string ReturnMessage(const PF_OutData& outData) {
    const std::string_view buffer(outData.return_msg, sizeof outData.return_msg);
    return std::string(buffer.substr(0, buffer.find('\0')));
}

/// Returns why a command failed: the effect's own message, or else the last refusal of a callback
/// with the error code.
std::string Reason(const EffectSession& session, PF_Err error) {
    std::string message = ReturnMessage(session.outData());
    if (!message.empty()) {
        return message;
    }
    const std::string code = fmt::format("error {} ({})", error, ErrorName(error));
    return session.refusal().empty() ? code : fmt::format("{}; {}", session.refusal(), code);
}

void KeepHandles(const PF_OutData& outData, PF_InData& inData) {
    inData.global_data = outData.global_data;
    inData.sequence_data = outData.sequence_data;
    inData.frame_data = outData.frame_data;
}

/// Calls `send`, which sends one command, after clearing the previous error message. Throws Error
/// if the effect fails; `doing` names the activity in the error text.
template <typename Send>
void Run(EffectSession& session, std::string_view doing, Send send) {
    PF_OutData& outData = session.outData();
    outData.return_msg[0] = '\0';
    outData.out_flags &= ~PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    PF_Err error = PF_Err_NONE;
    try {
        error = send();
    } catch (const std::exception& exception) {
        throw Error(fmt::format("the effect failed at {}: {}", doing, exception.what()));
    } catch (...) {
        throw Error(fmt::format("the effect failed at {}: unknown exception", doing));
    }
    KeepHandles(outData, session.inData());
    if (error != PF_Err_NONE || (outData.out_flags & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0) {
        throw Error(fmt::format("the effect failed at {}: {}", doing, Reason(session, error)));
    }
}

void SetFrame(const Frame& frame, const PF_LayerDef& input, PF_InData& inData) {
    inData.current_time = frame.time.ticks;
    inData.time_scale = frame.time.scale;
    inData.time_step = frame.timeStep;
    inData.local_time_step = frame.timeStep;
    inData.total_time = frame.time.ticks + frame.timeStep;
    inData.downsample_x = {.num = 1, .den = static_cast<A_u_long>(frame.downsample)};
    inData.downsample_y = inData.downsample_x;
    inData.width = input.width * frame.downsample;
    inData.height = input.height * frame.downsample;
    inData.extent_hint = input.extent_hint;
    inData.pixel_aspect_ratio = input.pix_aspect_ratio;
}

} // namespace

Effect::GlobalSetup::GlobalSetup(EffectSession& session) : mSession(session) {
    Run(session, "set-up", [&session] { return session.call(PF_Cmd_GLOBAL_SETUP); });
}

Effect::GlobalSetup::~GlobalSetup() {
    try {
        mSession.call(PF_Cmd_GLOBAL_SETDOWN);
    } catch (...) { // NOLINT(bugprone-empty-catch): destructors have no one to report to
    }
}

Effect::Effect(const std::filesystem::path& module) : mSession(module), mGlobalSetup(mSession) {
    Run(mSession, "parameter set-up", [this] { return mSession.call(PF_Cmd_PARAMS_SETUP); });
    const auto added = static_cast<A_long>(parameters().size());
    if (mSession.outData().num_params != added) {
        throw Error(fmt::format("the effect declares {} parameters and has {}",
                                mSession.outData().num_params, added));
    }
    mSession.inData().num_params = added;
}

std::string Effect::about() {
    const std::lock_guard lock(mMutex);
    Run(mSession, "its about text", [this] { return mSession.call(PF_Cmd_ABOUT); });
    std::string text = ReturnMessage(mSession.outData());
    std::ranges::replace(text, '\r', '\n');
    return text;
}

void Effect::render(const Frame& frame, const ParameterValues& values, const PF_LayerDef& input,
                    PF_LayerDef& output) {
    if (DepthOf(output) != DepthOf(input) || output.width != input.width ||
        output.height != input.height) {
        throw Error("the output layer differs from the input layer in depth or size");
    }
    const std::lock_guard lock(mMutex);
    SetFrame(frame, input, mSession.inData());
    mSession.values() = values;
    Run(mSession, "rendering", [&] { return mSession.render(input, output); });
}

} // namespace Kerovane::Host
