#include "Adapters/OpenFX/ClipPreferences.h"

#include "Adapters/OpenFX/Clip.h"
#include "Adapters/OpenFX/Controls.h"

#include <string>

namespace Kerovane::OpenFX {

void DeclareClipPreferences(OfxImageEffectHandle effect, const PropertySet& preferences) {
    const Clip source(effect, kOfxImageEffectSimpleSourceClipName);
    std::string components = source.components();
    std::string premultiplication = source.premultiplication();
    preferences.set(PropertyOfClip("Components", kOfxImageEffectSimpleSourceClipName), components);
    if (CanHaveHoles(effect)) {
        components = kOfxImageComponentRGBA;
        premultiplication = kOfxImagePreMultiplied;
    }
    preferences.set(PropertyOfClip("Components", kOfxImageEffectOutputClipName), components);
    preferences.set(kOfxImageEffectPropPreMultiplication, premultiplication);
}

} // namespace Kerovane::OpenFX
