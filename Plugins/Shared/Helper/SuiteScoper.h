#pragma once

#include "AE_Effect.h"
#include "DrawbotSuite.h"
#include "SPBasic.h"

namespace Kerovane::Tesselune {

/// What SuiteScoper throws if the host refuses a suite.
constexpr int kSuiteRefused = 13;

/**
 * Has the host show `text` to the user: sets the display flag and writes `text`, cut to what
 * `return_msg` holds. `text` is a format without arguments and so must contain no conversion.
 */
void DisplayErrorMessage(const PF_InData* in_data, PF_OutData* out_data, const char* text);

/** Holds one of the host's suites, by literal name and version, for the length of a scope. */
template <typename T>
class SuiteScoper {
public:
    /**
     * Acquires the suite, or throws the int kSuiteRefused. With `out_data` the user is told too, by
     * `message` or, if that is null, by a general text.
     */
    SuiteScoper(const PF_InData* in_data, const char* name, int version,
                PF_OutData* out_data = nullptr, const char* message = nullptr)
        : mBasicSuite(in_data->pica_basicP), mName(name), mVersion(version) {
        if (!acquire()) {
            if (out_data != nullptr) {
                DisplayErrorMessage(in_data, out_data,
                                    message != nullptr ? message
                                                       : "Not able to acquire AEFX Suite.");
            }
            throw int(kSuiteRefused);
        }
    }

    /// The same if no PF_InData is at hand.
    SuiteScoper(SPBasicSuite* basic, const char* name, int version)
        : mBasicSuite(basic), mName(name), mVersion(version) {
        if (!acquire()) {
            throw int(kSuiteRefused);
        }
    }

    ~SuiteScoper() {
        if (mSuite != nullptr) {
            mBasicSuite->ReleaseSuite(mName, mVersion);
        }
    }

    SuiteScoper(const SuiteScoper&) = delete;
    SuiteScoper& operator=(const SuiteScoper&) = delete;

    const T* operator->() const { return mSuite; }

private:
    bool acquire() {
        const void* suite = nullptr;
        if (mBasicSuite->AcquireSuite(mName, mVersion, &suite) != kSPNoError) {
            return false;
        }
        mSuite = static_cast<const T*>(suite);
        return true;
    }

    const T* mSuite = nullptr;
    SPBasicSuite* mBasicSuite;
    const char* mName; ///< not copied
    int mVersion;
};

// Acquiring and releasing by hand. All return a host error and tell the user of it, with
// `error_string` if it is not null.

/// Writes the suite through `suite`, which must hold null. A pointer counts, not the host's status.
PF_Err AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int version,
                    const char* error_string, void** suite);

/// Fails only if the host has no basic suite.
PF_Err ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int version,
                    const char* error_string);

/// Acquires the four drawing suites. On an error, those before it stay held.
PF_Err AcquireDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, DRAWBOT_Suites* suites);

/// Releases all four; always 0.
PF_Err ReleaseDrawbotSuites(PF_InData* in_data, PF_OutData* out_data);

} // namespace Kerovane::Tesselune
