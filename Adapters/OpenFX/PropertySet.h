#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

#include <optional>
#include <string>

namespace Kerovane::OpenFX {

/// Returns the name of a clip's property in the arguments of actions. `property` is RoI or
/// Components.
std::string PropertyOfClip(const char* property, Name clip);

/** Reads and writes a property set of the host, which must outlive this object. */
class PropertySet {
public:
    explicit PropertySet(OfxPropertySetHandle handle) : mHandle(handle) {}

    /// Throws Error if the host refuses the value.
    void set(const std::string& name, const std::string& value, int index = 0) const;
    void set(const std::string& name, int value, int index = 0) const;
    void set(const std::string& name, double value, int index = 0) const;
    void set(const std::string& name, const OfxRectD& value) const;

    /// Sets an optional property. Does nothing if the host does not know it.
    template <typename Value>
    void offer(const std::string& name, Value value, int index = 0) const {
        static_cast<void>(put(name, value, index));
    }

    /// Return nothing if the host does not have the value. An empty text counts as no value.
    std::optional<std::string> text(Name name, int index = 0) const;
    std::optional<int> whole(Name name, int index = 0) const;
    std::optional<double> real(Name name, int index = 0) const;
    std::optional<OfxPointD> point(Name name) const;
    std::optional<OfxRectI> wholeRect(Name name) const;
    void* pointer(Name name) const; ///< null if the host does not have the value

private:
    OfxStatus put(const std::string& name, const std::string& value, int index) const;
    OfxStatus put(const std::string& name, int value, int index) const;
    OfxStatus put(const std::string& name, double value, int index) const;

    OfxPropertySetHandle mHandle;
};

} // namespace Kerovane::OpenFX
