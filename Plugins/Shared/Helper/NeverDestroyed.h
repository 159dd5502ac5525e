#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace Kerovane::Tesselune {

/**
 * Holds a static object whose destructor never runs. For objects that own GL objects: at unload and
 * at exit the driver may already be gone, and a destructor must not call it.
 */
template <typename Value>
class NeverDestroyed {
public:
    template <typename... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments) {
        ::new (static_cast<void*>(mStorage)) Value(std::forward<Arguments>(arguments)...);
    }
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    Value& operator*() { return *std::launder(reinterpret_cast<Value*>(mStorage)); }
    Value* operator->() { return &**this; }

private:
    alignas(Value) std::byte mStorage[sizeof(Value)];
};

} // namespace Kerovane::Tesselune
