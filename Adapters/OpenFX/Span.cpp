#include "Adapters/OpenFX/Span.h"

#include <cmath>

namespace Kerovane::OpenFX {

namespace {

/// Hosts store scales such as 1/3 as floats: a position short of a whole pixel by less than this
/// counts as whole.
constexpr double kTolerance = 1e-4;

int WholeBelow(double position) {
    return static_cast<int>(std::floor(position + kTolerance));
}

} // namespace

Places PlacesToRead(const Span& frame, const Span& region, const Span& image, double scale) {
    Places places;
    places.reserve(static_cast<std::size_t>(frame.size()));
    for (int at = frame.begin; at < frame.end; ++at) {
        const int read = WholeBelow((at + 0.5) * scale);
        const bool isInRegion = region.begin <= at && at < region.end;
        const bool isInReach = image.size() > 0 && image.begin - 1 <= read && read <= image.end;
        places.push_back(isInRegion && isInReach
                             ? std::clamp(read, image.begin, image.end - 1) - image.begin
                             : kNoPlace);
    }
    return places;
}

Places PlacesToShow(const Span& window, const Span& frame, double scale) {
    Places places;
    places.reserve(static_cast<std::size_t>(window.size()));
    for (int at = window.begin; at < window.end; ++at) {
        const int shown = WholeBelow((at + 0.5) / scale);
        places.push_back(std::clamp(shown, frame.begin, frame.end - 1) - frame.begin);
    }
    return places;
}

bool IsRun(const Places& places) {
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i] == kNoPlace || places[i] != places[0] + static_cast<std::ptrdiff_t>(i)) {
            return false;
        }
    }
    return true;
}

} // namespace Kerovane::OpenFX
