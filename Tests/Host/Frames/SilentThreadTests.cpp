#include "Host/Frames/SilentThread.h"

#include <gtest/gtest.h>

#include <iostream>
#include <optional>
#include <thread>

namespace Kerovane::Host {
namespace {

TEST(SilentThread, SilencesItselfAlone) {
    testing::internal::CaptureStdout();
    std::thread([] {
        std::cout << "before, ";
        {
            const SilentThread silent;
            std::cout << "unheard" << 1 << std::endl;
            std::thread([] {
                std::cout << "another, ";
                const SilentThread silentToo;
                std::cout << "unheard too";
            }).join();
            std::optional<SilentThread> nested(std::in_place);
            nested.reset();
            std::cout << "still unheard";
        }
        std::cout << "after" << std::flush;
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "before, another, after");
}

} // namespace
} // namespace Kerovane::Host
