#include "Host/Parameters/VersionText.h"

#include <fmt/format.h>

#include <array>

namespace Kerovane::Host {

std::string VersionText(A_u_long version) {
    return fmt::format("{}.{}.{}", PF_Version_VERS(version), PF_Version_SUBVERS(version),
                       PF_Version_BUGVERS(version));
}

std::string FullVersionText(A_u_long version) {
    constexpr std::array<const char*, 4> kStages{"develop", "alpha", "beta", "release"};
    static_assert(PF_Stage_DEVELOP == 0 && PF_Stage_RELEASE == 3);
    return fmt::format("{} ({}, build {})", VersionText(version),
                       kStages[PF_Version_STAGE(version)], PF_Version_BUILD(version));
}

} // namespace Kerovane::Host
