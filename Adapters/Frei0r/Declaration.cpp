#include "Adapters/Frei0r/Declaration.h"

#include "Adapters/Frei0r/InstalledModule.h"
#include "Adapters/Shared/Complaint.h"
#include "Host/Session/EffectSession.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <exception>

namespace Kerovane::Frei0r {

namespace {

/// Keeps the effect's module loaded for the rest of the process, as this one is: it would leave
/// memory behind with every unloading.
void PinEffect() {
    [[maybe_unused]] static const auto& module = *new Host::EffectModule(InstalledModule());
}

std::vector<Control> ReadControls() {
    PinEffect();
    Host::EffectSession session(InstalledModule());
    if (const PF_Err error = session.call(PF_Cmd_PARAMS_SETUP)) {
        throw Host::Error(fmt::format("the effect failed to declare its parameters: error {}; {}",
                                      error, session.refusal()));
    }
    std::vector<Control> controls;
    for (const Host::Parameter& parameter : session.parameters()) {
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
        Complain(fmt::format("the filter has no parameters: {}", error.what()));
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
