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

/// A property set that refuses names it does not have and values of another type.
class Properties {
public:
    Properties() = default;
    Properties(std::initializer_list<std::pair<const std::string, std::vector<Value>>> values);

    OfxPropertySetHandle handle() { return reinterpret_cast<OfxPropertySetHandle>(this); }

    /// Adds a property or replaces its values. Its first value determines its type.
    void declare(const std::string& name, std::vector<Value> values) { mValues[name] = values; }

    OfxStatus set(const std::string& name, int index, Value value);
    OfxStatus get(const std::string& name, int index, Value& value) const;

    /// Returns nothing if there is no value, or one of another type.
    template <typename Type>
    std::optional<Type> at(const std::string& name, int index = 0) const {
        Value value = Type{};
        return get(name, index, value) == kOfxStatOK ? std::optional(std::get<Type>(value))
                                                     : std::nullopt;
    }

private:
    std::map<std::string, std::vector<Value>> mValues;
};

/// A parameter: a constant value, or keys with linear interpolation.
struct Param {
    std::string type;
    Properties properties;
    std::map<double, double> keys{};

    double valueAt(double time) const;
};

/// An image: its form and its pixels. A Colour returns red, green, blue and alpha at a position,
/// not multiplied by alpha.
struct Image {
    using Colour = std::function<std::array<float, 4>(int x, int y)>;

    OfxRectI bounds;
    Channel channel = Channel::Float;
    int channels = 4;
    Coverage coverage = Coverage::Premultiplied;
    bool isTopDown = false; ///< the first row in memory is the top one
    int padding = 0;        ///< bytes after each row
    OfxPointD scale{1, 1};
    bool tellsLittle = false; ///< has no properties for scale, field and premultiplication

    std::vector<std::byte> bytes{};
    Properties properties{};

    int width() const { return bounds.x2 - bounds.x1; }
    int height() const { return bounds.y2 - bounds.y1; }
    int rowBytes() const;

    /// Allocates the pixels, painted if a colour is given, and sets the properties.
    void make(const Colour& colour = {});

    std::byte* pixel(int x, int y);

    /// Returns the pixel as stored, premultiplied or not; alpha is 1 if there is none.
    std::array<float, 4> at(int x, int y);
};

struct TestClip {
    Properties properties{};
    OfxRectD region{};
    Image* image = nullptr;
};

/** A described effect; a copy of one serves as an instance. */
struct TestEffect {
    Properties properties{};
    std::map<std::string, Param> params{};
    std::map<std::string, TestClip> clips{};
    bool isAborted = false;

    OfxImageEffectHandle handle() { return reinterpret_cast<OfxImageEffectHandle>(this); }

    /// Connects the source and the output. Their regions of definition are their bounds.
    void connect(Image& source, Image& output);

    void setProject(double x1, double y1, double x2, double y2);

    /// Sets a constant value, without keys.
    void set(const std::string& param, double value) { params.at(param).keys = {{0, value}}; }
};

/** An OpenFX host: loads the module, and unloads it in the destructor. */
class OpenFXHost {
public:
    explicit OpenFXHost(const std::filesystem::path& module = OPENFX_MODULE);
    ~OpenFXHost();
    OpenFXHost(const OpenFXHost&) = delete;
    OpenFXHost& operator=(const OpenFXHost&) = delete;

    OfxStatus act(Name action, TestEffect* effect = nullptr, Properties in = {},
                  Properties* out = nullptr) const;

    /// Returns the effect, described also in the filter context. Expects success, unless `status`
    /// takes the result.
    TestEffect described(OfxStatus* status = nullptr) const;

    /// Renders the window, or the whole output image.
    OfxStatus render(TestEffect& effect, double time = 0,
                     std::optional<OfxRectI> window = {}) const;

    /// Makes the `nth` suite call from now on fail (1: the next, 0: none). Returns the number of
    /// calls since the last time.
    static int failCall(int nth);

    static std::vector<std::string> takeMessages();
    static int openImages();

private:
    void* mLibrary;
    OfxPlugin* mPlugin;
};

} // namespace Kerovane::OpenFX
