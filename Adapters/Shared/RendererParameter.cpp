#include "Adapters/Shared/RendererParameter.h"

#include <cstdio>

namespace Kerovane::Adapters {

namespace {

constexpr A_long kId = 1000; // far above the effect's own ids

constexpr int kAsConfigured = 1;
constexpr int kOpenGL = 2;
constexpr int kSoftware = 3;

} // namespace

Host::Parameter RendererParameter() {
    PF_ParamDef definition{};
    definition.param_type = PF_Param_POPUP;
    definition.uu.id = kId;
    static_cast<void>(std::snprintf(definition.name, sizeof definition.name, "Renderer"));
    definition.u.pd.value = definition.u.pd.dephault = kAsConfigured;
    definition.u.pd.num_choices = kSoftware;
    definition.u.pd.u.namesptr = "As configured|OpenGL|Software";
    return Host::MakeParameter(definition);
}

std::optional<Host::Renderer> RendererIn(const Host::ParameterValues& values, Host::Time time) {
    const auto choice = static_cast<int>(values.at(kId, time).value_or(kAsConfigured));
    return choice == kOpenGL     ? std::optional(Host::Renderer::OpenGL)
           : choice == kSoftware ? std::optional(Host::Renderer::Software)
                                 : std::nullopt;
}

} // namespace Kerovane::Adapters
