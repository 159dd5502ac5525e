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
 * Counts, while it lives, the GL objects made and not deleted through the function layer, in
 * whichever library and on whichever thread. Kinds that contexts don't share also end with their
 * context, and are deleted only with it current; calls without a context do nothing, as in GL. The
 * layer must be initialised. One at a time.
 */
class LiveGLObjects {
public:
    LiveGLObjects();
    LiveGLObjects(const LiveGLObjects&) = delete;
    LiveGLObjects& operator=(const LiveGLObjects&) = delete;

    /// By kind, "Textures" or "Shaders"; kinds of which there are none are left out.
    std::map<std::string, int> counts() const;

private:
    /// Kind, the context's number where the kind is not shared (else 0), and the object.
    using Object = std::tuple<const char*, std::uint64_t, std::uintptr_t>;

    template <typename Function, typename Callback>
    void observe(Function& function, Callback callback);
    /// Kinds that GL makes by the array.
    template <typename Generate, typename Delete>
    void observeArrays(const char* kind, bool isShared, Generate& generate, Delete& destroy);
    /// Kinds that it makes one at a time, all shared.
    template <typename Create, typename Delete>
    void observeSingles(const char* kind, Create& create, Delete& destroy);

    void made(const char* kind, bool isShared, std::uintptr_t object);
    void deleted(const char* kind, bool isShared, std::uintptr_t object);

    mutable std::mutex mMutex;
    std::set<Object> mObjects;
    std::vector<std::shared_ptr<void>> mObservers;
};

} // namespace Kerovane::TestSupport
