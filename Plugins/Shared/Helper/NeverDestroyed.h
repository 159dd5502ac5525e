#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace Kerovane::Tesselune {

/**
 * A static object that is built at load and has no end. Whatever owns GL objects is held so: at
 * unload and at exit the driver may be gone already, and a destructor must not call it then.
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
