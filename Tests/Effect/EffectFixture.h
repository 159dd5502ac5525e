#pragma once

#include "Host/Session/EffectSession.h"
#include "Host/Session/World.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace Kerovane::TestSupport {

/** A test of the real module, loaded and set up, on a real GL. */
class EffectFixture : public testing::Test {
protected:
    explicit EffectFixture(const char* module = TESSELUNE_MODULE);
    ~EffectFixture() override;

    void globalSetup();
    void globalSetdown();

    /// Sets a parameter, by its displayed name and in the user's units.
    void set(std::string_view name, double value);

    /// Renders `input` at its depth and returns the result; the command must succeed.
    Host::World rendered(const Host::World& input);

    Host::EffectSession mSession;
};

/// A build of the effect.
struct Module {
    const char* name;
    const char* file;
    bool storesFloats; ///< stores a channel of a frame as a float, otherwise in 8 bits

    friend std::ostream& operator<<(std::ostream& stream, const Module& module) {
        return stream << module.name;
    }
};

inline constexpr Module kModules[] = {{"Tesselune", TESSELUNE_MODULE, false},
                                      {"TesseluneFloat", TESSELUNE_FLOAT_MODULE, true}};

/** A test that runs for each module. */
class EveryModule : public EffectFixture, public testing::WithParamInterface<Module> {
protected:
    EveryModule() : EffectFixture(GetParam().file) {}
};

/// Instantiates the EveryModule tests of a fixture for all modules.
#define TEST_EVERY_MODULE(fixture)                                                                 \
    INSTANTIATE_TEST_SUITE_P(Modules, fixture, testing::ValuesIn(kModules),                        \
                             [](const auto& tested) { return std::string(tested.param.name); })

inline constexpr Host::Depth kDepths[] = {Host::Depth::Bits8, Host::Depth::Bits16,
                                          Host::Depth::Float32};

/// Returns the resident memory of this process in bytes.
std::size_t ResidentBytes();

using PixelAt = std::function<PF_Pixel8(int x, int y)>;

Host::World Picture8(int width, int height, const PixelAt& pixelAt);

/// Returns an opaque picture, up to 256 pixels a side, in which red is x and green is y: a cell's
/// colour tells where it was sampled.
Host::World PositionPicture(int width, int height);

/// Returns a picture that is smooth in all channels, opaque or with soft alpha.
Host::World SmoothPicture(int width, int height, bool opaque);

/// Converts a picture to another depth: white becomes the depth's white; 8 and 16 bits are rounded.
Host::World AtDepth(const Host::World& picture, Host::Depth depth);

PF_Pixel8 PixelOf(const Host::World& picture8, int x, int y);

/// Returns the bytes of a row's pixels, without padding.
std::size_t RowSize(const Host::World& world);

/// Returns whether both have the same pixels, ignoring padding.
bool SamePixels(const Host::World& a, const Host::World& b);

/// Returns the largest difference of a channel between two 8-bit pictures of the same size.
int LargestDifference(const Host::World& a, const Host::World& b);

} // namespace Kerovane::TestSupport
