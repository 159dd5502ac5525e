#include "Host/Video/MovieDamage.h"

#include <fmt/format.h>

#include <algorithm>

namespace Kerovane::Host {

void MovieDamage::add(double from, double to) {
    constexpr double kNear = 0.1; // seconds
    to = std::max(from, to);
    if (!mStretches.empty() && from <= mStretches.back().to + kNear) {
        DamagedStretch& last = mStretches.back();
        last.from = std::min(last.from, from);
        last.to = std::max(last.to, to);
    } else {
        mStretches.push_back({from, to});
    }
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
