#pragma once

#include "AE_EffectCBSuites.h"
#include "Plugins/Shared/Helper/SuiteScoper.h"

#include <cstddef>

namespace Kerovane::Tesselune {

/**
 * A locked block of the host's memory, from its handle suite. The destructor unlocks and disposes
 * of it.
 */
class HostHandle {
public:
    /// Allocates `size` bytes; throws the int PF_Err_OUT_OF_MEMORY on failure. `suite` must outlive
    /// the object.
    HostHandle(const SuiteScoper<PF_HandleSuite1>& suite, A_HandleSize size)
        : mSuite(suite), mHandle(suite->host_new_handle(size)) {
        if (mHandle == nullptr) {
            throw static_cast<int>(PF_Err_OUT_OF_MEMORY);
        }
        mData = static_cast<std::byte*>(mSuite->host_lock_handle(mHandle));
        if (mData == nullptr) {
            mSuite->host_dispose_handle(mHandle);
            throw static_cast<int>(PF_Err_OUT_OF_MEMORY);
        }
    }

    ~HostHandle() {
        mSuite->host_unlock_handle(mHandle);
        mSuite->host_dispose_handle(mHandle);
    }

    HostHandle(const HostHandle&) = delete;
    HostHandle& operator=(const HostHandle&) = delete;

    std::byte* data() const { return mData; }

private:
    const SuiteScoper<PF_HandleSuite1>& mSuite;
    PF_Handle mHandle;
    std::byte* mData = nullptr; ///< never null once constructed
};

} // namespace Kerovane::Tesselune
