#pragma once

#include "OpenGLContext.h"

#include <cstdint>
#include <map>

namespace Kerovane::Tesselune {

/**
 * One `Objects` for each GL context, for the kinds of GL objects that contexts don't share. At its
 * end it deletes those of the context that is current; the others go with their contexts.
 *
 * `Objects` has an operation `release()`, which gives its names up without deleting the objects.
 */
template <typename Objects>
class PerContext {
public:
    PerContext() = default;
    PerContext(const PerContext&) = delete;
    PerContext& operator=(const PerContext&) = delete;

    ~PerContext() {
        const std::uint64_t current = Platform::OpenGLContext::currentId();
        for (auto& [context, objects] : mObjects) {
            if (context != current) {
                objects.release();
            }
        }
    }

    /// Those of the context that is current on this thread; empty at the context's first call.
    Objects& current() { return mObjects[Platform::OpenGLContext::currentId()]; }

private:
    std::map<std::uint64_t, Objects> mObjects;
};

} // namespace Kerovane::Tesselune
