#include "Plugins/Tesselune/Sources/Common.h"

#include "Plugins/Shared/Helper/SuiteScoper.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(KVPrint, WritesOneLineAndCutsALongOne) {
    testing::internal::CaptureStderr();
    KVPrint("%s is %d", "answer", 42);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "answer is 42\n");
    testing::internal::CaptureStderr();
    KVPrint("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string(1023, 'x') + "\n");
}

} // namespace
