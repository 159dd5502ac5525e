#include "Host/Parameters/FrameRate.h"

#include "Host/Text/Error.h"
#include "Host/Text/NumberText.h"
#include "Host/Text/Split.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <vector>

namespace Kerovane::Host {

namespace {

/// The largest numerator or denominator of a rate that users may state.
constexpr A_long kMaxTerm = 1'000'000;

std::optional<FrameRate> FromFraction(std::string_view frames, std::string_view seconds) {
    const std::optional<A_long> numerator = ParseWhole(frames);
    const std::optional<A_long> denominator = ParseWhole(seconds);
    const auto fits = [](std::optional<A_long> term) {
        return term && *term >= 1 && *term <= kMaxTerm;
    };
    if (!fits(numerator) || !fits(denominator)) {
        return std::nullopt;
    }
    return FrameRate(static_cast<A_u_long>(*numerator), *denominator);
}

/// Returns the broadcast rate near `rate`, such as 24000/1001 for 23.976. Returns nothing if `rate`
/// is near none.
std::optional<FrameRate> Broadcast(double rate) {
    constexpr double kTolerance = 0.005;
    for (const A_u_long whole : {24U, 30U, 48U, 60U, 120U}) {
        if (std::abs(rate - whole * 1000.0 / 1001) < kTolerance) {
            return FrameRate(whole * 1000, 1001);
        }
    }
    return std::nullopt;
}

std::optional<FrameRate> FromDecimal(std::string_view text) {
    const std::optional<double> rate = ParseNumber(text);
    constexpr A_long kThousand = 1000;
    const double thousandths = std::round(rate.value_or(0) * kThousand);
    if (!(thousandths >= 1 && thousandths <= kMaxTerm)) {
        return std::nullopt;
    }
    if (const auto broadcast = Broadcast(*rate)) {
        return broadcast;
    }
    return FrameRate(static_cast<A_u_long>(thousandths), kThousand);
}

} // namespace

FrameRate::FrameRate(A_u_long frames, A_long seconds) {
    const auto common = std::gcd(frames, static_cast<A_u_long>(seconds));
    mFrames = frames / common;
    mSeconds = seconds / static_cast<A_long>(common);
}

Time FrameRate::timeOf(A_long frame) const {
    using Limits = std::numeric_limits<A_long>;
    const auto ticks = static_cast<std::int64_t>(frame) * mSeconds;
    // A host's records also hold the frame's end, one step later.
    if (ticks < Limits::min() || ticks > Limits::max() - mSeconds) {
        throw Error(fmt::format("frame {} lies beyond what a host's time can hold", frame));
    }
    return {.ticks = static_cast<A_long>(ticks), .scale = mFrames};
}

double FrameRate::frameAt(Time time) const {
    return static_cast<double>(time.ticks) * mFrames / (static_cast<double>(time.scale) * mSeconds);
}

FrameRate ParseFrameRate(std::string_view text) {
    const std::vector<std::string_view> terms = Split(text, '/');
    const std::optional<FrameRate> rate =
        terms.size() == 2 ? FromFraction(terms.front(), terms.back()) : FromDecimal(text);
    if (!rate) {
        throw Error(
            fmt::format("takes frames a second, like 25, 23.976 or 24000/1001, not '{}'", text));
    }
    return *rate;
}

} // namespace Kerovane::Host
