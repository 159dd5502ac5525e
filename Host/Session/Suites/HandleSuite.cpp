#include "Host/Session/Suites/HandlePool.h"
#include "Host/Session/Suites/Suites.h"

namespace Kerovane::Host {

namespace {

HandlePool mHandles;

PF_Handle New(A_HandleSize size) {
    return mHandles.make(size);
}

void* Lock(PF_Handle handle) {
    return mHandles.lock(handle);
}

/// Blocks never move, so unlocking does nothing.
void Unlock(PF_Handle) {}

void Dispose(PF_Handle handle) {
    mHandles.dispose(handle);
}

A_HandleSize Size(PF_Handle handle) {
    return mHandles.size(handle);
}

} // namespace

const PF_HandleSuite1 kHandleSuite{.host_new_handle = New,
                                   .host_lock_handle = Lock,
                                   .host_unlock_handle = Unlock,
                                   .host_dispose_handle = Dispose,
                                   .host_get_handle_size = Size};

int LiveHandles() {
    return mHandles.live();
}

} // namespace Kerovane::Host
