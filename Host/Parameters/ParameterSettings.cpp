#include "Host/Parameters/ParameterSettings.h"

#include <algorithm>

namespace Kerovane::Host {

bool AreConstant(const ParameterSettings& settings) {
    return std::ranges::all_of(
        settings, [](const auto& setting) { return setting.second.keys().size() == 1; });
}

ParameterValues ValuesOverTime(const ParameterSettings& settings, FrameRate rate,
                               const SecondsOfFrame& secondsOf) {
    const auto placeAt = [rate, secondsOf](Time time, KeyUnit unit) {
        const double frame = rate.frameAt(time);
        return unit == KeyUnit::Frames ? frame : secondsOf ? secondsOf(frame) : time.seconds();
    };
    ParameterValues values;
    for (const auto& [id, keyframes] : settings) {
        values.set(id, [keyframes = keyframes, placeAt](Time time) {
            return keyframes.at(placeAt(time, keyframes.unit()));
        });
    }
    return values;
}

} // namespace Kerovane::Host
