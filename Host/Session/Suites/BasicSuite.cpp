#include "Host/Session/Suites/Suites.h"

#include <array>
#include <atomic>
#include <string_view>

namespace Kerovane::Host {

namespace {

struct OfferedSuite {
    std::string_view name;
    A_long version;
    const void* table;
    std::atomic<int> references = 0;
};

std::array<OfferedSuite, 7> mOfferedSuites{{
    {"PF ANSI Suite", 1, &kAnsiSuite},
    {"PF Handle Suite", 2, &kHandleSuite},
    {"PF World Suite", 2, &kWorldSuite},
    {"PF iterateFloat Suite", 1, &kIterateFloatSuite},
    {"AEGP Memory Suite", 1, &kMemorySuite},
    {"AEGP Utility Suite", 11, &kUtilitySuite5},
    {"AEGP Utility Suite", 13, &kUtilitySuite6},
}};

OfferedSuite* FindSuite(const A_char* name, A_long version) {
    for (OfferedSuite& suite : mOfferedSuites) {
        if (name != nullptr && suite.name == name && suite.version == version) {
            return &suite;
        }
    }
    return nullptr;
}

SPErr AcquireSuite(const A_char* name, A_long version, const void** table) {
    OfferedSuite* suite = FindSuite(name, version);
    if (suite == nullptr || table == nullptr) {
        return PF_Err_INVALID_CALLBACK;
    }
    ++suite->references;
    *table = suite->table;
    return kSPNoError;
}

SPErr ReleaseSuite(const A_char* name, A_long version) {
    OfferedSuite* suite = FindSuite(name, version);
    if (suite == nullptr) {
        return PF_Err_INVALID_CALLBACK;
    }
    --suite->references;
    return kSPNoError;
}

} // namespace

SPBasicSuite& BasicSuite() {
    static SPBasicSuite kBasicSuite{.AcquireSuite = AcquireSuite, .ReleaseSuite = ReleaseSuite};
    return kBasicSuite;
}

int LiveSuiteReferences() {
    int references = 0;
    for (const OfferedSuite& suite : mOfferedSuites) {
        references += suite.references;
    }
    return references;
}

} // namespace Kerovane::Host
