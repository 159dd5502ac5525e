#pragma once

#include "Host/Parameters/Parameter.h"

#include <string>

namespace Kerovane::Frei0r {

/**
 * A parameter of the effect as a frei0r parameter. frei0r has no ranges, so positions from 0 to 1
 * span the parameter's slider, and the explanation tells the user what they stand for.
 */
class Control {
public:
    /// `parameter` must have a value.
    explicit Control(const Host::Parameter& parameter);

    A_long id() const { return mId; }
    int type() const { return mType; } ///< one of frei0r's F0R_PARAM_ constants
    const std::string& name() const { return mName; }
    const std::string& explanation() const { return mExplanation; }

    double defaultPosition() const { return mDefaultPosition; }

    /// Returns the value in the user's units. A position of 2 or more is the value itself, clamped
    /// to the valid range. Any other position is clamped to 0 to 1, so that eased key frames may
    /// overshoot.
    double valueAt(double position) const;

private:
    A_long mId;
    int mType;
    std::string mName;
    std::string mExplanation;
    Host::Interval mRange; ///< spanned by the positions from 0 to 1
    Host::Interval mValid;
    bool mWhole;
    double mDefaultPosition;
};

} // namespace Kerovane::Frei0r
