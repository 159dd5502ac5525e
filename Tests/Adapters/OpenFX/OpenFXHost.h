#pragma once

#include "Adapters/OpenFX/HostPixels.h"
#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/Interface/MessageSuite.h"
#include "Adapters/OpenFX/Interface/ParameterSuite.h"
#include "Adapters/OpenFX/Interface/PropertySuite.h"

#include <array>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Kerovane::OpenFX {

using Value = std::variant<int, double, std::string, void*>;

/// A property set that refuses names that it doesn't have and values of another type.
class Properties {
public:
    Properties() = default;
    Properties(std::initializer_list<std::pair<const std::string, std::vector<Value>>> values);

    OfxPropertySetHandle handle() { return reinterpret_cast<OfxPropertySetHandle>(this); }

    /// Adds the name, or replaces its values; its first value tells the type.
    void declare(const std::string& name, std::vector<Value> values) { mValues[name] = values; }

    OfxStatus set(const std::string& name, int index, Value value);
    OfxStatus get(const std::string& name, int index, Value& value) const;

    /// Nothing if there is none, or one of another type.
    template <typename Type>
    std::optional<Type> at(const std::string& name, int index = 0) const {
        Value value = Type{};
        return get(name, index, value) == kOfxStatOK ? std::optional(std::get<Type>(value))
                                                     : std::nullopt;
    }

private:
    std::map<std::string, std::vector<Value>> mValues;
};

/// A parameter: its value, or keys with straight lines between them.
struct Param {
    std::string type;
    Properties properties;
    std::map<double, double> keys{};

    double valueAt(double time) const;
};

/// An image's form and pixels; `colour` gives red, green, blue and alpha, unmultiplied, by place.
struct Image {
    using Colour = std::function<std::array<float, 4>(int x, int y)>;

    OfxRectI bounds;
    Channel channel = Channel::Float;
    int channels = 4;
    Coverage coverage = Coverage::Premultiplied;
    bool isTopDown = false; ///< in memory
    int padding = 0;        ///< bytes behind each row
    OfxPointD scale{1, 1};
    bool tellsLittle = false; ///< no scale, field or premultiplication

    std::vector<std::byte> bytes{};
    Properties properties{};

    int width() const { return bounds.x2 - bounds.x1; }
    int height() const { return bounds.y2 - bounds.y1; }
    int rowBytes() const;

    /// Makes the memory, painted where a colour is given, and the properties.
    void make(const Colour& colour = {});

    std::byte* pixel(int x, int y);

    /// Multiplied as it stands; alpha 1 if there is none.
    std::array<float, 4> at(int x, int y);
};

struct TestClip {
    Properties properties{};
    OfxRectD region{};
    Image* image = nullptr;
};

/** A described effect, or as a copy of one an instance. */
struct TestEffect {
    Properties properties{};
    std::map<std::string, Param> params{};
    std::map<std::string, TestClip> clips{};
    bool isAborted = false;

    OfxImageEffectHandle handle() { return reinterpret_cast<OfxImageEffectHandle>(this); }

    /// Connects the source and the output, whose regions are those of their bounds.
    void connect(Image& source, Image& output);

    void setProject(double x1, double y1, double x2, double y2);

    /// Without keys.
    void set(const std::string& param, double value) { params.at(param).keys = {{0, value}}; }
};

/** A host of the interface that loads the module, until it goes. */
class OpenFXHost {
public:
    explicit OpenFXHost(const std::filesystem::path& module = OPENFX_MODULE);
    ~OpenFXHost();
    OpenFXHost(const OpenFXHost&) = delete;
    OpenFXHost& operator=(const OpenFXHost&) = delete;

    OfxStatus act(Name action, TestEffect* effect = nullptr, Properties in = {},
                  Properties* out = nullptr) const;

    /// Described, and described in the context of filters: made once, if `status` is not asked for.
    TestEffect described(OfxStatus* status = nullptr) const;

    /// Renders the window, or all of the output's image.
    OfxStatus render(TestEffect& effect, double time = 0,
                     std::optional<OfxRectI> window = {}) const;

    /// Lets the `nth` call of a suite fail, the next being 1, and 0 none; returns how many were
    /// made since the last time.
    static int failCall(int nth);

    static std::vector<std::string> takeMessages();
    static int openImages();

private:
    void* mLibrary;
    OfxPlugin* mPlugin;
};

} // namespace Kerovane::OpenFX
