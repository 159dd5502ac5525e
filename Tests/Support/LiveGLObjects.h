#pragma once

#include <map>
#include <string>

namespace Kerovane::TestSupport {

/**
 * Counts, while it lives, the GL objects made less those deleted through the function layer, in
 * whichever library. The layer must be initialised. Objects that end with their context still
 * count. One at a time.
 */
class LiveGLObjects {
public:
    LiveGLObjects();
    ~LiveGLObjects();
    LiveGLObjects(const LiveGLObjects&) = delete;
    LiveGLObjects& operator=(const LiveGLObjects&) = delete;

    /// By kind, "Textures" or "Shaders"; kinds of which there are none are left out.
    std::map<std::string, int> counts() const;

private:
    std::map<std::string, int> mCounts;
};

} // namespace Kerovane::TestSupport
