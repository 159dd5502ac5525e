#include "Adapters/OpenFX/Actions.h"

#include "Adapters/OpenFX/Clip.h"
#include "Adapters/OpenFX/ClipPreferences.h"
#include "Adapters/OpenFX/Description.h"
#include "Adapters/OpenFX/FrameArea.h"
#include "Adapters/OpenFX/PropertySet.h"
#include "Adapters/OpenFX/RenderAction.h"
#include "Adapters/OpenFX/Suites.h"
#include "Adapters/Shared/Complaint.h"
#include "Adapters/Shared/SharedRenderer.h"

#include <exception>
#include <string>
#include <string_view>

namespace Kerovane::OpenFX {

namespace {

/// The arguments of an action.
struct Call {
    OfxImageEffectHandle effect;
    PropertySet in;
    PropertySet out;
};

/// Asks for the whole source region, whatever part of the output is requested: a cell may take its
/// colour from far away.
void GetRegionsOfInterest(const Call& call) {
    const Clip source(call.effect, kOfxImageEffectSimpleSourceClipName);
    const auto region = source.regionOfDefinition(call.in.real(kOfxPropTime).value_or(0));
    if (region) {
        call.out.set(PropertyOfClip("RoI", kOfxImageEffectSimpleSourceClipName), *region);
    }
}

void GetRegionOfDefinition(const Call& call) {
    const Clip source(call.effect, kOfxImageEffectSimpleSourceClipName);
    const FrameArea area = FrameAreaOf(call.effect, source, call.in.real(kOfxPropTime).value_or(0));
    call.out.set(kOfxImageEffectPropRegionOfDefinition, area.canonical());
}

OfxStatus Dispatch(std::string_view action, const Call& call) {
    if (action == kOfxActionUnload) {
        Adapters::SharedRenderer::countUnload();
    } else if (action == kOfxActionDescribe) {
        Describe(call.effect);
    } else if (action == kOfxImageEffectActionDescribeInContext) {
        DescribeInContext(call.effect);
    } else if (action == kOfxImageEffectActionGetRegionOfDefinition) {
        GetRegionOfDefinition(call);
    } else if (action == kOfxImageEffectActionGetRegionsOfInterest) {
        GetRegionsOfInterest(call);
    } else if (action == kOfxImageEffectActionGetClipPreferences) {
        DeclareClipPreferences(call.effect, call.out);
    } else if (action == kOfxImageEffectActionRender) {
        Render(call.effect, call.in);
    } else {
        return kOfxStatReplyDefault;
    }
    return kOfxStatOK;
}

/// Shows the user a message; prints it to standard error if the host shows none.
void Tell(OfxImageEffectHandle effect, const std::string& failure) {
    const OfxMessageSuiteV1* messages = HostSuites().messages;
    if (messages == nullptr || messages->message(effect, kOfxMessageError, "failure",
                                                 "Tesselune: %s", failure.c_str()) != kOfxStatOK) {
        Adapters::Complain(failure);
    }
}

OfxStatus Load() {
    if (!FetchSuites()) {
        return kOfxStatErrMissingHostFeature;
    }
    Adapters::SharedRenderer::countLoad();
    return kOfxStatOK;
}

} // namespace

OfxStatus Act(const char* action, const void* handle, OfxPropertySetHandle inArgs,
              OfxPropertySetHandle outArgs) noexcept {
    // The interface passes the handle as const; the host's functions take it back non-const.
    const auto effect = static_cast<OfxImageEffectHandle>(const_cast<void*>(handle));
    try {
        if (action == nullptr) {
            return kOfxStatFailed;
        }
        if (std::string_view(action) == kOfxActionLoad) {
            return Load();
        }
        if (HostSuites().properties == nullptr) {
            return kOfxStatErrMissingHostFeature; // the load action failed or is missing
        }
        return Dispatch(action, {effect, PropertySet(inArgs), PropertySet(outArgs)});
    } catch (const std::exception& error) {
        Tell(effect, error.what());
    } catch (...) {
        Tell(effect, "unknown exception");
    }
    return kOfxStatFailed;
}

} // namespace Kerovane::OpenFX
