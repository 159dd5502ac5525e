#pragma once

#include <string>
#include <vector>

namespace Kerovane::Host {

/** A stretch of a movie that could not be read whole. In seconds from the movie's start. */
struct DamagedStretch {
    double from = 0;
    double to = 0;
};

/** Where a movie is damaged: stretches in order, joined if they touch. */
class MovieDamage {
public:
    void add(double from, double to);

    bool isEmpty() const { return mStretches.empty(); }
    const std::vector<DamagedStretch>& stretches() const { return mStretches; }

    /// "from 1.200 s to 1.480 s, from 3.000 s to 4.000 s"; the first few of many.
    std::string text() const;

private:
    std::vector<DamagedStretch> mStretches;
};

} // namespace Kerovane::Host
