// The functions that hosts look up by name. None of them throws.

#include "Adapters/OpenFX/Actions.h"
#include "Adapters/OpenFX/Description.h"
#include "Adapters/OpenFX/Suites.h"

namespace Kerovane::OpenFX {

namespace {

void SetPluginHost(OfxHost* host) {
    SetHost(host);
}

OfxStatus MainEntry(const char* action, const void* handle, OfxPropertySetHandle inArgs,
                    OfxPropertySetHandle outArgs) {
    return Act(action, handle, inArgs, outArgs);
}

OfxPlugin plugin{.pluginApi = kOfxImageEffectPluginApi,
                 .apiVersion = kOfxImageEffectPluginApiVersion,
                 .pluginIdentifier = kPluginIdentifier,
                 .pluginVersionMajor = TESSELUNE_VERSION_MAJOR,
                 .pluginVersionMinor = TESSELUNE_VERSION_MINOR,
                 .setHost = SetPluginHost,
                 .mainEntry = MainEntry};

} // namespace

} // namespace Kerovane::OpenFX

extern "C" {
#pragma GCC visibility push(default)

int OfxGetNumberOfPlugins() {
    return 1;
}

Kerovane::OpenFX::OfxPlugin* OfxGetPlugin(int nth) {
    return nth == 0 ? &Kerovane::OpenFX::plugin : nullptr;
}

Kerovane::OpenFX::OfxStatus OfxSetHost(const Kerovane::OpenFX::OfxHost* host) {
    Kerovane::OpenFX::SetHost(host);
    return Kerovane::OpenFX::kOfxStatOK;
}

#pragma GCC visibility pop
}
