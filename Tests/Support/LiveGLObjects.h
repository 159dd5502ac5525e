#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace Kerovane::TestSupport {

/**
 * Counts, during its lifetime, the GL objects created and not yet deleted through glbinding, in any
 * library and on any thread. Objects of kinds that contexts do not share also end with their
 * context, and can be deleted only while it is current; calls without a context have no effect, as
 * in GL. glbinding must be initialised. Only one may exist at a time.
 */
class LiveGLObjects {
public:
    LiveGLObjects();
    LiveGLObjects(const LiveGLObjects&) = delete;
    LiveGLObjects& operator=(const LiveGLObjects&) = delete;

    /// Returns the counts by kind, such as "Textures" or "Shaders"; leaves out kinds with none.
    std::map<std::string, int> counts() const;

private:
    /// Kind, number of the context if the kind is not shared (else 0), and name of the object.
    using Object = std::tuple<const char*, std::uint64_t, std::uintptr_t>;

    template <typename Function, typename Callback>
    void observe(Function& function, Callback callback);
    /// Observes kinds that GL creates in arrays.
    template <typename Generate, typename Delete>
    void observeArrays(const char* kind, bool isShared, Generate& generate, Delete& destroy);
    /// Observes kinds that GL creates one at a time; all of them are shared.
    template <typename Create, typename Delete>
    void observeSingles(const char* kind, Create& create, Delete& destroy);

    void made(const char* kind, bool isShared, std::uintptr_t object);
    void deleted(const char* kind, bool isShared, std::uintptr_t object);

    mutable std::mutex mMutex;
    std::set<Object> mObjects;
    std::vector<std::shared_ptr<void>> mObservers;
};

} // namespace Kerovane::TestSupport
