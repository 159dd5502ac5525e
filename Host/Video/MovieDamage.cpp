#include "Host/Video/MovieDamage.h"

#include <fmt/format.h>

#include <algorithm>

namespace Kerovane::Host {

void MovieDamage::add(double from, double to) {
    constexpr double kNear = 0.1; // parts at most so many seconds apart are merged
    DamagedStretch joined{from, std::max(from, to)};
    const auto first = std::ranges::find_if(
        mStretches, [&](const DamagedStretch& one) { return joined.from <= one.to + kNear; });
    auto last = first;
    for (; last != mStretches.end() && last->from <= joined.to + kNear; ++last) {
        joined = {std::min(joined.from, last->from), std::max(joined.to, last->to)};
    }
    mStretches.insert(mStretches.erase(first, last), joined);
}

std::string MovieDamage::text() const {
    constexpr std::size_t kMost = 4;
    std::string text;
    for (std::size_t i = 0; i < std::min(kMost, mStretches.size()); ++i) {
        text += fmt::format("{}from {:.3f} s to {:.3f} s", text.empty() ? "" : ", ",
                            mStretches[i].from, mStretches[i].to);
    }
    if (mStretches.size() > kMost) {
        text += fmt::format(" and {} more stretches", mStretches.size() - kMost);
    }
    return text;
}

} // namespace Kerovane::Host
