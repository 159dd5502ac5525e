#pragma once

#include "A.h"
#include "Host/Parameters/Time.h"

#include <functional>
#include <map>
#include <optional>

namespace Kerovane::Host {

/**
 * What an instance of an effect has its parameters set to: by disk id, in the user's units, each as
 * a function of time. A parameter that is not set has its default.
 */
class ParameterValues {
public:
    using OverTime = std::function<double(Time)>;

    void set(A_long id, double value);
    void set(A_long id, OverTime value);

    /// Nothing if the parameter is not set.
    std::optional<double> at(A_long id, Time time) const;

private:
    std::map<A_long, OverTime> mValues;
};

} // namespace Kerovane::Host
