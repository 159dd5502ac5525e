#include "Adapters/Frei0r/SilentThread.h"

#include <gtest/gtest.h>

#include <iostream>
#include <thread>

namespace Kerovane::Frei0r {

namespace {

TEST(SilentThread, IsAloneInBeingSilent) {
    testing::internal::CaptureStdout();
    std::thread([] {
        std::cout << "before, ";
        {
            const SilentThread silent;
            std::cout << "unheard" << 1 << std::endl;
            std::thread([] { std::cout << "another, "; }).join();
        }
        std::cout << "after" << std::flush;
    }).join();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "before, another, after");
}

} // namespace

} // namespace Kerovane::Frei0r
