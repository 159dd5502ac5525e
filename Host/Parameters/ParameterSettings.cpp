#include "Host/Parameters/ParameterSettings.h"

namespace Kerovane::Host {

ParameterValues ValuesOverTime(const ParameterSettings& settings, FrameRate rate) {
    ParameterValues values;
    for (const auto& [id, keyframes] : settings) {
        values.set(id, [keyframes = keyframes, rate](Time time) {
            return keyframes.at(rate.frameAt(time));
        });
    }
    return values;
}

} // namespace Kerovane::Host
