#pragma once

#include <string>
#include <vector>

namespace Kerovane::Host {

/** A part of a movie that could not be read completely, in seconds from the movie's start. */
struct DamagedStretch {
    double from = 0;
    double to = 0;
};

/** The damaged parts of a movie, in order. Parts that touch or nearly touch are merged. */
class MovieDamage {
public:
    void add(double from, double to);

    bool isEmpty() const { return mStretches.empty(); }
    const std::vector<DamagedStretch>& stretches() const { return mStretches; }

    /// Returns "from 1.200 s to 1.480 s, from 3.000 s to 4.000 s". Of many parts only the first are
    /// listed.
    std::string text() const;

private:
    std::vector<DamagedStretch> mStretches;
};

} // namespace Kerovane::Host
