#include "Adapters/Frei0r/Declaration.h"

#include "Adapters/Shared/Complaint.h"
#include "Adapters/Shared/DeclaredParameters.h"

#include <exception>
#include <string>

namespace Kerovane::Frei0r {

namespace {

std::vector<Control> ReadControls() {
    std::vector<Control> controls;
    for (const Host::Parameter& parameter : Adapters::DeclaredParameters()) {
        if (parameter.hasValue()) {
            controls.emplace_back(parameter);
        }
    }
    return controls;
}

std::vector<Control> ReadControlsOrComplain() {
    try {
        return ReadControls();
    } catch (const std::exception& error) {
        Adapters::Complain(std::string("the filter has no parameters: ") + error.what());
        return {};
    }
}

} // namespace

const std::vector<Control>& DeclaredControls() {
    static const std::vector<Control>& kControls =
        *new std::vector<Control>(ReadControlsOrComplain()); // never destroyed
    return kControls;
}

} // namespace Kerovane::Frei0r
