#pragma once

#include <string>
#include <vector>

namespace Kerovane::TestSupport {

/**
 * Records, while it lives, the GL calls made through the function layer, in whichever library. The
 * layer must be initialised. One at a time.
 */
class GLCalls {
public:
    GLCalls();
    ~GLCalls();
    GLCalls(const GLCalls&) = delete;
    GLCalls& operator=(const GLCalls&) = delete;

    /// The functions' names in the order of the calls.
    const std::vector<std::string>& names() const { return mNames; }

    long count(const std::string& name) const;

private:
    std::vector<std::string> mNames;
};

} // namespace Kerovane::TestSupport
