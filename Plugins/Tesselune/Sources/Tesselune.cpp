#include "Plugins/Tesselune/Sources/Tesselune.h"

#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "Platform/OpenGL/HostContext.h"
#include "Plugins/Shared/GL/AEOpenGLContextManager.h"
#include "Plugins/Shared/GL/AEOpenGLUtilities.h"
#include "Plugins/Shared/GL/AEOpenglMainFrameBuffer.h"
#include "Plugins/Shared/GL/GLObject.h"
#include "Plugins/Shared/GL/SaveRestoreGLContextMac.h"
#include "Plugins/Shared/Helper/NeverDestroyed.h"
#include "Plugins/Shared/Helper/SuiteScoper.h"
#include "Plugins/Tesselune/Sources/MosaicRender.h"
#include "Plugins/Tesselune/Sources/MosaicShaderManager.h"
#include "Plugins/Tesselune/Sources/ParamDefs.h"
#include "Plugins/Tesselune/Sources/ParamIndex.h"

#include <memory>

namespace Kerovane::Tesselune {

namespace {

constexpr A_u_long kMajorVersion = 1;
constexpr A_u_long kMinorVersion = 0;
constexpr A_u_long kVersion = PF_VERSION(kMajorVersion, kMinorVersion, 0, PF_Stage_DEVELOP, 1);
static_assert(kVersion == 0x80001);

constexpr PF_OutFlags kOutFlags =
    PF_OutFlag_WIDE_TIME_INPUT | PF_OutFlag_CUSTOM_UI | PF_OutFlag_DEEP_COLOR_AWARE;
static_assert(kOutFlags == 0x2008002);

constexpr const char* kDisplayName = "Tesselune";
constexpr const char* kRegisteredName = "Orlamine";

/// Renders all frames. Null between PF_Cmd_GLOBAL_SETDOWN and the next PF_Cmd_GLOBAL_SETUP.
NeverDestroyed<std::unique_ptr<MosaicRender>> mRender(std::make_unique<MosaicRender>());

AEGP_PluginID mPluginID = 0;

/// Whether the last global command was a PF_Cmd_GLOBAL_SETDOWN that succeeded.
bool mIsSetDown = false;

void About(PF_InData* in_data, PF_OutData* out_data) {
    const SuiteScoper<PF_ANSICallbacksSuite1> ansi(in_data, "PF ANSI Suite", 1);
    ansi->sprintf(out_data->return_msg, "%s v%d.%d\r%s", kDisplayName, kMajorVersion, kMinorVersion,
                  kDisplayName);
}

void GlobalSetup(PF_InData* in_data, PF_OutData* out_data) {
    mIsSetDown = false;
    out_data->my_version = kVersion;
    out_data->out_flags |= kOutFlags;
    out_data->out_flags2 = PF_OutFlag2_NONE;

    const SuiteScoper<AEGP_UtilitySuite6> utility(in_data, "AEGP Utility Suite", 13);
    utility->AEGP_RegisterWithAEGP(nullptr, kRegisteredName, &mPluginID);

    SaveRestoreGLContextMac hostContext;
    AEOpenGLContextManager::setupContextManager();
    if (*mRender == nullptr) {
        *mRender = std::make_unique<MosaicRender>();
    }
    hostContext.restore();
}

void FreeHandles(PF_InData* in_data, PF_OutData* out_data) {
    if (in_data->sequence_data != nullptr) {
        in_data->utils->host_dispose_handle(in_data->sequence_data);
        out_data->sequence_data = nullptr;
    }
    if (in_data->global_data != nullptr) {
        in_data->utils->host_dispose_handle(in_data->global_data);
    }
}

/// Deletes all GL objects and destroys the contexts.
void ReleaseGL(AEOpenGLContext& sharedContext) {
    sharedContext.makeContextCurrent();
    if (!sharedContext.isCurrent()) {
        // Another thread has the shared context current. Use this thread's render context instead,
        // which shares everything except frame buffers and vertex arrays.
        AEOpenGLContextManager::getCurrentRenderContext()->makeContextCurrent();
    }
    AEOpenglMainFrameBuffer::mainFrameBuffer()->destory();
    mRender->reset();
    MosaicShaderManager::PurgeAllShaders();
    AEOpenGLContextManager::releaseContextManager();
}

void GlobalSetdown(PF_InData* in_data, PF_OutData* out_data) {
    if (mIsSetDown) {
        return;
    }
    SaveRestoreGLContextMac hostContext;
    if (AEOpenGLContext* sharedContext = AEOpenGLContextManager::getSharedDataContext()) {
        ReleaseGL(*sharedContext);
    }
    // Release the effect's context. If the host had no context to restore below, the effect's
    // context would stay current and keep the host from making a GLX context current on this
    // thread.
    Platform::ReleaseCurrentEglContext();
    hostContext.restore();
    FreeHandles(in_data, out_data);
    mIsSetDown = true;
}

/// Adds the effect's parameters to the host's list, until the host refuses one.
class ParamAdder {
public:
    explicit ParamAdder(PF_InData* in_data) : mInData(in_data) {}

    /// `name` may be null for a parameter without a name.
    void add(ParamIndex index, const char* name, PF_ParamDef param) {
        if (mErr != PF_Err_NONE) {
            return;
        }
        if (name != nullptr) {
            mInData->utils->ansi.strcpy(param.name, name);
        }
        param.uu.id = index;
        mErr = mInData->inter.add_param(mInData->effect_ref, kAppend, &param);
    }

