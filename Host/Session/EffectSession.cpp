#include "Host/Session/EffectSession.h"

#include "Host/Session/Suites/Suites.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

namespace Kerovane::Host {

/// The callbacks in PF_InData that need the session.
struct EffectCallbacks {
    static PF_Err checkoutParam(PF_ProgPtr ref, PF_ParamIndex index, A_long ticks, A_long,
                                A_u_long scale, PF_ParamDef* param);
    static PF_Err checkinParam(PF_ProgPtr ref, PF_ParamDef* param);
    static PF_Err addParam(PF_ProgPtr ref, PF_ParamIndex index, PF_ParamDef* definition);

private:
    static EffectSession& sessionOf(PF_ProgPtr ref) {
        return *reinterpret_cast<EffectSession*>(ref);
    }
};

namespace {

/// Marks a checked-out record in its field `unused`, because effects may also check in records they
/// never checked out.
constexpr A_long kCheckedOut = 0x4b56;

Parameter InputLayer() {
    Parameter input;
    input.definition.param_type = PF_Param_LAYER;
    return input;
}

/// This host never aborts a render and shows no progress within a frame.
PF_Err Abort(PF_ProgPtr) {
    return PF_Err_NONE;
}

PF_Err Progress(PF_ProgPtr, A_long, A_long) {
    return PF_Err_NONE;
}

template <Depth kDepth, typename Pixel>
PF_Err GetPixelData(PF_EffectWorld* world, PF_PixelPtr pixels, Pixel** out) {
    if (world == nullptr || out == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    PF_PixelPtr first = pixels != nullptr ? pixels : world->data;
    *out = DepthOf(*world) == kDepth ? reinterpret_cast<Pixel*>(first) : nullptr;
    return PF_Err_NONE;
}

PF_UtilCallbacks Utilities() {
    return {.host_new_handle = kHandleSuite.host_new_handle,
            .host_lock_handle = kHandleSuite.host_lock_handle,
            .host_unlock_handle = kHandleSuite.host_unlock_handle,
            .host_dispose_handle = kHandleSuite.host_dispose_handle,
            .host_get_handle_size = kHandleSuite.host_get_handle_size,
            .ansi = {.sprintf = kAnsiSuite.sprintf, .strcpy = kAnsiSuite.strcpy},
            .get_pixel_data8 = GetPixelData<Depth::Bits8, PF_Pixel8>,
            .get_pixel_data16 = GetPixelData<Depth::Bits16, PF_Pixel16>};
}

} // namespace

PF_Err EffectCallbacks::checkoutParam(PF_ProgPtr ref, PF_ParamIndex index, A_long ticks, A_long,
                                      A_u_long scale, PF_ParamDef* param) {
    if (ref == nullptr || param == nullptr || scale == 0) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    EffectSession& session = sessionOf(ref);
    if (index < 0 || static_cast<std::size_t>(index) >= session.mParameters.size()) {
        return PF_Err_INVALID_INDEX;
    }
    *param =
        session.definitionAt(static_cast<std::size_t>(index), {.ticks = ticks, .scale = scale});
    param->unused = kCheckedOut;
    ++session.mCheckouts;
    return PF_Err_NONE;
}

PF_Err EffectCallbacks::checkinParam(PF_ProgPtr ref, PF_ParamDef* param) {
    if (ref == nullptr || param == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (std::exchange(param->unused, 0) == kCheckedOut) {
        --sessionOf(ref).mCheckouts;
    }
    return PF_Err_NONE;
}

PF_Err EffectCallbacks::addParam(PF_ProgPtr ref, PF_ParamIndex index, PF_ParamDef* definition) {
    if (ref == nullptr || definition == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    EffectSession& session = sessionOf(ref);
    std::vector<Parameter>& parameters = session.mParameters;
    const auto count = static_cast<PF_ParamIndex>(parameters.size());
    if (index != -1 && (index < 1 || index > count)) {
        session.mRefusal = fmt::format("a parameter can't be added at the index {}", index);
        return PF_Err_INVALID_INDEX;
    }
    if (FindParameter(parameters, definition->uu.id) != nullptr) {
        session.mRefusal = fmt::format("the disk id {} is used twice", definition->uu.id);
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    try {
        parameters.insert(parameters.begin() + (index == -1 ? count : index),
                          MakeParameter(*definition));
        return PF_Err_NONE;
    } catch (const Error& error) {
        session.mRefusal = error.what();
        return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    } catch (const std::exception&) {
        return PF_Err_OUT_OF_MEMORY;
    }
}

EffectSession::EffectSession(const std::filesystem::path& module)
    : mModule(module), mParameters{InputLayer()}, mUtilities(Utilities()) {
    mInData.inter = {.checkout_param = EffectCallbacks::checkoutParam,
                     .checkin_param = EffectCallbacks::checkinParam,
                     .add_param = EffectCallbacks::addParam,
                     .abort = Abort,
                     .progress = Progress};
    mInData.utils = &mUtilities;
    mInData.pica_basicP = &BasicSuite();
    mInData.effect_ref = reinterpret_cast<PF_ProgPtr>(this);
    mInData.time_step = 1;
    mInData.local_time_step = 1;
    mInData.total_time = 1;
    mInData.time_scale = 1;
    mInData.downsample_x = {.num = 1, .den = 1};
    mInData.downsample_y = {.num = 1, .den = 1};
    mInData.pixel_aspect_ratio = {.num = 1, .den = 1};
}

PF_Err EffectSession::call(PF_Cmd command, PF_ParamDef** params, PF_LayerDef* output) {
    mRefusal.clear();
    if (command == PF_Cmd_PARAMS_SETUP) {
        mParameters = {InputLayer()};
    }
    return mModule.entry()(command, &mInData, &mOutData, params, output, nullptr);
}

PF_Err EffectSession::render(const PF_LayerDef& input, PF_LayerDef& output) {
    mInput = input;
    std::vector<PF_ParamDef> definitions(mParameters.size());
    std::vector<PF_ParamDef*> params(mParameters.size());
    for (std::size_t index = 0; index < mParameters.size(); ++index) {
        definitions[index] =
            definitionAt(index, {.ticks = mInData.current_time, .scale = mInData.time_scale});
        params[index] = &definitions[index];
    }
    return call(PF_Cmd_RENDER, params.data(), &output);
}

LiveCounts EffectSession::liveCounts() const {
    return {.suites = LiveSuiteReferences(),
            .handles = LiveHandles(),
            .memoryHandles = LiveMemoryHandles(),
            .checkouts = mCheckouts,
            .worlds = LiveWorlds()};
}

PF_ParamDef EffectSession::definitionAt(std::size_t index, Time time) const {
    const Parameter& parameter = mParameters[index];
    if (parameter.type() == PF_Param_LAYER) {
        PF_ParamDef definition = parameter.definition;
        definition.u.ld = mInput;
        return definition;
    }
    return DefinitionWithValue(parameter,
                               mValues.at(parameter.id(), time).value_or(parameter.defaultValue));
}

} // namespace Kerovane::Host
