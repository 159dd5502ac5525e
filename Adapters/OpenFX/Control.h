#pragma once

#include "Adapters/OpenFX/Interface/ParameterSuite.h"
#include "Adapters/OpenFX/PropertySet.h"
#include "Host/Parameters/Parameter.h"

#include <string>
#include <vector>

namespace Kerovane::OpenFX {

/**
 * A parameter of the effect as an OpenFX parameter: a choice counted from 0, a boolean, an integer,
 * an angle in degrees or a double. Percentages become scale factors: 100 % is 1.
 */
class Control {
public:
    /// `parameter` must have a value.
    explicit Control(Host::Parameter parameter);

    A_long id() const { return mParameter.id(); }

    /// The name in scripts and saved projects: "sizeRandom" for Size Random.
    const std::string& scriptName() const { return mScriptName; }

    /// Defines the parameter in `params`, in the group with that script name unless `group` is
    /// empty. Throws Error if the host refuses.
    void define(OfxParamSetHandle params, const std::string& group) const;

    /// Returns the value at `time` in the user's units. Throws Error if the host has none.
    double valueAt(OfxParamSetHandle params, OfxTime time) const;

    /// Returns the values at all keys in the user's units; the constant value if there are no keys.
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
    double mUnit;   ///< user's units per host's unit
    double mOffset; ///< the value in user's units at the host's 0
};

} // namespace Kerovane::OpenFX
