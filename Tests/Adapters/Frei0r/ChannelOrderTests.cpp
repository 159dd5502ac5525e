#include "Adapters/Frei0r/ChannelOrder.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <vector>

namespace Kerovane::Frei0r {

namespace {

using Bytes = std::array<unsigned char, 4>;

TEST(ChannelOrder, PutsTheLastByteFirstAndBack) {
    // Every length up to some vectors, as the last pixels are done one by one.
    for (std::size_t length = 0; length <= 40; ++length) {
        std::vector<std::uint32_t> host(length + 1);
        for (std::size_t i = 0; i < host.size(); ++i) {
            const auto base = static_cast<unsigned char>(4 * i);
            host[i] = std::bit_cast<std::uint32_t>(Bytes{base, static_cast<unsigned char>(base + 1),
                                                         static_cast<unsigned char>(base + 2),
                                                         static_cast<unsigned char>(base + 3)});
        }
        std::vector<std::uint32_t> layer(length + 1, 0xdeadbeef);
        AlphaFirst(std::span(host).first(length), std::span(layer).first(length));
        for (std::size_t i = 0; i < length; ++i) {
            const auto [r, g, b, a] = std::bit_cast<Bytes>(host[i]);
            EXPECT_EQ(std::bit_cast<Bytes>(layer[i]), (Bytes{a, r, g, b})) << i << " of " << length;
        }
        EXPECT_EQ(layer.back(), 0xdeadbeef) << length;

        std::vector<std::uint32_t> back(length);
        AlphaLast(std::span(layer).first(length), back);
        EXPECT_EQ(back, std::vector(host.begin(), host.end() - 1)) << length;
    }
}

} // namespace

} // namespace Kerovane::Frei0r
