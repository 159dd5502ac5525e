#pragma once

#include "Host/Session/EffectSession.h"
#include "Host/Session/World.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <string_view>

namespace Kerovane::TestSupport {

/** A test of the real module, loaded and set up, with the real GL behind it. */
class EffectFixture : public testing::Test {
protected:
    explicit EffectFixture(const char* module = TESSELUNE_MODULE);
    ~EffectFixture() override;

    void globalSetup();
    void globalSetdown();

    /// Sets a parameter by its shown name, in the user's units.
    void set(std::string_view name, double value);

    /// The picture that the effect makes of `input` at its depth; the command must succeed.
    Host::World rendered(const Host::World& input);

    Host::EffectSession mSession;
};

/// A build of the effect.
struct Module {
    const char* name;
    const char* file;
    bool storesFloats; ///< else 8 bits a channel

    friend std::ostream& operator<<(std::ostream& stream, const Module& module) {
        return stream << module.name;
    }
};

inline constexpr Module kModules[] = {{"Tesselune", TESSELUNE_MODULE, false},
                                      {"TesseluneFloat", TESSELUNE_FLOAT_MODULE, true}};

/** A test of each module in turn. */
class EveryModule : public EffectFixture, public testing::WithParamInterface<Module> {
protected:
    EveryModule() : EffectFixture(GetParam().file) {}
};

/// Runs the EveryModule tests of a fixture.
#define TEST_EVERY_MODULE(fixture)                                                                 \
    INSTANTIATE_TEST_SUITE_P(Modules, fixture, testing::ValuesIn(kModules),                        \
                             [](const auto& tested) { return std::string(tested.param.name); })

inline constexpr Host::Depth kDepths[] = {Host::Depth::Bits8, Host::Depth::Bits16,
                                          Host::Depth::Float32};

/// This process's memory in use.
std::size_t ResidentBytes();

using PixelAt = std::function<PF_Pixel8(int x, int y)>;

Host::World Picture8(int width, int height, const PixelAt& pixelAt);

/// Opaque, red is x and green is y, so that a cell's colour tells where it was read. Up to 256 a
/// side.
Host::World PositionPicture(int width, int height);

/// Smooth in all channels, opaque or with a soft alpha.
Host::World SmoothPicture(int width, int height, bool opaque);

/// The same picture at another depth: white becomes the depth's white. Rounded to 8 or 16 bits.
Host::World AtDepth(const Host::World& picture, Host::Depth depth);

PF_Pixel8 PixelOf(const Host::World& picture8, int x, int y);

/// Bytes of a row's pixels, without the padding.
std::size_t RowSize(const Host::World& world);

/// Whether both have the same pixels, padding apart.
bool SamePixels(const Host::World& a, const Host::World& b);

/// The largest difference of a channel between two 8-bit pictures of one size.
int LargestDifference(const Host::World& a, const Host::World& b);

} // namespace Kerovane::TestSupport
