// Requests to the panel's server: the first line is the target, the rest the body.
#include "Fuzz/Oracle.h"
#include "Fuzz/SampleEffect.h"
#include "Fuzz/TextInput.h"
#include "Host/Panel/Gate.h"
#include "Host/Panel/Order.h"
#include "Host/Parameters/KeyframeText.h"
#include "Host/Parameters/OptionNames.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace Kerovane::Fuzz {

namespace {

using namespace Host;

void CheckGate(const std::string& target) {
    static const AccessToken kToken;
    const Gate gate(kToken);
    Expect(!gate.admit({.method = "GET", .target = target, .host = "127.0.0.1"}),
           "nobody comes in without the token");
    const auto admitted = gate.admit(
        {.method = "GET", .target = '/' + kToken.text() + '/' + target, .host = "127.0.0.1"});
    for (const auto& [name, value] : admitted.value_or(PanelTarget()).query) {
        for (const std::string& text : {name, value}) {
            Expect(std::ranges::none_of(text, [](unsigned char byte) { return byte < ' '; }),
                   "fields have no control characters");
        }
    }
    Expect(!gate.admit({.method = "GET",
                        .target = '/' + kToken.text() + "/",
                        .host = target + ".example.org"}),
           "nobody comes in by a foreign name");
}

void CheckOrder(std::string_view body) {
    const std::vector<Parameter>& parameters = SampleEffect();
    static const std::vector<std::string> kOptions = OptionNames(parameters, {});
    const PlaceOfFrame placeOf = [](double frame, KeyUnit unit) {
        return unit == KeyUnit::Frames ? frame : frame / 24;
    };
    Look look;
    for (int i = 0; i < 2; ++i) {
        ReadOrError([&] {
            ChangeParameter(ParseOrder(body), parameters, kOptions, placeOf, look);
            return true;
        });
    }
    for (const auto& [id, keyframes] : look.settings) {
        const Parameter* parameter = FindParameter(parameters, id);
        Expect(parameter != nullptr, "only parameters that there are get changed");
        for (const Keyframe& key : keyframes.keys()) {
            Expect(parameter->accepts(key.value), "each value can be set");
        }
        const std::string text = FormatKeyframes(*parameter, keyframes);
        Expect(FormatKeyframes(*parameter, ParseKeyframes(*parameter, text)) == text,
               "a command line can say what was set");
    }
}

} // namespace

} // namespace Kerovane::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Kerovane::Fuzz;
    const auto [target, body] = SplitInTwo(TextOf(data, size), '\n');
    CheckGate(std::string(target));
    CheckOrder(body);
    return 0;
}
