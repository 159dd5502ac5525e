#include "Adapters/Shared/DeclaredParameters.h"

#include "Adapters/Shared/InstalledModule.h"
#include "Adapters/Shared/RendererParameter.h"
#include "Host/Session/EffectSession.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

namespace Kerovane::Adapters {

std::vector<Host::Parameter> DeclaredParameters() {
    [[maybe_unused]] static const auto& kPinned = *new Host::EffectModule(InstalledModule());
    Host::EffectSession session(InstalledModule());
    if (const PF_Err error = session.call(PF_Cmd_PARAMS_SETUP)) {
        throw Host::Error(fmt::format("the effect failed to declare its parameters: error {}; {}",
                                      error, session.refusal()));
    }
    std::vector<Host::Parameter> parameters = session.parameters();
    parameters.push_back(RendererParameter());
    return parameters;
}

} // namespace Kerovane::Adapters
