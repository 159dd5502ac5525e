#include "Adapters/OpenFX/Description.h"

#include "Adapters/OpenFX/Controls.h"
#include "Adapters/OpenFX/PropertySet.h"
#include "Adapters/OpenFX/Suites.h"

#include <initializer_list>
#include <string>

namespace Kerovane::OpenFX {

namespace {

void Introduce(const PropertySet& effect) {
    effect.set(kOfxPropLabel, "Tesselune");
    effect.offer(kOfxPropShortLabel, "Tesselune");
    effect.offer(kOfxPropLongLabel, "Tesselune");
    effect.offer(kOfxImageEffectPluginPropGrouping, "Stylize");
    effect.offer(
        kOfxPropPluginDescription,
        "Breaks the picture into cells, squares or triangles, which can take random sizes, "
        "drop out and be swept away.");
    effect.offer(kOfxPropVersion, TESSELUNE_VERSION_MAJOR, 0);
    effect.offer(kOfxPropVersion, TESSELUNE_VERSION_MINOR, 1);
    effect.offer(kOfxPropVersionLabel, TESSELUNE_VERSION);
    effect.offer(kOfxPropIcon, "", 0); // no SVG icon
    effect.offer(kOfxPropIcon, std::string(kPluginIdentifier) + ".png", 1);
}

void DeclareAbilities(const PropertySet& effect) {
    effect.set(kOfxImageEffectPropSupportedContexts, kOfxImageEffectContextFilter, 0);
    effect.set(kOfxImageEffectPropSupportedContexts, kOfxImageEffectContextGeneral, 1);
    effect.set(kOfxImageEffectPropSupportedPixelDepths, kOfxBitDepthByte, 0);
    effect.set(kOfxImageEffectPropSupportedPixelDepths, kOfxBitDepthShort, 1);
    effect.set(kOfxImageEffectPropSupportedPixelDepths, kOfxBitDepthFloat, 2);
    // Optional: not every host knows half floats.
    effect.offer(kOfxImageEffectPropSupportedPixelDepths, kOfxBitDepthHalf, 3);
    effect.set(kOfxImageEffectPluginRenderThreadSafety, kOfxImageEffectRenderFullySafe);
    effect.offer(kOfxImageEffectPluginPropSingleInstance, 0);
    effect.offer(kOfxImageEffectPluginPropHostFrameThreading, 0);
    effect.offer(kOfxImageEffectPluginPropFieldRenderTwiceAlways, 0);
    effect.offer(kOfxImageEffectPropSupportsMultiResolution, 1);
    effect.offer(kOfxImageEffectPropSupportsTiles, 0);
    effect.offer(kOfxImageEffectPropTemporalClipAccess, 0);
    effect.offer(kOfxImageEffectPropSupportsMultipleClipDepths, 0);
    effect.offer(kOfxImageEffectPropSupportsMultipleClipPARs, 0);
    int place = 0;
    for (const std::string& name : ControlsOfHoles()) {
        effect.offer(kOfxImageEffectPropClipPreferencesSlaveParam, name, place++);
    }
}

void DefineClip(OfxImageEffectHandle effect, Name name) {
    OfxPropertySetHandle handle = nullptr;
    Require(HostSuites().effects->clipDefine(effect, name, &handle),
            std::string("the clip ") + name);
    const PropertySet clip(handle);
    clip.set(kOfxImageEffectPropSupportedComponents, kOfxImageComponentRGBA, 0);
    clip.set(kOfxImageEffectPropSupportedComponents, kOfxImageComponentRGB, 1);
    clip.offer(kOfxImageEffectPropSupportsTiles, 0);
    clip.offer(kOfxImageEffectPropTemporalClipAccess, 0);
    clip.offer(kOfxImageClipPropFieldExtraction, kOfxImageFieldBoth); // whole frames
}

} // namespace

void Describe(OfxImageEffectHandle effect) {
    OfxPropertySetHandle handle = nullptr;
    Require(HostSuites().effects->getPropertySet(effect, &handle), "the effect's properties");
    Introduce(PropertySet(handle));
    DeclareAbilities(PropertySet(handle));
}

void DescribeInContext(OfxImageEffectHandle effect) {
    DefineClip(effect, kOfxImageEffectSimpleSourceClipName);
    DefineClip(effect, kOfxImageEffectOutputClipName);
    DefineControls(effect);
}

} // namespace Kerovane::OpenFX
