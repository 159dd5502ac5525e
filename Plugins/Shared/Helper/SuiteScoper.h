#pragma once

#include "AE_Effect.h"
#include "DrawbotSuite.h"
#include "SPBasic.h"

namespace Kerovane::Tesselune {

/// Thrown by SuiteScoper if the host refuses a suite.
constexpr int kSuiteRefused = 13;

/**
 * Makes the host show `text` to the user: sets the display flag and writes `text` to `return_msg`,
 * cut to its capacity. `text` is used as a printf format without arguments, so it must contain no
 * conversion.
 */
void DisplayErrorMessage(const PF_InData* in_data, PF_OutData* out_data, const char* text);

/** Holds a suite of the host for its lifetime. `name` is not copied: pass a string literal. */
template <typename T>
class SuiteScoper {
public:
    /**
     * Acquires the suite; throws the int kSuiteRefused on failure. If `out_data` is given, the user
     * is told too: `message`, or a general text if that is null.
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

    /// Acquires the suite for callers without a PF_InData. Throws the int kSuiteRefused on failure;
    /// the user is not told.
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

// Manual acquisition and release. All return a host error and report it to the user, with
// `error_string` as the text if it is not null.

/// Stores the suite in `*suite`, which must be null before. Success is judged by the pointer, not
/// by the host's status.
PF_Err AcquireSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int version,
                    const char* error_string, void** suite);

/// Releases the suite. Fails only if the host has no basic suite.
PF_Err ReleaseSuite(PF_InData* in_data, PF_OutData* out_data, const char* name, int version,
                    const char* error_string);

/// Acquires the four drawing suites. On an error, the suites acquired before it stay held.
PF_Err AcquireDrawbotSuites(PF_InData* in_data, PF_OutData* out_data, DRAWBOT_Suites* suites);

/// Releases all four drawing suites. Always returns 0.
PF_Err ReleaseDrawbotSuites(PF_InData* in_data, PF_OutData* out_data);

} // namespace Kerovane::Tesselune
