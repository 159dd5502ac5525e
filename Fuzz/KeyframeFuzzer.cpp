// Texts of a parameter's values; the first byte picks the parameter.
#include "Fuzz/Oracle.h"
#include "Fuzz/SampleEffect.h"
#include "Fuzz/TextInput.h"
#include "Host/Parameters/KeyframeText.h"

namespace Kerovane::Fuzz {

namespace {

using Host::Keyframes;
using Host::Parameter;

/// Frames at which the values are checked: they span the range of a host's time.
constexpr double kFrames[] = {-2147483648.0, -1.0, 0.0, 0.5, 1001.0, 1050.25, 2147483647.0};

void CheckValues(const Parameter& parameter, const Keyframes& keyframes) {
    for (const double frame : kFrames) {
        Expect(parameter.valid.contains(keyframes.at(frame)), "values stay within their range");
    }
    for (const Host::Keyframe& key : keyframes.keys()) {
        Expect(parameter.accepts(key.value), "each key's value can be set");
        Expect(keyframes.at(key.place) == key.value, "a key has its value at its place");
    }
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    using namespace Kerovane::Host;
    if (size == 0) {
        return 0;
    }
    const std::vector<Parameter>& parameters = SampleEffect();
    const Parameter& parameter = parameters[1 + data[0] % (parameters.size() - 1)];
    const std::string_view text = TextOf(data, size).substr(1);
    const auto keyframes = ReadOrError([&] { return ParseKeyframes(parameter, text); });
    if (!keyframes) {
        return 0;
    }
    CheckValues(parameter, *keyframes);
    const std::string written = FormatKeyframes(parameter, *keyframes);
    Expect(ParseKeyframes(parameter, written) == *keyframes, "keys are read back as written");
    return 0;
}
