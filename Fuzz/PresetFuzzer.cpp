// Presets: what is read can be written and read again without loss.
#include "Fuzz/Oracle.h"
#include "Fuzz/SampleEffect.h"
#include "Fuzz/TextInput.h"
#include "Host/Parameters/Preset.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    using namespace Kerovane::Host;
    const std::vector<Parameter>& parameters = SampleEffect();
    const auto preset = ReadOrError([&] { return ParsePreset(parameters, TextOf(data, size)); });
    if (!preset) {
        return 0;
    }
    const std::string written = FormatPreset(parameters, 0, *preset);
    const Preset again = ParsePreset(parameters, written);
    Expect(again.renderer == preset->renderer, "a preset keeps its renderer");
    for (const auto& [id, keyframes] : preset->settings) {
        Expect(FindParameter(parameters, id) != nullptr, "a preset sets what there is");
        Expect(again.settings.contains(id) && again.settings.at(id) == keyframes,
               "a preset keeps what it is given");
    }
    Expect(FormatPreset(parameters, 0, again) == written, "a preset is written as it was read");
    return 0;
}
