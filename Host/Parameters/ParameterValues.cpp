#include "Host/Parameters/ParameterValues.h"

#include <utility>

namespace Kerovane::Host {

void ParameterValues::set(A_long id, double value) {
    mValues[id] = [value](Time) { return value; };
}

void ParameterValues::set(A_long id, OverTime value) {
    mValues[id] = std::move(value);
}

std::optional<double> ParameterValues::at(A_long id, Time time) const {
    const auto found = mValues.find(id);
    return found != mValues.end() ? std::optional(found->second(time)) : std::nullopt;
}

} // namespace Kerovane::Host
