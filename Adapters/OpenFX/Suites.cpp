#include "Adapters/OpenFX/Suites.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>

namespace Kerovane::OpenFX {

namespace {

const OfxHost* host = nullptr;
Suites suites;

template <typename Suite>
void Fetch(const Suite*& suite, Name name) {
    const bool canFetch = host != nullptr && host->fetchSuite != nullptr;
    suite = canFetch ? static_cast<const Suite*>(host->fetchSuite(host->host, name, 1)) : nullptr;
}

} // namespace

void SetHost(const OfxHost* next) {
    host = next;
}

bool FetchSuites() {
    Fetch(suites.properties, kOfxPropertySuite);
    Fetch(suites.effects, kOfxImageEffectSuite);
    Fetch(suites.parameters, kOfxParameterSuite);
    Fetch(suites.messages, kOfxMessageSuite);
    return suites.properties != nullptr && suites.effects != nullptr &&
           suites.parameters != nullptr;
}

const Suites& HostSuites() {
    return suites;
}

void Require(OfxStatus status, std::string_view request) {
    if (status != kOfxStatOK) {
        throw Host::Error(fmt::format("the host refused {}: status {}", request, status));
    }
}

} // namespace Kerovane::OpenFX
