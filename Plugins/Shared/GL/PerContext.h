#pragma once

#include "Platform/OpenGL/OpenGLContext.h"

#include <cstdint>
#include <map>

namespace Kerovane::Tesselune {

/**
 * Holds one `Objects` for each GL context, for kinds of GL objects that contexts do not share.
 *
 * `Objects` owns GL names and has an operation `release()` that gives them up without deleting the
 * objects.
 */
template <typename Objects>
class PerContext {
public:
    PerContext() = default;
    ~PerContext() { reset(); }
    PerContext(const PerContext&) = delete;
    PerContext& operator=(const PerContext&) = delete;

    /// Returns the objects of the context that is current on this thread. Creates an empty
    /// `Objects` at the context's first call.
    Objects& current() { return mObjects[Platform::OpenGLContext::currentId()]; }

    /// Deletes the objects of the current context.
    void resetCurrent() { mObjects.erase(Platform::OpenGLContext::currentId()); }

    /// Deletes the objects of the current context and forgets all others, which are deleted with
    /// their contexts.
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