    PF_Err err() const { return mErr; }

private:
    static constexpr PF_ParamIndex kAppend = -1;

    PF_InData* mInData;
    PF_Err mErr = PF_Err_NONE;
};

PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** /*params*/,
                   PF_LayerDef* /*output*/) {
    // Static because the host keeps the pointers.
    static const char kMosaicShapeStr[] = "Square|Triangle";
    static const char DissolveTypeStr[] = "Linear|Radial In|Radial Out";
    constexpr SliderRange kSeeds = {0, 5000};
    constexpr SliderRange kLevels = {1, 5};

    out_data->num_params = kParamCount;
    ParamAdder params(in_data);
    params.add(kParamShapeType, "Shape Type", Popup(kMosaicShapeStr, kShapeCount));
    params.add(kParamSize, "Size", IntegerSlider(10, {2, 3000}, {2, 500}));
    params.add(kParamRatio, "Ratio", RatioSlider());
    params.add(kParamSizeRandom, "Size Random", PercentSlider());
    params.add(kParamSizeLevel, "Size Level", IntegerSlider(3, kLevels, kLevels));
    params.add(kParamSizeRandomSeed, "Size Random Seed", IntegerSlider(0, kSeeds, kSeeds));
    params.add(kParamDissolve, "Dissolve", PercentSlider());
    params.add(kParamDissolveRandomSeed, "Dissolve Random Seed", IntegerSlider(0, kSeeds, kSeeds));
    params.add(kParamTransitionType, "Transition Type",
               Supervised(Popup(DissolveTypeStr, kTransitionCount)));
    params.add(kParamTransitionProgress, "Transition Progress", PercentSlider());
    params.add(kParamFeather, "Feather", IntegerSlider(250, {0, 5000}, {0, 500}));
    params.add(kParamDirection, "Direction", Angle());
    params.add(kParamGroupStart, "", GroupStart());
    params.add(kParamGroupEnd, nullptr, GroupEnd());
    params.add(kParamUseAlpha, "", Supervised(Checkbox("Use Alpha")));
    return params.err();
}

/// Drops the render contexts that a failed frame has left open.
class OpenFrame {
public:
    explicit OpenFrame(AEOpenglMainFrameBuffer& frameBuffer) : mFrameBuffer(frameBuffer) {}
    ~OpenFrame() { mFrameBuffer.clearStack(); }
    OpenFrame(const OpenFrame&) = delete;
    OpenFrame& operator=(const OpenFrame&) = delete;

private:
    AEOpenglMainFrameBuffer& mFrameBuffer;
};

void Render(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output) {
    const bool isSetUp =
        *mRender != nullptr && AEOpenGLContextManager::getSharedDataContext() != nullptr;
    if (!isSetUp) {
        throw static_cast<int>(PF_Err_BAD_CALLBACK_PARAM);
    }
    PF_LayerDef* const input = &params[kParamInput]->u.ld;
    PF_PixelFormat pixelFormat = PF_PixelFormat_ARGB32;
    float multiplier16bit = 1.0F;
    unsigned long bytes = sizeof(PF_Pixel8);
    gl::GLenum type = gl::GL_UNSIGNED_BYTE;

    SaveRestoreGLContextMac hostContext;
    AEOpenGLContextManager::getCurrentRenderContext()->makeContextCurrent();
    const long width = input->width;
    const long height = input->height;
    AEOpenglMainFrameBuffer& frameBuffer = *AEOpenglMainFrameBuffer::mainFrameBuffer();
    frameBuffer.prepare(width, height, true);
    const OpenFrame openFrame(frameBuffer);
    frameBuffer.beginDrawing();

    const SuiteScoper<PF_WorldSuite2> world(in_data, "PF World Suite", 2);
    world->PF_GetPixelFormat(input, &pixelFormat);
    GLTexture texture(AEOpenGLUtilities::UploadTexture(pixelFormat, input, output, in_data, bytes,
                                                       type, multiplier16bit, false));
    (*mRender)->preaprea(in_data, out_data, mPluginID, input);
    (*mRender)->draw(input, texture.name(), multiplier16bit);
    texture.reset();
    frameBuffer.endDrawing(multiplier16bit);
    AEOpenGLUtilities::DownloadTexture(static_cast<unsigned int>(width),
                                       static_cast<unsigned int>(height), input, output, in_data,
                                       pixelFormat, bytes, type);
    hostContext.restore();
}

PF_Err Dispatch(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                PF_LayerDef* output) {
    switch (cmd) {
    case PF_Cmd_ABOUT:
        About(in_data, out_data);
        return PF_Err_NONE;
    case PF_Cmd_GLOBAL_SETUP:
        GlobalSetup(in_data, out_data);
        return PF_Err_NONE;
    case PF_Cmd_GLOBAL_SETDOWN:
        GlobalSetdown(in_data, out_data);
        return PF_Err_NONE;
    case PF_Cmd_PARAMS_SETUP:
        return ParamsSetup(in_data, out_data, params, output);
    case PF_Cmd_RENDER:
        Render(in_data, out_data, params, output);
        return PF_Err_NONE;
    default:
        return PF_Err_NONE;
    }
}

} // namespace

} // namespace Kerovane::Tesselune

PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                      PF_LayerDef* output, void* /*extra*/) {
    try {
        return Kerovane::Tesselune::Dispatch(cmd, in_data, out_data, params, output);
    } catch (int) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
}
