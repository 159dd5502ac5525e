#include "Plugins/Shared/Helper/SuiteScoper.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace Kerovane::Tesselune {

namespace {

struct SuiteId {
    const char* name;
    int version;
};

/// The drawing suites, in the order in which they are acquired, and also released.
constexpr std::array<SuiteId, 4> kDrawbotSuites = {{
    {"DRAWBOT Draw Suite", 1},
    {"DRAWBOT Supplier Suite", 1},
    {"DRAWBOT Surface Suite", 2},
    {"DRAWBOT Path Suite", 1},
}};

constexpr std::size_t kRefusalLimit = 1024;

/// Returns the error message for a refused suite. Cuts a suite name that is too long for the
/// buffer.
std::string RefusalText(const PF_InData* in_data, const SuiteId& suite) {
    constexpr std::size_t kRoomForTheRest = 64;
    const std::string name(suite.name,
                           std::min(std::strlen(suite.name), kRefusalLimit - kRoomForTheRest));
    std::array<char, kRefusalLimit> text{};
    in_data->utils->ansi.sprintf(text.data(), "Not able to acquire AEFX Suite-%s-%d", name.c_str(),
                                 suite.version);
    return text.data();
}

/// Acquires a suite and stores it in `member` under its type T.
template <typename T>
PF_Err AcquireInto(PF_InData* in_data, PF_OutData* out_data, const SuiteId& id, T*& member) {
    void* suite = nullptr;
    const PF_Err err = AcquireSuite(in_data, out_data, id.name, id.version, nullptr, &suite);
    member = static_cast<T*>(suite);
    return err;
}

} // namespace

void DisplayErrorMessage(const PF_InData* in_data, PF_OutData* out_data, const char* text) {
    const std::string message(text,
                              std::min<std::size_t>(std::strlen(text), PF_MAX_EFFECT_MSG_LEN));
    out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    in_data->utils->ansi.sprintf(out_data->return_msg, message.c_str());
}

PF_Err AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int version,
                    const char* error_string, void** suite) {
    if (in_data->pica_basicP != nullptr) {
        const void* acquired = *suite;
        in_data->pica_basicP->AcquireSuite(name, version, &acquired);
        *suite = const_cast<void*>(acquired);
        if (*suite != nullptr) {
            return PF_Err_NONE;
        }
    }
    const std::string detail = RefusalText(in_data, {name, version});
    DisplayErrorMessage(in_data, out_data, error_string != nullptr ? error_string : detail.c_str());
    return PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int version,
                    const char* error_string) {
    if (in_data->pica_basicP != nullptr) {
        in_data->pica_basicP->ReleaseSuite(name, version);
        return PF_Err_NONE;
    }
    DisplayErrorMessage(in_data, out_data,
                        error_string != nullptr ? error_string : "Not able to release AEFX Suite.");
    return PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err AcquireDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, DRAWBOT_Suites* suites) {
    if (suites == nullptr) {
        DisplayErrorMessage(in_data, out_data,
                            "NULL suite pointer passed to AEFX_AcquireDrawbotSuites");
        return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
    const auto& [draw, supplier, surface, path] = kDrawbotSuites;
    PF_Err err = AcquireInto(in_data, out_data, draw, suites->drawbot_suiteP);
    if (err == PF_Err_NONE) {
        err = AcquireInto(in_data, out_data, supplier, suites->supplier_suiteP);
    }
    if (err == PF_Err_NONE) {
        err = AcquireInto(in_data, out_data, surface, suites->surface_suiteP);
    }
    if (err == PF_Err_NONE) {
        err = AcquireInto(in_data, out_data, path, suites->path_suiteP);
    }
    return err;
}

PF_Err ReleaseDrawbotSuites(PF_InData* in_data, PF_OutData* out_data) {
    for (const SuiteId& suite : kDrawbotSuites) {
        ReleaseSuite(in_data, out_data, suite.name, suite.version, nullptr);
    }
    return PF_Err_NONE;
}

} // namespace Kerovane::Tesselune
