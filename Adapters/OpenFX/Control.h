#pragma once

#include "Adapters/OpenFX/Interface/ParameterSuite.h"
#include "Adapters/OpenFX/PropertySet.h"
#include "Host/Parameters/Parameter.h"

#include <string>
#include <vector>

namespace Kerovane::OpenFX {

/**
 * One of the effect's parameters in OpenFX's terms: a choice counted from 0, a switch, a whole
 * number, an angle in degrees, a real number; percentages are scale factors, 1 for 100.
 */
class Control {
public:
    /// `parameter` has a value.
    explicit Control(Host::Parameter parameter);

    A_long id() const { return mParameter.id(); }

    /// "sizeRandom" for Size Random: what scripts and saved projects call it.
    const std::string& scriptName() const { return mScriptName; }

    /// Adds it to `params`, in the group of that script name if there is one. Throws Error if the
    /// host refuses.
    void define(OfxParamSetHandle params, const std::string& group) const;

    /// The value at `time` in the user's units. Throws Error if the host has none.
    double valueAt(OfxParamSetHandle params, OfxTime time) const;

    /// The values at all keys, or the only one if there are none, in the user's units.
    std::vector<double> valuesAtKeys(OfxParamSetHandle params) const;

private:
    void introduce(const PropertySet& properties, const std::string& group) const;
    template <typename Value>
    void declareValues(const PropertySet& properties) const;
    OfxParamHandle handleIn(OfxParamSetHandle params) const;
    double readAt(OfxParamHandle handle, OfxTime time) const;

    Host::Parameter mParameter;
    std::string mScriptName;
    Name mType;
    double mUnit;   ///< how many of the user's units one of the host's is
    double mOffset; ///< the user's value at the host's 0
};

} // namespace Kerovane::OpenFX
