#pragma once

#include "Platform/OpenGL/OpenGLContext.h"

#include <cstdint>
#include <map>

namespace Kerovane::Tesselune {

/**
 * One `Objects` for each GL context, for the kinds of GL objects that contexts don't share.
 *
 * `Objects` is an owner of GL names with an operation `release()`, which gives the names up without
 * deleting the objects.
 */
template <typename Objects>
class PerContext {
public:
    PerContext() = default;
    ~PerContext() { reset(); }
    PerContext(const PerContext&) = delete;
    PerContext& operator=(const PerContext&) = delete;

    /// Those of the context that is current on this thread; empty at the context's first call.
    Objects& current() { return mObjects[Platform::OpenGLContext::currentId()]; }

    /// Deletes those of the current context.
    void resetCurrent() { mObjects.erase(Platform::OpenGLContext::currentId()); }

    /// Deletes those of the current context and forgets the others, which end with their contexts.
    void reset() {
        resetCurrent();
        for (auto& [context, objects] : mObjects) {
            objects.release();
        }
        mObjects.clear();
    }

private:
    std::map<std::uint64_t, Objects> mObjects;
};

} // namespace Kerovane::Tesselune
