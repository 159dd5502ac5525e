#pragma once

#include "A.h"
#include "Host/Parameters/Time.h"

#include <functional>
#include <map>
#include <optional>

namespace Kerovane::Host {

/**
 * The parameter values of an instance of an effect: by disk id, in the user's units, each a
 * function of time. A parameter that is not set has its default.
 */
class ParameterValues {
public:
    using OverTime = std::function<double(Time)>;

    void set(A_long id, double value);
    void set(A_long id, OverTime value);

    /// Returns nothing if the parameter is not set.
    std::optional<double> at(A_long id, Time time) const;

private:
    std::map<A_long, OverTime> mValues;
};

} // namespace Kerovane::Host
