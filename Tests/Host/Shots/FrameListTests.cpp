#include "Host/Shots/FrameList.h"

#include "Tests/Support/ErrorText.h"

#include <gtest/gtest.h>

namespace Kerovane::Host {
namespace {

TEST(FrameList, ParsesRangesStepsAndLists) {
    struct Row {
        const char* text;
        FrameList frames;
    };
    const Row rows[] = {
        {"7", {7}},
        {"1001-1003", {1001, 1002, 1003}},
        {"1-10x4", {1, 5, 9}},
        {"1,5,9", {1, 5, 9}},
        {"9,1-3,2-4", {1, 2, 3, 4, 9}},
        {"-2-1", {-2, -1, 0, 1}},
        {"-4--2x2", {-4, -2}},
        {"2147483646-2147483647", {2147483646, 2147483647}},
        {"3-3x2147483647", {3}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ParseFrames(row.text), row.frames) << row.text;
    }
}

TEST(FrameList, RefusesMalformedText) {
    for (const char* text : {"", ",", "1,", "a", "1-", "-", "1-2-3", "2-1", "1-5x0", "1-5x-1",
                             "1-5x", "1x2", "1..5", " 1", "1.5", "2147483648", "1-5y2"}) {
        EXPECT_NE(ErrorOf([&] { ParseFrames(text); }).find("takes frames like"), std::string::npos)
            << text;
    }
    EXPECT_EQ(ErrorOf([] { ParseFrames("-2147483648-2147483647"); }),
              "names more than 1000000 frames");
    EXPECT_EQ(ErrorOf([] { ParseFrames("1-600000,700000-1300000"); }),
              "names more than 1000000 frames");
}

TEST(FrameList, FormatsRunsAsRanges) {
    EXPECT_EQ(FormatFrames(FrameList{1, 2, 3, 7, 9, 10}), "1-3, 7, 9-10");
    EXPECT_EQ(FormatFrames(FrameList{}), "");
}

TEST(Chunk, ParsesNumberAndCount) {
    EXPECT_EQ(ParseChunk("3/10").number, 3);
    EXPECT_EQ(ParseChunk("3/10").count, 10);
    for (const char* text : {"", "3", "0/10", "11/10", "/10", "3/", "-1/10", "1/-1", "1/2/3"}) {
        EXPECT_THROW(ParseChunk(text), Error) << text;
    }
}

TEST(Chunk, DividesAllFramesEvenly) {
    for (const A_long frameCount : {0, 1, 9, 10, 100}) {
        for (const A_long count : {1, 3, 10, 17}) {
            const FrameList all =
                frameCount == 0 ? FrameList{} : FramesBetween(1001, 1000 + frameCount);
            FrameList together;
            for (A_long number = 1; number <= count; ++number) {
                const FrameList chunk = FramesOf({.number = number, .count = count}, all);
                EXPECT_LE(chunk.size(), all.size() / static_cast<std::size_t>(count) + 1);
                EXPECT_GE(chunk.size(), all.size() / static_cast<std::size_t>(count));
                together.insert(together.end(), chunk.begin(), chunk.end());
            }
            EXPECT_EQ(together, all) << frameCount << " in " << count;
        }
    }
}

} // namespace
} // namespace Kerovane::Host
