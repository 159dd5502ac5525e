#pragma once

#include <string>
#include <vector>

namespace Kerovane::TestSupport {

/**
 * Records, during its lifetime, the GL calls made through glbinding in any library. glbinding must
 * be initialised. Only one may exist at a time.
 */
class GLCalls {
public:
    GLCalls();
    ~GLCalls();
    GLCalls(const GLCalls&) = delete;
    GLCalls& operator=(const GLCalls&) = delete;

    /// Returns the functions' names in the order of the calls.
    const std::vector<std::string>& names() const { return mNames; }

    long count(const std::string& name) const;

private:
    std::vector<std::string> mNames;
};

} // namespace Kerovane::TestSupport
