#pragma once

#include "Host/Parameters/Parameter.h"

#include <string>

namespace Kerovane::Frei0r {

/**
 * One of the effect's parameters in frei0r's terms. Hosts know no ranges, so its positions go from
 * 0 to 1 over all that its slider reaches, and the explanation tells what they stand for.
 */
class Control {
public:
    /// `parameter` has a value.
    explicit Control(const Host::Parameter& parameter);

    A_long id() const { return mId; }
    int type() const { return mType; } ///< F0R_PARAM_...
    const std::string& name() const { return mName; }
    const std::string& explanation() const { return mExplanation; }

    double defaultPosition() const { return mDefaultPosition; }

    /// In the user's units. A position of 2 and more is the value itself, as far as it is valid;
    /// another one beyond 0 to 1 counts as the nearer end, so that eased keys may overshoot.
    double valueAt(double position) const;

private:
    A_long mId;
    int mType;
    std::string mName;
    std::string mExplanation;
    Host::Interval mRange; ///< of the positions from 0 to 1
    Host::Interval mValid;
    bool mWhole;
    double mDefaultPosition;
};

} // namespace Kerovane::Frei0r
